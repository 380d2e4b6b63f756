#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Writes src/base/case_fold_data.inc from the Unicode Character Database.

The database is read from Debian's package unicode-data:

    apt-get install unicode-data
    scripts/generate_case_fold.py            # or with another folder than /usr/share/unicode

Three maps are made: simple case folding (status C and S of CaseFolding.txt), simple upper-case and simple
lower-case mapping (fields 12 and 13 of UnicodeData.txt). Each is a table in two stages: the code point without
its low bits chooses a block, the block holds for each of its code points what to add to the last UTF-16 unit,
modulo 65536. The maps share their blocks.
"""

import pathlib
import sys

BLOCK_BITS = 6
BLOCK = 1 << BLOCK_BITS
TARGET = pathlib.Path(__file__).resolve().parent.parent / "src/base/case_fold_data.inc"


def read_folding(path):
    lines = path.read_text(encoding="utf-8").splitlines()
    version = lines[0].removeprefix("# CaseFolding-").removesuffix(".txt")
    mapping = {}
    for line in lines:
        fields = [field.strip() for field in line.split("#")[0].split(";")]
        if len(fields) > 2 and fields[1] in "CS":
            mapping[int(fields[0], 16)] = int(fields[2], 16)
    return version, mapping


def read_simple(path, field):
    mapping = {}
    for line in path.read_text(encoding="utf-8").splitlines():
        fields = line.split(";")
        if fields[field]:
            mapping[int(fields[0], 16)] = int(fields[field], 16)
    return mapping


def last_unit(code_point):
    return code_point if code_point < 0x10000 else 0xDC00 + (code_point & 0x3FF)


def first_unit(code_point):
    return None if code_point < 0x10000 else (code_point - 0x10000) >> 10


def stages(mapping, blocks, limit):
    """The block numbers of one map; new blocks are appended to `blocks`."""
    for source, target in mapping.items():
        if first_unit(source) != first_unit(target):
            sys.exit(f"U+{source:04X} maps to another plane or another leading surrogate")
    chosen = []
    for start in range(0, limit, BLOCK):
        block = tuple(
            (last_unit(mapping.get(point, point)) - last_unit(point)) & 0xFFFF for point in range(start, start + BLOCK)
        )
        if block not in blocks:
            blocks.append(block)
        chosen.append(blocks.index(block))
    return chosen


def rows(numbers, form, per_row):
    texts = [form.format(number) for number in numbers]
    return "".join("    " + ", ".join(texts[i : i + per_row]) + ",\n" for i in range(0, len(texts), per_row))


def main():
    folder = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else "/usr/share/unicode")
    version, folding = read_folding(folder / "CaseFolding.txt")
    upper = read_simple(folder / "UnicodeData.txt", 12)
    lower = read_simple(folder / "UnicodeData.txt", 13)
    top = max(max(mapping) for mapping in (folding, upper, lower))
    limit = (top // BLOCK + 1) * BLOCK

    blocks = [(0,) * BLOCK]
    maps = [(name, stages(mapping, blocks, limit)) for name, mapping in
            (("folding", folding), ("upper", upper), ("lower", lower))]
    if len(blocks) > 256:
        sys.exit("more blocks than a byte can number")

    out = [
        f"// Simple case folding and simple case mappings of Unicode {version}.\n"
        "// Source: CaseFolding.txt and UnicodeData.txt of the Unicode Character Database, as in Debian's package\n"
        "// unicode-data. Copyright 1991-2022 Unicode, Inc.; distributed under the Unicode licence,\n"
        "// https://www.unicode.org/license.txt.\n"
        "// Made by scripts/generate_case_fold.py; run it again instead of editing this file.\n\n"
        f"constexpr unsigned blockBits = {BLOCK_BITS};\n"
        f"constexpr char32_t mappedLimit = 0x{limit:X};\n\n"
        "// What to add to the last UTF-16 unit of each code point of a block.\n"
        f"constexpr std::uint16_t blocks[{len(blocks)}][{BLOCK}] = {{\n"
    ]
    for block in blocks:
        out.append("    {\n" + rows(block, "{}", 32).replace("    ", "        ") + "    },\n")
    out.append("};\n")
    for name, chosen in maps:
        out.append(f"\nconstexpr std::uint8_t {name}Blocks[{len(chosen)}] = {{\n{rows(chosen, '{}', 24)}}};\n")
    TARGET.write_text("".join(out), encoding="utf-8")
    print(f"{TARGET.name}: Unicode {version}, {len(blocks)} blocks, "
          f"{len(blocks) * BLOCK * 2 + 3 * len(maps[0][1])} bytes")


main()
