#!/usr/bin/env python3
"""Shows drawings: preview.py FAMILY [PICTURE ...] [--zoom N] [--nodes] [--sizes 24,48,200] [--out FILE.png]
       preview.py FAMILY [PICTURE ...] --changes [--zoom N] [--out FILE.png]

Each picture has a row with all sizes (in points), on a light and on a dark background. Writes an SVG and, if
rsvg-convert is installed, a PNG beside it; without --out under build/artwork-preview/.
A picture of several paths is several drawings: those with the same name up to a "__" are painted over each other.

With --changes each picture that is no longer as it was last committed is shown once, before and now over each other: what
stays is dark, what is gone is orange, what is new is blue.
"""
import argparse
import pathlib
import re
import shutil
import subprocess

from drawing import parse_listing
from families import ROOT, drawings_of, header_of, identifier
from geometry import Curve, Line

GROUNDS = (("#ffffff", "#000000"), ("#26282b", "#ffffff"))
GONE, NEW = "#ff4800", "#0090ff"  # multiplied they are almost black
CHANGES_SIZE = 400


def svg_path(drawing, listing=None):
    parts = []
    for path in parse_listing(drawing.listing() if listing is None else listing):
        path = path.mapped(drawing.from_frame)
        parts.append("M%.4f %.4f" % xy(path.segments[0].start))
        for s in path.segments:
            if isinstance(s, Line):
                parts.append("L%.4f %.4f" % xy(s.end))
            else:
                parts.append("C%.4f %.4f %.4f %.4f %.4f %.4f" % (xy(s.control1) + xy(s.control2) + xy(s.end)))
        parts.append("Z")
    return "".join(parts)


def xy(p):
    return p.real, p.imag


def node_marks(drawing):
    marks = []
    for path in parse_listing(drawing.listing()):
        path = path.mapped(drawing.from_frame)
        for s in path.segments:
            color = "#e02020" if isinstance(s, Curve) else "#2060ff"
            marks.append(f'<circle cx="{s.end.real:.3f}" cy="{s.end.imag:.3f}" r="0.8" fill="{color}"/>')
    return "".join(marks)


def rows_of(drawings):
    rows = {}
    for drawing in drawings:
        rows.setdefault(drawing.name.split("__")[0], []).append(drawing)
    return list(rows.values())


def sheet(drawings, sizes, nodes):
    gap, rows = 12, rows_of(drawings)
    tallest = max(sizes)
    width = 2 * (sum(sizes) + gap * (len(sizes) + 1))
    height = len(rows) * (tallest + gap) + gap
    out = [f'<svg xmlns="http://www.w3.org/2000/svg" width="{width}" height="{height}">']
    for half, (ground, ink) in enumerate(GROUNDS):
        left = half * width / 2
        out.append(f'<rect x="{left}" y="0" width="{width / 2}" height="{height}" fill="{ground}"/>')
        for row, layers in enumerate(rows):
            x = left + gap
            canvas = layers[0].canvas
            for size in sizes:
                scale = size / max(canvas)
                y = gap + row * (tallest + gap) + (tallest + canvas[1] * scale) / 2
                # y grows upward on the canvas and downward in SVG.
                out.append(f'<g transform="matrix({scale} 0 0 {-scale} {x} {y})">')
                out += [f'<path fill="{ink}" d="{svg_path(d)}"/>' for d in layers]
                if nodes and size == tallest:
                    out += [node_marks(d) for d in layers]
                out.append("</g>")
                x += size + gap
    return "\n".join(out + ["</svg>"]) + "\n"


def committed_listings(family):
    """The listings of the family's header by their identifiers, as they were last committed."""
    header = header_of(family).relative_to(ROOT).as_posix()
    shown = subprocess.run(["git", "show", f"HEAD:{header}"], cwd=ROOT, capture_output=True, text=True)
    if shown.returncode:
        raise SystemExit(f"preview.py: no committed {header} to compare with: {shown.stderr.strip()}")
    return {name: "".join(re.findall('"(.*?)"', body))
            for name, body in re.findall(r"constexpr auto (\w+) = listing<(.*?)>;", shown.stdout, re.DOTALL)}


def changes_sheet(drawings, before):
    """Every picture of which a path changed, or nothing if there is none."""
    gap = 12
    rows = [layers for layers in rows_of(drawings)
            if any(d.listing() != before.get(identifier(d.name)) for d in layers)]
    if not rows:
        return None
    width, height = CHANGES_SIZE + 2 * gap, gap + len(rows) * (CHANGES_SIZE + gap)
    out = [f'<svg xmlns="http://www.w3.org/2000/svg" width="{width}" height="{height}">',
           f'<rect width="{width}" height="{height}" fill="#ffffff"/>']
    for row, layers in enumerate(rows):
        canvas = layers[0].canvas
        scale = CHANGES_SIZE / max(canvas)
        y = gap + row * (CHANGES_SIZE + gap) + (CHANGES_SIZE + canvas[1] * scale) / 2
        for color, listing_of in ((GONE, lambda d: before.get(identifier(d.name), "")), (NEW, lambda d: d.listing())):
            out.append(f'<g style="mix-blend-mode:multiply" transform="matrix({scale} 0 0 {-scale} {gap} {y})">')
            out += [f'<path fill="{color}" d="{svg_path(d, listing_of(d))}"/>' for d in layers]
            out.append("</g>")
    return "\n".join(out + ["</svg>"]) + "\n"


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("family")
    parser.add_argument("pictures", nargs="*")
    parser.add_argument("--zoom", type=float, default=1)
    parser.add_argument("--nodes", action="store_true")
    parser.add_argument("--changes", action="store_true")
    parser.add_argument("--sizes", default="24,48,200")
    parser.add_argument("--out", type=pathlib.Path)
    options = parser.parse_args()
    drawings = [d for d in drawings_of(options.family)
                if not options.pictures or d.name in options.pictures or d.name.split("__")[0] in options.pictures]
    if not drawings:
        raise SystemExit(f"{options.family} has no such picture")
    if options.changes:
        content = changes_sheet(drawings, committed_listings(options.family))
        if content is None:
            print("nothing changed")
            return
    else:
        content = sheet(drawings, [int(s) for s in options.sizes.split(",")], options.nodes)
    png = options.out or ROOT / "build" / "artwork-preview" / f"{options.family}{'-changes' * options.changes}.png"
    png.parent.mkdir(parents=True, exist_ok=True)
    svg = png.with_suffix(".svg")
    svg.write_text(content)
    print(svg)
    if shutil.which("rsvg-convert"):
        subprocess.run(["rsvg-convert", "--zoom", str(options.zoom), "-o", png, svg], check=True)
        print(png)


if __name__ == "__main__":
    main()
