"""Outlines at an even distance: rings, and open strokes made into shapes.

Lines and circular arcs are offset exactly. Any other curve gets an offset with the same directions at its ends and
handles scaled by the curvature there, and is halved until that lies within TOLERANCE of the true offset.
"""
import math

from geometry import Curve, Line, Path, angle_between, arc, cross, dot, unit
from crossing import crossings

TOLERANCE = 0.02  # points


def circle_center(curve):
    """The center of a curve that traces a circular arc, else None."""
    a, d = curve.direction(0), curve.direction(1)
    sweep = angle_between(a, d)
    if abs(sweep) < 1e-4:
        return None
    chord = curve.end - curve.start
    radius = abs(chord) / (2 * abs(math.sin(sweep / 2)))
    side = 1j if sweep > 0 else -1j
    center = curve.start + radius * side * a
    handle = 4 / 3 * math.tan(abs(sweep) / 4) * radius
    near = 1e-3 * max(1, radius)
    right = (abs(center + abs(radius) * -side * d - curve.end) < near
             and abs(abs(curve.control1 - curve.start) - handle) < near
             and abs(abs(curve.end - curve.control2) - handle) < near)
    return center if right else None


def offset_segment(segment, distance, depth=0):
    """Pieces at `distance` to the right of the segment; empty where an arc has shrunk away."""
    if isinstance(segment, Line):
        shift = -1j * segment.direction() * distance
        return [Line(segment.start + shift, segment.end + shift)]
    center = circle_center(segment)
    if center is not None:
        outward = unit(segment.start - center)
        grows = dot(outward, -1j * segment.direction(0)) > 0
        radius = abs(segment.start - center)
        scale = (radius + (distance if grows else -distance)) / radius
        return [] if scale <= 1e-6 else [segment.mapped(lambda p: center + (p - center) * scale)]
    shrink = [1 + distance * segment.curvature(t) for t in (0.0, 0.25, 0.5, 0.75, 1.0)]
    if all(s <= 0 for s in shrink):
        return []

    def true(t):
        return segment.at(t) - 1j * segment.direction(t) * distance

    a, b = segment.direction(0), segment.direction(1)
    start, end = true(0), true(1)
    out = abs(segment.control1 - segment.start) * shrink[0]
    back = abs(segment.end - segment.control2) * shrink[-1]
    if out < 1e-6 or back < 1e-6:
        out = back = abs(end - start) / 3
    made = Curve(start, start + a * out, end - b * back, end)
    worst = 0.0
    for t in (0.2, 0.4, 0.5, 0.6, 0.8):
        at, direction = made.at(t), made.direction(t)
        # The distance from the true offset, measured across the curve.
        nearest = min((true(u / 60) for u in range(61)), key=lambda p: abs(p - at))
        worst = max(worst, abs(cross(direction, nearest - at)))
    if worst < TOLERANCE or depth > 3:
        return [made]
    head, tail = segment.split(0.5)
    return offset_segment(head, distance, depth + 1) + offset_segment(tail, distance, depth + 1)


def offset(path, distance, corners="miter"):
    """The path moved `distance` to the right of its direction: outward for a counterclockwise outline.
    A corner that opens is closed by longer sides ("miter") or by an arc around the corner ("round")."""
    runs = []
    for segment in path.segments:
        pieces = offset_segment(segment, distance)
        if pieces:
            runs.append((pieces, segment))
    count = len(runs)
    joints = []
    for i in range(count if path.closed else count - 1):
        before, after = runs[i][0], runs[(i + 1) % count][0]
        a, b = before[-1], after[0]
        # An arc that rounds a corner meets a curve almost, not quite in its direction; tidy closes that gap.
        if abs(a.end - b.start) < 2e-3:
            joints.append([])
            continue
        # A corner that closes: both sides end where they cross.
        met = trim(before, after)
        if met:
            joints.append([])
            continue
        joints.append(corner_joint(a, b, runs[i][1].end, distance, corners))
        if joints[-1] is None:
            joints[-1] = []
    result = []
    for i, (pieces, _) in enumerate(runs):
        result += pieces
        if i < len(joints):
            result += joints[i]
    return tidy(result, path.closed)


def trim(before, after):
    """Cuts the end of one run and the start of the next at their crossing."""
    for i in range(len(before) - 1, max(-1, len(before) - 4), -1):
        for j in range(min(3, len(after))):
            found = crossings(before[i], after[j])
            if found:
                s, t = found[-1]
                before[i:] = [before[i].split(s)[0]] if s > 1e-9 else []
                after[:j + 1] = [after[j].split(t)[1]] if t < 1 - 1e-9 else []
                if before and after:
                    after[0] = set_start(after[0], before[-1].end)
                return True
    return False


def set_start(segment, start):
    if isinstance(segment, Line):
        return Line(start, segment.end)
    return Curve(start, segment.control1 + (start - segment.start), segment.control2, segment.end)


def corner_joint(a, b, corner, distance, corners):
    turn = angle_between(a.direction(1), b.direction(0))
    if corners == "round" and abs(abs(a.end - corner) - abs(distance)) < 1e-3:
        start = math.degrees(math.atan2((a.end - corner).imag, (a.end - corner).real))
        return arc(corner, abs(distance), start, start + math.degrees(turn))
    da, db = a.direction(1), b.direction(0)
    det = cross(da, db)
    if abs(det) < 1e-6:
        return [Line(a.end, b.start)]
    reach = cross(b.start - a.end, db) / det
    tip = a.end + da * reach
    if isinstance(a, Line) and isinstance(b, Line):
        a.end = b.start = tip
        return []
    if isinstance(a, Line):
        a.end = tip
        return [Line(tip, b.start)]
    if isinstance(b, Line):
        b.start = tip
        return [Line(a.end, tip)]
    return [Line(a.end, tip), Line(tip, b.start)]


def tidy(segments, closed):
    """Drops segments without a length and joins lines that continue in the same direction."""
    result = []
    for segment in segments:
        if segment.length() < 1e-6:
            continue
        if result and abs(result[-1].end - segment.start) > 1e-9:
            result[-1] = result[-1].reversed()
            result[-1] = set_start(result[-1], segment.start).reversed()
        if (result and isinstance(segment, Line) and isinstance(result[-1], Line)
                and dot(result[-1].direction(), segment.direction()) > 1 - 1e-12):
            result[-1] = Line(result[-1].start, segment.end)
        else:
            result.append(segment)
    if closed and len(result) > 1:
        first, last = result[0], result[-1]
        if abs(last.end - first.start) > 1e-9:
            result[0] = set_start(first, last.end)
        first = result[0]
        if isinstance(first, Line) and isinstance(last, Line) and dot(first.direction(), last.direction()) > 1 - 1e-12:
            result[0] = Line(last.start, first.end)
            result.pop()
    return Path(result, closed)


def ring(path, width, corners="miter"):
    """An even ring centered on the closed path: the outer outline and its inner twin, wound against it."""
    path = path.counterclockwise()
    return [offset(path, width / 2, corners), offset(path, -width / 2, corners).reverse()]


def inner_ring(path, width, corners="miter"):
    """A ring whose outer line is the path itself."""
    path = path.counterclockwise()
    return [path, offset(path, -width, corners).reverse()]


def stroke(path, width, ends="round", corners="miter"):
    """The outline of an open path drawn with a pen of the width. `ends` is "round" or "butt", or a pair of them."""
    first_end, last_end = (ends, ends) if isinstance(ends, str) else ends
    right = offset(path, width / 2, corners).segments
    left = offset(path.reverse(), width / 2, corners).segments

    def cap(center, a, b, kind):
        if kind == "butt":
            return [Line(a, b)]
        start = math.degrees(math.atan2((a - center).imag, (a - center).real))
        curves = arc(center, abs(a - center), start, start + 180)
        curves[-1].end = b
        return curves

    end, start = path.segments[-1].end, path.segments[0].start
    return Path(right + cap(end, right[-1].end, left[0].start, last_end)
                + left + cap(start, left[-1].end, right[0].start, first_end))
