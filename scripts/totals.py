#!/usr/bin/env python3
"""Tells the totals of a CTest run from its JUnit report.

The functions of a Qt test program count one each, its initTestCase and cleanupTestCase not at all;
any other test counts as one. Skipped, blacklisted, disabled and not run are failures. Prints what
failed, then the line "N passed, N failed"; exits 1 if anything failed or nothing passed.
"""

import re
import sys
import xml.etree.ElementTree as ElementTree

TOTALS = re.compile(r"^Totals: (\d+) passed, (\d+) failed, (\d+) skipped, (\d+) blacklisted", re.M)
FRAME = re.compile(r"^PASS\s*: \S+::(?:init|cleanup)TestCase\(\)\s*$", re.M)
NOT_PASSED = re.compile(r"^(?:FAIL!|XPASS|SKIP|BFAIL|BPASS|BXPASS|BXFAIL|BSKIP)\s*: .*", re.M)


def count(case):
    """Returns (passed, failed, complaints) of one testcase element."""
    name = case.get("name", "?")
    ended_well = case.get("status") == "run" and case.find("failure") is None and case.find("skipped") is None
    output = case.findtext("system-out") or ""
    totals = TOTALS.findall(output)
    if case.get("status") not in ("run", "fail") or not totals:
        return (1, 0, []) if ended_well else (0, 1, [f"{name}: {case.get('status')}"])
    passed = sum(int(line[0]) for line in totals) - len(FRAME.findall(output))
    failed = sum(int(number) for line in totals for number in line[1:])
    complaints = [f"{name}: {line}" for line in NOT_PASSED.findall(output)]
    if failed == 0 and not ended_well:
        failed = 1
        complaints.append(f"{name}: all functions passed, but the program did not end well")
    return max(passed, 0), failed, complaints


def main():
    cases = ElementTree.parse(sys.argv[1]).getroot().iter("testcase")
    passed = failed = 0
    for case in cases:
        more_passed, more_failed, complaints = count(case)
        passed += more_passed
        failed += more_failed
        for complaint in complaints:
            print("Not passed:", complaint)
    print(f"{passed} passed, {failed} failed")
    return 1 if failed or not passed else 0


if __name__ == "__main__":
    sys.exit(main())
