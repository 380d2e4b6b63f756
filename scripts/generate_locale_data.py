#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Writes src/platform/posix/generated_locale_data.inc, the locales compiled into the library.

    python3 scripts/generate_locale_data.py [FOLDER]

The data are those of the Unicode CLDR, taken from its npm packages (versions below) with `npm pack` into FOLDER,
by default a temporary one; packages that are there already are not fetched again. Needs npm.

CLDR texts and patterns are turned into what the Windows function GetLocaleInfo gives for the same item:
years have four digits, blanks are ordinary blanks, direction marks are left out, the digits are the ASCII ones,
the calendar is the Gregorian one, and lists are separated by ";" where the decimal sign is a comma, else by ",".
Where Windows is known to differ from the CLDR for a widely used locale, locale_overrides.json has its value.
"""

import json
import pathlib
import re
import subprocess
import sys
import tarfile
import tempfile

VERSION = "48.2.0"
PACKAGES = ["cldr-core", "cldr-dates-full", "cldr-numbers-full", "cldr-localenames-full"]
HERE = pathlib.Path(__file__).parent
TARGET = HERE.parent / "src/platform/posix/generated_locale_data.inc"

WEEKDAYS = ["sun", "mon", "tue", "wed", "thu", "fri", "sat"]

# Usual Windows code pages, by language and script, then language, then script.
ANSI_PAGES = {
    "bs-Latn": 1250, "sr-Latn": 1250, "zh-Hant": 950, "yue-Hant": 950, "zh-Hans": 936, "yue-Hans": 936,
    "az-Latn": 1254, "uz-Latn": 1254, "ku-Latn": 1254, "kaa-Latn": 1254, "mn-Mong": 1252,
    "cs": 1250, "sk": 1250, "pl": 1250, "hu": 1250, "ro": 1250, "hr": 1250, "sl": 1250, "sq": 1250, "tk": 1250,
    "szl": 1250, "hsb": 1250, "dsb": 1250, "et": 1257, "lv": 1257, "lt": 1257, "ltg": 1257, "prg": 1257,
    "sgs": 1257, "tr": 1254, "vi": 1258, "ja": 932, "ko": 949,
    "Cyrl": 1251, "Grek": 1253, "Hebr": 1255, "Arab": 1256, "Thai": 874,
}
OEM_PAGES = {1250: 852, 1251: 866, 1252: 850, 1253: 737, 1254: 857, 1255: 862, 1256: 720, 1257: 775}

# Scripts that names leave out, as Windows names these locales, although CLDR writes them.
UNWRITTEN_SCRIPTS = {"zh-Hans-CN", "zh-Hans-SG", "zh-Hant-TW", "zh-Hant-HK", "zh-Hant-MO", "pa-Guru-IN",
                     "kk-Cyrl-KZ", "kok-Deva-IN", "mni-Beng-IN", "ms-Latn-MY"}
# Other names of languages, as locale names of POSIX hosts and older tags write them.
LANGUAGE_ALIASES = {"no": "nb", "iw": "he", "in": "id", "ji": "yi", "jw": "jv", "tl": "fil", "mo": "ro"}
# The language's own locale where the CLDR's is no country's.
LANGUAGE_DEFAULTS = {"ar": "ar-SA"}

# The formats of Windows for widely used locales: short date, long date, time; decimal sign, thousands separator, list
# separator, separators of dates and of times. The last three are straight from the CLDR.
WINDOWS_FORMATS = {
    "en-US": ("M/d/yyyy", "dddd, MMMM d, yyyy", "h:mm:ss tt", ".|,|,|/|:"),
    "en-GB": ("dd/MM/yyyy", "dd MMMM yyyy", "HH:mm:ss", ".|,|,|/|:"),
    "de-DE": ("dd.MM.yyyy", "dddd, d. MMMM yyyy", "HH:mm:ss", ",|.|;|.|:"),
    "fr-FR": ("dd/MM/yyyy", "dddd d MMMM yyyy", "HH:mm:ss", ",| |;|/|:"),
    "es-ES": ("dd/MM/yyyy", "dddd, d 'de' MMMM 'de' yyyy", "H:mm:ss", ",|.|;|/|:"),
    "it-IT": ("dd/MM/yyyy", "dddd d MMMM yyyy", "HH:mm:ss", ",|.|;|/|:"),
    "pt-BR": ("dd/MM/yyyy", "dddd, d 'de' MMMM 'de' yyyy", "HH:mm:ss", ",|.|;|/|:"),
    "ru-RU": ("dd.MM.yyyy", "d MMMM yyyy 'г.'", "H:mm:ss", ",| |;|.|:"),
    "uk-UA": ("dd.MM.yyyy", "d MMMM yyyy' р.'", "H:mm:ss", ",| |;|.|:"),
    "pl-PL": ("dd.MM.yyyy", "dddd, d MMMM yyyy", "HH:mm:ss", ",| |;|.|:"),
    "cs-CZ": ("dd.MM.yyyy", "dddd d. MMMM yyyy", "H:mm:ss", ",| |;|.|:"),
    "hu-HU": ("yyyy. MM. dd.", "yyyy. MMMM d., dddd", "H:mm:ss", ",| |;|. |:"),
    "tr-TR": ("d.MM.yyyy", "d MMMM yyyy dddd", "HH:mm:ss", ",|.|;|.|:"),
    "nl-NL": ("d-M-yyyy", "dddd d MMMM yyyy", "HH:mm:ss", ",|.|;|-|:"),
    "sv-SE": ("yyyy-MM-dd", "'den 'd MMMM yyyy", "HH:mm:ss", ",| |;|-|:"),
    "fi-FI": ("d.M.yyyy", "dddd d. MMMM yyyy", "H.mm.ss", ",| |;|.|."),
    "id-ID": ("dd/MM/yyyy", "dddd, dd MMMM yyyy", "HH.mm.ss", ",|.|;|/|."),
    "vi-VN": ("dd/MM/yyyy", "dd MMMM yyyy", "h:mm:ss tt", ",|.|;|/|:"),
    "th-TH": ("d/M/yyyy", "d MMMM yyyy", "H:mm:ss", ".|,|,|/|:"),
    "hi-IN": ("dd-MM-yyyy", "dd MMMM yyyy", "HH:mm:ss", ".|,|,|-|:"),
    "ar-SA": ("dd/MM/yyyy", "dddd, d MMMM yyyy", "hh:mm:ss tt", ".|,|;|/|:"),
    "ar-EG": ("dd/MM/yyyy", "dd MMMM, yyyy", "hh:mm:ss tt", ".|,|;|/|:"),
    "ja-JP": ("yyyy/MM/dd", "yyyy'年'M'月'd'日'", "H:mm:ss", ".|,|,|/|:"),
    "zh-CN": ("yyyy/M/d", "yyyy'年'M'月'd'日'", "H:mm:ss", ".|,|,|/|:"),
    "zh-TW": ("yyyy/M/d", "yyyy'年'M'月'd'日'", "tt hh:mm:ss", ".|,|,|/|:"),
    "ko-KR": ("yyyy-MM-dd", "yyyy'년' M'월' d'일' dddd", "tt h:mm:ss", ".|,|,|-|:"),
    "bg-BG": ("d.MM.yyyy 'г.'", "dddd, d MMMM yyyy 'г.'", "H:mm:ss", ",| |;|.|:"),
    "sk-SK": ("d. M. yyyy", "dddd d. MMMM yyyy", "H:mm:ss", ",| |;|. |:"),
    "lt-LT": ("yyyy-MM-dd", "yyyy 'm.' MMMM d 'd.,' dddd", "HH:mm:ss", ",| |;|-|:"),
}


class Cldr:
    def __init__(self, folder):
        self.folder = pathlib.Path(folder)
        for package in PACKAGES:
            if not (self.folder / package).exists():
                subprocess.run(["npm", "pack", "--silent", f"{package}@{VERSION}"], cwd=self.folder, check=True,
                               stdout=subprocess.DEVNULL)
                with tarfile.open(self.folder / f"{package}-{VERSION}.tgz") as archive:
                    archive.extractall(self.folder / "unpacked")
                (self.folder / "unpacked/package").rename(self.folder / package)

    def read(self, path):
        return json.loads((self.folder / path).read_text(encoding="utf-8"))

    def supplemental(self, name):
        return self.read(f"cldr-core/supplemental/{name}.json")["supplemental"]

    def main(self, package, locale, name):
        path = self.folder / package / "main" / locale / f"{name}.json"
        return json.loads(path.read_text(encoding="utf-8"))["main"][locale] if path.exists() else None


def plain(text):
    """Ordinary blanks, no direction marks."""
    text = re.sub("[\u200e\u200f\u061c\u202a-\u202e\u2066-\u2069]", "", text)
    return re.sub("[\u00a0\u2009\u202f]", " ", text).strip()


def quoted(literal):
    # A quote sign within literal text is doubled; marks and blanks outside words need no quotes.
    if not any(character.isalpha() for character in literal):
        return literal.replace("'", "''''") if "'" in literal else literal
    lead = literal[:len(literal) - len(literal.lstrip())]
    tail = literal[len(literal.rstrip()):]
    return lead + "'" + literal.strip().replace("'", "''") + "'" + tail


FIELDS = {"y": lambda n: "yyyy", "u": lambda n: "yyyy", "r": lambda n: "yyyy", "Y": lambda n: "yyyy",
          "M": lambda n: "M" * min(n, 4), "L": lambda n: "M" * min(n, 4), "d": lambda n: "d" * n,
          "E": lambda n: "dddd" if n == 4 else "ddd", "c": lambda n: "dddd" if n == 4 else "ddd",
          "h": lambda n: "h" * n, "K": lambda n: "h" * n, "H": lambda n: "H" * n, "k": lambda n: "H" * n,
          "m": lambda n: "m" * n, "s": lambda n: "s" * n, "a": lambda n: "tt", "b": lambda n: "tt",
          "B": lambda n: "tt", "G": lambda n: ""}


def converted(pattern):
    """A CLDR pattern in the platform's language."""
    if isinstance(pattern, dict):
        pattern = pattern["_value"]
    out, literal = "", ""
    for token in re.finditer(r"''|'((?:[^']|'')*)'|([A-Za-z])\2*|.", plain(pattern), re.S):
        text = token.group(0)
        if text == "''":
            literal += "'"
        elif token.group(1) is not None:
            literal += token.group(1).replace("''", "'")
        elif token.group(2):
            out += quoted(literal) + FIELDS[token.group(2)](len(text))
            literal = ""
        else:
            literal += text
    return re.sub(" +", " ", (out + quoted(literal)).strip())


def separator(pattern, fields):
    """The literal text between the first two fields."""
    found = re.search(f"[{fields}]+((?:[^{fields}'t]|'[^']*')+)[{fields}]", pattern)
    return found.group(1).replace("'", "") if found else ""


def list_of(names, keys):
    return [plain(names[key]) for key in keys]


def name_block(gregorian, overrides):
    months = gregorian["months"]
    days = gregorian["days"]
    numbers = [str(month) for month in range(1, 13)]
    block = []
    for context, width in (("stand-alone", "wide"), ("stand-alone", "abbreviated"), ("format", "wide"),
                           ("format", "abbreviated")):
        own = overrides.get("months" if width == "wide" else "abbreviatedMonths")
        block += own if own and context == "stand-alone" else list_of(months[context][width], numbers)
    for width in ("wide", "abbreviated", "short"):
        block += list_of(days["stand-alone"][width], WEEKDAYS)
    return tuple(block)


def currency_layout(pattern):
    """Items 0x1B and 0x1C: where the currency symbol stands in positive and negative amounts."""
    positive, _, negative = plain(pattern).partition(";")
    first = positive.lstrip().startswith("¤")
    spaced = " " in positive
    layout = (2 if spaced else 0) if first else (3 if spaced else 1)
    if negative.strip().startswith("("):
        return layout, {0: 0, 1: 4, 2: 14, 3: 15}[layout]
    return layout, {0: 1, 1: 5, 2: 9, 3: 8}[layout]


def grouping(pattern):
    groups = [len(group) for group in pattern.split(".")[0].split(";")[0].split(",")[1:]]
    if not groups:
        return "0"
    return f"{groups[-1]};{groups[-2]};0" if len(groups) > 1 and groups[-2] != groups[-1] else f"{groups[-1]};0"


class Generator:
    def __init__(self, cldr):
        self.cldr = cldr
        self.likely = cldr.supplemental("likelySubtags")["likelySubtags"]
        self.weeks = cldr.supplemental("weekData")["weekData"]
        self.currencies = cldr.supplemental("currencyData")["currencyData"]
        self.measures = cldr.supplemental("measurementData")["measurementData"]
        self.systems = cldr.supplemental("numberingSystems")["numberingSystems"]
        self.codes = cldr.supplemental("codeMappings")["codeMappings"]
        self.coverage = cldr.read("cldr-core/coverageLevels.json")["coverageLevels"]
        self.scripts = cldr.read("cldr-core/scriptMetadata.json")["scriptMetadata"]
        self.english = {name: cldr.main("cldr-localenames-full", "en", name)["localeDisplayNames"][name]
                        for name in ("languages", "territories")}
        defaults = cldr.read("cldr-core/defaultContent.json")["defaultContent"]
        self.default_content = {tag.rpartition("-")[0]: tag for tag in defaults}
        self.overrides = json.loads((HERE / "locale_overrides.json").read_text(encoding="utf-8"))
        del self.overrides["//"]

    def covered(self, locale):
        """Whether the language is translated at all, in this script; regions share the language's state."""
        if locale in self.coverage or locale in ("nb", "ca-ES-valencia"):  # "nb" is listed as "no"
            return True
        rest, _, last = locale.rpartition("-")
        same = len(last) in (2, 3) or len(last) == 4 and rest and self.maximal(rest)[1] == last
        return bool(rest and same) and self.covered(rest)

    def locales(self):
        """(folder of the data, tag as CLDR writes it, maximal tag) of every locale to be compiled in."""
        found = {}
        for locale in self.cldr.read("cldr-core/availableLocales.json")["availableLocales"]["full"]:
            if locale in ("und", "no") or not self.covered(locale):
                continue
            tag = self.default_content.get(locale, locale)
            key = (*self.maximal(tag), "valencia" in tag)
            # "sr" and "sr-Cyrl" are both "sr-Cyrl-RS": one of them will do, and the longer name.
            if key not in found or len(tag) > len(found[key][1]):
                found[key] = (locale, tag, key[:3])
        return found.values()

    def maximal(self, tag):
        """(language, script, region) with the likely ones filled in."""
        parts = tag.split("-")
        language = parts[0]
        script = next((part for part in parts[1:] if len(part) == 4), None)
        region = next((part for part in parts[1:] if len(part) in (2, 3)), None)
        for key in ("-".join(filter(None, (language, script, region))), "-".join(filter(None, (language, region))),
                    "-".join(filter(None, (language, script))), language):
            if key in self.likely:
                full = self.likely[key].split("-")
                return language, script or full[1], region or full[2]
        return language, script or "Latn", region or "001"

    def currency(self, region):
        current = None
        for entry in self.currencies["region"].get(region, []):
            for code, span in entry.items():
                if "_to" not in span and span.get("_tender") != "false":
                    current = code
        return current or "XDR"

    def code_page(self, language, script):
        for key in (f"{language}-{script}", language, script):
            if key in ANSI_PAGES:
                return ANSI_PAGES[key]
        return 1252

    def week(self, kind, region):
        return self.weeks[kind].get(region, self.weeks[kind]["001"])

    def number_items(self, locale, region, own):
        numbers = self.cldr.main("cldr-numbers-full", locale, "numbers")["numbers"]
        names = self.cldr.main("cldr-numbers-full", locale, "currencies")["numbers"]["currencies"]
        symbols = numbers.get("symbols-numberSystem-latn", {"decimal": ".", "group": ","})
        layouts = numbers.get("currencyFormats-numberSystem-latn", {"standard": "¤#,##0.00"})
        decimals = numbers.get("decimalFormats-numberSystem-latn", {"standard": "#,##0.###"})
        spaces = lambda text: re.sub("[\u00a0\u2009\u202f]", " ", text)
        decimal = own.get("decimal", spaces(symbols["decimal"]))
        group = own.get("thousands", spaces(symbols["group"]))
        currency = self.currency(region)
        fraction = self.currencies["fractions"].get(currency, self.currencies["fractions"]["DEFAULT"])["_digits"]
        positive, negative = own.get("currencyLayout") or currency_layout(layouts["standard"])
        native = self.systems.get(numbers.get("otherNumberingSystems", {}).get("native", "latn"), {})
        groups = grouping(decimals["standard"])
        return {
            0x0C: own.get("list", ";" if decimal == "," else ","),
            0x0D: "1" if region in self.measures["measurementSystem"] and
                  self.measures["measurementSystem"][region] == "US" else "0",
            0x0E: decimal, 0x0F: group, 0x10: groups, 0x11: "2", 0x12: "1",
            0x13: native.get("_digits", "0123456789"),
            0x14: plain(names.get(currency, {}).get("symbol", currency)), 0x15: currency,
            0x16: spaces(symbols.get("currencyDecimal", decimal)), 0x17: spaces(symbols.get("currencyGroup", group)),
            0x18: groups, 0x19: fraction, 0x1A: fraction, 0x1B: str(positive), 0x1C: str(negative),
            0x50: "", 0x51: "-", 0x76: "%", 0x77: "‰", 0x1010: "1", 0x1014: "1",
            0x1007: plain(self.cldr.main("cldr-numbers-full", "en", "currencies")["numbers"]["currencies"]
                          .get(currency, {}).get("displayName", currency)),
            0x1008: plain(names.get(currency, {}).get("displayName", currency)),
        }

    def date_items(self, gregorian, region, own):
        formats = gregorian["dateTimeFormats"]["availableFormats"]
        short = own.get("short") or converted(gregorian["dateFormats"]["short"])
        long = own.get("long") or converted(gregorian["dateFormats"]["full"])
        time = own.get("time") or converted(gregorian["timeFormats"]["medium"])
        short_time = re.sub(r"[:. ]+'?ss?'?", "", time) if "time" in own else \
            converted(gregorian["timeFormats"]["short"])
        periods = gregorian["dayPeriods"]["format"]["abbreviated"]
        morning, afternoon = own.get("designators") or (plain(periods["am"]), plain(periods["pm"]))
        order = {"M": "0", "d": "1", "y": "2"}
        bare = re.sub("'[^']*'", "", short)
        first = next(character for character in bare if character in order)
        bare_long = re.sub("'[^']*'|d{3,4}", "", long)
        day, hour = re.search("d{1,2}", bare), re.search("[hH]+", time)
        return {
            0x1D: separator(short, "dMy") or "/", 0x1E: separator(time, "hHms") or ":",
            0x1F: short, 0x20: long, 0x21: order[first],
            0x22: order[next(character for character in bare_long if character in order)],
            0x23: "1" if "H" in time else "0", 0x24: "1", 0x25: str(int(len(hour.group(0)) == 2)),
            0x26: str(int(len(day.group(0)) == 2)), 0x27: str(int("MM" in bare)),
            0x28: morning, 0x29: afternoon, 0x78: converted(formats["MMMMd"]), 0x79: short_time,
            0x1003: time, 0x1005: str(int("t" in re.split("[hH]", time)[0])),
            0x1006: converted(formats["yMMMM"]), 0x1009: "1",
            # Monday is 0 here.
            0x100C: str((WEEKDAYS.index(self.week("firstDay", region)) - 1) % 7),
            0x100D: {"1": "0", "4": "2", "7": "1"}[str(self.week("minDays", region))],
        }

    def name_items(self, locale, name, language, script, region):
        display = {part: self.cldr.main("cldr-localenames-full", locale, part)["localeDisplayNames"][part]
                   for part in ("languages", "territories")}
        def language_name(names):
            return plain(names.get(f"{language}-{script}") or names.get(language) or name)
        def region_name(names):
            return plain(names.get(region, region))
        page = self.code_page(language, script)
        alpha3 = self.codes.get(region, {}).get("_alpha3", region)
        native, english = language_name(display["languages"]), language_name(self.english["languages"])
        native_region = region_name(display["territories"])
        english_region = region_name(self.english["territories"])
        return {
            0x04: native, 0x07: alpha3, 0x08: native_region,
            0x0B: str(437 if name == "en-US" else OEM_PAGES.get(page, page)),
            0x59: language, 0x5A: region, 0x5C: name, 0x68: alpha3, 0x6C: f"{script};",
            0x70: "1" if self.scripts.get(script, {}).get("rtl") == "YES" else "0",
            0x72: f"{english} ({english_region})", 0x73: f"{native} ({native_region})",
            0x1001: english, 0x1002: english_region, 0x1004: str(page),
            0x100A: "1" if self.measures["paperSize"].get(region) == "US-Letter" else "9",
        }

    def name_of(self, tag, maximal):
        language, script, region = maximal
        if tag.endswith("-valencia"):
            return tag
        if "-".join(maximal) in UNWRITTEN_SCRIPTS or script not in tag.split("-"):
            return f"{language}-{region}"
        return f"{language}-{script}-{region}"

    def generate(self):
        """{name: (block of names, items, maximal tag)} of all locales."""
        records = {}
        for locale, tag, maximal in self.locales():
            name = self.name_of(tag, maximal)
            dates = self.cldr.main("cldr-dates-full", locale, "ca-gregorian")
            gregorian = dates["dates"]["calendars"]["gregorian"]
            if gregorian["months"]["format"]["wide"]["1"] == "M01" or name.split("-")[0] == "und":
                continue  # nobody has given the language its names yet
            own = {**self.overrides.get(maximal[0], {}), **self.overrides.get(name, {})}
            items = {**self.number_items(locale, maximal[2], own), **self.date_items(gregorian, maximal[2], own),
                     **self.name_items(locale, name, *maximal)}
            assert name not in records, (name, locale)
            records[name] = (name_block(gregorian, own), items, maximal)
        return records

    def keys(self, records):
        """Every way to write a locale or to leave out what it usually is, in small letters."""
        keys = {}
        for name, (_, _, (language, script, region)) in records.items():
            if name.endswith("-valencia"):
                keys[name] = name
                continue
            tags = [f"{language}-{script}-{region}", name]
            if self.maximal(f"{language}-{region}")[1] == script:
                tags.append(f"{language}-{region}")
            if self.maximal(f"{language}-{script}")[2] == region:
                tags.append(f"{language}-{script}")
            if LANGUAGE_DEFAULTS.get(language, name if self.maximal(language)[1:] == (script, region) else None) == name:
                tags.append(language)
            for tag in tags:
                assert keys.setdefault(tag, name) == name, (tag, name, keys[tag])
        for alias, language in LANGUAGE_ALIASES.items():
            for tag, name in [*keys.items()]:
                if tag == language or tag.startswith(f"{language}-"):
                    keys.setdefault(alias + tag[len(language):], name)
        keys.setdefault("sh", "sr-Latn-RS")
        # A language whose own locale is none of the table's gets its first one.
        for tag, name in sorted(keys.items()):
            keys.setdefault(tag.split("-")[0], name)
        return {tag.lower(): name for tag, name in keys.items()}


def is_pattern(pattern, *fields):
    """Whether a pattern consists of the fields, given as expressions, and of closed literal text."""
    bare = re.sub("'[^']*'", " ", pattern)
    tokens = [token.group(0) for token in re.finditer(r"([A-Za-z])\1*", bare)]
    return "'" not in bare and all(re.fullmatch("|".join(fields), token) for token in tokens)


def check(records):
    """What must hold of every locale, and the formats of those that are widely used."""
    assert len(records) > 400
    for name, (block, items, _) in records.items():
        short, long, time, decimal = (items[item] for item in (0x1F, 0x20, 0x1003, 0x0E))
        for start, end in ((0, 12), (12, 24), (24, 36), (36, 48), (48, 55), (55, 62)):
            assert all(block[start:end]) and len(set(block[start:end])) == end - start, (name, block[start:end])
        for item in (0x04, 0x0C, 0x0E, 0x0F, 0x14, 0x1D, 0x1E, 0x28, 0x29, 0x51, 0x1001):
            assert items[item], (name, hex(item))
        assert items[0x28] != items[0x29], name
        assert items[0x0C] == (";" if decimal == "," or name.startswith("ar-") else ","), name
        assert is_pattern(short, "d{1,4}", "M{1,4}", "yyyy"), (name, short)
        assert "d" in short and "M" in short and "yyyy" in short, (name, short)
        assert is_pattern(long, "d{1,4}", "M{1,4}", "yyyy") and "M" in long and "yyyy" in long, (name, long)
        assert is_pattern(time, "h{1,2}", "H{1,2}", "m{1,2}", "s{1,2}", "tt") and "m" in time and "s" in time, name
        assert ("h" in time) == ("tt" in time) != ("H" in time), (name, time)
        for text in (*block, *items.values()):
            assert not re.search("[\u00a0\u202f\u200e\u200f\u061c]", text), (name, text)
    for name, (*patterns, signs) in WINDOWS_FORMATS.items():
        items = records[name][1]
        assert [items[item] for item in (0x1F, 0x20, 0x1003)] == patterns, name
        assert "|".join(items[item] for item in (0x0E, 0x0F, 0x0C, 0x1D, 0x1E)) == signs, name


class Pool:
    """All texts, each once."""

    def __init__(self):
        self.numbers = {}

    def __call__(self, text):
        return self.numbers.setdefault(text, len(self.numbers))


def wrapped(numbers, width=18):
    return [("    " + ", ".join(map(str, numbers[i:i + width])) + ",") for i in range(0, len(numbers), width)]


def literal(text):
    return "".join(f"\\u{ord(c):04X}" if 0x0300 <= ord(c) < 0x0370 or 0x0590 <= ord(c) < 0x0900 or
                   0x200B <= ord(c) < 0x2010 else "\\" + c if c in '"\\' else c for c in text)


def write(records, keys):
    pool = Pool()
    blocks = {}
    items = sorted(next(iter(records.values()))[1])
    names = sorted(records, key=str.lower)
    rows = []
    for name in names:
        block, values, _ = records[name]
        assert sorted(values) == items
        number = blocks.setdefault(block, len(blocks))
        rows.append(f"    {{{number}, {{{', '.join(str(pool(values[item])) for item in items)}}}}}, // {name}")
    block_rows = ["    {" + ", ".join(str(pool(text)) for text in block) + "}," for block in blocks]
    key_rows = [f'    {{"{key}", {names.index(name)}}},' for key, name in sorted(keys.items())]
    starts, at = [], 0
    for text in pool.numbers:
        starts.append(at)
        at += len(text.encode("utf-16-le")) // 2
    starts.append(at)
    assert len(pool.numbers) < 0x10000
    lines = [f"// Generated by scripts/generate_locale_data.py from the npm packages {', '.join(PACKAGES)}",
             f"// {VERSION}; to make it again, run that script.",
             "// Unicode CLDR data: Copyright © 1991-2026 Unicode, Inc.; licence in docs/licences/unicode.txt",
             "// (SPDX-License-Identifier: Unicode-3.0).", "",
             "// All texts one after the other, and where each begins; the other tables give their numbers.",
             "// NOLINTBEGIN(clang-diagnostic-overlength-strings)", "constexpr char16_t pool[] =",
             *[f'    u"{literal(text)}"' for text in pool.numbers if text],
             "    ;", "// NOLINTEND(clang-diagnostic-overlength-strings)",
             "constexpr std::uint32_t textStarts[] = {", *wrapped(starts, 14), "};", "",
             "// The platform's numbers of the items, the columns of the locales.",
             "constexpr std::int32_t itemNumbers[] = {", *wrapped([f"0x{item:X}" for item in items], 16), "};", "",
             "// Month names: full, abbreviated, and both as they stand beside a day; then weekday names from Sunday:",
             "// full, abbreviated, shortest.",
             "constexpr NameBlock nameBlocks[] = {", *block_rows, "};", "",
             "constexpr Record records[] = {", *rows, "};", "",
             f"constexpr std::size_t defaultRecord = {names.index('en-US')}; // en-US", "",
             "// Names in small letters, sorted, with the number of the locale.",
             "constexpr Key keys[] = {", *key_rows, "};"]
    TARGET.write_text("\n".join(lines) + "\n", encoding="utf-8")
    print(f"{len(records)} locales, {len(blocks)} blocks of names, {len(pool.numbers)} texts, "
          f"{TARGET.stat().st_size} bytes")


def main():
    with tempfile.TemporaryDirectory() as temporary:
        generator = Generator(Cldr(sys.argv[1] if len(sys.argv) > 1 else temporary))
        records = generator.generate()
        check(records)
        write(records, generator.keys(records))


if __name__ == "__main__":
    main()
