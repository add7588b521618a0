"""The icons of a streaming browser that are ours to draw: black lines of about 2.6 points on a canvas of 50 points, or
twice that on one of 100; straight ends, mitered corners, round parts true arcs."""
import cmath
import math

from drawing import Drawing
from geometry import Line, Path, arc, point
from shapes import circle, ellipse, polygon


def drawings():
    return [genres(), search(), playlist(), album(), music()]


def joined(*runs):
    """A closed path of runs of segments, with straight sides where a run does not start where the one before ended."""
    segments = []
    for run in runs:
        if segments and abs(segments[-1].end - run[0].start) > 1e-6:
            segments.append(Line(segments[-1].end, run[0].start))
        segments += run
    return Path(segments)


def direction(degrees):
    return cmath.exp(1j * math.radians(degrees))


def genres():
    """A record in front of a second one, of which only the top shows."""
    # Drawn as a circle, then compressed by less than a hundredth: the front record is slightly wider than high.
    press = 21.85 / 22
    front, back = point((25, 22)), point((25, 31.45))
    back_radius = 50 / press - back.imag
    # The common outline leaves one record for the other along their common tangents.
    lean = math.degrees(math.asin((22 - back_radius) / abs(back - front)))
    outline = joined(arc(back, back_radius, lean, 180 - lean, per_curve=(180 - 2 * lean) / 14),
                     arc(front, 22, 180 - lean, 360 + lean, per_curve=(180 + 2 * lean) / 22))
    tip = point((14.32, 38.4 / press - 22))
    rim = math.degrees(cmath.phase(tip))
    shown_from = math.degrees(cmath.phase(front + tip - back))
    shown_radius = abs(front + tip - back)
    crescent = joined(arc(back, shown_radius, shown_from, 180 - shown_from, per_curve=(180 - 2 * shown_from) / 7),
                      arc(front, abs(tip), 180 - rim, rim, per_curve=(180 - 2 * rim) / 7))
    icon = Drawing("tidalIconGenres", canvas=(50, 50))
    icon.hole("label", circle((25, 22.2), 2.8, curves=16))
    icon.add("label", circle((25, 22.2), 5.5, curves=16))
    icon.add("outline", outline.scaled(1, press, about=(25, 0)))
    icon.hole("crescent", crescent.scaled(1, press, about=(25, 0)))
    icon.hole("rim", ellipse((25, 21.85), 19.3, 19.15, curves=28))
    icon.want(subpaths=5, lines=2, curves=110, extent=(3, 47, 0, 50), tolerance=0.1)
    return icon.want(extents={"outline": (3, 47, 0, 50), "crescent": (10.7, 39.3, 38.4, 47.2), "rim": (5.7, 44.3, 2.7, 41)})


def search():
    """A magnifying glass, its handle in outline like the glass."""
    # Drawn as a circle, then compressed like the records.
    middle, wall, press = point((30.6, 30.75)), 2.4, 16.25 / 16.4
    along, across = direction(225), direction(135)

    def handle(half_width, length):
        """Half the angle that the handle takes from the glass's rim, and its square end, left to right."""
        corners = [middle + along * length + across * half_width * side for side in (1, -1)]
        return math.degrees(math.asin(half_width / (14 + wall))), [Line(*corners)]

    half_angle, end = handle(3.97, 39.249 - 3.97)
    glass = arc(middle, 14 + wall, 225 + half_angle, 585 - half_angle, per_curve=(360 - 2 * half_angle) / 20)
    slot_angle, slot_end = handle(1.52, 34.33 - 1.52)
    slot_rim = arc(middle, 14 + wall, 225 + slot_angle, 225 - slot_angle, per_curve=slot_angle)
    icon = Drawing("tidalIconSearch", canvas=(50, 50), frame=(0, 50, 1, -1))
    icon.add("glass and handle", joined(glass, end).scaled(1, press, about=middle))
    icon.hole("slot of the handle", joined(slot_rim, slot_end).scaled(1, press, about=middle))
    icon.hole("opening of the glass", ellipse(middle, 14, 13.85, curves=18))
    icon.want(subpaths=3, lines=6, curves=40, extent=(2.8, 47, 3.3, 47), tolerance=0.1)
    return icon.want(extents={"slot of the handle": (6.3, 20.1, 6.7, 20.4), "opening of the glass": (16.6, 44.6, 16.9, 44.6)})


def tilted(center, reach_x, reach_y, degrees):
    """The center and two axes of an ellipse that leans by the angle and has the given extents."""
    total = reach_x ** 2 + reach_y ** 2
    difference = (reach_x ** 2 - reach_y ** 2) / math.cos(math.radians(2 * degrees))
    return point(center), math.sqrt((total + difference) / 2), math.sqrt((total - difference) / 2), degrees


def tilted_arc(shape, start, end, curves):
    """The arc between two places, in degrees, of the circle from which the ellipse was made."""
    center, long, short, degrees = shape
    turn = direction(degrees)
    return [s.mapped(lambda p: center + complex(p.real * long, p.imag * short) * turn)
            for s in arc(0, 1, start, end, per_curve=abs(end - start) / curves)]


def tilted_ellipse(shape, curves):
    return Path(tilted_arc(shape, 90, 450, curves))


def place_at_x(shape, x, above):
    """Where the ellipse has this x, above or below its middle, as a place of the circle from which it was made."""
    center, long, short, degrees = shape
    tilt = math.radians(degrees)
    # x - center = long cos t cos tilt - short sin t sin tilt
    reach = math.hypot(long * math.cos(tilt), short * math.sin(tilt))
    phase = math.atan2(short * math.sin(tilt), long * math.cos(tilt))
    swing = math.acos(max(-1, min(1, (x - center.real) / reach)))
    return math.degrees(swing - phase if above else -swing - phase)


HEAD_TILT = 18


def head(shape, stem_left, curves):
    """The outline of a note's head, from its rightmost point, where the stem's right side ends, below and around to the
    stem's left side. Clockwise."""
    right = shape[0].real + math.hypot(shape[1] * math.cos(math.radians(shape[3])),
                                       shape[2] * math.sin(math.radians(shape[3])))
    return tilted_arc(shape, place_at_x(shape, right, above=True), place_at_x(shape, stem_left, above=True) - 360, curves)


def playlist():
    icon = Drawing("tidalIconPlaylist", canvas=(50, 50))
    icon.listing_of("sheet", "M (0.59961, 0.94), L (0.2, 0.94), L (0.2, 0.06), L (0.8, 0.06), L (0.8, 0.71968), "
                             "L (0.59961, 0.94), Z", "outline")
    icon.listing_of("fold", "M (0.72969, 0.71968), L (0.59961, 0.71968), L (0.59961, 0.86269), "
                            "L (0.72969, 0.71968), Z", "hole")
    fold_x, fold_y = 50 * 0.59961 - 2.5, 50 * 0.71968 - 2.8
    icon.hole("inner sheet", polygon([(fold_x, 44.2), (fold_x, fold_y), (37.5, fold_y), (37.5, 5.8), (12.5, 5.8),
                                      (12.5, 44.2)]))
    shape = tilted((25.35, 15.4), 4.75, 4.2, HEAD_TILT)
    stem = [Line((27.6, 29.5), (30.1, 29.5))]
    icon.add("note", joined(stem, head(shape, 27.6, 22)))
    icon.hole("head of the note", tilted_ellipse(tilted((25.35, 15.4), 2.25, 1.4, HEAD_TILT), 16))
    icon.want(subpaths=5, lines=17, curves=38, extent=(10, 40, 3, 47), tolerance=0.1)
    return icon.want(extents={"inner sheet": (12.5, 37.5, 5.8, 44.2), "note": (20.6, 30.1, 11.2, 29.5),
                              "head of the note": (23.1, 27.6, 14, 16.8)})


def album():
    """Three rings around one center."""
    icon = Drawing("tidalIconAlbum", canvas=(50, 50))
    for name, inner, outer in (("wide ring", 20, 22.5), ("small ring", 3.2, 5.6), ("middle ring", 7.5, 10)):
        icon.hole(name, circle((25, 25), inner, curves=16))
        icon.add(name, circle((25, 25), outer, curves=16))
    return icon.want(subpaths=6, lines=0, curves=96, extent=(2.5, 47.5, 2.5, 47.5), tolerance=0.05)


def music():
    """Two notes under one slanted beam, all in outline."""
    left, right = tilted((20.8, 16.3), 14.8, 10.3, HEAD_TILT), tilted((79.2, 26.7), 14.8, 10.3, HEAD_TILT)
    rise = 10.4 / 58.4  # of the beam, the same as that of the heads

    def beam(x, y_at_left):
        return x, y_at_left + (x - 35.6) * rise

    top, lower = 94 - (94 - 35.6) * rise, 58.7
    notes = joined([Line(beam(29.8, top), beam(94, top))], head(right, 88.1, 24),
                   [Line(beam(88.1, lower), beam(35.6, lower))], head(left, 29.8, 24))
    icon = Drawing("tidalMusicIcon", canvas=(100, 100))
    icon.add("notes", notes)
    icon.hole("left head", tilted_ellipse(tilted((20.85, 16.3), 8.95, 5.2, HEAD_TILT), 18))
    icon.hole("right head", tilted_ellipse(tilted((79.15, 26.7), 8.95, 5.2, HEAD_TILT), 18))
    icon.hole("between the beams", polygon([beam(35.6, 64.5), beam(88.1, 64.5), beam(88.1, 77.85), beam(35.6, 77.85)]))
    icon.want(subpaths=4, lines=10, curves=84, extent=(6, 94, 6, 94), tolerance=0.1)
    return icon.want(extents={"left head": (11.9, 29.8, 11.1, 21.5), "right head": (70.2, 88.1, 21.5, 31.9),
                              "between the beams": (35.6, 88.1, 64.5, 87.2)})
