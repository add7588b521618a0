#!/usr/bin/env python3
"""Checks docs/classes.md: classesPage.py SOURCE_FOLDER

Each class that TessalunaUIKit.h or TessalunaReady.h brings has one row there, whose page is in the gallery and whose test and
picture exist. Exits with 1 and one line for each mistake.
"""
import os
import re
import sys

NOT_CLASSES = {"Routines"}
ROW = re.compile(r"^\| `(\w+)` \| [^|]+ \| ([^|]+) \| `([^`]+)` \| !\[[^\]]*\]\(([^)]+)\) \|$", re.MULTILINE)


def read(*path):
    with open(os.path.join(*path), encoding="utf-8") as file:
        return file.read()


def mistakes(source):
    header = read(source, "tessaluna", "uikit", "TessalunaUIKit.h")
    header += read(source, "tessaluna", "ready", "TessalunaReady.h")
    # Headers of functions begin with a small letter.
    classes = set(re.findall(r'#include "tessaluna/(?:uikit|ready)/\w+/([A-Z]\w+)\.h"', header)) - NOT_CLASSES
    pages = set(re.findall(r'^    \{"([^"]+)",', read(source, "gallery", "Pages.cpp"), re.MULTILINE))
    if not classes or not pages:
        yield "no classes or no pages were found: this check does not read the sources any more"
    rows = ROW.findall(read(source, "docs", "classes.md"))
    named = [row[0] for row in rows]
    for missing in sorted(classes - set(named)):
        yield f"docs/classes.md: {missing} is missing"
    for name, page, test, picture in rows:
        if name not in classes:
            yield f"docs/classes.md: {name} is not a public class"
        if named.count(name) > 1:
            yield f"docs/classes.md: {name} is there twice"
        if page not in pages:
            yield f"docs/classes.md: {name} is on '{page}', which is not a page of the gallery"
        if not os.path.exists(os.path.join(source, "tests", test)):
            yield f"docs/classes.md: {name} has no test {test}"
        if not os.path.exists(os.path.join(source, "docs", picture)):
            yield f"docs/classes.md: {name} has no picture {picture}"


if __name__ == "__main__":
    found = list(mistakes(sys.argv[1]))
    print("\n".join(found))
    sys.exit(1 if found else 0)
