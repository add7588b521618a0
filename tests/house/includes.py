#!/usr/bin/env python3
"""Reads the include lines of all sources and tells each that points the wrong way: includes.py SOURCE_FOLDER

The arrows of the house: ready -> uikit -> platform -> platform/backend, backends -> platform; gallery, tools, tests, bench and
examples stand on top. A source begins with its own header, which so is compiled alone by every build; the headers that
have no source are compiled by another test. Exits with 1 and one line for each mistake.
"""
import os
import re
import sys

STANDARD = set("""
algorithm array atomic bit bitset cassert cctype cerrno cfenv cfloat charconv chrono cinttypes climits clocale cmath compare
complex concepts condition_variable coroutine csetjmp csignal cstdarg cstddef cstdint cstdio cstdlib cstring ctime cwchar
cwctype deque exception execution filesystem format forward_list fstream functional future initializer_list iomanip ios
iosfwd iostream istream iterator latch limits list locale map memory memory_resource mutex new numbers numeric optional
ostream queue random ranges ratio regex scoped_allocator semaphore set shared_mutex source_location span sstream stack
stdexcept stop_token streambuf string string_view strstream syncstream system_error thread tuple type_traits typeindex
typeinfo unordered_map unordered_set utility valarray variant vector version
""".split())

# Folder of the includer -> what it may include of the project. The longest folder that fits is the one that counts.
PROJECT = {
    "tessaluna/uikit": ["tessaluna/uikit/", "tessaluna/platform/"],
    "tessaluna/ready": ["tessaluna/ready/", "tessaluna/uikit/", "tessaluna/platform/"],
    "tessaluna/platform": ["tessaluna/platform/"],
    "tessaluna/platform/foundation": ["tessaluna/platform/foundation/"],
    "tessaluna/platform/backend": ["tessaluna/platform/backend/", "tessaluna/platform/foundation/"],
    "tessaluna/backends": ["tessaluna/backends/", "tessaluna/platform/"],
    "tessaluna/backends/recording": ["tessaluna/backends/recording/", "tessaluna/platform/"],
    "tessaluna/backends/raster": ["tessaluna/backends/raster/", "tessaluna/platform/"],
    "tessaluna/backends/svg": ["tessaluna/backends/svg/", "tessaluna/platform/"],
}
TOP = ["gallery", "tools", "tests", "bench", "examples"]

# What else a folder may include, by the start of the name. Whoever includes a header of platform must not need more than
# the library.
OTHERS_IN_SOURCES = {
    "tessaluna/platform": ["nlohmann/", "utf8proc.h"],
    "tessaluna/backends/raster": ["agg_"],
    "tessaluna/backends/qt": ["Q", "qpa/"],
}
OTHERS_IN_HEADERS = {"tessaluna/backends/raster": ["agg_"], "tessaluna/backends/qt": ["Q"]}
# A vector instruction is the compiler's, not the system's.
COMPILER_HEADERS = {"tessaluna/backends/raster": ["immintrin.h", "emmintrin.h", "arm_neon.h"]}

# The nine folders of uikit know each other only where one class derives from another, or draws with it.
KIT_FOLDERS = {
    "stylekit": [],
    "suggestions": [],
    "links": [],
    "trackrow": ["stylekit"],
    "coverart": [],
    "containers": [],
    "cells": [],
    "transport": ["stylekit"],
    "startup": [],
}

# Refuses an older language. As every other header of the libraries includes one of them at least, all reach it.
LANGUAGE = "tessaluna/platform/foundation/languageVersion.h"

INCLUDE = re.compile(r'^[ \t]*#[ \t]*include[ \t]*([<"])([^>"]+)[>"]', re.MULTILINE)

# The first line of a file that is neither a comment nor for the preprocessor.
CODE = re.compile(r"^(?![ \t]*(?:#|//|$))", re.MULTILINE)


def longest(table, folder):
    """The entry of the nearest folder above, or None."""
    while folder:
        if folder in table:
            return table[folder]
        folder = os.path.dirname(folder)
    return None


def wrong_arrows(path, text):
    """What is wrong in one file: a list of lines. The path is relative to the root."""
    folder = os.path.dirname(path)
    if path.split("/")[0] in TOP:
        return []
    wrong = []
    for line, (quote, name) in ((text.count("\n", 0, m.start()) + 1, m.groups()) for m in INCLUDE.finditer(text)):
        reason = reason_against(path, folder, quote, name)
        if reason:
            wrong.append(f"{path}:{line}: {name}: {reason}")
    return wrong


def reason_against(path, folder, quote, name):
    if quote == "<" and name in STANDARD:
        return None
    others = OTHERS_IN_SOURCES if path.endswith(".cpp") else OTHERS_IN_HEADERS
    allowed = (longest(others, folder) or []) + (longest(COMPILER_HEADERS, folder) or [])
    if any(name.startswith(start) for start in allowed):
        return None
    if quote == "<":
        return f"{folder} may not include it"
    if any(part in (".", "..") for part in name.split("/")) or "/" not in name:
        return "the project's headers are named from its root"
    # The one header of all public headers knows all folders.
    if folder == "tessaluna/uikit":
        return None if name.startswith(("tessaluna/uikit/", "tessaluna/platform/")) else "uikit may not include it"
    if folder.startswith("tessaluna/uikit/") and name.startswith("tessaluna/uikit/"):
        own, other = folder.split("/")[2], name.split("/")[2]
        if own == other or other in KIT_FOLDERS.get(own, []):
            return None
        return f"tessaluna/uikit/{own} does not know tessaluna/uikit/{other}"
    if not any(name.startswith(start) for start in longest(PROJECT, folder) or []):
        return f"{folder} may not include it"
    return None


def sources(root):
    for top in ["tessaluna"] + TOP:
        for folder, _, names in os.walk(os.path.join(root, top)):
            for name in sorted(names):
                if name.endswith((".h", ".cpp")):
                    yield os.path.relpath(os.path.join(folder, name), root)


def wrong_start(path, text, has_header):
    """A header that is not guarded or does not reach LANGUAGE, or a source that does not begin with its header."""
    if path.endswith(".h"):
        wrong = [] if re.search(r"^#pragma once$", text, re.MULTILINE) else [f"{path}:1: #pragma once is missing"]
        is_root = not any(quote == '"' for quote, _ in INCLUDE.findall(text))
        if path.startswith("tessaluna/") and path != LANGUAGE and is_root:
            wrong.append(f"{path}:1: it includes no header of the project: {LANGUAGE} is missing")
        return wrong
    own = path[:-len(".cpp")] + ".h"
    first = INCLUDE.search(text)
    # An example that stands in a folder of its own is a program of somebody else's, with that folder as its root.
    allowed = {own, os.path.basename(own)} if own.startswith("examples/") else {own}
    if has_header and not (first and first.group(2) in allowed):
        return [f"{path}:1: its first include must be {own}"]
    return []


def late_includes(path, text):
    """Include lines after the first line of code: the compiler takes them wherever they are, even within a function."""
    code = CODE.search(text)
    return [f"{path}:{text.count(chr(10), 0, m.start()) + 1}: {m.group(2)}: include lines come before the code"
            for m in INCLUDE.finditer(text, code.start() if code else len(text))]


def unknown_folders(root):
    """Sources in folders that the house does not have would escape every rule."""
    known = set(KIT_FOLDERS)
    path = os.path.join(root, "tessaluna", "uikit")
    return [f"tessaluna/uikit/{name}: the house has no such folder"
            for name in sorted(os.listdir(path)) if os.path.isdir(os.path.join(path, name)) and name not in known]


def main(root):
    wrong = unknown_folders(root)
    count = 0
    for path in sources(root):
        count += 1
        with open(os.path.join(root, path), encoding="utf-8") as file:
            text = file.read()
        wrong += wrong_arrows(path, text)
        wrong += late_includes(path, text)
        wrong += wrong_start(path, text, os.path.exists(os.path.join(root, path[:-len(".cpp")] + ".h")))
    for line in wrong:
        print(line)
    if not count:
        print(f"no sources below {root}")
    return 1 if wrong or not count else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1]))
