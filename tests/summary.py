#!/usr/bin/env python3
"""Counts test cases: summary.py CTEST_JUNIT_XML RESULTS_FOLDER

A test of ctest that left a record NAME.xml in the folder counts with all its cases, any other as one. Prints the end of
the output of each test of ctest that failed, then what failed and, as its last line, "N passed, N failed". The status is 0
if something passed and nothing failed.
"""
import os
import sys
import xml.etree.ElementTree as xml


def cases_of(record):
    """(name, outcome) of each case in a record of GoogleTest; the outcome is passed, failed or skipped."""
    for case in xml.parse(record).iter("testcase"):
        if case.get("status") == "notrun" or case.find("skipped") is not None:
            outcome = "skipped"
        else:
            outcome = "failed" if case.find("failure") is not None else "passed"
        yield f"{case.get('classname')}.{case.get('name')}", outcome


# What Qt's offscreen platform says at each window.
NOISE = "This plugin does not support"
LINES_OF_A_FAILURE = 60


def outputs_of_failures(junit):
    """(name, lines) of each test of ctest that failed: the last lines that it printed, without noise."""
    for test in xml.parse(junit).iter("testcase"):
        if test.get("status") != "run":
            lines = [line for line in (test.findtext("system-out") or "").splitlines() if NOISE not in line]
            yield test.get("name"), lines[-LINES_OF_A_FAILURE:]


def count(junit, folder):
    outcomes = []
    for test in xml.parse(junit).iter("testcase"):
        name, has_run_well = test.get("name"), test.get("status") == "run"
        record = os.path.join(folder, name + ".xml")
        cases = list(cases_of(record)) if os.path.exists(record) else []
        # A program that crashed leaves no record; one that ended badly with all its cases passed has failed as a whole.
        if not cases or (not has_run_well and all(outcome != "failed" for _, outcome in cases)):
            cases.append((name, "passed" if has_run_well else "failed"))
        outcomes += cases
    return outcomes


def main():
    for name, lines in outputs_of_failures(sys.argv[1]):
        print(f"--- {name}", *lines, sep="\n")
    outcomes = count(sys.argv[1], sys.argv[2])
    for name, outcome in outcomes:
        if outcome != "passed":
            print(f"{outcome}: {name}")
    passed = sum(outcome == "passed" for _, outcome in outcomes)
    failed = sum(outcome == "failed" for _, outcome in outcomes)
    print(f"{passed} passed, {failed} failed")
    return 0 if passed and not failed else 1


if __name__ == "__main__":
    sys.exit(main())
