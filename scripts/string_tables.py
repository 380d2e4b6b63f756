#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Writes the message texts of resources/ as the string tables of a Windows resource script.

    string_tables.py resources/VlComRes.en.txt > VlComRes.rc

resources/README.md tells the form of the texts."""
import re
import sys
from pathlib import Path

ESCAPES = {"n": "\r\n", "t": "\t", "s": " "}
IN_LITERALS = {"\r": "\\r", "\n": "\\n", "\t": "\\t", "\\": "\\\\", '"': '""'}


def unescape(text):
    return re.sub(r"\\(.)", lambda match: ESCAPES.get(match[1], match[1]), text)


def texts_of(path, base):
    for line in path.read_text(encoding="utf-8-sig").split("\n"):
        match = re.fullmatch(r"(@?)(\d+)\t(.*?)\r?", line)
        if not match:
            continue
        included, number, text = match.groups()
        if included:
            yield from texts_of(path.parent / text, int(number))
        else:
            yield base + int(number), unescape(text)


def main():
    print("#pragma code_page(65001)\nLANGUAGE 0, 0\nSTRINGTABLE\nBEGIN")
    for number, text in sorted(dict(texts_of(Path(sys.argv[1]), 0)).items()):
        literal = "".join(IN_LITERALS.get(c, c) for c in text)
        print(f'    {number}, "{literal}"')
    print("END")


if __name__ == "__main__":
    sys.stdout.reconfigure(encoding="utf-8")
    main()
