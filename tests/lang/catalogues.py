#!/usr/bin/env python3
"""Dictionaries from the catalogues of six Debian programs, to count false alarms of kelmo-lang with.

catalogues.py convert FOLDER [PACKAGE...]
    Downloads the packages and writes FOLDER/PACKAGE/: en.txt has the texts of the program, and the other files have its
    translations. FOLDER/downloads keeps the packages.

The programs were named before the first of them was checked. The rules were tuned with the first three; the other three
are measured once, at the end. Their texts are under the licences of the programs and do not belong into this project.
"""

import contextlib
import hashlib
import pathlib
import struct
import subprocess
import sys

TUNED = ["bash", "dpkg", "kdiff3"]
MEASURED = ["gnome-calculator", "mc-data", "wget"]
LANGUAGES = "ar cs de el es fi fr it ja ko pl pt_BR ru th tr uk vi zh_CN".split()

# The names of the plural forms, in the order of the catalogues, by their number; for languages of their own before.
PLURAL_FORMS = {
    "cs": ["one", "few", "other"],
    1: ["other"],
    2: ["one", "other"],
    3: ["one", "few", "many"],
    6: ["zero", "one", "two", "few", "many", "other"],
}


class NoNetwork(Exception):
    """The packages cannot be downloaded."""


def unpack(package, downloads):
    """The folder with the files of `package`."""
    folder = downloads / package
    if not folder.is_dir():
        downloads.mkdir(parents=True, exist_ok=True)
        run = subprocess.run(["apt-get", "download", package], cwd=downloads, capture_output=True, text=True, check=False)
        files = sorted(downloads.glob(f"{package}_*.deb"))
        if run.returncode != 0 or not files:
            raise NoNetwork(run.stderr.strip())
        part = downloads / f"{package}.part"
        subprocess.run(["dpkg-deb", "-x", files[-1], part], check=True)
        part.rename(folder)
    return folder


def escaped(text):
    """`text` in one line. Other control characters than these are not in the catalogues."""
    for character, name in (("\n", "n"), ("\t", "t"), ("\r", "r"), ("\a", "a"), ("\b", "b"), ("\v", "v"), ("\f", "f")):
        text = text.replace(character, "\\" + name)
    return text.strip(" ")


def key_of(message):
    """The same key in every version of a program: it is made of the English text and its context."""
    return "text." + hashlib.sha1(message.encode("utf-8")).hexdigest()[:10]


def messages(path):
    """(English texts, translations) of a catalogue. More than one are plural forms. Nothing if it is not UTF-8."""
    catalogue = path.read_bytes()
    order = "<" if catalogue.startswith(b"\xde\x12\x04\x95") else ">"
    count, english, translated = struct.unpack_from(f"{order}3I", catalogue, 8)

    def texts(table, index):
        size, start = struct.unpack_from(f"{order}2I", catalogue, table + 8 * index)
        return catalogue[start : start + size].decode("utf-8").split("\0")

    with contextlib.suppress(UnicodeDecodeError):
        return [(texts(english, index), texts(translated, index)) for index in range(count)]
    return []


def entries(path, language):
    """(key, English text, translation) of each text; one of both is empty for a plural form that its language lacks."""
    for english, translations in messages(path):
        key = key_of(english[0])
        english[0] = english[0].split("\4")[-1]  # behind its context
        if not english[0]:
            continue  # the header of the catalogue
        if len(english) == 1:
            yield key, english[0], translations[0]
            continue
        forms = PLURAL_FORMS.get(language) or PLURAL_FORMS[len(translations)]
        yield f"{key}.one", english[0], ""
        yield f"{key}.other", english[1], ""
        for form, translation in zip(forms, translations):
            yield f"{key}.{form}", "", translation


def write_dictionary(path, dictionary_id, texts):
    lines = [dictionary_id, *(f"{key}\t{text}" for key, text in sorted(texts.items()))]
    path.write_text("\n".join(lines) + "\n", "utf-8", newline="\n")


def convert(package, folder):
    """Writes the dictionaries of `package` and returns the number of translations by language."""
    target = folder / package
    target.mkdir(parents=True, exist_ok=True)
    source = unpack(package, folder / "downloads")
    base = {}
    counts = {}
    for language in LANGUAGES:
        translations = {}
        for path in sorted(source.glob(f"usr/share/locale*/{language}/LC_MESSAGES/*.mo")):
            for key, english, translation in entries(path, language):
                if escaped(english):
                    base[key] = escaped(english)
                if escaped(translation):
                    translations[key] = escaped(translation)
        if translations:
            name = language.replace("_", "-")
            write_dictionary(target / f"{name}.txt", name, translations)
            counts[name] = len(translations)
    write_dictionary(target / "en.txt", "en", base)
    return counts


def main():
    action, folder, *arguments = sys.argv[1:]
    folder = pathlib.Path(folder)
    if action == "convert":
        for package in arguments or [*TUNED, *MEASURED]:
            counts = convert(package, folder)
            print(f"{package}: {sum(counts.values())} texts in {len(counts)} languages")
    else:
        sys.exit(f"{action} is unknown")


if __name__ == "__main__":
    main()
