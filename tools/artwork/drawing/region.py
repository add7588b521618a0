"""Regions: lists of closed paths, outer ones counterclockwise and holes clockwise, and the sums and differences of them.

The usual way to a line drawing: start an Ink, draw strokes and rings into it, and cover what lies behind a shape before
drawing that shape's ring. What comes out is one clean set of outlines and holes, without overlaps.
Outlines that lie exactly upon each other are not supported: let shapes overlap a little or stand apart.
"""
from crossing import crossings
from geometry import Path
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
    # The paint of a region lies to the left of its own paths; only the other region has to be asked.
    for piece in pieces_a:
        other = inside(b, piece.at(0.5))
        take(piece, keep(True, other), keep(False, other), kept)
    for piece in pieces_b:
        other = inside(a, piece.at(0.5))
        take(piece, keep(other, True), keep(other, False), kept)
    return chained(kept)


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
    return pieces_of(segments_a, cuts_a), pieces_of(segments_b, cuts_b)


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
    """A line drawing under work. The width is that of all its lines."""

    def __init__(self, width=5.0):
        self.width, self.region = width, []

    def draw(self, shape):
        """Adds a filled shape or region."""
        self.region = united(self.region, as_region(shape)) if self.region else as_region(shape)
        return self

    def cover(self, shape):
        """Takes away what lies behind the shape."""
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
        """Outer outlines with their holes behind each, the largest first."""
        outer = sorted((p for p in self.region if p.area() > 0), key=lambda p: -p.area())
        holes = sorted((p for p in self.region if p.area() < 0), key=lambda p: p.area())
        result = []
        for path in outer:
            result.append(path)
            for hole in holes:
                inner = hole.segments[0].at(0.5)
                around = [o for o in outer if o.contains(inner)]
                if around and min(around, key=lambda o: o.area()) is path:
                    result.append(hole)
        return result
