# SPDX-License-Identifier: MIT
"""A failure in place of each system call of a process that stores something, and storing without room."""
import re
import resource
import shutil
import subprocess
import time

from harness import Counts, Outcome, Place, judge
from kills import beside, in_place, through_link

ERRORS = "EIO ENOSPC EACCES EPERM ENOMEM EINTR EAGAIN EMFILE EROFS EDQUOT".split()
# The kernel tells a failure of brk in another way, and the C library itself ends a process whose futex fails.
NEVER_FAIL = {"exit_group", "getppid", "brk", "futex"}
KNOWN = {"f.ini", "g.ini", "sub"}


def operations(build):
    """(title, place, words, what is done before each attempt)"""
    for title, lay_out in (("save", beside), ("save under two names", in_place), ("save through a link", through_link)):
        place = Place(build)
        yield title, place, ["save", lay_out(place), 100_000], lambda: None
    place = Place(build)
    yield ("save of a new file", place, ["save", beside(place), 100_000],
           lambda file=beside(place): file.unlink(missing_ok=True))
    yield "registry", Place(build), ["registry", "key", 10_000], lambda: None
    place = Place(build)
    yield "lock", place, ["lock", place.files / "p.VLS", 0], lambda: None


def calls_of(place, words):
    """(system call, how many of its kind it is), from the beginning of the work on."""
    trace = place.folder / "trace"
    place.run([*words, 1], ["strace", "-qq", "-o", trace])
    counts, calls, begun = {}, [], False
    for name, arguments in re.findall(r"^(\w+)\((.*)", trace.read_text(errors="replace"), re.MULTILINE):
        counts[name] = counts.get(name, 0) + 1
        begun = begun or name == "getppid"
        tells = name == "write" and arguments.startswith("1,")
        if begun and not tells and name not in NEVER_FAIL:
            calls.append((name, counts[name]))
    return calls


def injected(options, end, random):
    if not shutil.which("strace"):
        return "needs strace"
    counts, prepared, work = Counts(), [], []
    for title, place, words, prepare in operations(options.build):
        place.run([*words, 1])
        prepare()
        prepared.append((place, words))
        work += [(title, place, words, prepare, name, count, error) for name, count in calls_of(place, words)
                 for error in ERRORS]
    random.shuffle(work)
    for title, place, words, prepare, name, count, error in work:
        if time.monotonic() > end:
            break
        prepare()
        inject = f"inject={name}:error={error}:when={count}"
        before = place.run([*words, 1], ["strace", "-qq", "-o", "/dev/null", "-e", inject])
        after = place.run([*words, 0])
        if title == "lock":
            before.stored = after.found  # it is gone with its process
        counts.attempts += 1
        judge(counts, before, after, f"{title}: {name} {count} {error}", title != "registry")
        if title == "save through a link" and not words[1].is_symlink():
            counts.fail("losses", f"{title}: {name} {count} {error}: the link is gone")
    for place, words in prepared:
        place.sweep(words, counts, KNOWN)
    counts.notes.append(f"{counts.attempts} of {len(work)} were tried")
    return counts


def size_limits(options, end, random):
    counts, prepared = Counts(), []
    for title, place, words, prepare in operations(options.build):
        if title != "lock":
            place.run([*words, 1])
            prepared.append((title, place, words, prepare))
    while time.monotonic() < end:
        title, place, words, prepare = random.choice(prepared)
        prepare()
        limit = random.randrange(150_000)
        before = place.run([*words, 1], preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (limit, limit)))
        counts.attempts += 1
        judge(counts, before, place.run([*words, 0]), f"{title}: no more than {limit} bytes", title != "registry")
    for _, place, words, _ in prepared:
        place.sweep(words, counts, KNOWN)
    return counts


def full_disk(options, end, random):
    """A small file system of its own for each attempt, as far as the host lets us mount one."""
    namespace = ["unshare", "--mount"] if subprocess.run(["unshare", "--mount", "true"], stderr=subprocess.DEVNULL
                                                         ).returncode == 0 else ["unshare", "-r", "--mount"]
    place, counts = Place(options.build), Counts()
    script = """mount -t tmpfs -o size=$1k none files || exit 77
        export VLGS_REGISTRY=$PWD/files/r
        ./Worker $2 "$3" 100 1; ./Worker $2 "$3" $4 1; ./Worker $2 "$3" 100 0; ls -A files"""
    while time.monotonic() < end:
        kind, name = random.choice((("save", place.files / "f.ini"), ("registry", "key")))
        words = [random.randrange(24, 300), kind, name, random.randrange(1000, 400_000)]
        ran = subprocess.run([*namespace, "sh", "-c", script, "sh", *map(str, words)], capture_output=True, text=True,
                             env=place.environment, cwd=place.folder, timeout=300)
        if ran.returncode == 77:
            return "no small file system may be mounted here"
        lines = ran.stdout.splitlines(keepends=True)
        told = [line for line in lines if line[1:2] == " "]
        cut = max(i for i, line in enumerate(told) if line[0] == "=")
        counts.attempts += 1
        judge(counts, Outcome("".join(told[:cut])), Outcome("".join(told[cut:]), ran.stderr), f"full disk: {words}",
              kind == "save")
        for line in lines:
            if line not in told and line.strip() not in ("f.ini", "r"):
                counts.fail("leftovers", line.strip())
    return counts


SUBJECTS = [
    ("failures of system calls", injected, 9),
    ("limits of the size of files", size_limits, 1),
    ("full disks", full_disk, 1),
]
