#!/usr/bin/env python3
"""Joined sources of tests: what is joined, and how."""
import os
import pathlib
import subprocess
import sys
import tempfile
import unittest

TOOL = os.path.join(os.path.dirname(__file__), os.pardir, "batches.py")


class BatchesTest(unittest.TestCase):
    def join(self, sources, size=8):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)
        self.root = pathlib.Path(self.folder.name)
        for name, text in sources.items():
            path = self.root / "tests" / name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(text)
        arguments = [str(self.root), str(self.root / "out"), str(size)] + [str(self.root / "tests" / name) for name in sources]
        result = subprocess.run([sys.executable, "-B", TOOL] + arguments, capture_output=True, text=True, check=True)
        return [os.path.relpath(path, self.root) for path in result.stdout.split(";")]

    def text(self, name):
        return (self.root / name).read_text()

    def test_includes_are_first_and_each_once(self):
        self.assertEqual(self.join({"aTest.cpp": "#include <a>\n#include <b>\nint a;\n", "bTest.cpp": "#include <b>\nint b;\n"}),
                         ["out/tests_0.cpp"])
        self.assertTrue(self.text("out/tests_0.cpp").startswith("#include <a>\n#include <b>\nnamespace {"))

    def test_lines_are_named_as_in_the_source(self):
        self.join({"aTest.cpp": "#include <a>\n\nint a;\n"})
        self.assertIn('#line 2 "tests/aTest.cpp"\n\nint a;\n', self.text("out/tests_0.cpp"))

    def test_sources_with_the_same_names_compile_together(self):
        same = "#include <cstddef>\nnamespace {\nint helper() { return 1; }\nclass Probe {};\n}  // namespace\nint used() { return helper(); }\n"
        inside = f"#include <cstddef>\n\nnamespace kit {{\n{same[19:]}}}  // namespace kit\n"
        self.join({"aTest.cpp": same, "bTest.cpp": same, "cTest.cpp": inside, "dTest.cpp": inside})
        compiler = ["c++", "-std=c++20", "-fsyntax-only", str(self.root / "out/tests_0.cpp")]
        self.assertEqual(subprocess.run(compiler, capture_output=True, text=True).stderr.count("error"), 0)

    def test_what_is_inside_a_namespace_of_the_library_stays_inside_it(self):
        self.join({"aTest.cpp": "#include <a>\nnamespace kit::views {\nint a;\n}  // namespace kit::views\n"})
        text = self.text("out/tests_0.cpp")
        self.assertLess(text.index("namespace kit::views {"), text.index("int a;"))
        self.assertLess(text.index("int a;"), text.index("}  // namespace kit::views"))

    def test_a_source_that_adds_to_a_namespace_of_the_library_is_compiled_alone(self):
        alone = {"specialTest.cpp": "#include <a>\ntemplate <>\nstruct kit::A<int> {};\n",
                 "printTest.cpp": "#include <a>\nnamespace kit {\nvoid PrintTo(A, std::ostream*);\n}  // namespace kit\n",
                 "partTest.cpp": "#include <a>\nnamespace kit {\nint a;\n}  // namespace kit\nint b;\n",
                 "macroTest.cpp": "#include <a>\n#define A 1\n",
                 "harness.cpp": "#include <a>\nint shared;\n",
                 "FixtureTest.cpp": "#include <a>\nint Fixture::shared;\n"}
        header = {"FixtureTest.h": "class Fixture {};\n"}
        self.assertEqual(self.join(alone | header), ["tests/" + name for name in alone | header])

    def test_a_batch_holds_a_number_of_sources_of_one_folder(self):
        names = ["a/%dTest.cpp" % i for i in range(5)] + ["b/0Test.cpp"]
        self.assertEqual(self.join({name: "int x;\n" for name in names}, size=3),
                         ["out/tests_a_0.cpp", "out/tests_a_1.cpp", "out/tests_b_0.cpp"])


unittest.main(verbosity=0)
