#!/usr/bin/env python3
"""Writes the table of plural rules, and the numbers and conditions that test it, from the data of Unicode CLDR (Debian: unicode-cldr-core).

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
TABLE = TOP / "cldr" / "plural_table.h"
SAMPLES = TOP / "tests" / "data" / "cldr" / "plural_samples.txt"
CONDITIONS = TOP / "tests" / "data" / "cldr" / "plural_conditions.txt"
CATEGORIES = ("zero", "one", "two", "few", "many")
SKIPPED = 77

HEAD = f"""\
// The cardinal plural rules of CLDR {RELEASE}. Written by tools/make_plural_table.py; do not edit.
// The first category whose condition is true counts. `n` of CLDR is `i` of a number whose `t` is 0.
#pragma once

#include <cstdint>

#include "cldr/plural_rules.h"

namespace KelmoLibs::Cldr {{

constexpr bool IsIn(std::uint64_t number, std::uint64_t first, std::uint64_t last) noexcept {{
  return first <= number && number <= last;
}}

// clang-format off
"""
MIDDLE = """\
inline constexpr PluralRules kPluralTable[] = {
"""
TAIL = """\
};
// clang-format on

}  // namespace KelmoLibs::Cldr
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


def any_of(terms):
    """The terms with "or" between them, as a part of a larger expression."""
    return terms[0] if len(terms) == 1 else f"({' || '.join(terms)})"


def relation(text):
    """C++ for a relation such as "n % 100 != 11,71,91": terms with "and" between them."""
    operand, modulus, negation, ranges = re.fullmatch(r"([niftve])(?: % (\d+))? (!?)= ([\d.,]+)", text).groups()
    value = f"x.{'i' if operand == 'n' else operand}" + (f" % {modulus}" if modulus else "")
    numbers = [part.split("..") for part in ranges.split(",")]
    is_in = any_of([f"{value} == {part[0]}" if len(part) == 1 else f"IsIn({value}, {part[0]}, {part[1]})" for part in numbers])
    if operand == "n":
        return [f"!(x.t == 0 && {is_in})"] if negation else ["x.t == 0", is_in]
    if not negation:
        return [is_in]
    return [is_in.replace("==", "!=") if is_in.startswith("x") else f"!{is_in}"]


def condition_of(text):
    """C++ for a condition such as "v = 0 and i % 10 = 1 or n = 11"."""
    # "n" may be asked twice, but whether it is an integer only once.
    all_of = [" && ".join(dict.fromkeys(term for part in parts.split(" and ") for term in relation(part)))
              for parts in text.split(" or ")]
    return all_of[0] if len(all_of) == 1 else " || ".join(f"({part})" if "&&" in part else part for part in all_of)


def table():
    functions, rows = [], []
    for index, (languages, rules) in enumerate(groups()):
        present = [category for category in CATEGORIES if category in rules]
        functions.append(f"inline PluralCategory PluralRule{index}(const PluralOperands&{' x' if present else ' /*x*/'}) noexcept {{\n")
        for category in present:
            functions.append(f"  if ({condition_of(rules[category][0])}) {{\n    return PluralCategory::k{category.title()};\n  }}\n")
        functions.append("  return PluralCategory::kOther;\n}\n\n")
        bits = sum(1 << CATEGORIES.index(category) for category in present)
        rows.append(f'    {{" {languages} ", {bits}, PluralRule{index}}},\n')
    return HEAD + "".join(functions) + MIDDLE + "".join(rows) + TAIL


def samples():
    """A line for each language and category: its numbers, with ranges such as 2~4."""
    lines = []
    for languages, rules in groups():
        for category, (_, text) in rules.items():
            numbers = re.sub(r"@\w+|…|,", " ", text).split()
            lines += [f"{language} {category} {' '.join(numbers)}\n" for language in languages.split()[:1]]
    return "".join(lines)


def conditions():
    """A line for each language and category but `other`: its condition as CLDR has it."""
    return "".join(f"{languages.split()[0]} {category} {rules[category][0]}\n"
                   for languages, rules in groups() for category in CATEGORIES if category in rules)


def main():
    if release() != RELEASE:
        print(f"{CLDR} has CLDR {release()}, not {RELEASE}")
        sys.exit(SKIPPED)
    is_check = sys.argv[1:] == ["--check"]
    for file, text in ((TABLE, table()), (SAMPLES, samples()), (CONDITIONS, conditions())):
        if not is_check:
            file.write_text(text, "utf-8")
        elif file.read_text("utf-8") != text:
            sys.exit(f"{file} differs from CLDR {RELEASE}; run tools/make_plural_table.py")


if __name__ == "__main__":
    main()
