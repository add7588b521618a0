"""The mood icons of themes: a television, a sun, a record player, a trophy and a stage curtain. Like
those of mood.py they are line art on a canvas of 200 points, every line about five points wide."""
import cmath
import math

from drawing import Drawing
from geometry import Path, Pen, arc
from region import Ink
from shapes import capsule, circle, polygon, polyline, rounded_rectangle, symmetric


def drawings():
    return [media(), seasonal(), history(), charts(), events()]


def polar(center, radius, degrees):
    place = complex(*center) + radius * cmath.exp(1j * math.radians(degrees))
    return place.real, place.imag


def bulged(left, right, bottom, top, bulge, radius):
    """A rectangle with rounded corners and sides that bow outward, as old tubes have."""
    x, y = (left + right) / 2, (bottom + top) / 2
    a, b = (right - left) / 2, (top - bottom) / 2
    reach = 4 / 3 * bulge
    path = (Pen(x - a, y - b)
            .curve((x + a, y - b), (x - a / 3, y - b - reach), (x + a / 3, y - b - reach))
            .curve((x + a, y + b), (x + a + reach, y - b / 3), (x + a + reach, y + b / 3))
            .curve((x - a, y + b), (x + a / 3, y + b + reach), (x - a / 3, y + b + reach))
            .curve((x - a, y - b), (x - a - reach, y + b / 3), (x - a - reach, y - b / 3)).close())
    return path.rounded(radius)


def media():
    ink, axis = Ink(), 100.5
    for side in (-1, 1):
        tip = (axis + side * 25, 154.5)
        ink.stroke(polyline([(axis + side * 5, 136), tip])).outline(circle(tip, 5))
        inner, outer = axis + side * 40, axis + side * 66
        ink.outline(polygon([(inner, 60), (outer, 60), (outer, 40.5, 3), (inner, 40.5, 3)]))
    ink.outline(rounded_rectangle(15.5, 185.5, 49.5, 139, 13))
    ink.stroke(polyline([(134.5, 49.5), (134.5, 139)]), ends="butt")
    ink.outline(bulged(28.5, 121.5, 62, 126.5, 3, 12))
    for y in (121.25, 94.75):
        ink.outline(circle((159.75, y), 8.5))
        ink.draw(capsule((159.75, y), (159.75, y + 7), 5))
    for row in range(3):
        for x in (143.75, 163.75):
            ink.draw(capsule((x + 2.5, 58.75 + 9.25 * row), (x + 9.5, 58.75 + 9.25 * row), 5))
    ink.stroke(polyline([(41, 95), (60, 114)]))
    ink.stroke(polyline([(41, 107), (48, 114)]))
    television = Drawing("moodMedia").add_region(ink)
    television.fit_extents(13, 188, 38, 162)
    television.fit_counts(lines=46, curves=200)
    return television.want(subpaths=21, lines=46, curves=200, extent=(13, 188, 38, 162))


def seasonal():
    ink, center = Ink(), (100.5, 100.5)
    ink.outline(circle(center, 37))
    ray = polygon([(100.5 - 14.5, 153, 3.5), (100.5 + 14.5, 153, 3.5), (100.5, 191.6, 3.5)])
    for i in range(8):
        ink.outline(ray.rotated(45 * i, about=center))
    ink.stroke(Path(arc(center, 25, 98, 142), closed=False))
    ink.stroke(Path(arc(center, 25, 162, 180), closed=False))
    sun = Drawing("moodSeasonal").add_region(ink)
    sun.fit_extents(13, 188, 13, 188)
    sun.fit_counts(lines=40, curves=200)
    return sun.want(subpaths=20, lines=40, curves=200, extent=(13, 188, 13, 188))


def history():
    ink, disc = Ink(), (74, 100)
    ink.outline(rounded_rectangle(15.5, 185.5, 41.5, 158.5, 12))
    ink.outline(circle(disc, 46))
    for radius in (25, 35):
        ink.stroke(Path(arc(disc, radius, 28, 96), closed=False))
        ink.stroke(Path(arc(disc, radius, 208, 276), closed=False))
    ink.outline(circle(disc, 14.5))
    ink.draw(circle(disc, 4))
    ink.stroke(polyline([(147, 145), (147, 93), (110, 69)], 14))
    ink.outline(rounded_rectangle(-11, 11, -6.5, 6.5, 2.5).rotated(33).moved(107, 67))
    ink.outline(rounded_rectangle(139, 155, 134.5, 147.5, 3))
    ink.outline(circle((147, 121), 11)).draw(circle((147, 121), 3.5))
    ink.stroke(polyline([(169, 82), (169, 144)]))
    ink.outline(capsule((165.5, 101), (172.5, 101), 11))
    ink.outline(circle((169, 59), 8.5))
    ink.outline(circle((31, 57), 6))
    for x in (135, 147):
        ink.draw(capsule((x, 53), (x, 59), 5))
    player = Drawing("moodHistory").add_region(ink)
    player.fit_extents(13, 188, 39, 161)
    player.fit_counts(lines=38, curves=256)
    return player.want(subpaths=23, lines=38, curves=256, extent=(13, 188, 39, 161))


def star(center, outer, inner, radius=0):
    points = []
    for i in range(5):
        points.append(polar(center, outer, 90 + 72 * i))
        points.append(polar(center, inner, 126 + 72 * i))
    return polygon(points, radius)


def charts():
    axis, ink = 100.5, Ink()
    handle = (Pen(140, 166).line(176, 166).curve((185.5, 156.5), (181, 166), (185.5, 162))
              .curve((132, 101), (185.5, 126), (166, 108)).open())
    ink.stroke(handle).stroke(handle.mirrored(axis))
    foot = symmetric(Pen(axis, 90).line(110.5, 90).curve((125, 47), (110.5, 64), (114, 47))
                     .line(134, 47).line(134, 31).line(147, 31).line(147, 15.5).line(axis, 15.5).open(), axis)
    outer_corners = [(134, 47), (67, 47), (147, 31), (54, 31), (147, 15.5), (54, 15.5)]
    ink.outline(foot.rounded({corner: 4 for corner in outer_corners}))
    bowl = symmetric(Pen(axis, 185.5).line(150, 185.5).curve((axis, 82), (150, 120), (134, 82)).open(), axis)
    ink.outline(bowl)
    ink.draw(capsule((axis - 56, 185.5), (axis + 56, 185.5), 5))
    ink.outline(star((axis, 142), 26, 13.5, 1.2))
    cup = Drawing("moodCharts").add_region(ink)
    cup.fit_extents(13, 188, 13, 188)
    cup.fit_counts(lines=46, curves=228)
    return cup.want(subpaths=7, lines=46, curves=228, extent=(13, 188, 13, 188))


def events():
    ink, axis = Ink(), 100.5
    # The wavy hem, up the gathered edge to the waist, and on to the middle of the stage.
    left = (Pen(15.5, 49).smooth((27, 46.5), -20, 0).smooth((39, 49), 0, 0).smooth((51, 46.5), 0, 0)
            .smooth((62, 49), 0, 20).smooth((45, 84), 100, 100).smooth((98, 150), 20, 80)
            .line(15.5, 150).close())
    left = left.rounded({(62, 49): 4, (45, 84): 4, (15.5, 49): 4})
    folds = [Pen(38, 140).smooth((29.5, 92), -88, -108).open(),
             Pen(62, 140).smooth((41, 98), -95, -140).open(),
             Pen(33, 48).smooth((29, 74), 85, 105).open()]
    ink.outline(left).outline(left.mirrored(axis))
    for fold in folds:
        ink.stroke(fold).stroke(fold.mirrored(axis))
    valance = Pen(15.5, 154.5)
    valance.line(15.5, 137)
    for i in range(5):
        x = 15.5 + 34 * i
        valance.curve((x + 34, 137), (x + 9, 125), (x + 25, 125))
    ink.outline(valance.line(185.5, 154.5).close(), corners="round")
    curtain = Drawing("moodEvents").add_region(ink)
    curtain.fit_extents(13, 188, 44, 157)
    curtain.fit_counts(lines=6, curves=128)
    return curtain.want(subpaths=4, lines=6, curves=128, extent=(13, 188, 44, 157))
