#!/usr/bin/env python3
"""Adds up what the test programs of a ctest run said, and ends with the line "N passed, N failed", with
", N skipped" where a machine can't run a test.

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
            result = "FAILED" if case.get("failures") else case.get("result")
            yield name, result, float(case.get("time", "0s").rstrip("s"))


def main():
    junit = xml.etree.ElementTree.parse(sys.argv[1]).getroot()
    results = pathlib.Path(sys.argv[2])
    passed, failed, skipped, times = 0, [], [], []
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
        for name, result, seconds in gtest_cases(json.loads(report.read_text())):
            times.append((seconds, shard + " " + name))
            if result == "FAILED":
                failed.append(shard + " " + name)
            elif result == "SKIPPED":
                skipped.append(shard + " " + name)
            elif result == "COMPLETED":
                passed += 1
        if not good and len(failed) == bad_before:
            failed.append(shard + " (ended badly after its tests)")
    print("\nThe slowest tests:")
    for seconds, name in sorted(times, reverse=True)[:10]:
        print(f"{seconds:9.2f} s  {name}")
    for name in skipped:
        print("SKIPPED", name)
    for name in failed:
        print("FAILED", name)
    print(f"\n{passed} passed, {len(failed)} failed" + (f", {len(skipped)} skipped" if skipped else ""))
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
