#!/usr/bin/env python3
"""Compares the lines that stop a program, as docs/mistakes.md lists them, with those of the sources: mistakesPage.py SOURCE_FOLDER

In the page, "…" is what a line says of the case at hand. Exits with 1 and one line for each difference.
"""
import pathlib
import re
import sys

CALL = re.compile(r"\b(?:stopProgram|platform::stopProgram)\(")
STRING = re.compile(r'"((?:[^"\\]|\\.)*)"')
LISTED = re.compile(r"^- `(.*)`$", re.MULTILINE)


def argument(text, start):
    """What is between the parenthesis before `start` and the one that closes it."""
    depth, place = 1, start
    while depth:
        string = STRING.match(text, place)
        if string:
            place = string.end()
            continue
        depth += {"(": 1, ")": -1}.get(text[place], 0)
        place += 1
    return text[start : place - 1]


def line_of(expression):
    """The literals of an expression, with "…" for what is computed between them."""
    parts, place = [], 0
    for string in STRING.finditer(expression):
        if expression[place : string.start()].strip(" \n+"):
            parts.append("…")
        parts.append(re.sub(r'\\(["\\])', r"\1", string.group(1)))
        place = string.end()
    if expression[place:].strip(" \n+"):
        parts.append("…")
    return "".join(parts)


def lines_of_sources(root):
    lines = {}
    for path in sorted((root / "tessaluna").rglob("*")):
        if path.suffix not in (".h", ".cpp"):
            continue
        text = path.read_text()
        for call in CALL.finditer(text):
            expression = argument(text, call.end())
            # Not the function's own declaration and definition.
            if expression != "std::string_view report":
                lines[line_of(expression)] = path.relative_to(root)
    return lines


def main():
    root = pathlib.Path(sys.argv[1])
    written = lines_of_sources(root)
    listed = set(LISTED.findall((root / "docs" / "mistakes.md").read_text()))
    wrong = [f"docs/mistakes.md does not list, of {path}: {line}" for line, path in written.items() if line not in listed]
    wrong += [f"docs/mistakes.md lists what no source says: {line}" for line in sorted(listed - set(written))]
    if not written:
        wrong.append("no source stops a program")
    print("\n".join(wrong))
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
