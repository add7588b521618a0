"""The application's name as one word in a flowing script.

A letter is the union of a few strokes of a pen whose pressure changes on the way; the letters run into each
other. They are drawn upright and then slanted. The initial is drawn by its outline.
"""
import cmath
import math

from drawing import HOLE, OUTLINE, Drawing
from geometry import Curve, Line, Path, Pen, angle_between, cross, dot, unit
from letters import fitted
from region import united

CANVAS = (415, 100)
SLANT = 0.52  # points to the right for each point up
FEET, HEAD = 15.5, 43.5  # the middle of the pen at the lowest and the highest place of a small letter
BROAD, THIN, FLAT = 9.2, 4.6, 6.0  # the pen going down, going up, and turning


class Stroke:
    """A list of places that the middle of the pen passes: (x, y, direction in degrees, width of the pen)."""

    def __init__(self, *places, start="butt", end="butt"):
        self.places, self.start, self.end = places, start, end

    def outline(self, left, slant=SLANT):
        place = lambda p: complex(left + p.real + slant * (p.imag - FEET), p.imag)
        pieces = [piece(a, b, place) for a, b in zip(self.places, self.places[1:])]
        right_side = [side for run in pieces for side in edge(run, -1)]
        left_side = [side for run in pieces for side in edge(run, 1)]
        back = [s.reversed() for s in reversed(left_side)]
        run = right_side + cap(right_side[-1], back[0], self.end)
        run += back + cap(back[-1], right_side[0], self.start)
        return Path(run)


def piece(a, b, place):
    """The middle line between two places, and the widths at its ends."""
    start, end = complex(a[0], a[1]), complex(b[0], b[1])
    leave, arrive = (cmath.exp(1j * math.radians(p[2])) for p in (a, b))
    span = end - start
    if abs(cross(leave, span)) < 1e-6 * abs(span) and abs(cross(arrive, span)) < 1e-6 * abs(span):
        middle = Line(start, end)
    else:
        theta, phi = angle_between(span, leave), angle_between(arrive, span)
        middle = Curve(start, start + leave * abs(span) * handle(theta, phi),
                       end - arrive * abs(span) * handle(phi, theta), end)
    return middle.mapped(place), a[3], b[3]


def handle(theta, phi):
    """The length of the handle, in lengths of the chord, of a curve that leaves the chord by one angle and
    comes back to it by the other: Hobby's formula, by which successive curves bend alike where they meet."""
    a = math.sqrt(2) * (math.sin(theta) - math.sin(phi) / 16) * (math.sin(phi) - math.sin(theta) / 16)
    a *= math.cos(theta) - math.cos(phi)
    b = 1 + (math.sqrt(5) - 1) / 2 * math.cos(theta) + (3 - math.sqrt(5)) / 2 * math.cos(phi)
    return (2 + a) / (3 * b)


def edge(run, side):
    """One edge of the pen's track: a line, or the curve that is nearest to the true edge."""
    middle, first, last = run

    def at(t):
        width = first + (last - first) * t * t * (3 - 2 * t)
        return middle.at(t) + side * 1j * middle.direction(t) * width / 2

    if isinstance(middle, Line):
        assert abs(first - last) < 1e-9
        return [Line(at(0), at(1))]
    places = [at(i / 32) for i in range(33)]
    lengths = [0.0]
    for a, b in zip(places, places[1:]):
        lengths.append(lengths[-1] + abs(b - a))
    return [fitted(places, [v / lengths[-1] for v in lengths], middle.direction(0), middle.direction(1),
                   rounds=30)]


def cap(before, after, kind):
    a, b = before.end, after.start
    if kind == "butt":
        return [Line(a, b)]
    if kind == "level":
        # It ends along the line of writing.
        y, along = (a + b).imag / 2, before.direction(1)
        push, pull = (along * (y - p.imag) / along.imag for p in (a, b))
        before.end, after.start = a + push, b + pull
        if isinstance(before, Curve):
            before.control2 += push
        if isinstance(after, Curve):
            after.control1 += pull
        return [Line(before.end, after.start)]
    # A round end, longer than half a circle is deep, as a soft brush leaves it.
    along, out = unit(before.direction(1)), abs(b - a) / 2
    tip = (a + b) / 2 + along * out
    k = 0.56
    return [Curve(a, a + along * out * k, tip + (a - b) / 2 * k, tip),
            Curve(tip, tip + (b - a) / 2 * k, b + along * out * k, b)]


def letter(left, *strokes):
    region = []
    for stroke in strokes:
        shape = stroke.outline(left)
        region = united(region, shape) if region else [shape.counterclockwise()]
    return region


def e(left, to):
    top = (11, HEAD, 180, 6)
    return letter(left, Stroke(top, (0, 28, 270, BROAD), (11, FEET, 0, FLAT), to),
                  Stroke((0.5, 25, 25, THIN), (19.5, 35.5, 90, 5.4), top))


def s(left, to):
    return letter(left, Stroke((-6, 23, 300, 4.6), (6, FEET, 0, FLAT), to),
                  Stroke((12.3, 46.6, 284, 5.2), (18, 27.5, 270, BROAD), (9, 15.2, 207, 4), start="level"))


def bowl(width):
    return Stroke((width, 40.2, 149, THIN), (13.5, HEAD, 180, FLAT), (0, 28, 270, BROAD),
                  (10.5, FEET, 0, FLAT),
                  (width, 34, 68, THIN))


def a(left, to, end="butt"):
    return letter(left, Stroke((24, 44.8, 270, BROAD), (24, 25.5, 270, BROAD), (32.4, FEET, 0, FLAT), to,
                               start="level",
                               end=end), bowl(24))


def l(left, to):
    top = (10, 81, 180, 5.6)
    return letter(left, Stroke(top, (0, 64, 270, BROAD), (0, 26.5, 270, BROAD), (8.4, FEET, 0, FLAT), to),
                  Stroke((0, 24, 58, THIN), (16, 62, 84, 4.8), top))


def u(left, to):
    return letter(left, Stroke((0, 46.4, 270, BROAD), (0, 26.5, 270, BROAD), (8.8, FEET, 0, FLAT),
                               (24, 36, 70, THIN),
                               start="level"),
                  Stroke((24, 46.4, 270, BROAD), (24, 25.5, 270, BROAD), (32.4, FEET, 0, FLAT), to,
                         start="level"))


def n(left, to):
    return letter(left, Stroke((0, 46.4, 270, BROAD), (0, 13, 270, BROAD), start="level", end="level"),
                  Stroke((0, 22, 70, THIN), (15.5, HEAD, 0, FLAT), (24, 33.5, 270, BROAD),
                         (24, 26.5, 270, BROAD),
                         (32.4, FEET, 0, FLAT), to))


def initial():
    """The stem is a loop; its first two curves are given. The crossbar is a stroke of its own."""
    outline = (Pen(98.4, 53.7).curve((106, 91.7), (111.8, 85.6), (110.7, 91.7))
               .curve((52.4, 32.2), (98.9, 91.7), (77.8, 72.7))
               .curve((45.4, 16.2), (48.3, 25.7), (45.4, 21))
               .curve((56.4, 8.7), (45.4, 11.6), (49.8, 8.7))
               .curve((100, 24.5), (72, 8.7), (88, 15.5))
               .line(98, 28.8)
               .curve((61.8, 14.2), (86, 20), (72, 14.2))
               .curve((60.4, 22.4), (57, 14.2), (57.6, 18.3))
               .curve((98.4, 53.7), (77.8, 27.1), (89.9, 33.5)).close())
    counter = (Pen(66.5, 31.5).curve((93.8, 55.6), (80.5, 35.1), (86.5, 38.2))
               .curve((104.6, 86.7), (102, 75), (107.6, 86.7))
               .curve((66.5, 31.5), (98.8, 86.7), (82.5, 55.5)).close())
    bar = Stroke((10.13, 64, 62, 8), (41, 80.5, 0, 8.6), (104, 73.5, -3, 9), (164, 84.5, 28, 3.6),
                 start="round", end="round")
    return outline, counter, bar


WORD = [("e", e, 93.5, "s"), ("s", s, 128, "s"), ("s", s, 158, "a"), ("a", a, 191.5, "l"),
        ("l", l, 236.5, "u"),
        ("u", u, 266, "n"), ("n", n, 312.5, "a"), ("a", a, 357, None)]
# Where the stroke from the letter before ends, within the letter.
JOIN = {"s": (12.4, 43.2, 58, THIN), "a": (0, 28, 60, THIN), "l": (0, 33, 68, THIN), "u": (0, 38, 68, THIN),
        "n": (0, 38, 68, THIN)}


# How far after the last letter's start its tail ends.
TAIL = 50.6


def drawings():
    logo = Drawing("tessalunaLogo", CANVAS)
    outline, counter, bar = initial()
    logo.add("T", outline, start=(98.4, 53.7)).hole("loop of T", counter)
    logo.add("crossbar of T", with_node_at(bar.outline(0, slant=0), "left"))
    for i, (name, make, left, following) in enumerate(WORD):
        if following:
            x, y, direction, width = JOIN[following]
            paths = make(left, (x + WORD[i + 1][2] - left, y, direction, width))
        else:
            paths = make(left, (TAIL, 26, 46, 3.6), end="round")
            paths = [with_node_at(path, "right") if path.area() > 0 else path for path in paths]
        for path in paths:
            role = OUTLINE if path.area() > 0 else HOLE
            logo.add(name if role == OUTLINE else f"counter of {name}", path, role)
    fit(logo, lines=29, curves=160)
    for subpath in logo.subpaths:
        subpath.path = on_grid(subpath.path)
    return [logo.want(subpaths=15, lines=29, curves=160, extent=(6.1, 414.9, 8.7, 91.7), tolerance=0.001)]


def with_node_at(path, farthest):
    """The path with a node where it reaches farthest to the "left" or "right"."""
    sign = 1 if farthest == "right" else -1
    i, t = max(((i, k / 400) for i, q in enumerate(path.segments) for k in range(401)),
               key=lambda place: sign * path.segments[place[0]].at(place[1]).real)
    pieces = path.segments[i].split(t)
    # A handle of each piece is vertical there, so that the grid does not tilt it.
    x = pieces[0].end.real
    pieces[0].control2 = complex(x, pieces[0].control2.imag)
    pieces[1].control1 = complex(x, pieces[1].control1.imag)
    return Path(path.segments[:i] + pieces + path.segments[i + 1:])


def fit(logo, lines, curves):
    """The outline of the initial is written as drawn; the others are fitted to the required counts."""
    rest = Drawing("all but the initial's outline", CANVAS)
    first, rest.subpaths = logo.subpaths[0], logo.subpaths[1:]
    rest.fit_counts(lines - rest.count(Line, first), curves - rest.count(Curve, first))


# The grid

STEP = 0.1


def on_grid(path):
    """Every point on the grid of the design. At a smooth joint those two handles are chosen, among the nearby
    places, that are most nearly on one line."""
    segments = path.segments
    count = len(segments)
    ends = [snapped(segment.start) for segment in segments]
    controls = {}
    for i, after in enumerate(segments):
        before, here = segments[i - 1], ends[i]
        turn = abs(angle_between(before.direction(1), after.direction(0)))
        smooth = math.degrees(turn) < 3
        # Next to a line only one handle has to be chosen, so the search for it can go farther.
        reach = 4 if isinstance(before, Curve) and isinstance(after, Curve) else 9
        back, ahead = [ends[i - 1] - here], [ends[(i + 1) % count] - here]
        if isinstance(before, Curve):
            back = choices(before.control2 - before.end, reach)
        if isinstance(after, Curve):
            ahead = choices(after.control1 - after.start, reach)
        wish = [before.control2 - before.end if isinstance(before, Curve) else None,
                after.control1 - after.start if isinstance(after, Curve) else None]

        def cost(pair):
            off = sum(abs(vector - w) ** 2 for vector, w in zip(pair, wish) if w is not None)
            # Once the kink is invisible, the shape of each curve counts as much as the smoothness.
            aim = sum(abs(math.degrees(angle_between(vector, w))) ** 2 for vector, w in zip(pair, wish)
                      if w is not None)
            bend = math.degrees(abs(angle_between(-pair[0], pair[1]))) if smooth else 0
            return off + 0.02 * aim + (60 * max(0, bend - 0.5) + 0.1 * bend)

        best = min(((b, a) for b in back for a in ahead), key=cost)
        controls[i] = (snapped(here + best[0]), snapped(here + best[1]))
    result = []
    for i, segment in enumerate(segments):
        j = (i + 1) % count
        if isinstance(segment, Line):
            result.append(Line(ends[i], ends[j]))
        else:
            result.append(Curve(ends[i], controls[i][1], controls[j][0], ends[j]))
    return Path(result)


def snapped(p):
    return complex(round(round(p.real / STEP) * STEP, 4), round(round(p.imag / STEP) * STEP, 4))


def choices(vector, reach):
    middle = snapped(vector)
    return [middle + complex(x, y) * STEP for x in range(-reach, reach + 1) for y in range(-reach, reach + 1)
            if abs(middle + complex(x, y) * STEP) > 1e-6]
