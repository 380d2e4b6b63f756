#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Sets processes on the locks of one project, kills them at random, and looks at what they had.

    torture/locks.py [--processes 8] [--steps 2000] [--seed N] [--folder F] -- build/dev/torture/LockTaker
    torture/locks.py --processes 2 --steps 500 -- wine build/windows-x64/bin/LockTaker.exe

Each process takes, changes and releases read-write, read-only and exclusive locks of a project and three documents.
Whenever one is killed another goes on with the steps that are left. What each of them logs (LockTaker.cpp) are spans
of time in which it surely had a lock; this fails when two of different processes exclude each other and overlap, when
a process is refused for another reason than a conflict or makes no step for a minute, and when stale files stay.
"""
import argparse
import collections
import pathlib
import random
import subprocess
import sys
import tempfile
import time

READ_WRITE, READ_ONLY, EXCLUSIVE = 0, 1, 2
KINDS = ("read-write", "read-only", "exclusive")
CONFLICTS = {11515, 11516, 11556}
LONGEST_WAIT = 60  # seconds


def excludes(target, a, b):
    if READ_ONLY in (a, b):
        return False
    return target != 0 or EXCLUSIVE in (a, b)


class Taker:
    """One process and its log."""

    def __init__(self, command, folder, log, seed, steps):
        self.log = log
        self.process = subprocess.Popen([*command, str(folder), str(log), str(seed), str(steps)])

    def events(self):
        """(time, event, numbers); a killed process leaves its last line open."""
        if not self.log.exists():
            return []
        lines = [line.split() for line in self.log.read_text().split("\n")[:-1]]
        return [(int(time), event, [int(n) for n in numbers]) for time, event, *numbers in lines]

    def steps(self):
        return sum(event == "s" for _, event, _ in self.events())


class Run:
    def __init__(self, options):
        self.options = options
        self.random = random.Random(options.seed)
        self.work = tempfile.TemporaryDirectory(dir=options.folder)
        self.project = pathlib.Path(self.work.name) / "project"
        self.project.mkdir()
        self.takers = []
        self.kills = 0

    def start(self, steps):
        log = pathlib.Path(self.work.name) / f"{len(self.takers)}.log"
        taker = Taker(self.options.command, self.project, log, self.random.randrange(2**31), steps)
        taker.left = steps
        taker.killed_at = time.monotonic() + self.random.uniform(0.05, self.options.life)
        self.takers.append(taker)
        return taker

    def carry_out(self):
        running = [self.start(self.options.steps) for _ in range(self.options.processes)]
        failed = []
        while running:
            time.sleep(0.01)
            for taker in list(running):
                status = taker.process.poll()
                if status is None and time.monotonic() > taker.killed_at:
                    taker.process.kill()
                    taker.process.wait()
                    self.kills += 1
                elif status is None:
                    continue
                elif status != 0:
                    failed.append(f"a process ended with status {status}")
                running.remove(taker)
                left = taker.left - taker.steps()
                if left > 0 and not failed:
                    running.append(self.start(left))
        return failed

    def sweep(self):
        """What stays when one more has come and gone."""
        last = self.start(0)
        status = last.process.wait(LONGEST_WAIT)
        if status != 0:
            return [f"the last process ended with status {status}"]
        return [f"{file.name} stays" for file in self.project.iterdir()]

    def observe(self, print_report=True):
        spans, failures, counts, longest = collections.defaultdict(list), [], collections.Counter(), 0
        for number, taker in enumerate(self.takers):
            held, asked, last = {}, None, 0
            for at, event, numbers in taker.events():
                longest = max(longest, at - last if last else 0)
                last = at
                if event == "+":
                    held.setdefault(tuple(numbers), []).append(at)
                    counts[KINDS[numbers[1]] + " locks"] += 1
                elif event == "-":
                    begin = held[tuple(numbers)].pop(0)
                    spans[numbers[0]].append((begin, at, number, numbers[1]))
                elif event == "!":
                    counts["conflicts told"] += 1
                    if numbers[0] not in CONFLICTS:
                        failures.append(f"process {number} was refused with {numbers[0]}")
            for (target, kind), begins in held.items():
                spans[target] += [(begin, last, number, kind) for begin in begins]
        for target, all_spans in spans.items():
            active = []
            for span in sorted(all_spans):
                active = [other for other in active if other[1] > span[0]]
                failures += [f"target {target}: processes {span[2]} and {other[2]} both had it, {KINDS[span[3]]} "
                             f"and {KINDS[other[3]]}, at {span[0]}" for other in active
                             if other[2] != span[2] and excludes(target, span[3], other[3])]
                active.append(span)
        if longest > LONGEST_WAIT * 1e9:
            failures.append(f"a process waited for {longest / 1e9:.0f} seconds")
        if not all(counts[kind + " locks"] for kind in KINDS) or not counts["conflicts told"]:
            failures.append("too little happened to tell anything")
        report = ", ".join(f"{count} {what}" for what, count in sorted(counts.items()))
        if print_report:
            print(f"{self.options.processes} processes, {self.options.steps} steps each, {self.kills} killed: {report}; "
                  f"longest time between two events {longest / 1e6:.0f} ms")
        return failures


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--processes", type=int, default=8)
    parser.add_argument("--steps", type=int, default=2000)
    parser.add_argument("--life", type=float, default=3, help="the longest life of a process in seconds")
    parser.add_argument("--seed", type=int, default=random.randrange(2**31))
    parser.add_argument("--folder", help="where the project is made, else the folder for temporary files")
    parser.add_argument("command", nargs="+")
    options = parser.parse_args()
    print("seed", options.seed)
    run = Run(options)
    failures = run.carry_out() + run.sweep() + run.observe()
    for failure in failures[:20]:
        print("FAILED:", failure)
    sys.exit(bool(failures))


if __name__ == "__main__":
    main()
