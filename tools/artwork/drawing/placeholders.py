"""The placeholders of a cover: a small disc, and a ring of dots that shows that the cover is loading."""
import math

from drawing import Drawing
from geometry import Line, Path, arc
from shapes import circle, ellipse


def drawings():
    return [icon_album(), loading_album_art()]


def icon_album():
    """A disc in outline: rim, label, pin, and two glints opposite each other between rim and label."""
    disc, middle = Drawing("iconAlbum", canvas=(50, 50)), (25, 25)
    disc.add("rim", circle(middle, 50 * 0.44))
    disc.hole("rim", circle(middle, 50 * 0.40333))
    disc.add("upper right glint", glint())
    disc.add("label", circle(middle, 50 * 0.18333))
    disc.hole("label", circle(middle, 50 * 0.14667))
    disc.add("pin", circle(middle, 50 * 0.03667))
    disc.add("lower left glint", glint().rotated(180, about=middle))
    disc.want(subpaths=7, lines=4, curves=24, extent=(3, 47, 3, 47), tolerance=0.05)
    return disc.want(extents={"upper right glint": (32.45, 38.6, 32.4, 38.6),
                              "lower left glint": (11.4, 17.55, 11.4, 17.6)})


def glint():
    """The piece of a ring around the disc's center that a narrow wedge cuts out."""
    half_angle = 3.4
    inner = 50 * 0.1485 / math.sin(math.radians(45 - half_angle))
    outer = 50 * 0.272 / math.cos(math.radians(45 - half_angle))
    middle = 44.9  # degrees: a little nearer to the right than to the top
    near = arc((25, 25), inner, middle + half_angle, middle - half_angle)
    far = arc((25, 25), outer, middle - half_angle, middle + half_angle)
    return Path(near + [Line(near[-1].end, far[0].start)] + far + [Line(far[-1].end, near[0].start)])


# Center, outer diameter and hole diameter of the dots, which grow clockwise from the lower left. They are
# slightly taller than wide.
DOTS = {
    "lower left": ((78.66, 81.72), (6.49, 6.56), None),
    "left": ((70.56, 101.39), (8.11, 8.20), (1.62, 1.64)),
    "upper left": ((78.66, 121.06), (9.73, 9.84), (3.24, 3.28)),
    "top": ((98.13, 129.26), (11.35, 11.48), (4.86, 4.92)),
    "upper right": ((117.59, 121.06), (12.98, 13.12), (6.49, 6.56)),
    "right": ((125.70, 101.39), (14.60, 14.76), (8.11, 8.20)),
    "lower right": ((117.59, 81.72), (16.22, 16.39), (9.73, 9.84)),
    "bottom": ((98.13, 73.52), (17.84, 18.03), (11.35, 11.48)),
}


def loading_album_art():
    ring = Drawing("loadingAlbumArt")

    def dot(position):
        center, (width, height), _ = DOTS[position]
        ring.add(position, ellipse(center, width / 2, height / 2))

    def hole(position):
        center, _, (width, height) = DOTS[position]
        ring.hole(position, ellipse(center, width / 2, height / 2))

    dot("top"), hole("top")
    dot("upper right"), dot("upper left"), hole("upper right"), hole("upper left")
    dot("right"), dot("left"), hole("right"), hole("left")
    dot("lower right"), hole("lower right")
    dot("lower left")
    dot("bottom"), hole("bottom")
    # The hole of the second smallest dot is as small as the rings' wall makes it.
    ring.allow(speck=2)
    return ring.want(subpaths=15, lines=0, curves=60, extent=(66.505, 133, 64.505, 135), tolerance=0.05)
