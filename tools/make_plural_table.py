#!/usr/bin/env python3
"""Writes the table of plural rules, and the numbers that test it, from the data of Unicode CLDR (Debian: unicode-cldr-core).

    tools/make_plural_table.py [--check]

With --check it writes nothing and fails if the files differ from the data. If the package is missing, or has another
release of CLDR than the one that the files name, it ends with status 77.
"""

import pathlib
import re
import sys
import xml.etree.ElementTree

CLDR = pathlib.Path("/usr/share/unicode/cldr/common")
RELEASE = "41"
TOP = pathlib.Path(__file__).resolve().parent.parent
TABLE = TOP / "lang" / "unicode" / "plural_table.h"
SAMPLES = TOP / "tests" / "data" / "lang" / "plural_samples.txt"
CATEGORIES = ("zero", "one", "two", "few", "many")
SKIPPED = 77

HEAD = f"""\
// The cardinal plural rules of CLDR {RELEASE}. Written by tools/make_plural_table.py; do not edit.
#pragma once

#include "lang/unicode/plural_rules.h"

namespace KelmoLibs::Lang {{

// clang-format off
inline constexpr PluralRules kPluralTable[] = {{
"""
TAIL = """\
};
// clang-format on

}  // namespace KelmoLibs::Lang
"""


def release():
    try:
        text = (CLDR / "dtd" / "ldmlSupplemental.dtd").read_text("utf-8")
    except FileNotFoundError:
        return None
    return re.search(r'<!ATTLIST version cldrVersion CDATA #FIXED "(\d+)', text).group(1)


def groups():
    """Yields the languages of each group and {category: (condition, samples)}."""
    root = xml.etree.ElementTree.parse(CLDR / "supplemental" / "plurals.xml").getroot()
    for rules in root.iter("pluralRules"):
        parts = {rule.get("count"): (rule.text or "").partition("@") for rule in rules}
        yield rules.get("locales"), {
            category: (condition.strip(), "@" + samples.strip()) for category, (condition, _, samples) in parts.items()
        }


def table():
    lines = []
    for languages, rules in groups():
        conditions = ", ".join(f'"{rules[category][0] if category in rules else ""}"' for category in CATEGORIES)
        lines.append(f'    {{" {languages} ",\n     {{{conditions}}}}},\n')
    return HEAD + "".join(lines) + TAIL


def samples():
    """A line for each language and category: its numbers, with ranges such as 2~4."""
    lines = []
    for languages, rules in groups():
        for category, (_, text) in rules.items():
            numbers = re.sub(r"@\w+|…|,", " ", text).split()
            lines += [f"{language} {category} {' '.join(numbers)}\n" for language in languages.split()[:1]]
    return "".join(lines)


def main():
    if release() != RELEASE:
        print(f"{CLDR} has CLDR {release()}, not {RELEASE}")
        sys.exit(SKIPPED)
    is_check = sys.argv[1:] == ["--check"]
    for file, text in ((TABLE, table()), (SAMPLES, samples())):
        if not is_check:
            file.write_text(text, "utf-8")
        elif file.read_text("utf-8") != text:
            sys.exit(f"{file} differs from CLDR {RELEASE}; run tools/make_plural_table.py")


if __name__ == "__main__":
    main()
