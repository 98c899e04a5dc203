#!/usr/bin/env python3
"""Writes the table of number formats from the data of Unicode CLDR (Debian: unicode-cldr-core).

    tools/make_number_table.py [--check]

With --check it writes nothing and fails if the table differs from the data. If the package is missing, or has another
release of CLDR than the table of plural rules names, it ends with status 77.

The id of a language gets a row if it has another format than the id without its last part, or if that has no row.
"""

import functools
import re
import sys
import xml.etree.ElementTree

from make_plural_table import CLDR, RELEASE, SKIPPED, TOP, release

TABLE = TOP / "cldr" / "number_table.h"

HEAD = f"""\
// The number formats of languages, from CLDR {RELEASE}. Written by tools/make_number_table.py; do not edit.
#pragma once

#include <string_view>

#include "cldr/number_format.h"

namespace KelmoLibs::Cldr {{

struct NumberFormatRow {{
  std::string_view languages;  // " de id pt-pt "
  NumberFormat format;
}};

// clang-format off
inline constexpr NumberFormatRow kNumberTable[] = {{
"""
TAIL = """\
};
// clang-format on

}  // namespace KelmoLibs::Cldr
"""


def supplemental(file, tag):
    return xml.etree.ElementTree.parse(CLDR / "supplemental" / file).getroot().iter(tag)


@functools.cache
def parents():
    """{locale: parent} of the locales that do not inherit from the id without its last part."""
    return {locale: element.get("parent") for element in supplemental("supplementalData.xml", "parentLocale")
            for locale in element.get("locales").split()}


@functools.cache
def first_digits():
    return {element.get("id"): element.get("digits")[0] for element in supplemental("numberingSystems.xml", "numberingSystem")
            if element.get("type") == "numeric"}


@functools.cache
def numbers(locale):
    """{place: text} of what the file of a locale has by itself: ("latn", "decimal"), ("", "minimumGroupingDigits")."""
    file = CLDR / "main" / f"{locale}.xml"
    element = xml.etree.ElementTree.parse(file).getroot().find("numbers") if file.exists() else None
    if element is None:
        return {}
    found = {("", child.tag): child for child in element if not child.get("alt")}
    for system in element.findall("symbols") + element.findall("decimalFormats"):
        of_system = system.findall("decimalFormatLength[decimalFormat]/.") or list(system)
        for child in of_system:
            if child.tag == "decimalFormatLength":
                child = child.find("decimalFormat/pattern") if not child.get("type") else None
            if child is not None:
                found.setdefault((system.get("numberSystem", ""), child.tag), child)
    # What nobody has confirmed does not count.
    return {place: child.text for place, child in found.items() if child.get("draft") in (None, "approved", "contributed")}


def inherited(locale, *places):
    """The text of the first place that the locale or a locale from which it inherits has."""
    for place in places:
        at = locale
        while at:
            if place in numbers(at):
                return numbers(at)[place]
            at = parents().get(at) or at.rpartition("_")[0] or ("root" if at != "root" else None)
    raise KeyError(places)


def format_of(locale):
    """The fields of NumberFormat."""
    system = inherited(locale, ("", "defaultNumberingSystem"))

    def of_system(tag):
        return inherited(locale, (system, tag), ("latn", tag))

    groups = [len(group) for group in of_system("pattern").split(";")[0].split(".")[0].split(",")[1:]]
    last = groups[-1] if groups else 0
    further = groups[-2] if len(groups) > 1 else last
    minimum = int(inherited(locale, ("", "minimumGroupingDigits")))
    return of_system("decimal"), of_system("group"), of_system("minusSign"), first_digits()[system], last, further, minimum


def locales():
    """Yields ids and the locales that have their formats."""
    files = {file.stem for file in (CLDR / "main").glob("*.xml")} - {"root"}
    for locale in files:
        yield locale, locale
    # Ids such as zh_TW, whose script everyone knows, and former ids such as iw.
    for element in supplemental("likelySubtags.xml", "likelySubtag"):
        id_, locale = element.get("from"), element.get("to")
        if re.fullmatch("[a-z]{2,3}_([A-Z]{2}|[0-9]{3})", id_) and not id_.startswith("und") and id_ not in files and locale in files:
            yield id_, locale
    for element in supplemental("supplementalMetadata.xml", "languageAlias"):
        if re.fullmatch("[a-z]{2}", element.get("type")) and element.get("replacement") in files - {element.get("type")}:
            yield element.get("type"), element.get("replacement")


def rows():
    """{fields of NumberFormat: ids}."""
    formats = {}
    for id_, locale in sorted(locales(), key=lambda pair: (pair[0].count("_"), pair)):
        shorter = id_
        while shorter and (shorter == id_ or shorter not in formats):
            shorter = shorter.rpartition("_")[0]
        if not shorter or formats[shorter] != format_of(locale):
            formats.setdefault(id_, format_of(locale))
    ids = {}
    for id_ in sorted(formats):
        ids.setdefault(formats[id_], []).append(id_.replace("_", "-").lower())
    return ids


def escaped(text):
    return "".join(c if " " <= c <= "~" else f"\\u{ord(c):04X}" for c in text)


def table():
    lines = []
    for (decimal, group, minus, zero, *sizes), ids in rows().items():
        marks = ", ".join(f'"{escaped(text)}"' for text in (decimal, group, minus))
        lines.append(f'    {{" {" ".join(ids)} ",\n     {{{marks}, 0x{ord(zero):02X}, {", ".join(map(str, sizes))}, false}}}},\n')
    return HEAD + "".join(lines) + TAIL


def main():
    if release() != RELEASE:
        print(f"{CLDR} has CLDR {release()}, not {RELEASE}")
        sys.exit(SKIPPED)
    text = table()
    if sys.argv[1:] != ["--check"]:
        TABLE.write_text(text, "utf-8")
    elif TABLE.read_text("utf-8") != text:
        sys.exit(f"{TABLE} differs from CLDR {RELEASE}; run tools/make_number_table.py")


if __name__ == "__main__":
    main()
