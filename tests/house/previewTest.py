#!/usr/bin/env python3
"""Shows the preview of changed drawings a drawing before and after a change."""
import os
import sys
import unittest

sys.path.insert(0, os.path.join(os.path.dirname(__file__), "..", "..", "tools", "artwork", "drawing"))
import preview
from drawing import Drawing
from shapes import circle


def drawing(name, radius):
    return Drawing(name).add("disc", circle((100, 100), radius))


def paths(svg, color):
    return svg.count(f'<path fill="{color}"')


class Changes(unittest.TestCase):
    def test_drawings_as_they_were_are_not_shown(self):
        disc = drawing("disc", 40)
        self.assertIsNone(preview.changes_sheet([disc], {"disc": disc.listing()}))

    def test_only_the_changed_picture_is_shown_before_and_now(self):
        disc, other = drawing("disc", 40), drawing("other", 20)
        before = {"disc": drawing("disc", 45).listing(), "other": other.listing()}
        svg = preview.changes_sheet([disc, other], before)
        self.assertEqual((paths(svg, preview.GONE), paths(svg, preview.NEW)), (1, 1))
        gone, new = svg.index(preview.svg_path(disc, before["disc"])), svg.index(preview.svg_path(disc))
        self.assertLess(gone, new)

    def test_a_layer_that_stays_is_shown_with_the_one_that_changed(self):
        back, front = drawing("logo__back", 40), drawing("logo__front", 20)
        svg = preview.changes_sheet([back, front], {"logoBack": back.listing(), "logoFront": drawing("f", 10).listing()})
        self.assertEqual((paths(svg, preview.GONE), paths(svg, preview.NEW)), (2, 2))

    def test_a_new_picture_has_nothing_before_it(self):
        svg = preview.changes_sheet([drawing("disc", 40)], {})
        self.assertIn(f'<path fill="{preview.GONE}" d=""/>', svg)
        self.assertEqual(paths(svg, preview.NEW), 1)


if __name__ == "__main__":
    unittest.main()
