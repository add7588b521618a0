"""A picture as it will be frozen: a canvas, and subpaths in their order, each with a name and a role."""
import re

from geometry import Curve, Line, Path
from region import Ink

OUTLINE, HOLE = "outline", "hole"


class Subpath:
    def __init__(self, name, path, role, closing_line):
        self.name, self.path, self.role, self.closing_line = name, path, role, closing_line

    def ends_in_line(self):
        return isinstance(self.path.segments[-1], Line)

    def calls(self):
        """The segments to write; the close draws a last line that is left out."""
        segments = self.path.segments
        return segments[:-1] if self.ends_in_line() and not self.closing_line else segments


class Drawing:
    """`frame` is the rectangle (x, y, width, height) that the fractions refer to, by default the whole
    canvas. A picture with fixed offsets from the top left corner has frame=(0, 50, 1, -1) on a canvas 50 high."""

    def __init__(self, name, canvas=(200, 200), frame=None, outlines="counterclockwise"):
        self.name, self.canvas, self.frame = name, canvas, frame or (0, 0, canvas[0], canvas[1])
        self.outlines_direction = outlines
        self.subpaths, self.wanted, self.allowed = [], {}, {}

    # Construction

    def add(self, name, path, role=OUTLINE, start=None, closing_line=True):
        """An outline runs in the direction of all outlines of the drawing and a hole against it, whatever the path's direction."""
        left = (role == OUTLINE) == (self.outlines_direction == "counterclockwise")
        path = path.counterclockwise() if left else path.clockwise()
        if start is not None:
            path = path.starting_near(start)
        self.subpaths.append(Subpath(name, path, role, closing_line))
        return self

    def hole(self, name, path, start=None, closing_line=True):
        return self.add(name, path, HOLE, start, closing_line)

    def add_region(self, region, names=()):
        """All outlines and holes of a region or Ink; names in their order, else "outline" and "hole"."""
        paths = region.outlines() if isinstance(region, Ink) else region
        names = list(names) + [None] * len(paths)
        for path, name in zip(paths, names):
            role = OUTLINE if path.area() > 0 else HOLE
            self.add(name or role, path, role)
        return self

    def listing_of(self, name, text, role):
        """Adds a subpath whose numbers are given."""
        for path in parse_listing(text):
            made = path.mapped(self.from_frame)
            self.subpaths.append(Subpath(name, made, role, closing_line=True))
        return self

    # Fitting it to the requirements

    def fit_extents(self, left, right, bottom, top):
        """Moves and scales the whole, each axis by itself, so that the box of the curves is the one given."""
        x0, x1, y0, y1 = self.bounds()
        sx, sy = (right - left) / (x1 - x0), (top - bottom) / (y1 - y0)
        for subpath in self.subpaths:
            subpath.path = subpath.path.mapped(
                lambda p: complex(left + (p.real - x0) * sx, bottom + (p.imag - y0) * sy))
        return self

    def fit_counts(self, lines, curves):
        """Reaches the exact counts without touching the shape: the closing line of a subpath is left to the close,
        and several curves trace each of those that bulge most."""
        written = sum(self.count(Line, s) for s in self.subpaths)
        for subpath in self.subpaths:
            self.start_after_a_line(subpath)
        for subpath in self.subpaths:
            if written <= lines:
                break
            if subpath.ends_in_line() and subpath.closing_line:
                subpath.closing_line = False
                written -= 1
        if written != lines:
            raise ValueError(f"{self.name}: {written} lines cannot become {lines}")
        entries = [[subpath, i, segment, 1, segment.length() * segment.turning()]
                   for subpath in self.subpaths
                   for i, segment in enumerate(subpath.path.segments) if isinstance(segment, Curve)]
        if len(entries) > curves:
            raise ValueError(f"{self.name}: {len(entries)} curves are more than {curves}")
        for _ in range(curves - len(entries)):
            entry = max(entries, key=lambda e: e[4] / (e[3] * e[3]))
            entry[3] += 1
        for subpath in self.subpaths:
            pieces = {i: segment.pieces(n) for s, i, segment, n, _ in entries if s is subpath}
            segments = []
            for i, segment in enumerate(subpath.path.segments):
                segments += pieces.get(i, [segment])
            subpath.path = Path(segments)
        self.wanted.update(subpaths=self.wanted.get("subpaths"), lines=lines, curves=curves)
        return self

    def start_after_a_line(self, subpath):
        """A subpath that does not end in a line starts after its first line instead, so that the close may draw that line."""
        segments = subpath.path.segments
        if subpath.ends_in_line():
            return
        for i, segment in enumerate(segments):
            if isinstance(segment, Line):
                subpath.path = Path(segments[i + 1:] + segments[:i + 1])
                return

    @staticmethod
    def count(kind, subpath):
        return sum(isinstance(s, kind) for s in subpath.calls())

    def want(self, **numbers):
        """What the check requires: subpaths, lines, curves, extent=(x0, x1, y0, y1), tolerance of the extent in
        points, extents={subpath name: (x0, x1, y0, y1)}."""
        self.wanted.update(numbers)
        return self

    def allow(self, **limits):
        """Loosens a check of this drawing, with the reason in a comment beside the call: kink=(low, high) degrees,
        straight_curves=True, doubled=True, turn=degrees, shortest=points, speck=square points."""
        self.allowed.update(limits)
        return self

    # Results

    def bounds(self):
        boxes = [s.path.bounds() for s in self.subpaths]
        return (min(b[0] for b in boxes), max(b[1] for b in boxes), min(b[2] for b in boxes), max(b[3] for b in boxes))

    def to_frame(self, p):
        x, y, width, height = self.frame
        return complex((p.real - x) / width, (p.imag - y) / height)

    def from_frame(self, p):
        x, y, width, height = self.frame
        return complex(x + p.real * width, y + p.imag * height)

    def listed_subpaths(self):
        """The pieces of the listing of each subpath: [(name, role, ["M (..)", "L (..)", ..., "Z"])]."""
        return [(s.name, s.role, self.listed(s)) for s in self.subpaths]

    def listed(self, subpath):
        def pair(p):
            p = self.to_frame(p)
            return f"{number(p.real)}, {number(p.imag)}"

        parts = [f"M ({pair(subpath.path.segments[0].start)})"]
        for segment in subpath.calls():
            if isinstance(segment, Line):
                parts.append(f"L ({pair(segment.end)})")
            else:
                parts.append(f"C ({pair(segment.end)}; {pair(segment.control1)}; {pair(segment.control2)})")
        return parts + ["Z"]

    def listing(self):
        return ", ".join(part for _, _, parts in self.listed_subpaths() for part in parts)


def number(value):
    """The shortest form with five decimals at most."""
    text = f"{value:.5f}".rstrip("0").rstrip(".")
    return "0" if text in ("-0", "") else text


def parse_listing(text):
    """The paths of a listing, in its own coordinates. The path includes a line to the start that only the close draws."""
    paths, segments, start, here = [], [], None, None
    for kind, inner in re.findall(r"([MLCZ])(?: \(([^)]*)\))?", text):
        values = [float(v) for v in re.split(r"[,;] ", inner)] if inner else []
        places = [complex(x, y) for x, y in zip(values[::2], values[1::2])]
        if kind == "M":
            start = here = places[0]
        elif kind == "L":
            segments.append(Line(here, places[0]))
            here = places[0]
        elif kind == "C":
            segments.append(Curve(here, places[1], places[2], places[0]))
            here = places[0]
        else:
            path = Path([])
            path.segments = segments if abs(here - start) < 1e-12 else segments + [Line(here, start)]
            paths.append(path)
            segments = []
    return paths
