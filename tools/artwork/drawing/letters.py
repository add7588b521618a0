"""Capitals of a plain sans serif, built from a few weights, for the words in the badges.

A letter is a list of outlines and holes with its left edge at 0 and its feet at 0. `set_in_line` puts letters
side by side so that the word has an exact width.
"""
import cmath
import math

from drawing import HOLE, OUTLINE
from geometry import Curve, Line, Path, cross, dot, point, unit
from shapes import polygon


# Where the arms of C and G end, in degrees above and below the right.
MOUTH = 43


class Face:
    """The weights of one alphabet, in points. `bend` is the handle of a quarter curve in radii: above 0.552
    it is fuller than a circle. `upright` is how long the straight side of C, G and O is, `spine` that of the
    S and `straight_d` that of the D's bowl, 0 for none."""

    def __init__(self, height, stem, bar, overshoot=0.0, bend=0.58, upright=0.0, spine=0.0, straight_d=0.0):
        self.height, self.stem, self.bar, self.overshoot = height, stem, bar, overshoot
        self.bend, self.upright, self.spine, self.straight_d = bend, upright, spine, straight_d

    def slanted(self, rise, run):
        """How wide a slanted stroke of the stem's weight is, measured along the foot."""
        return self.stem * 0.97 * math.hypot(rise, run) / rise

    # Straight letters

    def I(self):
        return [polygon([(0, 0), (self.stem, 0), (self.stem, self.height), (0, self.height)])]

    def H(self, width):
        s, h, b = self.stem, self.height, self.bar
        low, high = (h - b) / 2 + 0.01 * h, (h + b) / 2 + 0.01 * h
        return [polygon([(0, 0), (s, 0), (s, low), (width - s, low), (width - s, 0), (width, 0), (width, h),
                         (width - s, h), (width - s, high), (s, high), (s, h), (0, h)])]

    def T(self, width):
        s, h, b, c = self.stem, self.height, self.bar, width / 2
        return [polygon([(c - s / 2, 0), (c + s / 2, 0), (c + s / 2, h - b), (width, h - b), (width, h),
                         (0, h),
                         (0, h - b), (c - s / 2, h - b)])]

    def L(self, width):
        s, h, b = self.stem, self.height, self.bar
        return [polygon([(0, 0), (width, 0), (width, b), (s, b), (s, h), (0, h)])]

    def E(self, width):
        s, h, b = self.stem, self.height, self.bar
        low, high, inner = h * 0.52 - b / 2, h * 0.52 + b / 2, width * 0.93
        return [polygon([(0, 0), (width, 0), (width, b), (s, b), (s, low), (inner, low), (inner, high),
                         (s, high),
                         (s, h - b), (width, h - b), (width, h), (0, h)])]

    def F(self, width):
        s, h, b = self.stem, self.height, self.bar
        low, high, inner = h * 0.49 - b / 2, h * 0.49 + b / 2, width * 0.92
        return [polygon([(0, 0), (s, 0), (s, low), (inner, low), (inner, high), (s, high), (s, h - b),
                         (width, h - b), (width, h), (0, h)])]

    def N(self, width):
        s, h = self.stem, self.height
        d = s * 1.25
        drop = s * h / (width - d)
        return [polygon([(0, 0), (s, 0), (s, h - drop), (width - d, 0), (width, 0), (width, h),
                         (width - s, h),
                         (width - s, drop), (d, h), (0, h)])]

    def M(self, width, valley=0.0, flat=0.0):
        """`valley` is how high the middle ends, `flat` how wide it is there."""
        s, h, c = self.stem, self.height, width / 2
        run = c - flat / 2 - s * 0.1
        d = self.slanted(h - valley, run)
        # Both sides of a diagonal are parallel; the lower one leaves the stem below its shoulder.
        slope = (h - valley) / (c - flat / 2 - d * 0.06)
        notch = h - slope * (c - d)
        low = valley + slope * (c - flat / 2 - s)
        half = [(0, 0), (s, 0), (s, low)] + ([(c - flat / 2, valley)] if flat else [])
        other = [(width - x, y) for x, y in reversed(half)]
        middle = [] if flat else [(c, valley)]
        return [polygon(half + middle + other + [(width, h), (width - d, h), (c, notch), (d, h), (0, h)])]

    def Y(self, width, fork=0.42):
        s, h, c = self.stem, self.height, width / 2
        low = h * fork
        d = self.slanted(h - low, c - s / 2)
        slope = (h - low) / (c - s / 2)
        crotch = h - slope * (c - d)
        return [polygon([(c - s / 2, 0), (c + s / 2, 0), (c + s / 2, low), (width, h), (width - d, h),
                         (c, crotch),
                         (d, h), (0, h), (c - s / 2, low)])]

    def A(self, width, apex=1.2, bar_at=0.22, roof=0.0):
        """`apex` is the width of the flat top in stems; `roof` that of the counter's top, 0 for a point."""
        s, h, b, c = self.stem, self.height, self.bar * 0.94, width / 2
        side = c - apex * s / 2
        slope = h / side
        d = self.slanted(h, side)
        low, high = h * bar_at, h * bar_at + b
        outline = polygon([(0, 0), (d, 0), (d + low / slope, low), (width - d - low / slope, low),
                           (width - d, 0),
                           (width, 0), (c + apex * s / 2, h), (c - apex * s / 2, h)])
        top = slope * (c - roof / 2 - d)
        peak = [(c + roof / 2, top), (c - roof / 2, top)] if roof else [(c, top)]
        return [outline, polygon([(d + high / slope, high), (width - d - high / slope, high)] + peak)]

    # Round letters

    def quarter(self, here, end, first):
        """A quarter turn that leaves `here` along "x" or "y" and arrives along the other."""
        here, end, k = point(here), point(end), self.bend
        corner = complex(end.real, here.imag) if first == "x" else complex(here.real, end.imag)
        return Curve(here, here + (corner - here) * k, end - (end - corner) * k, end)

    def oval(self, left, right, bottom, top, upright):
        """Counterclockwise from the top: quarters, and between them uprights if these have a length."""
        cx, cy = (left + right) / 2, (bottom + top) / 2
        low, high = cy - upright / 2, cy + upright / 2
        sides = [self.quarter((cx, top), (left, high), "x"), Line((left, high), (left, low)),
                 self.quarter((left, low), (cx, bottom), "y"), self.quarter((cx, bottom), (right, low), "x"),
                 Line((right, low), (right, high)), self.quarter((right, high), (cx, top), "y")]
        return [s for s in sides if s.length() > 1e-9]

    def ring_ovals(self, width, thin=0.93):
        o, h, s, b = self.overshoot, self.height, self.stem * 1.04, self.bar * thin
        up = self.upright
        return self.oval(0, width, -o, h + o, up), self.oval(s, width - s, b - o, h + o - b, up)

    def O(self, width):
        outer, inner = self.ring_ovals(width)
        return [Path(outer), Path(inner).reverse()]

    def U(self, width):
        s, h, b, o, c = self.stem, self.height, self.bar, self.overshoot, width / 2
        turn = min(c * 1.02, h * 0.52)
        inner = turn
        return [Path([Line((0, h), (0, turn)), self.quarter((0, turn), (c, -o), "y"),
                      self.quarter((c, -o), (width, turn), "x"), Line((width, turn), (width, h)),
                      Line((width, h), (width - s, h)), Line((width - s, h), (width - s, inner)),
                      self.quarter((width - s, inner), (c, b - o), "y"),
                      self.quarter((c, b - o), (s, inner), "x"),
                      Line((s, inner), (s, h)), Line((s, h), (0, h))])]

    def D(self, width):
        s, h, b = self.stem, self.height, self.bar
        up = self.straight_d
        low, high = (h - up) / 2, (h + up) / 2
        side = s * 1.04

        def bowl(left, right, bottom, top, straight):
            sides = [Line((left, bottom), (straight, bottom)),
                     self.quarter((straight, bottom), (right, low), "x"),
                     Line((right, low), (right, high)), self.quarter((right, high), (straight, top), "y"),
                     Line((straight, top), (left, top)), Line((left, top), (left, bottom))]
            return Path([x for x in sides if x.length() > 1e-9])

        straight = width - h * 0.5
        return [bowl(0, width, 0, h, straight),
                bowl(s, width - side, b, h - b, max(straight, s + 0.3 * b)).reverse()]

    def R(self, width, waist=0.44):
        """Where stem and leg leave no room for the underside of the bowl, the leg starts at the stem."""
        s, h, b = self.stem, self.height, self.bar
        low, right, side = h * waist - b * 0.3, width * 0.965, s * 1.02
        middle, radius = (low + h) / 2, (h - low) / 2
        turn = right - radius
        d = self.slanted(low, width - turn) * 0.92
        notch = [(s, low), (turn - d, low)]
        if turn - d < s * 1.15:
            notch = [(s, low * (width - d - s) / (width - turn))]
        feet = [(0, 0), (s, 0)] + notch + [(width - d, 0), (width, 0), (turn, low)]
        outline = Path([Line(p, q) for p, q in zip(feet, feet[1:])]
                       + [self.quarter((turn, low), (right, middle), "x"),
                          self.quarter((right, middle), (turn, h), "y"),
                          Line((turn, h), (0, h)), Line((0, h), (0, 0))])
        hole = Path([Line((s, low + b), (turn, low + b)),
                     self.quarter((turn, low + b), (right - side, middle), "x"),
                     self.quarter((right - side, middle), (turn, h - b), "y"),
                     Line((turn, h - b), (s, h - b)),
                     Line((s, h - b), (s, low + b))])
        return [outline, hole.reverse()]

    def cut(self, segment, x):
        """The part of a curve before the place where it passes x, and the part after it."""
        t0, t1 = 0.0, 1.0
        rising = segment.at(1).real > segment.at(0).real
        for _ in range(60):
            t = (t0 + t1) / 2
            if (segment.at(t).real > x) == rising:
                t1 = t
            else:
                t0 = t
        return segment.split(t0)

    def C(self, width):
        # The oval continues beyond the width, to where the mouth cuts it off.
        reach = 0.5 + 0.5 * math.cos(math.radians(MOUTH))
        head, inner_head, low, inner_low, outer, inner = self.mouth_of(width / reach)
        tail, inner_tail = self.cut(low, head.start.real)[0], self.cut(inner_low, inner_head.start.real)[0]
        run = [head] + outer + [tail, Line(tail.end, inner_tail.end)]
        run += [s.reversed() for s in reversed([inner_head] + inner + [inner_tail])]
        run.append(Line(run[-1].end, head.start))
        return [Path(run)]

    def mouth_of(self, width):
        """The sides of C and G: the arms as the mouth leaves them, the lower quarters whole, the rest."""
        outer, inner = self.ring_ovals(width)
        low_outer, high_outer = [q for q in outer if self.is_right_quarter(q, width)]
        low_inner, high_inner = [q for q in inner if self.is_right_quarter(q, width)]
        arms = []
        for quarter, angle in ((high_outer, MOUTH), (high_inner, MOUTH - 3)):
            radius = abs(quarter.start.real - quarter.end.real)
            arms.append(self.cut(quarter, quarter.end.real + radius * math.cos(math.radians(angle)))[1])
        return *arms, low_outer, low_inner, outer[:outer.index(low_outer)], inner[:inner.index(low_inner)]

    @staticmethod
    def is_right_quarter(segment, width):
        return isinstance(segment, Curve) and (segment.start.real + segment.end.real) / 2 > width * 0.54

    def G(self, width, bar_at=0.47):
        s, h, b = self.stem, self.height, self.bar
        head, inner_head, _, _, outer, inner = self.mouth_of(width)
        high, turn, bar_end = h * bar_at + b * 0.5, h * 0.31, width * 0.54
        run = [head] + outer + [self.quarter(outer[-1].end, (width, turn), "x"),
                                Line((width, turn), (width, high)),
                                Line((width, high), (bar_end, high)),
                                Line((bar_end, high), (bar_end, high - b)),
                                Line((bar_end, high - b), (width - s, high - b)),
                                Line((width - s, high - b), (width - s, turn)),
                                self.quarter((width - s, turn), inner[-1].end, "y")]
        run += [q.reversed() for q in reversed([inner_head] + inner)]
        run.append(Line(run[-1].end, head.start))
        return [Path(run)]

    def S(self, width, tilt=24):
        h, o, s, b = self.height, self.overshoot, self.stem * 1.02, self.bar * 0.95
        center = complex(width / 2, h / 2)
        along = cmath.exp(-1j * math.radians(tilt))
        across = along * -1j  # down and to the left
        left_at, right_at = h * 0.735, h * 0.265
        under = center + across * b * 0.54
        first, last = under - along * self.spine / 2, under + along * self.spine / 2
        top, bottom = complex(width * 0.51, h + o), complex(width * 0.49, b - o)

        def bent(start, end, leave, arrive):
            """A curve by its tangents, as full as a quarter."""
            d0, d1 = unit(leave), unit(arrive)
            reach = cross(end - start, d1) / cross(d0, d1)
            back = cross(d0, end - start) / cross(d0, d1)
            return Curve(start, start + d0 * reach * self.bend, end - d1 * back * self.bend, end)

        head = self.cut(self.quarter((width * 0.985, left_at), top, "y"), width * 0.93)[1]
        left = complex(0, left_at)
        inner_right = complex(width - s, right_at)
        tail = self.cut(self.quarter(bottom, (s * 0.9, right_at), "x"), width * 0.115)[0]
        belly = self.quarter(inner_right, bottom, "y")
        edge = [head, self.quarter(top, left, "x"), bent(left, first, -1j, along)]
        if self.spine:
            edge.append(Line(first, last))
        edge += [bent(last, inner_right, along, -1j), joined([belly, tail])]
        turned = [Path([q], closed=False).rotated(180, about=center).segments[0] for q in edge]
        run = edge + [Line(edge[-1].end, turned[0].start)] + turned + [Line(turned[-1].end, edge[0].start)]
        # The upper bowl is a little narrower than the lower one.
        lean = lambda p: complex(width / 2 + (p.real - width / 2) * (1 - 0.05 * p.imag / h), p.imag)
        path = Path(run).mapped(lean)
        left, right = path.bounds()[:2]
        return [path.moved(-left, 0).scaled(width / (right - left), 1)]


def joined(curves):
    """One curve that traces a run of smoothly joined ones, its ends and end directions kept."""
    places = [c.at(i / 20) for c in curves for i in range(20)] + [curves[-1].end]
    lengths = [0.0]
    for a, b in zip(places, places[1:]):
        lengths.append(lengths[-1] + abs(b - a))
    return fitted(places, [v / lengths[-1] for v in lengths], curves[0].direction(0), curves[-1].direction(1))


def fitted(places, times, leave, arrive, rounds=12):
    """The curve nearest to a run of points, by least squares on the lengths of its two handles."""
    a, b = places[0], places[-1]
    span = abs(b - a)
    curve = None
    for _ in range(rounds):
        c00 = c01 = c11 = x0 = x1 = 0.0
        for p, t in zip(places, times):
            u = 1 - t
            f0, f1, f2, f3 = u ** 3, 3 * u * u * t, 3 * u * t * t, t ** 3
            h0, h1 = leave * f1, -arrive * f2
            rest = p - (a * (f0 + f1) + b * (f2 + f3))
            c00, c01, c11 = c00 + dot(h0, h0), c01 + dot(h0, h1), c11 + dot(h1, h1)
            x0, x1 = x0 + dot(h0, rest), x1 + dot(h1, rest)
        det = c00 * c11 - c01 * c01
        if abs(det) < 1e-12:
            r0 = r1 = span / 3
        else:
            r0, r1 = (x0 * c11 - x1 * c01) / det, (c00 * x1 - c01 * x0) / det
        if r0 < span * 0.02 or r1 < span * 0.02:
            r0 = r1 = span / 3
        curve = Curve(a, a + leave * r0, b - arrive * r1, b)
        times = [nearer(curve, p, t) for p, t in zip(places, times)]
    return curve


def nearer(curve, p, t):
    """One step of Newton's method towards the time at which the curve is nearest to p."""
    gap, first = curve.at(t) - p, curve.velocity(t)
    a, b, c, d = curve.points()
    second = 6 * ((1 - t) * (c - 2 * b + a) + t * (d - 2 * c + b))
    slope = dot(first, first) + dot(gap, second)
    return min(1.0, max(0.0, t - dot(gap, first) / slope)) if abs(slope) > 1e-9 else t


# How much space a letter needs at its left and right side, in shares of the space between two stems.
AIR = {"A": (0.35, 0.35), "C": (0.7, 0.6), "D": (1, 0.72), "E": (1, 0.7), "F": (1, 0.5), "G": (0.7, 0.95),
       "H": (1, 1), "I": (1, 1), "L": (1, 0.4), "M": (1, 1), "N": (1, 1), "O": (0.7, 0.7), "R": (1, 0.55),
       "S": (0.65, 0.65), "T": (0.4, 0.4), "U": (0.95, 0.95), "Y": (0.3, 0.3)}
# Pairs that would otherwise leave a gap between them.
PAIRS = {"LI": 0.1, "TY": 0.16, "IT": 0.05, "AU": -0.02}


def width_of(letter):
    boxes = [path.bounds() for path in letter]
    return max(b[1] for b in boxes) - min(b[0] for b in boxes)


def set_in_line(text, letters, left, right, bottom, word_gap=2.6):
    """[(character, path, role)] of a text whose ink runs from left to right exactly. `letters` makes the
    letter of a character; a space is `word_gap` times the space between two stems."""
    made = [(c, letters(c)) for c in text if c != " "]
    shares, previous = [], None
    words = text.split(" ")
    starts = {sum(len(w) for w in words[:i]) for i in range(1, len(words))}
    for i, (c, _) in enumerate(made):
        if previous is not None:
            share = (AIR[previous][1] + AIR[c][0]) / 2 + PAIRS.get(previous + c, 0)
            shares.append(share + word_gap if i in starts else share)
        previous = c
    ink = sum(width_of(letter) for _, letter in made)
    air = (right - left - ink) / sum(shares)
    result, x = [], left
    for i, (c, letter) in enumerate(made):
        for n, path in enumerate(letter):
            first = min(p.bounds()[0] for p in letter)
            result.append((c, path.moved(x - first, bottom), OUTLINE if n == 0 else HOLE))
        x += width_of(letter) + (air * shares[i] if i < len(shares) else 0)
    return result
