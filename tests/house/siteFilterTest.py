#!/usr/bin/env python3
"""Shows the filter of the site small headers and pages."""
import os
import sys
import unittest

sys.path.insert(0, os.path.join(os.path.dirname(__file__), "..", "..", "docs", "site"))
import filter as site_filter


class Filter(unittest.TestCase):
    def header(self, text, name="Knob"):
        return "\n".join(site_filter.filtered(text.splitlines(), name))

    def test_the_head_of_a_file_is_said_of_its_class(self):
        self.assertEqual(self.header("// Turns.\n#pragma once\n\nclass Knob : public View {\n};"),
                         "#pragma once\n\n/// Turns.\nclass Knob : public View {\n};")

    def test_without_a_class_of_its_name_it_is_said_of_the_file(self):
        self.assertEqual(self.header("// Angles.\n#pragma once\ndouble turn();"), "/// @file\n/// Angles.\n#pragma once\ndouble turn();")

    def test_a_forward_declaration_is_not_the_class(self):
        self.assertIn("/// @file", self.header("// Angles.\n#pragma once\nclass Knob;"))

    def test_a_comment_documents_what_it_is_before_or_behind(self):
        self.assertEqual(self.header("// Degrees.\n\n#pragma once\n// The angle.\nint a();\nint b = 2;  // two"),
                         "/// @file\n/// Degrees.\n\n#pragma once\n/// The angle.\nint a();\nint b = 2;  ///< two")

    def test_a_comment_before_an_empty_line_documents_nothing(self):
        self.assertEqual(self.header("#pragma once\n// In general.\n\nint a();"), "#pragma once\n\nint a();")

    def test_what_a_generator_takes_for_commands_is_text_but_for_code(self):
        self.assertEqual(self.header("#pragma once\n// 5 % of <this>, `a<b>`\nint a();"), "#pragma once\n/// 5 \\% of \\<this\\>, `a<b>`\nint a();")

    def test_indented_lines_are_code(self):
        self.assertEqual(self.header("#pragma once\n// Use:\n//   go<1>();\n// Then stop.\nint a();"),
                         "#pragma once\n/// Use:\n/// @code{.cpp}\n/// go<1>();\n/// @endcode\n/// Then stop.\nint a();")

    def page(self, *lines):
        return site_filter.page(lines, "glyphs")

    def test_headings_below_the_first_get_names_that_no_other_page_has(self):
        self.assertEqual(self.page("# Glyphs", "## How exact?"), ["# Glyphs", "## How exact? {#glyphs-how-exact}"])

    def test_links_to_headings_lead_to_those_names(self):
        self.assertEqual(self.page("See [there](#how-exact), [then](docs/ready.md#a-bar)."),
                         ["See [there](@ref glyphs-how-exact), [then](@ref ready-a-bar)."])

    def test_pictures_of_one_name_in_two_folders_stay_apart(self):
        self.assertEqual(self.page("![Dark](images/dark/a.png)![Light](docs/images/a.png)"),
                         ['<img src="images/dark/a.png" alt="Dark" style="max-width: 100%"/><img src="images/a.png" alt="Light" style="max-width: 100%"/>'])

    def test_examples_and_tools_are_files_of_the_site(self):
        self.assertEqual(self.page("[all](../examples/a.cpp) [kit](../tools/k.md)"),
                         ['<a href="examples/a.cpp">all</a> <a href="tools/k.md">kit</a>'])

    def test_pages_other_hosts_and_code_are_left_alone(self):
        lines = ["[page](ready.md) [web](https://example.org/x#y)", "```", "## [a](../examples/b)", "```"]
        self.assertEqual(self.page(*lines), lines)


if __name__ == "__main__":
    unittest.main()
