"""The mood icons: line art on a canvas of 200 points, every line about five points wide."""
from drawing import HOLE, OUTLINE, Drawing
from geometry import Pen, on_circle
from region import Ink, united
from shapes import circle, polygon, polyline, rounded_rectangle, symmetric


def drawings():
    return [relax(), party(), workout(), love(), focus(), dinner(), celebrities()]


# The heart's numbers are given, so it is listed and not drawn. Its inner line comes first.
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
    # The given outline is a run of short curves whose joints are not quite smooth.
    heart.allow(kink=(0, 0))
    return heart.want(subpaths=3, lines=10, curves=60, extent=(13, 188, 19, 182))


def relax():
    """An armchair from the front: nearer parts are drawn later and hide what is behind them."""
    axis, ink = 100.5, Ink()
    leg = polygon([(27, 40), (46, 40), (42, 15.5), (31, 15.5)])
    ink.outline(leg).outline(leg.mirrored(axis))
    back = symmetric(Pen(axis, 80).line(150, 80).line(153.5, 136)
                     .curve((axis, 185.5), (155.75, 172), (136, 185.5)).open(), axis)
    ink.outline(back)
    ink.outline(polygon([(40, 39), (161, 39), (161, 75), (40, 75)]))
    cushion = symmetric(Pen(axis, 62).line(161, 62).line(161, 84).curve((axis, 92), (141, 90), (120, 92)).open(), axis)
    ink.outline(cushion)
    arm = united(circle((36, 102), 20.5), polygon([(22, 33), (50, 33), (50, 100), (22, 100)]))[0]
    ink.outline(arm).outline(arm.mirrored(axis))
    scroll = Pen(*on_circle((36, 102), 11.5, 50)).arc((36, 102), 220).open()
    ink.stroke(scroll, "butt", width=3).stroke(scroll.mirrored(axis), "butt", width=3)
    seam = Pen(116, 106).curve((118, 166), (119, 126), (120, 146)).open()
    ink.stroke(seam, "butt", width=3).stroke(seam.mirrored(axis), "butt", width=3)
    chair = Drawing("moodRelax").add_region(ink, [
        "chair", "back, hole", "seat cushion, hole", "left arm, hole", "right arm, hole", "apron, hole",
        "left leg, hole", "right leg, hole", "left seam", "right seam", "left scroll", "right scroll"])
    chair.fit_counts(lines=47, curves=180)
    return chair.want(subpaths=12, extent=(13, 188, 13, 188))


def party():
    """A cocktail with an olive on a pick."""
    axis, ink = 100, Ink()
    bowl = symmetric(Pen(axis, 88).line(106, 88).line(155.5, 150).line(155.5, 162).line(axis, 162).open(), axis)
    ink.outline(bowl)
    ink.stroke(polyline([(54, 137), (146, 137)]), ends="butt")
    ink.stroke(polyline([(111, 122), (140, 185.5)]))
    ink.outline(circle((109, 118), 9.5))
    stem = symmetric(Pen(axis, 13).line(135, 13).line(135, 18).line(108, 18).line(108, 20).line(102.5, 27)
                     .line(102.5, 78).line(106, 84).line(106, 90).line(axis, 90).open(), axis)
    ink.draw(stem)
    glass = Drawing("moodParty").add_region(ink, [
        "glass", "drink, hole", "left of the pick, hole", "right of the pick, hole", "olive, hole"])
    glass.fit_counts(lines=41, curves=48)
    return glass.want(subpaths=5, extent=(42, 158, 13, 188))


def focus():
    """A light bulb. The thread is drawn solid and its bands are cut out, so that the lines between them stay even."""
    axis, ink = 100, Ink()
    glass = symmetric(Pen(axis, 58).line(121.5, 58).line(121.5, 71)
                      .smooth(on_circle((100, 130), 55.5, -44), 90, 46).arc((100, 130), 90).open(), axis)
    ink.outline(glass)
    ink.stroke(polyline([(92, 60), (81, 112), (90.5, 124), (100, 112), (109.5, 124), (119, 112), (108, 60)]), "butt")
    foot = Pen(axis, 15.5).line(104, 15.5).curve((116, 34), (112, 15.5), (116, 24)).line(axis, 34).open()
    ink.outline(symmetric(foot, axis))
    tilt, middle = 4, [59.5, 47, 34.5]
    thread = None
    for y in middle:
        band = rounded_rectangle(72, 128, y - 8, y + 8, 6).rotated(tilt, about=(axis, y))
        thread = band if thread is None else united(thread, band)[0]
    ink.draw(thread)
    for y in middle:
        ink.cover(rounded_rectangle(77, 123, y - 3.5, y + 3.5, 1.5).rotated(tilt, about=(axis, y)))
    ink.stroke(Pen(61, 130).arc((100, 130), 130).open(), "butt", width=3)
    ink.stroke(Pen(*on_circle((100, 130), 39, 120)).arc((100, 130), 105).open(), "butt", width=3)
    bulb = Drawing("moodFocus").add_region(ink, [
        "bulb", "glass, hole", "filament, hole", "upper thread, hole", "lower thread, hole",
        "middle thread, hole", "foot, hole", "long light", "short light"])
    bulb.fit_counts(lines=45, curves=144)
    return bulb.want(subpaths=9, extent=(42, 158, 13, 188))


def dinner():
    """A plate between a fork and a knife."""
    ink = Ink()
    ink.outline(circle((100.5, 100), 50)).outline(circle((100.5, 100), 32))
    ink.stroke(Pen(*on_circle((100.5, 100), 41, 60)).arc((100.5, 100), 5).open(), "butt", width=3)
    tines = polyline([(15.5, 160), (15.5, 112, 9), (35.5, 112, 9), (35.5, 160)])
    ink.stroke(tines, "butt").stroke(polyline([(25.5, 160), (25.5, 80)]), "butt")
    # The tines end slightly narrower than they are.
    for side in ((18, 15.8), (23, 24.6), (28, 26.4), (33, 35.2)):
        ink.cover(polygon([(side[0], 152), (side[0], 161), (side[1], 161)]))
    ink.outline(rounded_rectangle(20, 31, 42.5, 86, 4))
    ink.outline(Pen(168, 90).line(185.5, 90).line(185.5, 156).curve((168, 90), (171, 150), (165, 122)).close())
    ink.outline(polygon([(174.5, 42.5, 4), (185.5, 42.5, 4), (185.5, 90), (174.5, 90)]))
    table = Drawing("moodDinner").add_region(ink, [
        "plate", "rim, hole", "well", "well, hole", "knife", "blade, hole", "knife's handle, hole", "fork",
        "fork's handle, hole", "light on the rim"])
    table.fit_counts(lines=36, curves=234)
    return table.want(subpaths=10, extent=(13, 188, 40, 160))


def celebrities():
    """A head with headphones. The skull runs behind the band, where it is hidden."""
    axis, ink = 100, Ink()
    shoulders = symmetric(Pen(axis, 15.5).line(174.5, 15.5).line(174.5, 22)
                          .curve((127, 55), (174.5, 45), (154, 55)).line(axis, 55).open(), axis)
    ink.outline(shoulders)
    neck = symmetric(Pen(axis, 37).line(118, 56).line(118, 90).line(axis, 90).open(), axis)
    ink.outline(neck)
    head = symmetric(Pen(axis, 61).curve((155, 124), (130, 61), (155, 88)).arc((100, 124), 90).open(), axis)
    ink.outline(head)
    ink.stroke(Pen(56, 120).curve((112, 152), (66, 148), (92, 146)).curve((144, 120), (126, 148), (138, 138)).open())
    band = symmetric(Pen(axis, 173.5).arc((100, 124), -8).line(161, 116).arc((100, 124), 90).open(), axis)
    ink.outline(band)
    for x in (50, 150):
        ink.outline(rounded_rectangle(x - 12, x + 12, 92, 138, 8))
    bust = Drawing("moodCelebrities").add_region(ink, [
        "head and shoulders", "face, hole", "shirt, hole", "hair, hole", "headband, hole",
        "left cup, hole", "right cup, hole", "neck, hole"])
    bust.fit_extents(23, 177, 13, 188)
    bust.fit_counts(lines=36, curves=104)
    return bust.want(subpaths=8, extent=(23, 177, 13, 188))


def workout():
    """A running shoe on its toe. Drawn flat, 160 points long, and then tilted."""
    ink = Ink()

    def tilted(path):
        return path.scaled(1.11).rotated(-13).moved(9, 62)

    ink.outline(tilted(polygon([(36, 60), (41, 94), (58, 100), (80, 66)], 6)))
    upper = (Pen(10, 14).line(136, 14).line(154, 30).curve((106, 57), (153, 49), (134, 55)).line(64, 87).line(46, 76)
             .curve((3, 97), (29, 62), (16, 72)).line(-6, 90).curve((10, 14), (10, 64), (4, 44)).close()
             .rounded({(106, 57): 26, (64, 87): 4, (46, 76): 6, (3, 97): 5, (-6, 90): 5}))
    ink.outline(tilted(upper))
    ink.stroke(tilted(Pen(30, 16).curve((29.5, 70), (43, 40), (42, 56)).open()), "butt")
    ink.stroke(tilted(Pen(118, 16).curve((126, 53), (106, 34), (112, 48)).open()), ends="butt")
    sole = (Pen(12, 2.5).line(112, 2.5).curve((160, 31), (142, 2.5), (157, 14))
            .curve((92, 22), (138, 28), (116, 22)).curve((1, 34), (60, 22), (30, 28))
            .curve((12, 2.5), (3, 20), (2, 2.5)).close().rounded({(160, 31): 5, (1, 34): 5}))
    ink.outline(tilted(sole))
    for i in range(3):
        ink.stroke(tilted(polyline([(74 + 11 * i, 79.86 - 7.86 * i), (64.5 + 11 * i, 67 - 7.86 * i)])), "butt")
    for i in range(2):
        ink.stroke(tilted(Pen(54 + 16 * i, 34).smooth((65 + 16 * i, 56 - 4 * i), 30, 85).open()), "butt", width=3)
    shoe = Drawing("moodWorkout").add_region(ink, [
        "shoe", "side, hole", "sole, hole", "heel, hole", "toe cap, hole", "tongue, hole", "left stripe",
        "right stripe"])
    shoe.fit_extents(13, 188, 33, 165)
    shoe.fit_counts(lines=30, curves=220)
    return shoe.want(subpaths=8, extent=(13, 188, 33, 165))
