"""The marks of formats and services: words set in plain capitals, and an emblem for each."""
import math

from drawing import HOLE, OUTLINE, Drawing, parse_listing
from geometry import Curve, Line, Path, Pen, point
from letters import Face, joined, set_in_line
from shapes import circle, polygon


def drawings():
    return ([tidal_small()] + [tidal_tall_word(), tidal_tall_mark()]
            + [tidal_wide_line(), tidal_wide_word(), tidal_wide_mark()]
            + [mqa_emblem(), mqa_m(), mqa_q(), mqa_a()] + high_res())


# The mark alone. Its numbers are given: four diamonds that touch at their corners.
DIAMONDS = """
    M (0.80901, 0.81118), C (0.96386, 0.65633; 0.809, 0.81119; 0.96386, 0.65633), L (0.809, 0.50148),
    C (0.65433, 0.65614; 0.809, 0.50148; 0.66038, 0.6501),
    C (0.49969, 0.5015; 0.64833, 0.65014; 0.5018, 0.50361),
    C (0.65452, 0.34667; 0.50185, 0.49934; 0.65452, 0.34667), L (0.49967, 0.19181), L (0.34481, 0.34667),
    C (0.49964, 0.5015; 0.34481, 0.34667; 0.49749, 0.49934),
    C (0.35047, 0.65068; 0.49774, 0.50341; 0.37811, 0.62303),
    C (0.34483, 0.65631; 0.34707, 0.65407; 0.34507, 0.65608),
    C (0.19, 0.50148; 0.34268, 0.65415; 0.19, 0.50148), L (0.03514, 0.65633), L (0.19, 0.81119),
    C (0.34483, 0.65636; 0.19, 0.81119; 0.34268, 0.65851),
    C (0.49967, 0.81119; 0.34699, 0.65851; 0.49967, 0.81119),
    C (0.65433, 0.65652; 0.49967, 0.81119; 0.64829, 0.66257),
    C (0.809, 0.81119; 0.66038, 0.66257; 0.809, 0.81119), L (0.80901, 0.81118), Z
"""
DIAMONDS_CANVAS = (150, 150)


def allow_given_oddities(drawing):
    # The given outline draws most sides as straight curves, and its last line is too short to be seen.
    return drawing.allow(turn=180, straight_curves=True, shortest=0.0001, kink=(0, 0), doubled=True)


def tidal_small():
    mark = Drawing("tidalLogoSmall", DIAMONDS_CANVAS, outlines="clockwise")
    mark.listing_of("four diamonds", DIAMONDS, OUTLINE)
    return allow_given_oddities(mark).want(subpaths=1, lines=6, curves=12,
                                           extent=(5.27, 144.58, 28.77, 121.68))


def tidal_tall_mark():
    """The same diamonds, no larger. They are where their last line keeps a length in five decimals."""
    mark = Drawing("tidalLogoTall__mark", (586, 354), outlines="clockwise")
    small = Drawing("small", DIAMONDS_CANVAS)
    for path in parse_listing(DIAMONDS):
        mark.add("four diamonds", path.mapped(small.from_frame).moved(218.031, 195.0335))
    return allow_given_oddities(mark).want(subpaths=1, lines=6, curves=12,
                                           extent=(223.3, 362.6, 223.8, 316.7),
                                           tolerance=0.05)


# TIDAL, of one size in both logos.
TIDAL_HEIGHT = 85.1
TIDAL_FACE = Face(TIDAL_HEIGHT, stem=14.6, bar=13.2, bend=0.57)
TIDAL_WIDTHS = {"T": 72, "D": 79, "A": 90, "L": 58}


def capital(face, widths):
    """Letters by their widths; a width may be a dictionary with more about the letter."""
    def make(c):
        if c == "I":
            return face.I()
        more = widths[c] if isinstance(widths[c], dict) else {"width": widths[c]}
        return getattr(face, c)(**more)

    return make


def tidal_word(name, canvas, left, right, bottom):
    word = Drawing(name, canvas)
    for c, path, role in set_in_line("TIDAL", capital(TIDAL_FACE, TIDAL_WIDTHS), left, right, bottom):
        word.add(c if role == OUTLINE else f"counter of {c}", path, role)
    return word.want(subpaths=7, lines=35, curves=4, tolerance=0.05,
                     extent=(left, right, bottom, bottom + TIDAL_HEIGHT))


def tidal_tall_word():
    return tidal_word("tidalLogoTall__word", (586, 354), 31.5, 554.3, 62.4)


def tidal_wide_word():
    return tidal_word("tidalLogoWide__word", (835, 332), 274.3, 797.1, 179.4)


def tidal_wide_line():
    face = Face(31.2, stem=4.9, bar=4.5, overshoot=0.4, bend=0.57, upright=2.4, spine=2.2)
    widths = {"A": 27.6, "C": 25, "D": 23.8, "E": 17.8, "F": 17.2, "G": 26.6, "H": 22.6, "L": 16.8, "M": 28.4,
              "N": 23.6, "R": 22.4, "S": 19.8, "T": 21.6, "U": 22.4, "Y": 24.6}
    line = Drawing("tidalLogoWide__line", (835, 332))
    text = "HIGH FIDELITY MUSIC STREAMING"
    for c, path, role in set_in_line(text, capital(face, widths), 44.8, 799.7, 79.2):
        line.add(c if role == OUTLINE else f"counter of {c}", path, role)
    return line.want(subpaths=29, lines=205, curves=56, extent=(44.8, 799.7, 78.8, 110.8), tolerance=0.05)


def tidal_wide_mark():
    """Diamonds in three pieces: a left one, a right one, and between them two joined by a neck. Sides that
    run to a neck or to a neighbor's blunted corner are drawn in slightly, which keeps the gaps visibly
    open."""
    left, right, bottom, top = 44.8, 194.1, 177.4, 277.0
    x0, half = (left + right) / 2, (right - left) / 6
    y0 = top - (top - bottom) / 4
    gap, blunt, neck, hollow = 0.9, 1.5, 1.7, 0.013

    def drawn_in(pen, end, inward):
        """A side that bends towards `inward`, a compass direction, by a small share of its length."""
        start, end = pen.here, point(end)
        push = abs(end - start) * hollow * 4 / 3 * complex(math.cos(math.radians(inward)),
                                                           math.sin(math.radians(inward)))
        return pen.curve(end, start + (end - start) / 3 + push, end - (end - start) / 3 + push)

    def outer(side):
        """The left diamond for side -1, the right one for 1, all around from its blunted corner."""
        corner = x0 + side * (half + gap)
        center = x0 + side * 2 * half
        tip = left if side < 0 else right
        pen = Pen(corner, y0 - blunt).line(corner, y0 + blunt)
        drawn_in(pen, (center, top), 315 if side > 0 else 225)
        pen.line(tip, y0).line(center, y0 - half)
        drawn_in(pen, (corner, y0 - blunt), 45 if side > 0 else 135)
        return pen.close()

    low = y0 - half
    pen = Pen(x0 + half - gap, y0 - blunt).line(x0 + half - gap, y0 + blunt)
    # Continues to the left, down the neck and around the lower diamond.
    drawn_in(pen, (x0, top), 225)
    drawn_in(pen, (x0 - half + gap, y0 + blunt), 315)
    pen.line(x0 - half + gap, y0 - blunt)
    drawn_in(pen, (x0 - neck, low), 45)
    drawn_in(pen, (x0 - half, low - half), 315)
    pen.line(x0, bottom).line(x0 + half, low - half)
    drawn_in(pen, (x0 + neck, low), 225)
    drawn_in(pen, (x0 + half - gap, y0 - blunt), 135)
    mark = Drawing("tidalLogoWide__mark", (835, 332))
    mark.add("left diamond", outer(-1)).add("two diamonds", pen.close()).add("right diamond", outer(1))
    return mark.want(subpaths=3, lines=10, curves=10, extent=(left, right, bottom, top), tolerance=0.05)


# MQA. All of it lies in a frame that is snapped to the points of the badge; on the whole canvas it is this.
MQA_CANVAS, MQA_FRAME = (65, 18), (0, 0, 50.32, 17.81)
# The feet of the letters stand on the tail of the Q, which is a bar with round ends.
MQA_FEET, MQA_HEIGHT, MQA_STROKE, MQA_SOFT = 4.95, 7.9, 1.5, 0.42


def mqa(name):
    # Inner outlines come first; the search finds one of them clockwise, the outer one around it counterclockwise.
    return Drawing(name, MQA_CANVAS, frame=MQA_FRAME)


def mqa_emblem():
    """A sampled wave: bars above and below the middle line of the seal."""
    middle, radius = 8.9, 8.9
    seal = mqa("mqaEmblem")
    pitch, width = 2.25, 1.28
    heights = (3.5, 6.1, 3.5, -3.5, -6.1, -3.5)
    for i, height in enumerate(heights):
        x = middle + (i - 2.5) * pitch
        near, far = (0.66, height) if height > 0 else (-0.66, height)
        low, high = sorted((middle - near, middle + far))
        r = width / 2
        bar = (Pen(x + r, low + r).line(x + r, high - r).arc((x, high - r), 180).line(x - r, low + r)
               .arc((x, low + r), 360).close())
        seal.hole("bar of the wave", bar)
    seal.add("seal", circle((middle, middle), radius))
    return seal.want(subpaths=7, lines=12, curves=28, extent=(0, 17.8, 0, 17.8), tolerance=0.02)


MQA_FACE = Face(MQA_HEIGHT, stem=MQA_STROKE, bar=1.4)


def soft(path, radius=MQA_SOFT, inside=0.16):
    """Outward corners get a large radius, inward ones a small one."""
    path = path.counterclockwise()
    radii = {}
    for i in path.corners():
        a, b = path.segments[i], path.segments[(i + 1) % len(path.segments)]
        turn = (b.direction(0) / a.direction(1)).imag
        where = a.end
        radii[(where.real, where.imag)] = radius if turn > 0 else inside
    return path.rounded(radii)


def with_plain_notches(path, longest=0.5):
    """Each of the tiny arcs in the notches is one curve, however far it turns."""
    segments = []
    for segment in path.segments:
        both = segments and isinstance(segments[-1], Curve) and isinstance(segment, Curve)
        if both and segments[-1].length() + segment.length() < longest:
            segments[-1] = joined([segments[-1], segment])
        else:
            segments.append(segment)
    return Path(segments)


def mqa_m():
    m = with_plain_notches(soft(MQA_FACE.M(10.2, valley=0.9, flat=1.3)[0]))
    return mqa("mqaM").add("M", m.moved(20.6, MQA_FEET)).want(
        subpaths=1, lines=13, curves=13, extent=(20.6, 30.8, MQA_FEET, MQA_FEET + MQA_HEIGHT), tolerance=0.02)


def mqa_q():
    left, right, bottom, top = 31.9, 40.1, MQA_FEET, MQA_FEET + MQA_HEIGHT
    q = mqa("mqaQ")

    def round_box(inset, radius):
        return polygon([(left + inset, bottom + inset), (right - inset, bottom + inset),
                        (right - inset, top - inset * 0.97), (left + inset, top - inset * 0.97)], radius)

    q.hole("counter of Q", round_box(MQA_STROKE, 2.05)).add("Q", round_box(0, 3.5))
    return q.want(subpaths=2, lines=8, curves=8, extent=(left, right, bottom, top), tolerance=0.02)


def mqa_a():
    outline, counter = MQA_FACE.A(8.7, apex=1.2, bar_at=0.19, roof=0.5)
    a = mqa("mqaA")
    a.hole("counter of A", soft(counter, 0.16)).add("A", soft(outline))
    a.fit_extents(41.6, 50.3, MQA_FEET, MQA_FEET + MQA_HEIGHT)
    return a.want(subpaths=2, lines=12, curves=16, extent=(41.6, 50.3, MQA_FEET, MQA_FEET + MQA_HEIGHT),
                  tolerance=0.02)


# Hi-Res. Its frame, too, is snapped to points.
HIGH_RES_CANVAS, HIGH_RES_FRAME = (200, 200), (0.47, 58.48, 199.45, 141.75)
SQUARE_OUTLINES = """
    M (0.35819, 0.96937), C (0.35819, 0.6974; 0.35819, 0.87872; 0.35819, 0.78806),
    C (0.55245, 0.6974; 0.42294, 0.6974; 0.48769, 0.6974),
    C (0.55245, 0.96937; 0.55245, 0.78806; 0.55245, 0.87872),
    C (0.35819, 0.96937; 0.48769, 0.96937; 0.42295, 0.96937), Z, M (0.35819, 0.29936),
    C (0.35819, 0.02739; 0.35819, 0.2087; 0.35819, 0.11805),
    C (0.55245, 0.02739; 0.42294, 0.02739; 0.48769, 0.02739),
    C (0.55245, 0.29936; 0.55245, 0.11805; 0.55245, 0.2087),
    C (0.35819, 0.29936; 0.48769, 0.29936; 0.42295, 0.29936), Z
"""


def high_res_word(name, text, face, widths, box, lines, curves):
    """The last side of each letter is drawn by the close."""
    left, right, bottom, top = box
    word = Drawing(name, HIGH_RES_CANVAS, frame=HIGH_RES_FRAME)
    for c, path, role in set_in_line(text, capital(face, widths), left, right, bottom + face.overshoot):
        word.add(c if role == OUTLINE else f"counter of {c}", path, role, closing_line=False)
    word.fit_counts(lines, curves)
    return word.want(extent=box, tolerance=0.05)


def high_res():
    squares = Drawing("highResAudioLogo__squares", HIGH_RES_CANVAS, frame=HIGH_RES_FRAME)
    squares.listing_of("square", SQUARE_OUTLINES, OUTLINE)
    squares.subpaths[0].name, squares.subpaths[1].name = "upper square", "lower square"
    allow_given_oddities(squares).want(subpaths=2, lines=0, curves=8)
    low, high = 127.3, 141.5
    face = Face(high - low - 0.4, stem=3.3, bar=2.95, overshoot=0.2, bend=0.58, spine=1.1, straight_d=1.6)
    widths = {"H": 13.4, "G": 14.8, "A": 15.6, "U": 12.8, "D": 13.4, "O": 15.4, "R": 11.2, "E": 8.7, "S": 9.9}
    size = 4.5 - 0.12
    tag_face = Face(size, stem=1.02, bar=0.92, overshoot=0.06, bend=0.58, spine=0.35, straight_d=0.5)
    tag_widths = {"M": {"width": 5.1, "flat": 0.7}, "U": 4.0, "S": 3.5, "C": 4.2}
    tag = high_res_word("highResAudioLogo__tag", "MUSIC", tag_face, tag_widths,
                        (86.2, 106.7, 66.2, 70.7), 24, 24)
    audio = high_res_word("highResAudioLogo__audio", "AUDIO", face, widths, (114.7, 193.0, low, high), 23, 24)
    res = high_res_word("highResAudioLogo__res", "RES", face, widths, (75.1, 108.0, low, high), 22, 14)
    hi = high_res_word("highResAudioLogo__high", "HIGH", face, widths, (8.4, 65.9, low, high), 30, 8)
    # The stem of the I in the tag is a point wide.
    tag.allow(speck=4, shortest=0.3)
    return [squares, tag, audio, res, hi]
