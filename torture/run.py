#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Kills processes that store something, lets their system calls fail, takes their room, crowds them, and tells what
was lost. scripts/torture.sh builds what it needs and runs it.

    torture/run.py --build build/dev [--threads build/threads] [--windows build/windows-x64] [--seed N] MINUTES [SUBJECT…]

Ends with status 1 unless every count but that of the attempts is 0. A subject is run when its name holds one of the
words given.
"""
import argparse
import pathlib
import random
import sys
import time

import crowds
import failures
import kills

SUBJECTS = kills.SUBJECTS + failures.SUBJECTS + crowds.SUBJECTS
COLUMNS = ("attempts", "losses", "mixtures", "leftovers", "hangs", "crashes")


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--build", type=lambda text: pathlib.Path(text).resolve(), required=True)
    parser.add_argument("--threads", type=lambda text: pathlib.Path(text).resolve())
    parser.add_argument("--windows", type=lambda text: pathlib.Path(text).resolve())
    parser.add_argument("--seed", type=int, default=random.randrange(2**31))
    parser.add_argument("minutes", type=float)
    parser.add_argument("subjects", nargs="*")
    options = parser.parse_args()
    chosen = [row for row in SUBJECTS if not options.subjects or any(word in row[0] for word in options.subjects)]
    shares = sum(share for _, _, share in chosen) or 1
    print(f"seed {options.seed}, {options.minutes:g} minutes")
    print(f"{'':44}" + "".join(f"{column:>10}" for column in COLUMNS), flush=True)
    failed, notes = False, []
    for name, subject, share in chosen:
        end = time.monotonic() + 60 * options.minutes * share / shares
        counts = subject(options, end, random.Random(options.seed))
        if isinstance(counts, str):
            print(f"{name:44}  left out: {counts}", flush=True)
            continue
        print(f"{name:44}" + "".join(f"{getattr(counts, column):>10}" for column in COLUMNS), flush=True)
        failed = failed or counts.failed() > 0 or counts.attempts == 0
        notes += [f"{name}: {note}" for note in counts.notes[:20]]
    print("\n".join(notes), end="\n" if notes else "")
    sys.exit(failed)


if __name__ == "__main__":
    main()
