#!/usr/bin/env python3
"""The C++ that the README and the pages in docs/ show is code of the examples, which every build compiles:
readmeExamples.py SOURCE_FOLDER"""
import os
import re
import sys


def missing(page, examples):
    """The code blocks of the page that stand in none of the texts, and how many it has."""
    blocks = re.findall(r"^```cpp\n(.*?)^```", page, re.MULTILINE | re.DOTALL)
    return [block for block in blocks if not any(block in example for example in examples)], len(blocks)


def main(root):
    def read(*names):
        with open(os.path.join(root, *names), encoding="utf-8") as file:
            return file.read()

    examples = [read(folder, name) for folder, _, names in os.walk(os.path.join(root, "examples"))
                for name in names if name.endswith(".cpp")]
    pages = ["README.md"] + [os.path.join("docs", name) for name in sorted(os.listdir(os.path.join(root, "docs")))
                             if name.endswith(".md")]
    failed = False
    for name in pages:
        wrong, count = missing(read(name), examples)
        for block in wrong:
            print(f"{name}: no example holds this code:\n{block}")
        failed = failed or bool(wrong) or (name == "README.md" and not count)
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1]))
