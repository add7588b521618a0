#!/usr/bin/env python3
"""The code in the README is the code of the examples, which every build compiles: readmeExamples.py SOURCE_FOLDER"""
import os
import re
import sys


def missing(readme, examples):
    """The code blocks of the README that stand in none of the texts."""
    blocks = re.findall(r"^```cpp\n(.*?)^```", readme, re.MULTILINE | re.DOTALL)
    return [block for block in blocks if not any(block in example for example in examples)], len(blocks)


def main(root):
    def read(*names):
        with open(os.path.join(root, *names), encoding="utf-8") as file:
            return file.read()

    examples = [read(folder, name) for folder, _, names in os.walk(os.path.join(root, "examples"))
                for name in names if name.endswith(".cpp")]
    wrong, count = missing(read("README.md"), examples)
    for block in wrong:
        print(f"README.md: no example holds this code:\n{block}")
    return 1 if wrong or not count else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1]))
