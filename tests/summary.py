#!/usr/bin/env python3
"""Adds up what the test programs of a ctest run said, and ends with the line "N passed, N failed".

usage: summary.py CTEST_JUNIT RESULTS

CTEST_JUNIT is what `ctest --output-junit` wrote; RESULTS the folder with one gtest JSON report a shard. A test of ctest
without such a report counts as one test; a shard that ended before its report was written counts as one that failed.
"""
import json
import pathlib
import sys
import xml.etree.ElementTree


def gtest_cases(report):
    for suite in report["testsuites"]:
        for case in suite["testsuite"]:
            name = suite["name"] + "." + case["name"]
            ran = case.get("status") == "RUN"
            yield name, ran, bool(case.get("failures")), float(case.get("time", "0s").rstrip("s"))


def main():
    junit = xml.etree.ElementTree.parse(sys.argv[1]).getroot()
    results = pathlib.Path(sys.argv[2])
    passed, failed, times = 0, [], []
    for entry in junit.iter("testcase"):
        shard, good = entry.get("name"), entry.get("status") == "run"
        report = results / (shard + ".json")
        if not report.exists():
            if good:
                passed += 1
            else:
                failed.append(shard + " (" + entry.get("status") + ", ended without a report)")
            continue
        bad_before = len(failed)
        for name, ran, bad, seconds in gtest_cases(json.loads(report.read_text())):
            if not ran:
                continue
            times.append((seconds, shard + " " + name))
            if bad:
                failed.append(shard + " " + name)
            else:
                passed += 1
        if not good and len(failed) == bad_before:
            failed.append(shard + " (ended badly after its tests)")
    print("\nThe slowest tests:")
    for seconds, name in sorted(times, reverse=True)[:10]:
        print(f"{seconds:9.2f} s  {name}")
    for name in failed:
        print("FAILED", name)
    print(f"\n{passed} passed, {len(failed)} failed")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
