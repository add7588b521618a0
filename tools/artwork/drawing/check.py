#!/usr/bin/env python3
"""Checks drawings by their frozen numbers: check.py [FAMILY [PICTURE ...]]. Exits non-zero when one fails.

Everything is measured on the listing as it will be written, read back.
"""
import math
import sys

from drawing import HOLE, parse_listing
from families import drawings_of, family_names
from geometry import Curve, Line, angle_between, box_of, unit


def faults_of(drawing):
    """A list of sentences, empty when all is well."""
    faults = []
    names = [s.name for s in drawing.subpaths]
    roles = [s.role for s in drawing.subpaths]
    paths = [p.mapped(drawing.from_frame) for p in parse_listing(drawing.listing())]
    for path in paths:
        assert abs(path.segments[-1].end - path.segments[0].start) < 1e-6
    faults += count_faults(drawing)
    faults += extent_faults(drawing, names, paths)
    faults += winding_faults(drawing, names, roles, paths)
    for name, path in zip(names, paths):
        faults += segment_faults(drawing, name, path)
    if not drawing.allowed.get("doubled"):
        faults += doubled_faults(drawing, names, paths)
    return faults


def counts_of(drawing):
    lines = curves = 0
    for subpath in drawing.subpaths:
        lines += drawing.count(Line, subpath)
        curves += drawing.count(Curve, subpath)
    return {"subpaths": len(drawing.subpaths), "lines": lines, "curves": curves}


def count_faults(drawing):
    return [f"{reached} {what}, {drawing.wanted[what]} are required"
            for what, reached in counts_of(drawing).items() if drawing.wanted.get(what) not in (None, reached)]


def extent_of(paths):
    return box_of([p for path in paths for s in path.segments for p in s.box_points()])


def extent_faults(drawing, names, paths):
    faults = []
    tolerance = drawing.wanted.get("tolerance", 0.5)

    def compare(what, wanted, reached):
        for side, a, b in zip(("x from", "x to", "y from", "y to"), wanted, reached):
            if abs(a - b) > tolerance + 1e-6:
                faults.append(f"{what}: {side} {b:.2f}, required {a:g}")

    if "extent" in drawing.wanted:
        compare("extent", drawing.wanted["extent"], extent_of(paths))
    for name, wanted in drawing.wanted.get("extents", {}).items():
        compare(name, wanted, extent_of([p for n, p in zip(names, paths) if n == name]))
    return faults


def winding_faults(drawing, names, roles, paths):
    """All outlines run one way and all holes the other; just inside an outline is paint, just inside a hole is none."""
    faults = []
    scale = min(drawing.canvas) / 200
    for name, role, path in zip(names, roles, paths):
        left = path.area() > 0
        if left != ((role == HOLE) == (drawing.outlines_direction == "clockwise")):
            faults.append(f"{name}: wound the wrong way for a {role}")
        if role != HOLE:
            continue
        inner = path.segments[0].at(0.5)
        inward = path.segments[0].direction(0.5) * (1j if left else -1j)
        inside, outside = inner + inward * 0.1 * scale, inner - inward * 0.1 * scale
        if sum(p.winding(inside) for p in paths) != 0:
            faults.append(f"{name}: the hole is not open")
        if sum(p.winding(outside) for p in paths) == 0:
            faults.append(f"{name}: the hole is outside the painted area")
    return faults


def segment_faults(drawing, name, path):
    faults = []
    scale = min(drawing.canvas) / 200
    shortest = drawing.allowed.get("shortest", 0.4 * scale)
    low, high = drawing.allowed.get("kink", (0.7, 9))
    count = len(path.segments)

    def place(p):
        return f"{name} at ({p.real:.2f}, {p.imag:.2f})"

    for i, segment in enumerate(path.segments):
        following = path.segments[(i + 1) % count]
        if segment.length() < shortest:
            faults.append(f"{place(segment.start)}: a segment {segment.length():.3f} points long")
            continue
        turn = math.degrees(abs(angle_between(segment.direction(1), following.direction(0))))
        if low < turn < high:
            faults.append(f"{place(segment.end)}: a joint {turn:.1f} degrees off smooth")
        if turn > drawing.allowed.get("turn", 170):
            faults.append(f"{place(segment.end)}: the outline turns back on itself")
        if isinstance(segment, Line) and isinstance(following, Line) and turn < 0.2:
            faults.append(f"{place(segment.end)}: a node in the middle of a straight side")
        if isinstance(segment, Curve) and not drawing.allowed.get("straight_curves"):
            if math.degrees(segment.turning()) < 0.7:
                faults.append(f"{place(segment.start)}: a curve that is straight")
    box = path.bounds()
    speck = drawing.allowed.get("speck", 6 * scale * scale)
    if abs(path.area()) < speck or min(box[1] - box[0], box[3] - box[2]) < 1 * scale:
        faults.append(f"{name}: a speck of {abs(path.area()):.2f} square points")
    return faults


def doubled_faults(drawing, names, paths):
    """No piece of an outline lies on another."""
    scale = min(drawing.canvas) / 200
    entries = []
    for index, path in enumerate(paths):
        for segment in path.segments:
            entries.append((index, segment, box_of(segment.points())))
    faults = []
    reach = 0.08 * scale
    for n, (index, segment, _) in enumerate(entries):
        at, direction = segment.at(0.5), segment.direction(0.5)
        for m, (other_index, other, box) in enumerate(entries):
            if m == n or not (box[0] - reach <= at.real <= box[1] + reach and box[2] - reach <= at.imag <= box[3] + reach):
                continue
            places = [other.at(k / 40) for k in range(41)] if isinstance(other, Curve) else [nearest_on(other, at)]
            near = min(places, key=lambda p: abs(p - at))
            t = places.index(near) / 40 if isinstance(other, Curve) else 0
            if t in (0, 1) and isinstance(other, Curve):
                continue
            if abs(near - at) < reach + other.length() / 80 * isinstance(other, Curve):
                across = abs((near - at).real * -direction.imag + (near - at).imag * direction.real)
                parallel = abs(math.sin(angle_between(direction, other.direction(t)))) < 0.02
                if across < reach and parallel:
                    faults.append(f"{names[index]} runs along {names[other_index]} at ({at.real:.2f}, {at.imag:.2f})")
    return faults


def nearest_on(line, p):
    along = line.end - line.start
    t = ((p - line.start).real * along.real + (p - line.start).imag * along.imag) / abs(along) ** 2
    return line.at(min(1, max(0, t)))


def report(drawing):
    counts = counts_of(drawing)
    paths = [p.mapped(drawing.from_frame) for p in parse_listing(drawing.listing())]
    extent = ", ".join(f"{v:.2f}" for v in extent_of(paths))
    return f"{drawing.name}: {counts['subpaths']} subpaths, {counts['lines']} lines, {counts['curves']} curves, ({extent})"


def main():
    families = sys.argv[1:2] or family_names()
    failed = False
    for family in families:
        for drawing in drawings_of(family):
            if sys.argv[2:] and drawing.name not in sys.argv[2:]:
                continue
            print(report(drawing))
            for fault in faults_of(drawing):
                print(f"  {fault}")
                failed = True
    sys.exit(1 if failed else 0)


if __name__ == "__main__":
    main()
