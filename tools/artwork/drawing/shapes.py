"""Closed shapes to start from. All run counterclockwise unless stated otherwise; Path.reverse() reverses them."""
import cmath
import math

from geometry import Curve, Line, Path, arc, point


def circle(center, radius, curves=4, start=90):
    """A circle that starts at the compass direction `start` in degrees (90 is the top)."""
    return Path(arc(center, radius, start, start + 360, per_curve=360 / curves))


def ellipse(center, radius_x, radius_y, curves=4, start=90):
    return circle(center, 1, curves, start).scaled(radius_x, radius_y, about=center)


def rectangle(left, right, bottom, top):
    return polygon([(left, bottom), (right, bottom), (right, top), (left, top)])


def rounded_rectangle(left, right, bottom, top, radius):
    return polygon([(left, bottom), (right, bottom), (right, top), (left, top)], radius)


def polygon(points, radius=0):
    """Straight sides between points (x, y), or (x, y, radius of this corner)."""
    return rounded_polyline(points, radius, closed=True)


def polyline(points, radius=0):
    """An open run of straight sides, for stroke()."""
    return rounded_polyline(points, radius, closed=False)


def rounded_polyline(points, radius, closed):
    places = [point(p[:2]) for p in points]
    sides = [Line(a, b) for a, b in zip(places, places[1:])]
    if closed:
        sides.append(Line(places[-1], places[0]))
    path = Path(sides, closed)
    radii = {}
    for i, p in enumerate(points):
        own = p[2] if len(p) > 2 else radius
        if own > 0 and (closed or 0 < i < len(points) - 1):
            radii[(p[0], p[1])] = own
    return path.rounded(radii) if radii else path


def capsule(a, b, width):
    """A bar with round ends from center a to center b."""
    a, b = point(a), point(b)
    along = math.degrees(cmath.phase(b - a))
    first = arc(a, width / 2, along + 90, along + 270)
    second = arc(b, width / 2, along - 90, along + 90)
    return Path(first + [Line(first[-1].end, second[0].start)] + second + [Line(second[-1].end, first[0].start)])


def through(points, closed=False, tension=0.5):
    """A smooth curve through all points: the tangent at each is parallel to its neighbors' chord."""
    places = [point(p) for p in points]
    count = len(places)
    tangents = []
    for i, here in enumerate(places):
        before = places[(i - 1) % count] if closed or i > 0 else here
        after = places[(i + 1) % count] if closed or i < count - 1 else here
        tangents.append((after - before) / max(abs(after - before), 1e-9))
    curves = []
    for i in range(count if closed else count - 1):
        a, b = places[i], places[(i + 1) % count]
        pull = abs(b - a) * tension * 2 / 3
        curves.append(Curve(a, a + tangents[i] * pull, b - tangents[(i + 1) % count] * pull, b))
    return Path(curves, closed)


def symmetric(half, axis_x):
    """A closed path from its right half, an open path that starts and ends on the axis."""
    return Path(half.segments + half.mirrored(axis_x).reverse().segments)
