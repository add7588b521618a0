#!/usr/bin/env python3
"""The manual pages name every option that the programs name in their help: manualPages.py SOURCE_FOLDER PROGRAM..."""
import os
import re
import subprocess
import sys


def options(text):
    return set(re.findall(r"(?<![\w-])--?[a-z][a-z-]*", text))


def main(root, programs):
    failed = False
    for program in programs:
        name = os.path.basename(program)
        text = subprocess.run([program, "--help"], check=True, capture_output=True, text=True).stdout
        with open(os.path.join(root, "packaging", "man", name + ".1"), encoding="utf-8") as file:
            page = re.sub(r'^\.(RB|RI|IR|BR|BI|B|I) ', "", file.read().replace("\\-", "-"), flags=re.MULTILINE)
        asked = options(text)
        missing = sorted(asked - options(page))
        if missing or not asked:
            print(f"{name}: its manual page does not name {', '.join(missing) or 'anything, nor does its help'}")
            failed = True
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1], sys.argv[2:]))
