#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Writes src/platform/posix/generated_code_pages.inc, the code pages compiled into the library.

    python3 scripts/generate_code_pages.py

The mappings are those of Python's own codecs (made with Python 3.11), which follow the tables that the Unicode
Consortium publishes for the Windows code pages. What those tables leave open is filled as Windows fills it:
unused bytes become the control character of the same number or a private-use character, and the ranges for
user-defined characters of the double-byte pages are the private-use area from U+E000 on.
"""

import pathlib
import sys

NONE = 0xFFFD
TRAILS = range(0x40, 0xFF)

# Private-use characters that Windows gives to unused bytes; the other unused bytes of these pages stand for
# the control character of their own number.
FILLED = {
    874: {0xDB: 0xF8C1, 0xDC: 0xF8C2, 0xDD: 0xF8C3, 0xDE: 0xF8C4,
          0xFC: 0xF8C5, 0xFD: 0xF8C6, 0xFE: 0xF8C7, 0xFF: 0xF8C8},
    932: {0xFD: 0xF8F1, 0xFE: 0xF8F2, 0xFF: 0xF8F3},
    936: {0x80: 0x20AC, 0xFF: 0xF8F5},
    949: {0xFF: 0xF8F7},
    950: {0xFF: 0xF8F8},
    1253: {0xAA: 0xF8F9, 0xD2: 0xF8FA, 0xFF: 0xF8FB},
    1255: {0xCA: 0x05BA, 0xD9: 0xF88D, 0xDA: 0xF88E, 0xDB: 0xF88F, 0xDC: 0xF890, 0xDD: 0xF891,
           0xDE: 0xF892, 0xDF: 0xF893, 0xFB: 0xF894, 0xFC: 0xF895, 0xFF: 0xF896},
    1257: {0xA1: 0xF8FC, 0xA5: 0xF8FD},
}
SINGLE_BYTE = {page: f"cp{page}" for page in [437, 850, 852, 866, 874, *range(1250, 1259)]} | {
    20866: "koi8-r", 28591: "iso8859-1", 28592: "iso8859-2", 28595: "iso8859-5", 28605: "iso8859-15"}

# Codec, lead bytes, substitute, and the user-defined ranges (lead from, lead to, trail from, trail to) in the
# order in which they take the private-use characters from U+E000 on.
DOUBLE_BYTE = {
    932: ("cp932", [*range(0x81, 0xA0), *range(0xE0, 0xFD)], '\\u30FB', []),
    936: ("gbk", range(0x81, 0xFF), '?', [(0xAA, 0xAF, 0xA1, 0xFE), (0xF8, 0xFE, 0xA1, 0xFE),
                                           (0xA1, 0xA7, 0x40, 0xA0)]),
    949: ("cp949", range(0x81, 0xFF), '?', [(0xC9, 0xC9, 0xA1, 0xFE), (0xFE, 0xFE, 0xA1, 0xFE)]),
    950: ("cp950", range(0x81, 0xFF), '?', [(0xFA, 0xFE, 0x40, 0xFE), (0x8E, 0xA0, 0x40, 0xFE),
                                             (0x81, 0x8D, 0x40, 0xFE), (0xC6, 0xC8, 0xA1, 0xFE)]),
}


def decoded(codec, data):
    try:
        text = data.decode(codec)
    except UnicodeDecodeError:
        return NONE
    return ord(text) if len(text) == 1 else NONE


def single_bytes(page, codec, leads=()):
    """The characters of the bytes 0x80 to 0xFF; a lead byte has none."""
    row = []
    for byte in range(0x80, 0x100):
        character = NONE if byte in leads else decoded(codec, bytes([byte]))
        if character == NONE and byte not in leads:
            character = FILLED.get(page, {}).get(byte, byte)
        row.append(character)
    return row


def double_bytes(codec, leads, user_defined):
    """The characters of the double-byte codes, for every lead byte the row of its trail bytes."""
    rows = {lead: [decoded(codec, bytes([lead, trail])) for trail in TRAILS] for lead in leads}
    private = 0xE000
    for lead_from, lead_to, trail_from, trail_to in user_defined:
        for lead in range(lead_from, lead_to + 1):
            for trail in range(trail_from, trail_to + 1):
                # No trail byte: 0x7F everywhere, and 0x80 to 0xA0 in 950.
                if trail == 0x7F or codec == "cp950" and 0x7F < trail < 0xA1:
                    continue
                rows[lead][trail - 0x40] = private
                private += 1
    return rows


def written_code(codec, character, codes):
    """The one of several codes of a character that Windows writes."""
    if codec == "cp932":  # the codes from 0xED40 to 0xEEFC repeat others and are never written
        return next(code for code in codes if not 0xED40 <= code <= 0xEEFC)
    if codec == "cp950" and character in (0x2550, 0x255E, 0x2561, 0x256A):  # box drawing: the later extension
        return codes[-1]
    return int.from_bytes(chr(character).encode(codec), "big")


def preferred_codes(codec, rows):
    """Characters with several codes whose code for writing is not the lowest one."""
    codes = {}
    for lead, row in rows.items():
        for trail, character in zip(TRAILS, row):
            if character != NONE:
                codes.setdefault(character, []).append(lead << 8 | trail)
    preferred = []
    for character, known in sorted(codes.items()):
        if len(known) > 1:
            code = written_code(codec, character, known)
            assert code in known
            if code != known[0]:
                preferred.append((character, code))
    return preferred


def literal(row):
    while row and row[-1] == NONE:
        row = row[:-1]
    text = ""
    for character in row:
        if character in (0x22, 0x5C):
            text += "\\" + chr(character)
        elif character < 0xA0 or character in (0xA0, 0xAD) or 0x200B <= character <= 0x200F \
                or 0x0590 <= character < 0x0700 or 0x0300 <= character < 0x0370 \
                or 0x2028 <= character <= 0x202F or 0xE000 <= character < 0xF900:
            text += f"\\u{character:04X}"
        else:
            text += chr(character)
    return f'u"{text}"'


def main():
    out = [f"// Generated by scripts/generate_code_pages.py from the codecs of Python {sys.version.split()[0]}; to "
           "make it again, run that script.",
           "// A row holds the characters of the bytes from 0x80 (single) or of the trail bytes from 0x40",
           "// (double) on; U+FFFD stands where there is none, and at the end of a row it is left out.", ""]
    preferences = {}
    for page, (codec, leads, _, user_defined) in DOUBLE_BYTE.items():
        rows = double_bytes(codec, leads, user_defined)
        out.append(f"constexpr std::u16string_view rows{page}[] = {{")
        out += [f"    /* {lead:02X} */ {literal(rows.get(lead, []))}," for lead in range(0x81, 0xFF)]
        out.append("};")
        preferred = [f"{{0x{character:04X}, 0x{code:04X}}}" for character, code in preferred_codes(codec, rows)]
        if preferred:
            out.append(f"constexpr Preference preferences{page}[] = {{")
            out += ["    " + ", ".join(preferred[i:i + 6]) + "," for i in range(0, len(preferred), 6)]
            out.append("};")
        preferences[page] = f"preferences{page}" if preferred else "{}"
    out.append("constexpr Source sources[] = {")
    for page, codec in SINGLE_BYTE.items():
        out.append(f"    {{{page}, u'?', {literal(single_bytes(page, codec))}, nullptr, {{}}}},")
    for page, (codec, leads, substitute, _) in DOUBLE_BYTE.items():
        out.append(f"    {{{page}, u'{substitute}', {literal(single_bytes(page, codec, leads))}, rows{page}, "
                   f"{preferences[page]}}},")
    out.append("};")
    target = pathlib.Path(__file__).parent.parent / "src/platform/posix/generated_code_pages.inc"
    target.write_text("\n".join(out) + "\n", encoding="utf-8")


if __name__ == "__main__":
    main()
