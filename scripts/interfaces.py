#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Holds released interfaces to what they were: compares typelib/VlGeneralServices.idl with typelib/interfaces.txt.

    interfaces.py              fails when what callers hold on to has changed under its identifier
    interfaces.py --renew      adds what is new under identifiers of its own
    interfaces.py --renew _CorvaTools…
                               replaces these as well: only for what no release has carried yet

The list has a block for everything with an identifier: interfaces with their members' numbers and signatures in
the order of the virtual table, classes, enumerations with their values, records with their fields. Blocks stay when
what they tell of goes: the identifier is not free for anything else. An enumeration may grow.
"""
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
DEFINITION = ROOT / "typelib/VlGeneralServices.idl"
LIST = ROOT / "typelib/interfaces.txt"
HEADING = "# What must not change under its identifier once it was released. Derived: scripts/interfaces.py --renew\n"
BLOCK = re.compile(r"^    (?:typedef )?\[([^\n]*?)uuid\(([-0-9A-F]+)\)([^\n]*)\]\n    (\w+) (\w+)([^\n]*)\{\n(.*?)^    \}",
                   re.MULTILINE | re.DOTALL)


def defined(text):
    """Identifier -> (name, lines) of what the definition defines."""
    body = re.sub(r',? ?helpstring\("(?:[^"\\]|\\.)*"\)', "", text.split("\nlibrary ", 1)[1])
    found = {}
    for before, identifier, after, kind, name, base, content in BLOCK.findall(body):
        # A member is one line: its attributes and its signature.
        content = re.sub(r"\]\n\s+", "] ", content)
        lines = [line.strip() for line in content.splitlines() if line.strip() not in ("properties:", "methods:")]
        if kind == "enum":
            lines = [line.rstrip(",") for line in lines]
        if identifier in found:
            sys.exit(f"{found[identifier][0]} and {name} have one identifier")
        found[identifier] = (name, [f"{kind} {name}{base.rstrip()} [{before}{after.lstrip(', ')}]", *lines])
    return found


def listed():
    found = {}
    for block in LIST.read_text().removeprefix(HEADING).strip().split("\n\n") if LIST.exists() else []:
        identifier, *lines = (line.strip() for line in block.splitlines())
        found[identifier] = (lines[0].split()[1], lines)
    return found


def differences(old, new):
    """What would break those who hold on to `old`."""
    if old[0].startswith("enum "):
        return [f"- {line}" for line in old if line not in new]
    return [f"- {line}" for line in old if line not in new] + [f"+ {line}" for line in new if line not in old] or (
        [] if old == new else ["the order of the members"])


def main(arguments):
    renew = arguments[:1] == ["--renew"]
    now, then = defined(DEFINITION.read_text()), listed()
    if len(now) < 20:
        sys.exit(f"{DEFINITION} cannot be read")
    bad = False
    for identifier, (name, lines) in now.items():
        if identifier not in then and not renew:
            print(f"{name} is not in {LIST.name} yet: scripts/interfaces.py --renew")
            bad = True
        elif name not in arguments[1:] and (changed := differences(then.get(identifier, (name, lines))[1], lines)):
            print(f"{name} has changed under the identifier {identifier}; give it a new one:", *changed, sep="\n    ")
            bad = True
    if renew and not bad:
        kept = {identifier: block for identifier, block in then.items() if block[0] not in arguments[1:]}
        blocks = ("\n    ".join([identifier, *lines]) for identifier, (_, lines) in (kept | now).items())
        LIST.write_text(HEADING + "\n" + "\n\n".join(blocks) + "\n")
    return bad


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
