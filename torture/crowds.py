# SPDX-License-Identifier: MIT
"""Many at once: writers and readers of one hive, threads, objects without number, locks."""
import argparse
import pathlib
import subprocess
import time

import locks
from harness import Counts, Outcome, Place

WRITERS = 8
LARGEST = 10**6


def share(options, most):
    """All of it from ten minutes on, a part of it in less."""
    return max(1, int(most * min(1, options.minutes / 10)))


def writers(options, end, random):
    """Each writes its own row of values into one hive; somebody watches the first ones grow."""
    place, counts, steps = Place(options.build), Counts(), share(options, 2000)
    running = [place.start(["add", f"row{i}", 0, steps]) for i in range(WRITERS)]
    running += [place.start(["watch", f"row{i}", 0, steps]) for i in range(2)]
    end = time.monotonic() + 600
    for process in running:
        try:
            output, errors = process.communicate(timeout=max(1, end - time.monotonic()))
        except subprocess.TimeoutExpired:
            process.kill()
            counts.fail("hangs", "a writer or reader")
            continue
        outcome = Outcome(output, errors)
        if outcome.error is not None or process.returncode != 0:
            counts.fail("crashes", f"error {outcome.error}, status {process.returncode}: {errors}")
        if outcome.found < 0:
            counts.fail("mixtures", "a reader")
    for i in range(WRITERS):
        found = place.run(["add", f"row{i}", 0, 0]).found
        counts.attempts += steps
        counts.losses += steps - found
    return counts


def lock_takers(options, end, random):
    counts = Counts()
    while time.monotonic() < end:
        run = locks.Run(argparse.Namespace(processes=8, steps=100, life=1, seed=random.randrange(2**31), folder=None,
                                           command=[str(options.build / "torture/LockTaker")]))
        for failure in run.carry_out() + run.sweep() + run.observe(print_report=False):
            kind = ("leftovers" if failure.endswith("stays") else "hangs" if "waited" in failure else
                    "mixtures" if "both" in failure else "crashes")
            counts.fail(kind, failure)
        counts.attempts += sum(taker.steps() for taker in run.takers)
    return counts


def program(command, amount, place, failure):
    counts = Counts()
    try:
        ran = subprocess.run([*map(str, command), str(amount)], capture_output=True, text=True, cwd=place.files,
                             env=place.environment, timeout=3600)
    except subprocess.TimeoutExpired:
        counts.fail("hangs", command)
        return counts
    counts.attempts = int(ran.stdout.split()[-1]) if ran.stdout.split() else 0
    if ran.returncode != 0:
        counts.fail(failure if ran.returncode == 1 else "crashes", ran.stdout[-500:] + ran.stderr[-3000:])
    return counts


def threads(options, end, random):
    if not options.threads:
        return "needs the build with the thread sanitizer"
    seconds = max(5, int(end - time.monotonic()))
    return program([pathlib.Path(options.threads) / "torture/Classes", "threads"], seconds, Place(options.build),
                   "crashes")


def loops(options, end, random):
    return program([options.build / "torture/Classes", "loops"], share(options, LARGEST), Place(options.build),
                   "leftovers")


def com_loops(options, end, random):
    if not options.windows:
        return "needs Wine and the build for Windows"
    return program(["wine", pathlib.Path(options.windows) / "bin/ComLoops.exe"], share(options, LARGEST),
                   Place(options.build), "leftovers")


SUBJECTS = [
    ("kills among holders of locks", lock_takers, 3),
    ("8 writers and 2 readers of the registry", writers, 0),
    ("every class on 8 threads, thread sanitizer", threads, 2),
    ("objects created, failing and released", loops, 0),
    ("the same over COM", com_loops, 0),
]
