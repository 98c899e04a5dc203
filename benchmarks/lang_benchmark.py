#!/usr/bin/env python3
"""lang_benchmark.py PROGRAM [--languages N] [--keys N] [--rounds N] [--folder FOLDER]

Measures `kelmo-lang lint` on made-up dictionaries: one language, and all of them in one run. The same language as a
catalogue of gettext is checked by `msgfmt -c` and by pofilter, if they are installed. The rounds of all programs are
interleaved. Ends with status 1 if a target is missed.
"""

import argparse
import os
import pathlib
import random
import shutil
import statistics
import subprocess
import sys
import tempfile
import time

SECONDS_OF_ALL = 5.0  # all languages
# One language: at most so many times the time of the peer.
PEERS = (("msgfmt -c", ["msgfmt", "-c", "-o", os.devnull, "one.po"], 2.0),
         ("pofilter", ["pofilter", "--progress=none", "one.po", "filtered.po"], 0.1))

# The scripts of made-up languages, so that texts have one, two and three bytes for each character.
SCRIPTS = ("abcdefghijklmnopqrstuvwxyz", "abcdefghijklmnopqrstuvwxyzäöüß", "aeiouéèêàçlmnprstv", "абвгдежзийклмнопрстуфхцчшщыэюя",
           "αβγδεζηθικλμνξοπρστυφχψω", "的一是了我不人在他有这个上们来到时大地为子中你说生国年着就那和要")
LANGUAGES = ("id", "de", "fr", "ru", "el", "zh")  # with these letters
PLACES = ("pump", "valve", "flow", "pressure", "menu.file", "menu.edit", "dialog.open", "error", "report", "settings")
# What translations keep: placeholders, ends, markup. Most texts have none.
ENDS = ("", "", "", "", "", "", ".", ".", ":", "…", "?", "!")
PARTS = ("",) * 12 + ("%1", "%2", "{0}", "\\n", "&amp;", "(%1)", "<b>x</b>", "100 m³/h")


class Texts:
    """The texts of all keys; their structure is the same in every language."""

    def __init__(self, count):
        shape = random.Random(20261120)
        self.keys = [f"{shape.choice(PLACES)}.{shape.choice(PLACES)}.{number}" for number in range(count)]
        self.shapes = [(shape.randrange(1, 9), shape.choice(PARTS), shape.choice(ENDS)) for _ in self.keys]

    def of(self, language):
        letters = SCRIPTS[language % len(SCRIPTS)]
        choice = random.Random(language)
        words = ["".join(choice.choices(letters, k=choice.randrange(2, 12))) for _ in range(3000)]
        for length, part, end in self.shapes:
            text = choice.choices(words, k=length)
            text[0] = text[0].capitalize()
            if part:
                text.append(part)
            yield " ".join(text) + end


def po_text(text):
    return '"' + text.replace("\\", "\\\\").replace('"', '\\"') + '"'


def id_of(language):
    return "en" if language == 0 else f"{LANGUAGES[language % len(LANGUAGES)]}-x{language}"


def write_dictionaries(folder, texts, languages):
    folder.mkdir(parents=True, exist_ok=True)
    for number in range(languages + 1):
        name = id_of(number)
        lines = [f"{name} Language {number}", *(f"{key}\t{text}" for key, text in zip(texts.keys, texts.of(number)))]
        (folder / f"{name}.txt").write_text("\n".join(lines) + "\n", "utf-8", newline="\n")


def write_catalogue(file, texts, language):
    header = ('msgid ""\nmsgstr ""\n"Language: de\\n"\n"MIME-Version: 1.0\\n"\n"Content-Type: text/plain; charset=UTF-8\\n"\n'
              '"Content-Transfer-Encoding: 8bit\\n"\n')
    entries = (f"msgctxt {po_text(key)}\nmsgid {po_text(base)}\nmsgstr {po_text(text)}\n"
               for key, base, text in zip(texts.keys, texts.of(0), texts.of(language)))
    file.write_text("\n".join((header, *entries)), "utf-8", newline="\n")


def run(command, folder):
    """The seconds by the clock, the largest memory in megabytes, and the status."""
    begun = time.monotonic()
    process = subprocess.Popen(command, cwd=folder, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    _, status, used = os.wait4(process.pid, 0)
    process.returncode = os.waitstatus_to_exitcode(status)
    elapsed = time.monotonic() - begun
    return elapsed, used.ru_maxrss / 1024, process.returncode


class Subject:
    def __init__(self, name, command, statuses=(0,), limit=None):
        self.name, self.command, self.statuses, self.limit = name, command, statuses, limit
        self.times, self.megabytes = [], 0.0

    def measure(self, folder):
        seconds, megabytes, status = run(self.command, folder)
        if status not in self.statuses:
            raise SystemExit(f"{' '.join(self.command)} ended with {status}")
        self.times.append(seconds)
        self.megabytes = max(self.megabytes, megabytes)

    @property
    def seconds(self):
        return statistics.median(self.times)


def subjects_for(program, languages):
    found = [Subject("kelmo-lang, one language", [program, "lint", f"all/{id_of(1)}.txt", "--base", "all/en.txt"], (0, 1)),
             Subject(f"kelmo-lang, {languages} languages", [program, "lint", "all", "--base", "all/en.txt"], (0, 1))]
    for name, command, limit in PEERS:
        if shutil.which(command[0]):
            found.append(Subject(name, command, limit=limit))
        else:
            print(f"{name} is not installed: left out")
    return found


def report(subjects):
    """Prints the results; whether every target that can be judged is met."""
    for subject in subjects:
        print(f"{subject.name:28} {subject.seconds:8.3f} s   ({min(subject.times):.3f} to {max(subject.times):.3f})"
              f" {subject.megabytes:8.0f} MB")
    one, every, *peers = subjects
    targets = [(f"{every.name}: under {SECONDS_OF_ALL:.0f} s", every.seconds < SECONDS_OF_ALL)]
    for peer in peers:
        times = one.seconds / peer.seconds
        targets.append((f"{one.name}: {times:.3f} times {peer.name}, at most {peer.limit}", times <= peer.limit))
    for name, is_met in targets:
        print(f"{'met   ' if is_met else 'MISSED'} {name}")
    return all(is_met for _, is_met in targets)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("program", type=lambda name: str(pathlib.Path(name).resolve()))
    parser.add_argument("--languages", type=int, default=50)
    parser.add_argument("--keys", type=int, default=20000)
    parser.add_argument("--rounds", type=int, default=5)
    parser.add_argument("--folder", type=pathlib.Path, help="keeps the made-up files there")
    options = parser.parse_args()
    with tempfile.TemporaryDirectory() as scratch:
        folder = options.folder or pathlib.Path(scratch)
        texts = Texts(options.keys)
        write_dictionaries(folder / "all", texts, options.languages)
        write_catalogue(folder / "one.po", texts, 1)
        subjects = subjects_for(options.program, options.languages)
        for _ in range(options.rounds):
            for subject in subjects:
                if subject.name != "pofilter" or not subject.times:  # once is enough to see how far away it is
                    subject.measure(folder)
    print(f"{options.keys} keys, {options.rounds} rounds, median and range of the time by the clock")
    return 0 if report(subjects) else 1


if __name__ == "__main__":
    sys.exit(main())
