"""Lines, cubic curves and paths made of them.

Points are complex numbers (x + y·1j) in points of the canvas, y upward; every function that a designer calls
takes (x, y) pairs as well. A Path is a run of segments, each starting where the one before it ended. Paths are
values: every operation returns a new one.
"""
import cmath
import math

QUARTER_ARC = 4 / 3 * math.tan(math.pi / 8)  # handle of a quarter circle, in radii


def point(value):
    if isinstance(value, complex):
        return value
    if isinstance(value, (int, float)):
        return complex(value)
    return complex(value[0], value[1])


def unit(vector):
    size = abs(vector)
    return vector / size if size else 0j


def cross(a, b):
    return a.real * b.imag - a.imag * b.real


def dot(a, b):
    return a.real * b.real + a.imag * b.imag


def angle_between(a, b):
    """The turn from direction a to direction b, in radians, left turns positive."""
    return math.atan2(cross(a, b), dot(a, b))


class Line:
    def __init__(self, start, end):
        self.start, self.end = point(start), point(end)

    def points(self):
        return [self.start, self.end]

    def at(self, t):
        return self.start + (self.end - self.start) * t

    def direction(self, t=0.0):
        return unit(self.end - self.start)

    def velocity(self, t):
        return self.end - self.start

    def curvature(self, t):
        return 0.0

    def split(self, t):
        middle = self.at(t)
        return [Line(self.start, middle), Line(middle, self.end)]

    def reversed(self):
        return Line(self.end, self.start)

    def mapped(self, function):
        return Line(function(self.start), function(self.end))

    def length(self):
        return abs(self.end - self.start)

    def turning(self):
        return 0.0

    def box_points(self):
        return [self.start, self.end]

    def flattened(self, steps=1):
        return [self.start]


class Curve:
    def __init__(self, start, control1, control2, end):
        self.start, self.control1 = point(start), point(control1)
        self.control2, self.end = point(control2), point(end)

    def points(self):
        return [self.start, self.control1, self.control2, self.end]

    def at(self, t):
        a, b, c, d = self.points()
        u = 1 - t
        return u * u * u * a + 3 * u * u * t * b + 3 * u * t * t * c + t * t * t * d

    def velocity(self, t):
        a, b, c, d = self.points()
        u = 1 - t
        return 3 * (u * u * (b - a) + 2 * u * t * (c - b) + t * t * (d - c))

    def direction(self, t=0.0):
        velocity = self.velocity(t)
        if abs(velocity) > 1e-9:
            return unit(velocity)
        # If a control is on its end, the direction comes from the next point that differs.
        points = self.points() if t < 0.5 else self.points()[::-1]
        for other in points[1:]:
            if abs(other - points[0]) > 1e-9:
                return unit(other - points[0]) * (1 if t < 0.5 else -1)
        return 0j

    def curvature(self, t):
        a, b, c, d = self.points()
        first = self.velocity(t)
        second = 6 * ((1 - t) * (c - 2 * b + a) + t * (d - 2 * c + b))
        speed = abs(first)
        return cross(first, second) / speed ** 3 if speed > 1e-9 else 0.0

    def split(self, t):
        a, b, c, d = self.points()
        ab, bc, cd = a + (b - a) * t, b + (c - b) * t, c + (d - c) * t
        abc, bcd = ab + (bc - ab) * t, bc + (cd - bc) * t
        middle = abc + (bcd - abc) * t
        return [Curve(a, ab, abc, middle), Curve(middle, bcd, cd, d)]

    def pieces(self, count):
        """The same shape traced by `count` curves, equal in t."""
        rest, result = self, []
        for left in range(count, 1, -1):
            head, rest = rest.split(1 / left)
            result.append(head)
        return result + [rest]

    def reversed(self):
        return Curve(self.end, self.control2, self.control1, self.start)

    def mapped(self, function):
        return Curve(*[function(p) for p in self.points()])

    def length(self):
        samples = [self.at(i / 24) for i in range(25)]
        return sum(abs(b - a) for a, b in zip(samples, samples[1:]))

    def turning(self):
        """The sum of the turns along the curve, in radians, without sign."""
        directions = [self.direction(i / 12) for i in range(13)]
        return sum(abs(angle_between(a, b)) for a, b in zip(directions, directions[1:]))

    def box_points(self):
        """The ends and the extreme points, which span the tight box."""
        a, b, c, d = self.points()
        found = [a, d]
        for part in (lambda p: p.real, lambda p: p.imag):
            k0, k1, k2, k3 = part(a), part(b), part(c), part(d)
            qa = -k0 + 3 * k1 - 3 * k2 + k3
            qb = 2 * (k0 - 2 * k1 + k2)
            qc = k1 - k0
            for t in quadratic_roots(qa, qb, qc):
                if 0 < t < 1:
                    found.append(self.at(t))
        return found

    def flattened(self, steps=24):
        return [self.at(i / steps) for i in range(steps)]


def quadratic_roots(a, b, c):
    if abs(a) < 1e-12:
        return [-c / b] if abs(b) > 1e-12 else []
    inside = b * b - 4 * a * c
    if inside < 0:
        return []
    root = math.sqrt(inside)
    return [(-b + root) / (2 * a), (-b - root) / (2 * a)]


def box_of(points):
    xs, ys = [p.real for p in points], [p.imag for p in points]
    return min(xs), max(xs), min(ys), max(ys)


def turns_passed(segment, where, depth=0):
    """What the segment adds to the winding about a point: its upward less its downward crossings of the ray that
    leaves the point to the right."""
    points = segment.points()
    left, right, bottom, top = box_of(points)
    if where.imag < bottom or where.imag > top or where.real > right:
        return 0
    if isinstance(segment, Curve) and where.real >= left and depth < 30:
        head, tail = segment.split(0.5)
        return turns_passed(head, where, depth + 1) + turns_passed(tail, where, depth + 1)
    a, b = points[0], points[-1]
    if (a.imag <= where.imag) == (b.imag <= where.imag):
        return 0
    side = cross(b - a, where - a)
    if b.imag > a.imag:
        return 1 if side > 0 else 0
    return -1 if side < 0 else 0


def arc(center, radius, from_degrees, to_degrees, per_curve=90):
    """Curves along a circle; counterclockwise when to_degrees is the larger."""
    center = point(center)
    sweep = math.radians(to_degrees - from_degrees)
    count = max(1, math.ceil(abs(sweep) / math.radians(per_curve) - 1e-9))
    step = sweep / count
    handle = 4 / 3 * math.tan(step / 4)
    curves = []
    for i in range(count):
        a = cmath.exp(1j * (math.radians(from_degrees) + i * step))
        b = cmath.exp(1j * (math.radians(from_degrees) + (i + 1) * step))
        curves.append(Curve(center + radius * a, center + radius * a * (1 + 1j * handle),
                            center + radius * b * (1 - 1j * handle), center + radius * b))
    return curves


def on_circle(center, radius, degrees):
    """The point of the circle in the compass direction, as a pair."""
    p = point(center) + radius * cmath.exp(1j * math.radians(degrees))
    return p.real, p.imag


class Path:
    def __init__(self, segments, closed=True):
        self.segments = [s for s in segments if s.length() > 1e-7]
        self.closed = closed
        self._polygon = None
        for a, b in zip(self.segments, self.segments[1:]):
            assert abs(a.end - b.start) < 1e-4, f"gap in a path at {a.end}"
        if closed and self.segments and abs(self.segments[-1].end - self.segments[0].start) > 1e-6:
            self.segments.append(Line(self.segments[-1].end, self.segments[0].start))

    # Properties

    def area(self):
        """Signed: positive when the path runs counterclockwise."""
        points = self.polygon()
        return sum(cross(a, b) for a, b in zip(points, points[1:] + points[:1])) / 2

    def bounds(self):
        return box_of([p for s in self.segments for p in s.box_points()])

    def polygon(self):
        if self._polygon is None:
            self._polygon = [p for s in self.segments for p in s.flattened()]
            if not self.closed:
                self._polygon.append(self.segments[-1].end)
        return self._polygon

    def winding(self, where):
        """How many times the closed path runs around the point, counterclockwise positive."""
        where = point(where)
        return sum(turns_passed(segment, where) for segment in self.segments)

    def contains(self, where):
        return self.winding(where) != 0

    def line_count(self):
        return sum(isinstance(s, Line) for s in self.segments)

    def curve_count(self):
        return sum(isinstance(s, Curve) for s in self.segments)

    # Paths made from it

    def reverse(self):
        return Path([s.reversed() for s in reversed(self.segments)], self.closed)

    def counterclockwise(self):
        return self if self.area() > 0 else self.reverse()

    def clockwise(self):
        return self if self.area() < 0 else self.reverse()

    def mapped(self, function):
        return Path([s.mapped(function) for s in self.segments], self.closed)

    def moved(self, dx, dy):
        return self.mapped(lambda p: p + complex(dx, dy))

    def scaled(self, sx, sy=None, about=(0, 0)):
        about, sy = point(about), sx if sy is None else sy
        return self.mapped(lambda p: about + complex((p - about).real * sx, (p - about).imag * sy))

    def rotated(self, degrees, about=(0, 0)):
        about, turn = point(about), cmath.exp(1j * math.radians(degrees))
        return self.mapped(lambda p: about + (p - about) * turn)

    def mirrored(self, axis_x):
        """The mirror image at x = axis_x. The direction is reversed."""
        return self.mapped(lambda p: complex(2 * axis_x - p.real, p.imag))

    def starting_near(self, where):
        """A closed path that starts at its node nearest to `where`."""
        where = point(where)
        first = min(range(len(self.segments)), key=lambda i: abs(self.segments[i].start - where))
        return Path(self.segments[first:] + self.segments[:first])

    def rounded(self, radius):
        """Corners replaced by arcs that touch both sides. A number rounds all corners; a dictionary
        {(x, y): radius} rounds the corners nearest to the points given."""
        corners = self.corners()
        if isinstance(radius, dict):
            radii = {}
            for where, r in radius.items():
                radii[min(corners, key=lambda i: abs(self.segments[i].end - point(where)))] = r
        else:
            radii = {i: radius for i in corners}
        segments = list(self.segments)
        fillets = {}
        for i, r in radii.items():
            if r <= 0:
                continue
            j = (i + 1) % len(segments)
            head, curves, tail = fillet(segments[i], segments[j], r)
            fillets[i] = curves
            segments[i], segments[j] = head, tail
        result = []
        for i, segment in enumerate(segments):
            if segment is not None:
                result.append(segment)
            result += fillets.get(i, [])
        return Path(result, self.closed)

    def corners(self, least_degrees=1.0):
        """Indices of the segments that end in a corner."""
        found, count = [], len(self.segments)
        for i in range(count if self.closed else count - 1):
            a, b = self.segments[i], self.segments[(i + 1) % count]
            if abs(angle_between(a.direction(1), b.direction(0))) > math.radians(least_degrees):
                found.append(i)
        return found


def fillet(before, after, radius):
    """The two segments cut back, and the arc of the radius between them."""
    turn = angle_between(before.direction(1), after.direction(0))
    side = 1j if turn > 0 else -1j
    s, t = 1.0, 0.0
    # Newton's method for the point that lies `radius` off both segments.
    for _ in range(60):
        da, db = before.direction(s), after.direction(t)
        gap = (before.at(s) + radius * side * da) - (after.at(t) + radius * side * db)
        if abs(gap) < 1e-11:
            break
        sign = 1 if turn > 0 else -1
        ja = before.velocity(s) * (1 - sign * radius * before.curvature(s))
        jb = after.velocity(t) * (1 - sign * radius * after.curvature(t))
        det = -cross(ja, jb)
        if abs(det) < 1e-12:
            raise ValueError(f"no corner to round at {before.end}")
        ds = (cross(gap, jb)) / det
        dt = (cross(gap, ja)) / det
        s, t = s + max(-0.3, min(0.3, ds)), t + max(-0.3, min(0.3, dt))
    if abs(gap) > 1e-6 or s < -1e-6 or t > 1 + 1e-6 or s > 1 + 1e-9 or t < -1e-9:
        raise ValueError(f"a corner at {before.end} has no room for the radius {radius}")
    center = before.at(s) + radius * side * before.direction(s)
    head = before.split(s)[0] if s > 1e-6 else None
    tail = after.split(t)[1] if t < 1 - 1e-6 else None
    a, b = before.at(s) - center, after.at(t) - center
    start = math.degrees(cmath.phase(a))
    curves = arc(center, radius, start, start + math.degrees(angle_between(a, b)))
    curves[0].start, curves[-1].end = before.at(s), after.at(t)
    return head, curves, tail


class Pen:
    """Draws a path by hand: Pen(x, y).line(...).curve(...).close()"""

    def __init__(self, x, y):
        self.here, self.segments = complex(x, y), []

    def add(self, segment):
        self.segments.append(segment)
        self.here = segment.end
        return self

    def line(self, x, y):
        return self.add(Line(self.here, (x, y)))

    def curve(self, end, control1, control2):
        """The end point first, then the two controls, as in the listings."""
        return self.add(Curve(self.here, control1, control2, end))

    def smooth(self, end, leave, arrive, pull=0.4):
        """A curve given by the compass directions (degrees) of its two ends; `pull` is the length of the handles in
        distances between the ends, one number or a pair."""
        a, b = (pull, pull) if isinstance(pull, (int, float)) else pull
        end = point(end)
        span = abs(end - self.here)
        return self.add(Curve(self.here, self.here + span * a * cmath.exp(1j * math.radians(leave)),
                              end - span * b * cmath.exp(1j * math.radians(arrive)), end))

    def arc(self, center, to_degrees, per_curve=90):
        """Along the circle around `center` from here to the compass direction:
        a to_degrees larger than the current direction goes counterclockwise."""
        offset = self.here - point(center)
        start = math.degrees(cmath.phase(offset))
        for piece in arc(center, abs(offset), start, to_degrees, per_curve):
            self.add(piece)
        return self

    def close(self):
        return Path(self.segments, closed=True)

    def open(self):
        return Path(self.segments, closed=False)
