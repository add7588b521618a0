#!/usr/bin/env python3
"""Shows the check of the pages' code small pages."""
import os
import sys
import unittest

sys.path.insert(0, os.path.dirname(__file__))
import readmeExamples

HEADERS = readmeExamples.Headers({
    "kit/Knob.h": '#include "kit/View.h"\nclass Knob : public View {\n public:\n  int turn();\n};\n',
    "kit/View.h": "class View {\n};\nint count(const View& view);\n",
})
EXAMPLE = '#include <QWidget>\n#include "kit/Knob.h"\nusing kit::Knob;\nint main() {\n  Knob knob;\n  knob.turn();\n}\n'


def page(code):
    return f"# Page\n\n```cpp\n{code}```\n"


class Pages(unittest.TestCase):
    def complaints(self, *blocks, example=EXAMPLE):
        found, count = readmeExamples.complaints("".join(page(block) for block in blocks), [example], HEADERS)
        self.assertEqual(count, len(blocks))
        return "\n".join(found)

    def test_a_piece_of_an_example_with_its_includes_is_right(self):
        self.assertEqual(self.complaints('#include "kit/Knob.h"\n\nusing kit::Knob;\n\n  Knob knob;\n  knob.turn();\n'), "")

    def test_code_of_no_example_is_found(self):
        self.assertIn("no example", self.complaints('#include "kit/Knob.h"\n\n  Knob knob(2);\n'))

    def test_an_include_that_the_example_does_not_have_is_found(self):
        self.assertIn("no example", self.complaints('#include "kit/View.h"\n#include "kit/Knob.h"\n  Knob knob;\n'))

    def test_a_name_without_its_header_is_found(self):
        self.assertIn("declares Knob", self.complaints("  Knob knob;\n"))

    def test_an_include_counts_for_the_rest_of_the_page_and_not_before(self):
        with_include = '#include "kit/Knob.h"\n  Knob knob;\n'
        self.assertEqual(self.complaints(with_include, "  Knob knob;\n"), "")
        self.assertIn("declares Knob", self.complaints("  Knob knob;\n", with_include))

    def test_what_a_header_includes_is_declared_too(self):
        example = '#include "kit/Knob.h"\nint n = count(View());\n'
        self.assertEqual(self.complaints(example, example=example), "")

    def test_classes_of_qt_need_their_headers(self):
        self.assertIn("declares QWidget", self.complaints("  QWidget w;\n", example="  QWidget w;\n"))
        example = "#include <QWidget>\n  QWidget w;\n"
        self.assertEqual(self.complaints(example, example=example), "")

    def test_members_and_texts_are_nobodys_names(self):
        example = '  a.Knob = "Knob";  // Knob\n'
        self.assertEqual(self.complaints(example, example=example), "")


if __name__ == "__main__":
    unittest.main()
