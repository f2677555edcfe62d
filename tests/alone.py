#!/usr/bin/env python3
"""Runs each test of each program in a process of its own, so that none leans on what another left behind.

usage: alone.py FOLDER        the folder with the programs films_*_tests
"""
import concurrent.futures
import os
import pathlib
import subprocess
import sys


def tests_of(program):
    """The full names of a program's tests."""
    listing = subprocess.run([program, "--gtest_list_tests"], capture_output=True, text=True, check=True)
    suite = ""
    for line in listing.stdout.splitlines():
        name = line.split("#")[0].rstrip()
        if name.startswith("  "):
            yield suite + name.strip()
        elif name.endswith("."):
            suite = name


def run(program, test):
    done = subprocess.run([program, "--gtest_filter=" + test], capture_output=True, text=True)
    return program.name, test, done.returncode, done.stdout + done.stderr


def main():
    os.environ.setdefault("QT_QPA_PLATFORM", "offscreen")
    os.environ.update(QT_SCALE_FACTOR="1", LC_ALL="C.UTF-8")
    programs = sorted(pathlib.Path(sys.argv[1]).glob("films_*_tests"))
    wanted = [(program, test) for program in programs for test in tests_of(program)]
    failed = 0
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        for program, test, code, output in pool.map(lambda pair: run(*pair), wanted):
            if code != 0:
                failed += 1
                print(output)
                print("FAILED", program, test, "with", code)
    print(f"\n{len(wanted) - failed} passed, {failed} failed")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
