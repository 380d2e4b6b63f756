# SPDX-License-Identifier: MIT
"""What the subjects of torture/run.py share: a place to work in, processes at work there, and what is counted."""
import dataclasses
import os
import pathlib
import shutil
import subprocess
import tempfile

LONGEST = 60  # seconds that one process may take
NOBODY = 65534


@dataclasses.dataclass
class Counts:
    """The row of a subject. Losses: what was told to be stored is not there. Mixtures: neither old nor new is there,
    or a failure was told and the new is. Leftovers: files that stay, memory that grows."""
    attempts: int = 0
    losses: int = 0
    mixtures: int = 0
    leftovers: int = 0
    hangs: int = 0
    crashes: int = 0
    notes: list = dataclasses.field(default_factory=list)

    def fail(self, kind, note):
        setattr(self, kind, getattr(self, kind) + 1)
        self.notes.append(f"{kind}: {note}")

    def failed(self):
        return self.losses + self.mixtures + self.leftovers + self.hangs + self.crashes


class Outcome:
    """What a worker has told (Worker.cpp)."""

    def __init__(self, output, errors="", status=0, hung=False):
        self.errors, self.status, self.hung = errors, status, hung
        told = {}
        for line in output.split("\n")[:-1]:
            told.setdefault(line[0], []).append(int(line[2:]))
        self.found = told.get("=", [None])[-1]
        self.asked = told.get("?", [self.found])[-1]
        self.stored = told.get("+", [self.found])[-1]
        self.error = told.get("!", [None])[-1]


class Place:
    """A folder with everything that a worker writes, and the program itself, so that any user may run it."""

    def __init__(self, build, user=None):
        self.work = tempfile.TemporaryDirectory(prefix="vlgs-torture-")
        self.folder = pathlib.Path(self.work.name)
        self.folder.chmod(0o755)
        self.worker = self.folder / "Worker"
        shutil.copy(build / "torture/Worker", self.worker)
        self.user = user
        for name in ("files", "state", "registry"):
            (self.folder / name).mkdir()
            if user is not None and name != "files":
                os.chown(self.folder / name, user, user)
        self.files = self.folder / "files"
        self.environment = {**os.environ, "VLGS_REGISTRY": str(self.folder / "registry"),
                            "XDG_STATE_HOME": str(self.folder / "state"), "VLGS_VOLUMES": "C:=/"}

    def start(self, words, prefix=(), **options):
        if self.user is not None:
            options.update(user=self.user, group=self.user, extra_groups=[])
        return subprocess.Popen([*map(str, prefix), str(self.worker), *map(str, words)], stdout=subprocess.PIPE,
                                stderr=subprocess.PIPE, text=True, env=self.environment, cwd=self.folder, **options)

    def run(self, words, prefix=(), **options):
        process = self.start(words, prefix, **options)
        try:
            return Outcome(*process.communicate(timeout=LONGEST), process.returncode)
        except subprocess.TimeoutExpired:
            process.kill()
            return Outcome(*process.communicate(), hung=True)

    def sweep(self, words, counts, known):
        """Counts what stays when everything is old and one more process has stored something."""
        for file in self.folder.rglob("*"):
            if not file.is_symlink():
                os.utime(file, (0, 0))
        outcome = self.run([*words, 1])
        if outcome.stored != outcome.asked or outcome.error is not None:
            counts.fail("losses", f"nothing can be stored any more: {outcome.error} {outcome.errors}")
        places = [self.files, self.folder / "registry", self.folder / "state/vlgs/recovery"]
        for file in (file for place in places if place.exists() for file in place.rglob("*")):
            if file.name not in known and not file.name.startswith("HKEY_"):
                counts.fail("leftovers", file)


def judge(counts, before, after, what, failure_changes_nothing=False):
    """Compares what a process that was disturbed told with what the next one found."""
    if before.hung or after.hung:
        counts.fail("hangs", what)
    elif before.status not in (0, -9) or after.status not in (0, -9):
        counts.fail("crashes", f"{what}: {before.status} {after.status} {before.errors[-500:]} {after.errors[-500:]}")
    elif after.found is None:
        counts.fail("losses", f"{what}: it cannot be read, error {after.error}")
    elif before.found is None:
        if after.found < 0:
            counts.fail("mixtures", what)
    elif after.found < 0 or after.found > before.asked or before.found < 0:
        counts.fail("mixtures", f"{what}: {after.found} after {before.asked}")
    elif after.found < before.stored:
        counts.fail("losses", f"{what}: {after.found} after {before.stored}")
    elif failure_changes_nothing and before.error is not None and after.found != before.stored:
        counts.fail("mixtures", f"{what}: error {before.error}, and yet {after.found} is there")
