#!/usr/bin/env python3
"""Shows the count of test cases small records."""
import os
import sys
import tempfile
import unittest

sys.path.insert(0, os.path.join(os.path.dirname(__file__), ".."))
import summary

GOOD = '<testcase name="a" status="run" classname="S"/>'
BAD = '<testcase name="b" status="run" classname="S"><failure message="no"/></testcase>'
SKIPPED = '<testcase name="c" status="run" classname="S"><skipped message="no"/></testcase>'
DISABLED = '<testcase name="d" status="notrun" classname="S"/>'


class Summary(unittest.TestCase):
    def outcomes(self, status, record=None):
        """Of one test of ctest with this status, and with a record of these cases."""
        with tempfile.TemporaryDirectory() as folder:
            junit = os.path.join(folder, "ctest-junit.xml")
            with open(junit, "w", encoding="utf-8") as file:
                file.write(f'<testsuite><testcase name="t" status="{status}"/></testsuite>')
            if record is not None:
                with open(os.path.join(folder, "t.xml"), "w", encoding="utf-8") as file:
                    file.write(f"<testsuites><testsuite>{record}</testsuite></testsuites>")
            return [outcome for _, outcome in summary.count(junit, folder)]

    def test_a_test_without_a_record_counts_as_one(self):
        self.assertEqual(self.outcomes("run"), ["passed"])
        self.assertEqual(self.outcomes("fail"), ["failed"])
        self.assertEqual(self.outcomes("notrun"), ["failed"])

    def test_a_program_counts_with_all_its_cases(self):
        self.assertEqual(self.outcomes("run", GOOD + GOOD), ["passed", "passed"])
        self.assertEqual(self.outcomes("fail", GOOD + BAD), ["passed", "failed"])

    def test_what_did_not_run_is_neither_passed_nor_failed(self):
        self.assertEqual(self.outcomes("run", SKIPPED + DISABLED + GOOD), ["skipped", "skipped", "passed"])

    def test_a_program_that_ends_badly_after_its_cases_has_failed(self):
        self.assertEqual(self.outcomes("fail", GOOD), ["passed", "failed"])

    def test_the_end_of_a_failure_is_shown_without_noise(self):
        with tempfile.TemporaryDirectory() as folder:
            junit = os.path.join(folder, "ctest-junit.xml")
            lines = [f"line {i}" for i in range(100)] + [summary.NOISE + " raise()", "the end"]
            with open(junit, "w", encoding="utf-8") as file:
                file.write('<testsuite><testcase name="good" status="run"><system-out>fine</system-out></testcase>'
                           f'<testcase name="bad" status="fail"><system-out>{chr(10).join(lines)}</system-out></testcase></testsuite>')
            (name, shown), = summary.outputs_of_failures(junit)
        self.assertEqual(name, "bad")
        self.assertEqual(shown, lines[-61:-2] + ["the end"])


if __name__ == "__main__":
    unittest.main()
