# SPDX-License-Identifier: MIT
"""Processes that store something and are killed at any moment."""
import os
import time

from harness import NOBODY, Counts, Outcome, Place, judge


def in_place(place):
    """A file with a second name, which stays the same file."""
    file = place.files / "f.ini"
    file.touch()
    os.link(file, place.files / "g.ini")
    return file


def in_closed_folder(place):
    file = place.files / "f.ini"
    file.touch()
    file.chmod(0o666)
    return file


def through_link(place):
    (place.files / "sub").mkdir()
    (place.files / "f.ini").symlink_to("sub/g.ini")
    return place.files / "f.ini"


def beside(place):
    return place.files / "f.ini"


def started(place, words, span, random):
    """A worker that is killed, mostly when it has begun to store; whether it was still alive then."""
    process = place.start([*words, 8])
    first = os.read(process.stdout.fileno(), 1000).decode() if random.random() < 0.8 else ""
    time.sleep(random.uniform(0, span))
    alive = process.poll() is None
    process.kill()
    output, errors = process.communicate()
    return Outcome(first + output, errors, process.returncode), alive


def kill(place, words, span, end, random):
    counts, last = Counts(), Outcome("")
    while time.monotonic() < end:
        outcome, alive = started(place, words, span, random)
        counts.attempts += alive
        if outcome.found is None and outcome.error is None and outcome.status in (0, -9):
            continue  # killed before it had looked
        judge(counts, last, outcome, f"kill {counts.attempts} of {words}")
        last = outcome
    judge(counts, last, place.run([*words, 0]), "the last kill")
    place.sweep(words, counts, {"f.ini", "g.ini", "sub"})
    return counts


def saves(lay_out, size, span):
    def subject(options, end, random):
        if lay_out is in_closed_folder and os.geteuid() != 0:
            return "needs to act as another user"
        place = Place(options.build, NOBODY if lay_out is in_closed_folder else None)
        file = lay_out(place)
        place.run(["save", file, size, 0 if not file.exists() else 1])
        return kill(place, ["save", file, size], span, end, random)
    return subject


def registry(options, end, random):
    return kill(Place(options.build), ["registry", "key", 10_000], 0.02, end, random)


SUBJECTS = [
    ("kills at a save of 100 bytes", saves(beside, 100, 0.01), 1),
    ("kills at a save of 10 MB", saves(beside, 10_000_000, 1), 2),
    ("kills at a save through a link", saves(through_link, 100, 0.01), 1),
    ("kills at a save under two names, 1 MB", saves(in_place, 1_000_000, 0.1), 2),
    ("kills at a save in a closed folder, 1 MB", saves(in_closed_folder, 1_000_000, 0.1), 2),
    ("kills at writes and folds of the registry", registry, 2),
]
