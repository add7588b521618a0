#!/usr/bin/env python3
"""A small player takes few lines for each concern: playerLines.py FOLDER

The lines of examples/player between "// region: CONCERN" and "// end" are counted, without blank ones."""
import collections
import os
import re
import sys

LIMITS = {"toolbar": 12, "search field": 10, "track table": 15, "transport bar": 10, "theme": 3}


def count(text, lines):
    """Adds the lines of each region of the text to the counter; a region that has no end is an error."""
    concern = None
    for line in text.splitlines():
        start = re.fullmatch(r"\s*// region: (.+)", line)
        if start:
            assert concern is None, f"region {start[1]} is in region {concern}"
            concern = start[1]
        elif line.strip() == "// end":
            assert concern is not None, "an end without a region"
            concern = None
        elif concern is not None and line.strip():
            lines[concern] += 1
    assert concern is None, f"region {concern} has no end"


def main(folder):
    lines = collections.Counter()
    for name in sorted(os.listdir(folder)):
        if name.endswith((".h", ".cpp")):
            with open(os.path.join(folder, name), encoding="utf-8") as file:
                count(file.read(), lines)
    for concern in sorted(set(LIMITS) | set(lines)):
        print(f"{concern}: {lines[concern]} lines, at most {LIMITS.get(concern)}")
    return 0 if set(lines) == set(LIMITS) and all(lines[each] <= LIMITS[each] for each in LIMITS) else 1


if __name__ == "__main__":
    sys.exit(main(sys.argv[1]))
