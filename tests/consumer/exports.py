#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Fails when a shared library exports a name that no public header declares. `exports.py LIBRARY HEADERS`"""
import pathlib
import re
import subprocess
import sys

# What the host looks for by name: the server's entry points.
EXPECTED = {"DllCanUnloadNow", "DllGetClassObject", "DllInstall", "DllRegisterServer", "DllUnregisterServer"}


def exported(library):
    if library.suffix != ".dll":
        lines = subprocess.run(["nm", "-D", "--defined-only", library], capture_output=True, text=True,
                               check=True).stdout.splitlines()
        return [line.split()[-1].split("@")[0] for line in lines]
    dump = subprocess.run(["x86_64-w64-mingw32-objdump", "-p", library], capture_output=True, text=True,
                          check=True).stdout
    table = dump.split("[Ordinal/Name Pointer] Table", 1)[1].split("\n\n", 1)[0]
    return re.findall(r"^\s*\[\s*\d+\].* (\S+)$", table, re.MULTILINE)


def demangled(names, library):
    # 32-bit Windows puts another underscore in front of every name.
    names = [name[1:] if name.startswith("__Z") else name for name in names]
    return subprocess.run(["c++filt"], input="\n".join(names), capture_output=True, text=True,
                          check=True).stdout.splitlines()


def identifiers(name):
    """The parts of a declared name, without arguments: "vtable for vlgs::Files" -> ["vlgs", "Files"]."""
    name = re.sub(r"^(vtable|typeinfo|typeinfo name|VTT|guard variable|non-virtual thunk to|virtual thunk to)( for)? ",
                  "", name)
    name = name.split("(")[0]
    while "<" in (shorter := re.sub(r"<[^<>]*>", "", name)) and shorter != name:
        name = shorter
    return re.findall(r"[A-Za-z_]\w*", re.sub(r"<[^<>]*>", "", name).split(" ")[-1].replace("[abi:cxx11]", ""))


def main(library, headers):
    text = "\n".join(path.read_text() for path in headers.glob("*.h"))
    declared = set(re.findall(r"[A-Za-z_]\w*", text))
    marked = set(re.findall(r"\bclass VLGS_API (\w+)", text)) | set(re.findall(r"VLGS_API [^;{]*?(\w+)\(", text))
    names = exported(library)
    found = demangled(names, library)
    undeclared = []
    for name in found:
        parts = identifiers(name)
        own = len(parts) > 1 and parts[0] == "vlgs" and parts[1] in marked and declared.issuperset(parts)
        if not own and not (name.startswith("vlgs_") and name in declared) and name not in EXPECTED:
            undeclared.append(name)
    print(f"{len(found)} names exported, {len(undeclared)} of them declared in no public header", *undeclared[:40],
          sep="\n    ")
    return bool(undeclared) or len(found) < 100


if __name__ == "__main__":
    sys.exit(main(pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2])))
