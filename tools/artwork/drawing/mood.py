"""The mood icons: line art on a canvas of 200 points, every line about five points wide."""
from drawing import HOLE, OUTLINE, Drawing
from geometry import Pen
from offset import offset, ring, stroke
from region import Ink, united
from shapes import capsule, circle, ellipse, polygon, polyline, rounded_rectangle, symmetric


def drawings():
    return [relax(), party(), workout(), love(), focus(), dinner(), celebrities()]


# The heart's numbers are given, so it is not drawn but written down. Its inner line comes first.
HEART_INSIDE = """
    M (0.68326, 0.88345), C (0.72911, 0.87814; 0.69898, 0.88345; 0.71426, 0.88168),
    C (0.77234, 0.86487; 0.74395, 0.8746; 0.75836, 0.87018),
    C (0.81163, 0.84363; 0.78631, 0.85956; 0.79941, 0.85248),
    C (0.84831, 0.81443; 0.82386, 0.83478; 0.83608, 0.82505),
    C (0.89808, 0.73744; 0.87101, 0.79142; 0.8876, 0.76576),
    C (0.9138, 0.64984; 0.90856, 0.70913; 0.9138, 0.67992),
    C (0.89808, 0.5609; 0.9138, 0.61975; 0.90856, 0.59011),
    C (0.84831, 0.48259; 0.8876, 0.5317; 0.87101, 0.5056), L (0.5025, 0.13217), L (0.15669, 0.48259),
    C (0.10692, 0.5609; 0.13399, 0.5056; 0.1174, 0.5317),
    C (0.0912, 0.64984; 0.09644, 0.59011; 0.0912, 0.61975),
    C (0.10692, 0.73744; 0.0912, 0.67992; 0.09644, 0.70913),
    C (0.15669, 0.81443; 0.1174, 0.76576; 0.13399, 0.79142),
    C (0.19337, 0.84363; 0.16892, 0.82505; 0.18114, 0.83478),
    C (0.23266, 0.86487; 0.20559, 0.85248; 0.21869, 0.85956),
    C (0.27589, 0.87814; 0.24664, 0.87018; 0.26105, 0.8746),
    C (0.32174, 0.88345; 0.29074, 0.88168; 0.30602, 0.88345),
    C (0.36758, 0.87814; 0.33746, 0.88345; 0.35274, 0.88168),
    C (0.4095, 0.86487; 0.38243, 0.8746; 0.3964, 0.87018),
    C (0.44879, 0.84363; 0.4226, 0.85956; 0.4357, 0.85248),
    C (0.48416, 0.81443; 0.46189, 0.83478; 0.47368, 0.82505), L (0.5025, 0.79585),
    L (0.52084, 0.81443), C (0.55621, 0.84363; 0.53132, 0.82505; 0.54311, 0.83478),
    C (0.5955, 0.86487; 0.5693, 0.85248; 0.5824, 0.85956),
    C (0.63742, 0.87814; 0.6086, 0.87018; 0.62257, 0.8746),
    C (0.68326, 0.88345; 0.65226, 0.88168; 0.66754, 0.88345), Z
"""
HEART = """
    M (0.68326, 0.91), C (0.6348, 0.90469; 0.66754, 0.91; 0.65139, 0.90823),
    C (0.58764, 0.89009; 0.61821, 0.90115; 0.60249, 0.89628),
    C (0.54311, 0.8662; 0.5728, 0.8839; 0.55795, 0.87593),
    C (0.5025, 0.83301; 0.52826, 0.85646; 0.51473, 0.8454),
    C (0.46189, 0.8662; 0.49027, 0.8454; 0.47674, 0.85646),
    C (0.41736, 0.89009; 0.44705, 0.87593; 0.4322, 0.8839),
    C (0.3702, 0.90469; 0.40251, 0.89628; 0.38679, 0.90115),
    C (0.32174, 0.91; 0.35361, 0.90823; 0.33746, 0.91),
    C (0.27196, 0.90469; 0.30427, 0.91; 0.28768, 0.90823),
    C (0.22481, 0.89009; 0.25624, 0.90115; 0.24052, 0.89628),
    C (0.18027, 0.8662; 0.20909, 0.8839; 0.19424, 0.87593),
    C (0.13835, 0.83301; 0.1663, 0.85646; 0.15233, 0.8454),
    C (0.08334, 0.74673; 0.1139, 0.80824; 0.09556, 0.77948),
    C (0.065, 0.64851; 0.07111, 0.71399; 0.065, 0.68125),
    C (0.08334, 0.55161; 0.065, 0.61577; 0.07111, 0.58347),
    C (0.13835, 0.46401; 0.09556, 0.51976; 0.1139, 0.49055), L (0.5025, 0.095), L (0.86665, 0.46401),
    C (0.92166, 0.55161; 0.8911, 0.49055; 0.90944, 0.51976),
    C (0.94, 0.64851; 0.93389, 0.58347; 0.94, 0.61577),
    C (0.92166, 0.74673; 0.94, 0.68125; 0.93389, 0.71399),
    C (0.86665, 0.83301; 0.90944, 0.77948; 0.8911, 0.80824),
    C (0.82473, 0.8662; 0.85267, 0.8454; 0.8387, 0.85646),
    C (0.78019, 0.89009; 0.81076, 0.87593; 0.79591, 0.8839),
    C (0.73304, 0.90469; 0.76448, 0.89628; 0.74876, 0.90115),
    C (0.68326, 0.91; 0.71732, 0.90823; 0.70073, 0.91), Z
"""
HEART_LIGHT = """
    M (0.83521, 0.50117), C (0.86141, 0.53436; 0.84569, 0.51179; 0.85442, 0.52285),
    C (0.87975, 0.57152; 0.86839, 0.54586; 0.87451, 0.55825),
    C (0.89153, 0.61134; 0.88499, 0.5848; 0.88891, 0.59807),
    C (0.89546, 0.65249; 0.89415, 0.62462; 0.89546, 0.63833),
    C (0.89022, 0.69497; 0.89546, 0.66665; 0.89372, 0.68081),
    C (0.87713, 0.73479; 0.88673, 0.70913; 0.88237, 0.7224),
    C (0.85748, 0.77195; 0.87189, 0.74718; 0.86534, 0.75957),
    C (0.82997, 0.80647; 0.84962, 0.78434; 0.84045, 0.79585), L (0.81949, 0.79585),
    C (0.86665, 0.72815; 0.84045, 0.77638; 0.85617, 0.75381),
    C (0.88237, 0.65116; 0.87713, 0.70249; 0.88237, 0.67683),
    C (0.86796, 0.57683; 0.88237, 0.6255; 0.87756, 0.60072),
    C (0.82473, 0.50914; 0.85835, 0.55294; 0.84394, 0.53037), L (0.49726, 0.18261),
    L (0.50774, 0.17199), L (0.83521, 0.50117), Z
"""


def love():
    heart = Drawing("moodLove")
    heart.listing_of("heart", HEART_INSIDE, HOLE)
    heart.listing_of("heart", HEART, OUTLINE)
    heart.listing_of("light along the right side", HEART_LIGHT, OUTLINE)
    # The given outline is a run of short curves that meet a little off smooth.
    heart.allow(kink=(0, 0))
    return heart.want(subpaths=3, lines=10, curves=60, extent=(13, 188, 19, 182))


def relax():
    axis, ink = 100.5, Ink()
    leg = polygon([(27, 40), (46, 40), (42, 15.5), (31, 15.5)])
    ink.outline(leg).outline(leg.mirrored(axis))
    back = symmetric(Pen(axis, 70).line(150, 70).line(154, 138)
                     .curve((axis, 185.5), (157, 174), (134, 185.5)).open(), axis)
    ink.outline(back)
    ink.outline(polygon([(40, 39), (161, 39), (161, 70), (40, 70)]))
    ink.outline(rounded_rectangle(38, 163, 61, 90, 10))
    arm = united(circle((37, 102), 21.5), polygon([(22, 33), (50, 33), (50, 100), (22, 100)]))[0]
    ink.outline(arm).outline(arm.mirrored(axis))
    scroll = Pen(27, 100).arc((37, 102), 20).open()
    ink.stroke(scroll, width=3).stroke(scroll.mirrored(axis), width=3)
    for x in (80, 121):
        ink.draw(circle((x, 138), 4))
    chair = Drawing("moodRelax").add_region(ink)
    return chair.want(subpaths=12, lines=47, curves=180, extent=(13, 188, 13, 188))


def party():
    ink = Ink()
    ink.outline(polygon([(44.5, 160), (156.5, 160), (100, 92)]))
    ink.stroke(polyline([(60, 141), (140, 141)]))
    ink.stroke(polyline([(112, 128), (142, 185)]))
    ink.outline(circle((108, 124), 9))
    ink.stroke(polyline([(100, 92), (100, 18)]), ends="butt")
    ink.draw(symmetric(Pen(100, 13).line(134, 13).line(134, 17).line(102, 22).line(100, 22).open(), 100))
    return Drawing("moodParty").add_region(ink).want(subpaths=5, lines=41, curves=48, extent=(42, 158, 13, 188))


def focus():
    axis, ink = 100, Ink()
    glass = symmetric(Pen(axis, 66).line(122, 66).smooth((100 + 55.5 * 0.788, 129.5 - 55.5 * 0.6157), 90, 52)
                      .arc((100, 129.5), 90).open(), axis)
    ink.outline(glass)
    ink.stroke(polyline([(88, 66), (81, 112), (90.5, 124), (100, 112), (109.5, 124), (119, 112), (112, 66)]), ends="butt")
    bands = rounded_rectangle(73, 127, 57, 71, 7)
    for i in range(3):
        bands = united(bands, rounded_rectangle(73, 127, 57 - 12 * i, 71 - 12 * i, 7).rotated(4, about=(100, 64 - 12 * i)))[0]
    ink.draw(bands)
    for i in range(3):
        ink.cover(rounded_rectangle(79, 121, 61 - 12 * i, 67 - 12 * i, 3).rotated(4, about=(100, 64 - 12 * i)))
    ink.outline(Pen(84, 34).line(116, 34).arc((100, 34), -180).close())
    shine = Pen(63, 130).arc((100, 129.5), 110).open()
    ink.stroke(shine, width=3)
    return Drawing("moodFocus").add_region(ink).want(subpaths=9, lines=45, curves=144, extent=(42, 158, 13, 188))


def dinner():
    ink = Ink()
    ink.outline(circle((100.5, 100), 51)).outline(circle((100.5, 100), 33))
    for x in (15.5, 23, 30.5, 38):
        ink.stroke(polyline([(x, 157.5), (x, 120)]))
    ink.stroke(polyline([(15.5, 130), (15.5, 110), (38, 110), (38, 130)], 11))
    ink.stroke(polyline([(26.75, 110), (26.75, 80)]))
    ink.outline(rounded_rectangle(22, 31.5, 42.5, 85, 4.7))
    ink.outline(Pen(166, 90).line(185.5, 90).line(185.5, 157.5).curve((166, 90), (168, 150), (164, 120)).close())
    ink.outline(rounded_rectangle(171, 184, 42.5, 90, 5))
    return Drawing("moodDinner").add_region(ink).want(subpaths=10, lines=36, curves=234, extent=(13, 188, 40, 160))


def celebrities():
    axis, ink = 100, Ink()
    shoulders = symmetric(Pen(axis, 15.5).line(174.5, 15.5).line(174.5, 32)
                          .curve((128, 62), (174.5, 52), (150, 56)).line(axis, 62).open(), axis)
    ink.outline(shoulders)
    ink.outline(polygon([(84, 90), (84, 58), (100, 44), (116, 58), (116, 90)]))
    ink.outline(circle((100, 122), 63.5))
    ink.outline(circle((100, 122), 51))
    ink.outline(ellipse((100, 117), 38, 46))
    for x in (51, 149):
        ink.outline(rounded_rectangle(x - 11, x + 11, 92, 136, 8))
    return Drawing("moodCelebrities").add_region(ink).want(subpaths=8, lines=36, curves=104, extent=(23, 177, 13, 188))


def workout():
    ink = Ink()
    upper = (Pen(20, 62).line(182, 62).curve((140, 98), (182, 86), (164, 92))
             .curve((92, 150), (122, 104), (108, 124)).line(82, 162.5).line(66, 158)
             .curve((40, 128), (64, 142), (56, 128)).curve((22, 146), (32, 128), (30, 144))
             .curve((20, 62), (16, 122), (26, 96)).close())
    ink.outline(upper)
    sole = (Pen(26, 35.5).line(150, 35.5).curve((185.5, 64), (172, 35.5), (185.5, 48))
            .curve((110, 58), (160, 66), (134, 58)).curve((15.5, 66), (74, 58), (50, 66))
            .curve((26, 35.5), (15.5, 50), (18, 35.5)).close())
    ink.outline(sole)
    for i in range(3):
        ink.stroke(polyline([(98 + 12 * i, 142 - 14 * i), (82 + 12 * i, 130 - 14 * i)]))
    return Drawing("moodWorkout").add_region(ink).want(subpaths=8, lines=30, curves=220, extent=(13, 188, 33, 165))
