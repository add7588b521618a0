#!/usr/bin/env python3
"""The C++ that the README and the pages in docs/ show is code of the examples, which every build compiles, and a reader can
compile it, too: readmeExamples.py SOURCE_FOLDER

A block is a piece of one example. Lines with #include or using at its head may come from anywhere in that example. Each name of
the library or of Qt that a block uses is declared by a header that the page has included by then."""
import functools
import os
import re
import sys

HEAD = re.compile(r"#include |using ")


def parts(block):
    """The lines at the head of a block, and what follows them."""
    lines = block.splitlines(keepends=True)
    length = 0
    while length < len(lines) and (HEAD.match(lines[length]) or not lines[length].strip()):
        length += 1
    return [line for line in lines[:length] if line.strip()], "".join(lines[length:])


def is_in(block, example):
    head, rest = parts(block)
    return rest in example and all("\n" + line in "\n" + example for line in head)


def declared_names(text):
    """The classes, enumerations and functions that a header declares outside of classes."""
    names = re.findall(r"^(?:class|struct|enum class|enum) (\w+)[^;]*$", text, re.MULTILINE)
    names += re.findall(r"^using (\w+) =", text, re.MULTILINE)
    names += re.findall(r"^(?!//|#|using|namespace|\s)[\w:<>&*,\[\] ]*[ &*]([a-z]\w*)\(", text, re.MULTILINE)
    return set(names)


class Headers:
    """What the headers below a folder declare, and what each of them includes in turn."""

    def __init__(self, texts):
        self.includes = {name: set(re.findall(r'^#include "([^"]+)"', text, re.MULTILINE)) for name, text in texts.items()}
        self.declaring = {}
        for name, text in texts.items():
            for declared in declared_names(text):
                self.declaring.setdefault(declared, set()).add(name)
        self.reached = functools.lru_cache(maxsize=None)(self.reached)

    def reached(self, name):
        found, waiting = set(), [name]
        while waiting:
            header = waiting.pop()
            if header not in found:
                found.add(header)
                waiting += self.includes.get(header, ())
        return frozenset(found)

    def undeclared(self, code, included):
        """The names that the code uses and none of the included headers declares."""
        reached = set().union(*(self.reached(name) for name in included))
        code = re.sub(r'"[^"]*"|//.*', "", code)
        names = set(re.findall(r"(?<![\w.>])(\w+)\b", code))
        members = set(re.findall(r"(?:\.|->|\b[a-z]\w*\s+\*?)(\w+)\b", code))
        wrong = {name for name in names - members if name in self.declaring and not self.declaring[name] & reached}
        return sorted(wrong | {name for name in names if re.fullmatch(r"Q[A-Z]\w+", name) and name not in included})


def complaints(page, examples, headers):
    """What is wrong with the page, and how many blocks it has."""
    blocks = re.findall(r"^```cpp\n(.*?)^```", page, re.MULTILINE | re.DOTALL)
    found, included = [], set()
    for block in blocks:
        if not any(is_in(block, example) for example in examples):
            found.append(f"no example holds this code:\n{block}")
        included |= set(re.findall(r'^#include [<"]([^>"]+)[>"]', block, re.MULTILINE))
        for name in headers.undeclared(block, included):
            found.append(f"no header that the page includes declares {name}, in this code:\n{block}")
    return found, len(blocks)


def texts_below(root, folder, endings):
    texts = {}
    for place, _, names in os.walk(os.path.join(root, folder)):
        for name in names:
            if name.endswith(endings):
                path = os.path.join(place, name)
                with open(path, encoding="utf-8") as file:
                    texts[os.path.relpath(path, root)] = file.read()
    return texts


def main(root):
    examples = list(texts_below(root, "examples", (".h", ".cpp")).values())
    headers = Headers(texts_below(root, "tessaluna", ".h"))
    pages = texts_below(root, "docs", ".md")
    with open(os.path.join(root, "README.md"), encoding="utf-8") as file:
        pages["README.md"] = file.read()
    failed = False
    for name in sorted(pages):
        found, count = complaints(pages[name], examples, headers)
        for complaint in found:
            print(f"{name}: {complaint}")
        failed = failed or bool(found) or (name in ("README.md", "docs/guide.md") and not count)
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1]))
