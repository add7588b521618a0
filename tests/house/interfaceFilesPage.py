#!/usr/bin/env python3
"""Compares docs/interface-files.md with the sources: interfaceFilesPage.py SOURCE_FOLDER

Each class that an interface file may name, or that such a class derives from, has one row with its base, the keys that its header
names, and its outlets, inner objects and properties; each enumeration has its names. Exits with 1 and one line for each difference.
"""
import pathlib
import re
import sys

CLASS = re.compile(r'const ClassInfo (\w+)::staticClassInfo\{\s*\.name = "([^"]+)",\s*\.base = &(\w+)::')
ENTRY = re.compile(r'\b(outlet|innerObject|property)<&(\w+)::\w+(?:, "(\w+)">|>\("(\w+)")')
REGISTERED = re.compile(r"registryOf<([^>]+)>\(\)|registerClass<(\w+)>\(\)")
# The comment at the constructor from a coder: keys, and the objects among them.
KEYS = re.compile(r"// Keys?[^:\n]*:((?:[^\n]*\n *//)*?[^\n]*?\.)(?= |\n)")
IN_PARENTHESES = re.compile(r"\([^)]*\)")
ENUM = re.compile(r"struct EnumNames<(\w+)> \{(.*?)\n\};", re.DOTALL)
NAMED = re.compile(r'\{"(\w+)",')
ROW = re.compile(r"^\| `([\w.]+)` \|(.*)\|$", re.MULTILINE)
CODE = re.compile(r"`([^`]+)`")


def classes_of(root):
    """By class: its name in files, its base, and the names in its tables."""
    infos, entries, registered, keys, enums = {}, {}, set(), {}, {}
    for path in sorted((root / "tessaluna").rglob("*")):
        if path.suffix not in (".h", ".cpp"):
            continue
        text = path.read_text(encoding="utf-8")
        for name, shown, base in CLASS.findall(text):
            infos[name] = (shown, base)
        for kind, owner, property_name, other_name in ENTRY.findall(text):
            entries.setdefault(owner, {}).setdefault(kind, set()).add(property_name or other_name)
        for several, one in REGISTERED.findall(text):
            registered.update(re.findall(r"\w+", several) or [one])
        if path.suffix == ".h":
            for found in KEYS.findall(text):
                keys.setdefault(path.stem, set()).update(re.findall(r'"(\w+)"', IN_PARENTHESES.sub("", found)))
            for name, values in ENUM.findall(text):
                enums[name] = NAMED.findall(values)
    wanted = set()
    for name in registered & set(infos):
        while name in infos:
            wanted.add(name)
            name = infos[name][1]
    shown = {}
    for name in wanted:
        if name not in registered and name not in entries:
            continue
        base = infos[name][1]
        while base in infos and base not in registered and base not in entries:
            base = infos[base][1]
        own = entries.get(name, {})
        shown[infos[name][0]] = (
            infos[base][0] if base in infos else "",
            keys.get(name, set()) - own.get("innerObject", set()),
            own.get("outlet", set()) | own.get("innerObject", set()),
            own.get("property", set()),
        )
    return shown, enums


def main():
    root = pathlib.Path(sys.argv[1])
    classes, enums = classes_of(root)
    page = (root / "docs" / "interface-files.md").read_text(encoding="utf-8")
    rows = {name: cells.split("|") for name, cells in ROW.findall(page)}
    wrong = []
    for name, expected in sorted({**classes, **{enum: (names,) for enum, names in enums.items()}}.items()):
        if name not in rows:
            wrong.append(f"docs/interface-files.md: {name} is missing")
            continue
        for cell, names in zip(rows[name], expected):
            listed = CODE.findall(cell)
            missing = set([names] if isinstance(names, str) and names else names) ^ set(listed)
            if missing:
                wrong.append(f"docs/interface-files.md: {name}: {', '.join(sorted(missing))} is in the page or in the sources only")
    wrong += [f"docs/interface-files.md: {name} is not in the sources" for name in sorted(set(rows) - set(classes) - set(enums))]
    if not classes or not enums:
        wrong.append("no classes were found: this check does not read the sources any more")
    print("\n".join(wrong))
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
