#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Prints how many lines ran, from what `llvm-cov export -summary-only` writes.

    coverage_report.py                  of each room in src/ and of all; ends with status 1 below 85 %
    coverage_report.py NAME PATTERN…    of the files in src/ that one of the patterns matches, as NAME
"""
import collections
import fnmatch
import json
import sys

LEAST = 0.85


def lines():
    """Yields the path below src/ of each file, its lines that ran, and all of them."""
    for file in json.load(sys.stdin)["data"][0]["files"]:
        count = file["summary"]["lines"]
        yield file["filename"].split("/src/")[-1], count["covered"], count["count"]


def show(name, ran, all_lines):
    print(f"{name:20} {ran:6} of {all_lines:6} lines {100 * ran / all_lines:6.1f} %")


def by_room():
    ran, counted = collections.Counter(), collections.Counter()
    for path, covered, count in lines():
        for room in (path.split("/")[0], "all"):
            ran[room] += covered
            counted[room] += count
    for room in sorted(counted):
        show(room, ran[room], counted[room])
    return ran["all"] < LEAST * counted["all"]


def of_files(name, patterns):
    files = list(lines())
    idle = [pattern for pattern in patterns if not any(fnmatch.fnmatch(path, pattern) for path, *_ in files)]
    if idle:
        return f"{name}: no file is called {' or '.join(idle)}"
    found = [rest for path, *rest in files if any(fnmatch.fnmatch(path, pattern) for pattern in patterns)]
    show(name, *map(sum, zip(*found)))
    return 0


sys.exit(of_files(sys.argv[1], sys.argv[2:]) if len(sys.argv) > 1 else by_room())
