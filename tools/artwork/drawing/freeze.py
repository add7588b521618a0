#!/usr/bin/env python3
"""Writes the listings that the library compiles: freeze.py FAMILY, or freeze.py --check [FAMILY].

Refuses to write a family if one of its drawings fails its check. With --check writes nothing and exits non-zero when a
header differs from what would be written.
"""
import sys

from check import faults_of
from families import ROOT, drawings_of, family_names, header_of, identifier

WIDTH = 110


def header_text(family, drawings):
    lines = [f"// Made by tools/artwork/drawing/freeze.py from {family}.py. Change the drawing there, then run it again.",
             "#pragma once", '#include "tessaluna/uikit/stylekit/Listing.h"', "namespace TessalunaUIKit::listings {"]
    for drawing in drawings:
        lines += ["", f"inline constexpr auto {identifier(drawing.name)} = listing<"]
        subpaths = drawing.listed_subpaths()
        for n, (name, role, parts) in enumerate(subpaths):
            suffix = "" if role in name else f", {role}"
            lines.append(f"    // {name}{suffix}")
            last = n == len(subpaths) - 1
            pieces = [part + ("" if last and part == "Z" else ", ") for part in parts]
            lines += literals(pieces, last)
    lines += ["", "}  // namespace TessalunaUIKit::listings"]
    return "\n".join(lines) + "\n"


def literals(pieces, last):
    """String literals of whole segments, none of them wider than the width."""
    result, text = [], ""
    for piece in pieces:
        if text and len(text) + len(piece) + 8 > WIDTH:
            result.append(f'    "{text}"')
            text = ""
        text += piece
    result.append(f'    "{text}"')
    if last:
        result[-1] += ">;"
    return result


def main():
    arguments = sys.argv[1:]
    check = "--check" in arguments
    families = [a for a in arguments if a != "--check"] or (family_names() if check else [])
    if not families:
        raise SystemExit(__doc__)
    failed = False
    for family in families:
        drawings = drawings_of(family)
        faults = [f"{d.name}: {fault}" for d in drawings for fault in faults_of(d)]
        for fault in faults:
            print(fault, file=sys.stderr)
        path, text = header_of(family), header_text(family, drawings)
        shown = path.relative_to(ROOT)
        if check:
            same = path.exists() and path.read_text() == text
            if not same:
                print(f"{shown} is not what {family}.py draws; run freeze.py {family}", file=sys.stderr)
            failed |= not same or bool(faults)
        elif faults:
            print(f"{shown} is left as it was", file=sys.stderr)
            failed = True
        else:
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(text)
            print(f"{shown}: {len(drawings)} listings")
    sys.exit(1 if failed else 0)


if __name__ == "__main__":
    main()
