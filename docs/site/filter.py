#!/usr/bin/env python3
"""Prints a header or a page as doxygen wants to read it: filter.py FILE

The project's headers have plain comments: what is said before a declaration, or after it on its line, is its contract, and the
comment at the head of a file is about the class that the file is named after, or about the file. In pages, headings get names that
are unique in the site, and links and pictures lead to where they are there.
"""
import os
import re
import sys


def text(comment):
    """The words of a comment, without what doxygen would take for commands; code in backticks is left alone."""
    parts = re.split(r"(`[^`]*`)", comment)
    return "".join(part if part.startswith("`") else re.sub(r"([\\@<>#&%])", r"\\\1", part) for part in parts)


def block(lines):
    """A comment of several lines for doxygen; what is indented by two or more is code."""
    result, is_code = [], False
    for line in lines:
        wants_code = bool(re.match(r"\s{2,}\S", line))
        if wants_code != is_code and (wants_code or line.strip()):
            result.append("///" + (" @code{.cpp}" if wants_code else " @endcode"))
            is_code = wants_code
        result.append("/// " + line.strip() if is_code else "///" + text(line))
    if is_code:
        result.append("/// @endcode")
    return result


def comment_of(line):
    match = re.match(r"\s*//(.*)$", line)
    return None if match is None else match[1].rstrip()


def filtered(lines, name):
    head = []
    rest = list(lines)
    while rest and comment_of(rest[0]) is not None:
        head.append(comment_of(rest.pop(0)))
    declaration = re.compile(rf"^\s*(class|struct) {re.escape(name)}\b[^;]*$")
    has_class = any(declaration.match(line) for line in rest)
    result = [] if has_class or not head else ["/// @file", *block(head)]
    pending = []
    for line in rest:
        comment = comment_of(line)
        if comment is not None:
            pending.append(comment)
            continue
        if has_class and head and declaration.match(line):
            pending, head = head + ([""] + pending if pending else []), []
        # A comment before an empty line is about what follows in general.
        if pending and line.strip():
            result += block(pending)
        pending = []
        before, mark, after = line.partition("  // ")
        result.append(f"{before}  ///< {text(after)}" if mark and before.strip() and before.rstrip()[-1] in ";,{}" else line)
    return result


def anchor(heading):
    return re.sub(r"[^\w -]", "", heading.strip().lower()).replace(" ", "-")


def label(name, heading):
    """What a heading of a page is called, which no other page's heading is."""
    return f"{name.lower()}-{anchor(heading)}"


def link(match, name):
    """A link or picture of a page as it is in the site, where all pages are in one folder and docs/images, examples and tools are below."""
    mark, words, target = match.groups()
    path, _, heading = target.partition("#")
    path = re.sub(r"^(\.\./|docs/)+", "", path)
    if mark:
        return f'<img src="{path}" alt="{words}" style="max-width: 100%"/>'
    if heading:
        return f"[{words}](@ref {label(os.path.splitext(os.path.basename(path))[0] or name, heading)})"
    return f'<a href="{path}">{words}</a>' if path.startswith(("examples/", "tools/")) else match[0]


def page(lines, name):
    result, is_code = [], False
    for line in lines:
        is_code ^= line.startswith("```")
        if not is_code:
            line = re.sub(r"(!?)\[([^]]*)\]\(([^)\s:]+)\)", lambda match: link(match, name), line)
            if line.startswith("##"):
                line = f"{line} {{#{label(name, line.lstrip('#'))}}}"
        result.append(line)
    return result


def main():
    with open(sys.argv[1], encoding="utf-8") as file:
        lines = file.read().splitlines()
    name, ending = os.path.splitext(os.path.basename(sys.argv[1]))
    print("\n".join(page(lines, name) if ending == ".md" else filtered(lines, name)))


if __name__ == "__main__":
    main()
