#!/usr/bin/env python3
"""Joins sources of tests, so that headers that many of them include are read once: batches.py ROOT FOLDER SIZE source...

Writes batches of about SIZE sources of one folder each to FOLDER, and prints what is compiled in place of the sources,
separated by semicolons. In a batch all includes come first, and then the text of each source in a namespace of its own, so that
sources may use the same names. A source is compiled alone if it is not a test by its name, if it has a header of its own, or if
it adds to a namespace that it shares with others.
"""
import pathlib
import re
import sys

INCLUDE = re.compile(r"#include ")
# What must stay in the namespace where it is written, or is seen by what comes after it.
SHARED = re.compile(r"#define |template <>|extern \"C\"|int main\(|namespace (std|testing)\b|void PrintTo\(")
NAMED = re.compile(r"namespace ([A-Za-z_][A-Za-z_0-9:]*) \{$")


class Source:
    """A source as a batch holds it."""

    def __init__(self, path):
        self.path = path
        self.lines = path.read_text().splitlines()
        last = max((i for i, line in enumerate(self.lines) if INCLUDE.match(line)), default=-1)
        self.includes = [line for line in self.lines[: last + 1] if line.startswith("#")]
        self.first = last + 1
        self.body = self.lines[self.first :]
        opened = [match.group(1) for match in map(NAMED.match, self.body) if match]
        code = [line for line in self.body if line and not line.startswith("//")]
        self.namespace = ""
        is_test = path.name.endswith("Test.cpp") and not path.with_suffix(".h").exists()
        is_plain = all(INCLUDE.match(line) for line in self.includes) and not any(SHARED.search(line) for line in self.lines)
        self.is_joined = is_test and is_plain
        if opened:
            # One namespace around all of it.
            self.namespace = opened[0]
            whole = code[0] == f"namespace {self.namespace} {{" and code[-1] == f"}}  // namespace {self.namespace}"
            self.is_joined = self.is_joined and len(opened) == 1 and whole

    def text(self, root):
        """What another file must not see is in a namespace without a name, as compilers ask of a file that is included."""
        relative = self.path.relative_to(root)
        name = re.sub(r"\W", "_", str(relative))
        before = f"namespace {{\nnamespace {name} {{\n"
        after = f"}}  // namespace {name}\n}}  // namespace\n"
        lines = list(self.body)
        if self.namespace:
            first, last = f"namespace {self.namespace} {{", f"}}  // namespace {self.namespace}"
            before = f"{first}\n{before}"
            after = f"{after}{last}\n"
            lines[lines.index(first)] = ""
            lines[len(lines) - 1 - lines[::-1].index(last)] = ""
        return f'{before}#line {self.first + 1} "{relative}"\n' + "\n".join(lines) + f"\n{after}"


def write(path, text):
    """Nothing is compiled again that did not change."""
    if not path.exists() or path.read_text() != text:
        path.write_text(text)


def main():
    root, folder, size = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2]), int(sys.argv[3])
    folder.mkdir(parents=True, exist_ok=True)
    compiled = []
    waiting = {}
    for path in map(pathlib.Path, sys.argv[4:]):
        source = Source(path)
        if source.is_joined:
            waiting.setdefault(path.parent, []).append(source)
        else:
            compiled.append(str(path))
    for parent, sources in waiting.items():
        count = -(-len(sources) // size)
        for number in range(count):
            batch = sources[number::count]
            includes = list(dict.fromkeys(line for source in batch for line in source.includes))
            path = folder / (re.sub(r"\W", "_", str(parent.relative_to(root))) + f"_{number}.cpp")
            write(path, "\n".join(includes) + "\n" + "".join(source.text(root) for source in batch))
            compiled.append(str(path))
    for path in folder.glob("*.cpp"):
        if str(path) not in compiled:
            path.unlink()
    print(";".join(compiled), end="")


main()
