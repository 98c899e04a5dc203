#!/usr/bin/env python3
"""Writes the table of alphabets from the data of Unicode CLDR (Debian: unicode-cldr-core).

    tools/make_alphabet_table.py [--check]

With --check it writes nothing and fails if the table differs from the data. If the package is missing, or has another
release of CLDR than the table of plural rules names, it ends with status 77.
"""

import re
import sys
import unicodedata
import xml.etree.ElementTree

from make_plural_table import CLDR, RELEASE, SKIPPED, TOP, release

TABLE = TOP / "lang" / "unicode" / "alphabet_table.h"

# Languages whose lists also have the letters of usual words from other languages, such as "caf\u00e9".
LATIN = "ca cs da de es et eu fi fr gl hu id it lt nl no pl pt ro sk sl sv tr vi"
# These languages transcribe words of each other, so that only their own letters count.
CYRILLIC = "be bg mk ru sr uk"
STRESSED = "\u0400\u040D\u0450\u045D"

HEAD = f"""\
// The letters beyond ASCII of languages, from CLDR {RELEASE}. Written by tools/make_alphabet_table.py; do not edit.
#pragma once

#include <string_view>

namespace KelmoLibs::Lang {{

struct AlphabetRow {{
  std::string_view language;
  bool isCyrillic;
  std::u32string_view letters;  // sorted
}};

// clang-format off
inline constexpr AlphabetRow kAlphabetTable[] = {{
"""
TAIL = """\
};
// clang-format on

}  // namespace KelmoLibs::Lang
"""


def characters(pattern):
    """The characters of a set such as [a-c é {ch} \\u0301]."""
    parts = re.findall(r"\\u([0-9A-Fa-f]{4})|\\?(.)", pattern.strip()[1:-1])
    plain = [chr(int(code, 16)) if code else character for code, character in parts]
    for index, character in enumerate(plain):
        if character == "-" and 0 < index < len(plain) - 1 and " " not in (plain[index - 1], plain[index + 1]):
            yield from map(chr, range(ord(plain[index - 1]), ord(plain[index + 1])))
        elif character not in " {}":
            yield character


def is_letter(character, is_cyrillic):
    ranges = ((0x400, 0x530),) if is_cyrillic else ((0xC0, 0x250), (0x1E00, 0x1F00))
    return any(first <= ord(character) < end for first, end in ranges) and character.isalpha()


def letters(language, is_cyrillic):
    found = set(STRESSED)
    for element in xml.etree.ElementTree.parse(CLDR / "main" / f"{language}.xml").getroot().iter("exemplarCharacters"):
        if element.get("type") in (None, "" if is_cyrillic else "auxiliary"):
            for character in characters(unicodedata.normalize("NFC", element.text)):
                found |= {character, *character.upper(), *character.lower()}
    return sorted(character for character in found if is_letter(character, is_cyrillic))


def rows(languages, is_cyrillic):
    for language in languages.split():
        text = "".join(f"\\u{ord(c):04X}" if is_cyrillic else c for c in letters(language, is_cyrillic))
        yield f'    {{"{language}", {str(is_cyrillic).lower()}, U"{text}"}},\n'


def main():
    if release() != RELEASE:
        print(f"{CLDR} has CLDR {release()}, not {RELEASE}")
        sys.exit(SKIPPED)
    text = HEAD + "".join([*rows(LATIN, False), *rows(CYRILLIC, True)]) + TAIL
    if sys.argv[1:] != ["--check"]:
        TABLE.write_text(text, "utf-8")
    elif TABLE.read_text("utf-8") != text:
        sys.exit(f"{TABLE} differs from CLDR {RELEASE}; run tools/make_alphabet_table.py")


if __name__ == "__main__":
    main()
