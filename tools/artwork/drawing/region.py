"""Regions: lists of closed paths, outer ones counterclockwise and holes clockwise, and the sums and differences of them.

The usual way to make a line drawing: start an Ink, draw strokes and rings into it, and cover what is behind a shape before
drawing that shape's ring. The result is one clean set of outlines and holes, without overlaps.
Straight sides may coincide; curves may not, unless they are the same curve.
"""
from crossing import crossings
from geometry import Line, Path, cross, dot
from offset import ring, stroke, tidy


def united(a, b):
    return combine(a, b, lambda in_a, in_b: in_a or in_b)


def without(a, b):
    return combine(a, b, lambda in_a, in_b: in_a and not in_b)


def common(a, b):
    return combine(a, b, lambda in_a, in_b: in_a and in_b)


def as_region(shape):
    return [shape.counterclockwise()] if isinstance(shape, Path) else list(shape)


def inside(region, where):
    return sum(path.winding(where) for path in region) != 0


def combine(a, b, keep):
    a, b = as_region(a), as_region(b)
    kept = []
    pieces_a, pieces_b = cut_up(a, b)
    shared = set()
    # The paint of a region is to the left of its own paths; only the other region has to be tested.
    for piece in pieces_a:
        twin = next((i for i, other in enumerate(pieces_b) if same_place(piece, other)), None)
        if twin is None:
            other = inside(b, piece.at(0.5))
            take(piece, keep(True, other), keep(False, other), kept)
        else:
            shared.add(twin)
            along = abs(pieces_b[twin].start - piece.start) < abs(pieces_b[twin].end - piece.start)
            take(piece, keep(True, along), keep(False, not along), kept)
    for i, piece in enumerate(pieces_b):
        if i not in shared:
            other = inside(a, piece.at(0.5))
            take(piece, keep(other, True), keep(other, False), kept)
    return chained(kept)


def same_place(a, b):
    near = 1e-4
    if abs(a.at(0.5) - b.at(0.5)) > near:
        return False
    return (abs(a.start - b.start) < near and abs(a.end - b.end) < near
            or abs(a.start - b.end) < near and abs(a.end - b.start) < near)


def take(piece, left_painted, right_painted, kept):
    if left_painted and not right_painted:
        kept.append(piece)
    elif right_painted and not left_painted:
        kept.append(piece.reversed())


def cut_up(a, b):
    segments_a = [s for path in a for s in path.segments]
    segments_b = [s for path in b for s in path.segments]
    cuts_a, cuts_b = [[] for _ in segments_a], [[] for _ in segments_b]
    for i, first in enumerate(segments_a):
        for j, second in enumerate(segments_b):
            for s, t in crossings(first, second):
                where = first.at(s)
                cuts_a[i].append((s, where))
                cuts_b[j].append((t, where))
            if isinstance(first, Line) and isinstance(second, Line):
                cuts_a[i] += ends_on(first, second)
                cuts_b[j] += ends_on(second, first)
    return pieces_of(segments_a, cuts_a), pieces_of(segments_b, cuts_b)


def ends_on(line, other):
    """Where the other line, which runs along this one, starts and ends within it."""
    along, size = line.direction(), line.length()
    if abs(cross(along, other.direction())) > 1e-6:
        return []
    found = []
    for p in (other.start, other.end):
        reach = dot(along, p - line.start)
        if abs(cross(along, p - line.start)) < 1e-5 and 1e-5 < reach < size - 1e-5:
            found.append((reach / size, p))
    return found


def pieces_of(segments, cuts):
    pieces = []
    for segment, places in zip(segments, cuts):
        rest, done = segment, 0.0
        for t, where in sorted(places, key=lambda place: place[0]):
            if min(abs(where - rest.start), abs(where - segment.end)) < 1e-5:
                continue
            head, rest = rest.split((t - done) / (1 - done))
            head.end = rest.start = where
            done = t
            pieces.append(head)
        pieces.append(rest)
    return pieces


def chained(pieces):
    left, paths = list(pieces), []
    while left:
        chain = [left.pop(0)]
        while abs(chain[-1].end - chain[0].start) > 1e-4 or len(chain) == 1 and chain[0].length() < 1e-4:
            here = chain[-1].end
            nearest = min(left, key=lambda s: abs(s.start - here), default=None)
            if nearest is None or abs(nearest.start - here) > 1e-3:
                raise ValueError(f"outlines do not close near ({here.real:.3f}, {here.imag:.3f}): do sides coincide there?")
            left.remove(nearest)
            nearest.start = here
            chain.append(nearest)
        chain[-1].end = chain[0].start
        paths.append(tidy(chain, closed=True))
    return [path for path in paths if abs(path.area()) > 1e-4]




class Ink:
    """A line drawing in progress. The width is that of all its lines."""

    def __init__(self, width=5.0):
        self.width, self.region = width, []

    def draw(self, shape):
        """Adds a filled shape or region."""
        self.region = united(self.region, as_region(shape)) if self.region else as_region(shape)
        return self

    def cover(self, shape):
        """Removes what is behind the shape."""
        self.region = without(self.region, as_region(shape))
        return self

    def stroke(self, path, ends="round", width=None, corners="miter"):
        return self.draw(stroke(path, width or self.width, ends, corners))

    def outline(self, path, width=None, corners="miter", hides=True):
        """A closed shape in front of what is there: hides it and gets a ring centered on its path."""
        lines = ring(path, width or self.width, corners)
        if hides and self.region:
            # Up to the middle of the new line, so that the cut edge ends inside it.
            self.cover(path)
        return self.draw(lines)

    def outlines(self):
        """Outer outlines, each followed by its holes, the largest first."""
        # Outlines of equal size are in order from left to right.
        ordered = sorted(self.region, key=lambda p: (-round(abs(p.area()), 2), p.bounds()[0]))
        outer = [p for p in ordered if p.area() > 0]
        holes = [p for p in ordered if p.area() < 0]
        result = []
        for path in outer:
            result.append(path)
            for hole in holes:
                inner = hole.segments[0].at(0.5)
                around = [o for o in outer if o.contains(inner)]
                if around and min(around, key=lambda o: o.area()) is path:
                    result.append(hole)
        return result
