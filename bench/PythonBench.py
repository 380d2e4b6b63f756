#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""The Python module next to pybind11, which calls the same C++ without late binding, and to configparser.

    PYTHONPATH=build/release/python:build/release/bench bench/PythonBench.py [ROUNDS]

Prints the shortest time of each statement over interleaved rounds, and the ratio to the peer's: below 1 is faster.
"""

import configparser
import os
import resource
import subprocess
import sys
import timeit

import vlgs
import vlgs_peer
from vlgs._core import core
from vlgs._objects import wrap

KEYS = 100_000
STARTS = 25


def fill(create):
    for i in range(KEYS):
        create("All", f"Key{i}", f"value{i}")


def settings():
    bed, peer_bed = wrap(vlgs_peer.bed()), vlgs_peer.Bed()
    document, peer_document = vlgs.Dispatch("VlGeneralServices.Files").CreateINIFile("a.ini"), vlgs_peer.Document()
    parser = configparser.ConfigParser()
    parser.add_section("All")
    for create in (document.CreateKey, peer_document.CreateKey, parser.set):
        fill(create)
    return {
        "bed": bed,
        "peer_bed": peer_bed,
        "document": document,
        "peer_document": peer_document,
        "parser": parser,
        "section": document["All"],
    }


CALLS = (  # what is measured, ours, the peer's, the number of runs in a round
    ("property, a number", "bed.Number", "peer_bed.Number", 2_000),
    ("property, a text", "document.FullPath", "peer_document.FullPath", 2_000),
    ("method, four plain arguments", "bed.Weigh(1, 'ab', 2, 0.5)", "peer_bed.Weigh(1, 'ab', 2, 0.5)", 2_000),
    ("KeyValue, pybind11", "document.KeyValue('All', 'Key777')", "peer_document.KeyValue('All', 'Key777')", 2_000),
    ("KeyValue, configparser", "document.KeyValue('All', 'Key777')", "parser.get('All', 'Key777')", 500),
    ("KeyValue, configparser, raw", "document.KeyValue('All', 'Key777')", "parser.get('All', 'Key777', raw=True)", 500),
    ("key in a section", "section['Key777'].Value", "parser['All']['Key777']", 500),
    ("10^5 names", "for name in section.keys(): pass", "for name in parser['All']: pass", 1),

    ("10^5 names and texts", "for pair in section.texts().items(): pass", "for pair in parser['All'].items(): pass", 1),
    ("10^5 keys, name and value of each", "for key in section: key.Name, key.Value",
     "for pair in parser['All'].items(): pass", 1),
)


def start(statement):
    """Milliseconds of processor time that an interpreter takes, at best."""
    best = []
    for _ in range(STARTS):
        before = resource.getrusage(resource.RUSAGE_CHILDREN)
        # An installed module is compiled once.
        subprocess.run([sys.executable, "-c", statement], check=True, env={**os.environ, "PYTHONDONTWRITEBYTECODE": ""})
        after = resource.getrusage(resource.RUSAGE_CHILDREN)
        best.append(after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime)
    return min(best) * 1e3


def main(rounds):
    names = settings()
    best = {}
    for _ in range(rounds):
        for _, *statements, runs in CALLS:
            for statement in statements:
                time = timeit.timeit(statement, globals=names, number=runs) / runs
                best[statement] = min(best.get(statement, time), time)
    print(f"module {core.__name__}")
    for what, ours, peer, _ in CALLS:
        print(f"{best[ours] * 1e9:14.0f} ns {best[peer] * 1e9:14.0f} ns {best[ours] / best[peer]:7.2f}  {what}")
    print(f"{start('import vlgs') - start('pass'):14.1f} ms of processor time  import vlgs, beyond an empty program")


if __name__ == "__main__":
    main(int(sys.argv[1]) if len(sys.argv) > 1 else 40)
