#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Runs clang-tidy over translation units of a build tree, in parallel, skipping those that were clean before.

    tidy.py BUILD [FILE…]

BUILD holds compile_commands.json. Without files, every unit of the project is looked at. What was clean is remembered
in BUILD/tidy under a hash of everything that the verdict rests on: the texts of the unit and of all headers that it
includes, its command, the configuration and the version of clang-tidy.
"""
import concurrent.futures
import hashlib
import json
import os
import pathlib
import re
import shlex
import subprocess
import sys
from functools import lru_cache

CLANG_TIDY = os.environ.get("CLANG_TIDY", "clang-tidy")
ROOT = pathlib.Path(__file__).resolve().parent.parent


def main(build, names):
    units = {pathlib.Path(unit["file"]).resolve(): unit
             for unit in json.loads((build / "compile_commands.json").read_text())}
    wanted = [pathlib.Path(name).resolve() for name in names]
    for path in wanted:
        if path not in units:
            sys.exit(f"{path} is no translation unit of {build}")
    if not wanted:
        wanted = sorted(path for path in units if path.is_relative_to(ROOT) and not path.is_relative_to(build))
    clean = build / "tidy"
    clean.mkdir(exist_ok=True)
    basis = subprocess.run([CLANG_TIDY, "--version"], capture_output=True, check=True).stdout

    def basis_of(path):
        """The version and the configurations that hold for a unit, outermost first."""
        folders = [folder for folder in reversed(path.parents) if folder == ROOT or folder.is_relative_to(ROOT)]
        return basis + b"".join(file.read_bytes() for file in (folder / ".clang-tidy" for folder in folders)
                                if file.exists())

    def look(path):
        key = key_of(units[path], basis_of(path))
        if key and (clean / key).exists():
            return True, ""
        done = subprocess.run([CLANG_TIDY, "--quiet", "-p", build, path], capture_output=True, text=True)
        if done.returncode == 0 and key:
            (clean / key).touch()
        # What clang-tidy writes besides is the number of warnings in the system's headers.
        return done.returncode == 0, done.stdout + (done.stderr if done.returncode and not done.stdout else "")

    failed = 0
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        for path, (good, output) in zip(wanted, pool.map(look, wanted)):
            if not good:
                failed += 1
                print(f"== {path.relative_to(ROOT)}\n{output}", flush=True)
    print(f"{len(wanted)} files, {failed} with findings")
    return failed > 0


def key_of(unit, basis):
    """The hash that stands for a clean unit, or None where its headers cannot be told."""
    command = unit.get("arguments") or shlex.split(unit["command"])
    while not re.search(r"clang|\+\+|^cc$|^gcc$", pathlib.Path(command[0]).name):
        command = command[1:]  # a launcher
    output = command.index("-o")
    listing = subprocess.run(command[:output] + command[output + 2:] + ["-M", "-MF", "-"], cwd=unit["directory"],
                             capture_output=True, text=True)
    if listing.returncode:
        return None
    files = listing.stdout.replace("\\\n", " ").split(":", 1)[1].split()
    digest = hashlib.sha256(basis + "\0".join(command).encode())
    for name in files:
        digest.update(content_hash(os.path.join(unit["directory"], name)))
    return digest.hexdigest()


@lru_cache(maxsize=None)
def content_hash(name):
    with open(name, "rb") as file:
        return hashlib.sha256(file.read()).digest()


if __name__ == "__main__":
    sys.exit(main(pathlib.Path(sys.argv[1]).resolve(), sys.argv[2:]))
