#!/usr/bin/env python3
"""Links and pictures of the pages lead to files and headings that exist: pageLinks.py SOURCE_FOLDER, or to see the pages of a
built site: pageLinks.py SOURCE_FOLDER SITE_FOLDER"""
import html
import os
import re
import sys
import urllib.parse

# Anchors that doxygen makes up; it links to some that it leaves out.
GENERATED = re.compile("nested-classes|a[0-9a-f]{32}")
PAGES = ["README.md", "CONTRIBUTING.md", "CHANGELOG.md", "docs"]


def anchor(heading):
    return re.sub(r"[^\w -]", "", heading.strip().lower()).replace(" ", "-")


def page_targets(text):
    """What a page links to, and the names that links can lead to in it; code is left out."""
    text = re.sub(r"^```.*?^```", "", text, flags=re.MULTILINE | re.DOTALL)
    text = re.sub(r"`[^`\n]*`", "", text)
    return re.findall(r"\]\(([^)\s]+)\)", text), {anchor(line) for line in re.findall(r"^#+ (.+)$", text, re.MULTILINE)}


def site_targets(text):
    found = re.findall(r"""<(?:a|img|link|script)\b[^>]*?\b(?:href|src)=["']([^"']+)["']""", text)
    return [html.unescape(each) for each in found], set(re.findall(r"""\b(?:id|name)=["']([^"']+)["']""", text))


def broken(files, targets):
    """The links of the files, by name, that lead nowhere. Links to other hosts are not followed."""
    known = {os.path.normpath(name): targets(text) for name, text in files.items()}
    for name, (links, _) in sorted(known.items()):
        for link in links:
            parsed = urllib.parse.urlparse(link)
            if parsed.scheme or link.startswith("//"):
                continue
            path = os.path.normpath(os.path.join(os.path.dirname(name), urllib.parse.unquote(parsed.path))) if parsed.path else name
            if not os.path.exists(path):
                yield f"{name}: {link} does not exist"
            elif parsed.fragment and not GENERATED.fullmatch(parsed.fragment) and path in known and urllib.parse.unquote(parsed.fragment) not in known[path][1]:
                yield f"{name}: {link} is not a heading there"


def read(folder, ending):
    names = [folder] if os.path.isfile(folder) else [os.path.join(place, name) for place, _, names in os.walk(folder)
                                                     for name in names if name.endswith(ending)]
    files = {}
    for name in names:
        with open(name, encoding="utf-8") as file:
            files[name] = file.read()
    return files


def main(root, site=None):
    files = {}
    for page in [site] if site else [os.path.join(root, page) for page in PAGES]:
        files.update(read(page, ".html" if site else ".md"))
    wrong = list(broken(files, site_targets if site else page_targets))
    print("\n".join(wrong) if wrong else f"{len(files)} pages")
    return 1 if wrong or not files else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
