"""Checks a table of units and its names in other languages.

    python3 -B check_units.py UNITS-FOLDER PEERS

UNITS-FOLDER has engineering.txt and LANG/*-val.txt. PEERS says how UDUNITS-2 and GNU units write each unit.

- Each line has the fields of the format, with numbers and codes as it allows them.
- Within a kind, no two units have the same symbol or name, in any language.
- Each kind has a base: its first unit, with the factor 1.
- The difference of two points of a scale, such as temperatures, has a unit of another kind with the same factor.
- Each language names each unit and each kind. English says what the table says.
- Factors and offsets are those of UDUNITS-2 and of GNU units, as far as each knows the unit; one of them must.
"""

import collections
import itertools
import os
import pathlib
import re
import shutil
import subprocess
import sys
import unicodedata
from fractions import Fraction

# `line` is where the row stands.
Unit = collections.namedtuple("Unit", "line code factor offset symbol name difference")
Name = collections.namedtuple("Name", "line code symbol name")  # of a kind, or in a language

LANGUAGES = ("de", "en", "fi", "fr", "ru")
# Programs use these codes, whatever else the table has.
FIXED = {10001: "m", 10002: "in", 20001: "m²", 30001: "%", 40001: "°", 40002: "rad"}
FIRST_KIND, LAST_KIND = 10, 99
FIRST_HOST_UNIT = 900
FIRST_HOST_CODE = 1000000
DECIMAL = r"\d+(?:\.\d+)?(?:e-?\d+)?"
NUMBER = re.compile(rf"(-?{DECIMAL})(?:/({DECIMAL}))?")

TOLERANCE = 1e-14  # relative: UDUNITS-2 prints 15 digits, GNU units 17
# Points of a scale of temperature. Two determine the scale, but the functions of GNU units need not be linear.
POINTS = (0, 100, 451, 2000)
UDUNITS, GNU = "UDUNITS-2", "GNU units"


class Problems:
    def __init__(self):
        self.lines = []

    def add(self, file, line, text):
        self.lines.append(f"{file.name}:{line}: {text}")


# ---- Files


def rows_of(file, problems):
    """(number, fields) of each line, without comments and empty lines."""
    try:
        text = file.read_bytes().decode("utf-8")
    except OSError as error:
        sys.exit(f"{file.name}: {error.strerror}")
    except UnicodeDecodeError:
        sys.exit(f"{file.name}: is not UTF-8")
    if text.startswith("\ufeff"):
        problems.add(file, 1, "begins with a byte-order mark")
    if "\r" in text or not text.endswith("\n"):
        problems.add(file, 1, "a line does not end with LF")
    if unicodedata.normalize("NFC", text) != text:
        problems.add(file, 1, "a character is not in its normal form (NFC)")
    lines = text.split("\n")
    return [(number, line.split("\t")) for number, line in enumerate(lines, 1) if line and not line.startswith("#")]


def mixes_scripts(text):
    """Whether a word has Latin and Cyrillic letters: they look alike, but no search finds both."""
    for word in re.findall(r"[^\W\d_]+", text):
        scripts = {unicodedata.name(letter, "?").split()[0] for letter in word}
        if {"LATIN", "CYRILLIC"} <= scripts:
            return True
    return False


def check_texts(file, line, symbol, name, problems):
    for what, text in (("symbol", symbol), ("name", name)):
        if not text:
            problems.add(file, line, f"the {what} is empty")
        elif text != text.strip() or "  " in text:
            problems.add(file, line, f"the {what} begins or ends with a blank, or has two together")
        elif re.match(r"[-+−.,\d]", text):
            problems.add(file, line, f"the {what} {text} begins like a number")
        elif mixes_scripts(text):
            problems.add(file, line, f"the {what} {text} mixes Latin and Cyrillic letters in a word")


def code_of(field):
    """The code, or what is wrong with it."""
    if not re.fullmatch(r"[1-9]\d*", field):
        return None, f"{field!r} is not a code"
    code = int(field)
    if code >= FIRST_HOST_CODE:
        return None, f"the code {code} is for hosts"
    if not FIRST_KIND <= code // 1000 <= LAST_KIND:
        return None, f"the code {code} is of no kind from {FIRST_KIND} to {LAST_KIND}"
    if code % 1000 >= FIRST_HOST_UNIT:
        return None, f"the code {code} is for hosts"
    return code, None


def number_of(field):
    """The exact number, or None."""
    match = NUMBER.fullmatch(field)
    if not match or (match[2] and Fraction(match[2]) == 0):
        return None
    return Fraction(match[1]) / Fraction(match[2] or 1)


def read_unit(line, code, fields):
    """The unit, or what is wrong with it."""
    factor = number_of(fields[1])
    if factor is None or factor <= 0:
        return None, f"the factor {fields[1]!r} is not a positive number"
    offset = number_of(fields[2] or "0")
    if offset is None:
        return None, f"the offset {fields[2]!r} is not a number"
    difference = None
    if len(fields) == 6:
        difference, wrong = code_of(fields[5])
        if wrong:
            return None, f"the unit of differences: {wrong}"
    return Unit(line, code, factor, offset, fields[3], fields[4], difference), None


def read_table(file, problems):
    kinds, units = {}, {}
    for line, fields in rows_of(file, problems):
        if not 5 <= len(fields) <= 6:
            problems.add(file, line, f"has {len(fields)} fields instead of 5 or 6")
            continue
        code, wrong = code_of(fields[0])
        if wrong:
            problems.add(file, line, wrong)
            continue
        if code in kinds or code in units:
            problems.add(file, line, f"the code {code} stands in another line too")
            continue
        check_texts(file, line, fields[3], fields[4], problems)
        if code % 1000 == 0:
            kinds[code] = Name(line, code, fields[3], fields[4])
            if fields[1] or fields[2] or len(fields) == 6:
                problems.add(file, line, "a kind has a factor, an offset or a unit of differences")
            continue
        unit, wrong = read_unit(line, code, fields)
        if wrong:
            problems.add(file, line, wrong)
        else:
            units[code] = unit
    return kinds, units


# ---- Rules


def check_repeated(file, kinds, units, problems):
    """`kinds` and `units` are rows with a line, a code, a symbol and a name."""
    seen = {}
    rows = [(0, row) for row in kinds] + [(row.code // 1000, row) for row in units]
    for kind, row in rows:
        for what, text in (("symbol", row.symbol), ("name", row.name)):
            first = seen.setdefault((kind, what, text), row)
            if first is not row:
                problems.add(file, row.line, f"the {what} {text} is also that of {first.code}")


def check_kinds(file, kinds, units, problems):
    for unit in units.values():
        if unit.code // 1000 * 1000 not in kinds:
            problems.add(file, unit.line, f"there is no row for the kind of {unit.code}")
    for kind in kinds.values():
        base = units.get(kind.code + 1)
        if base is None or base.factor != 1 or base.offset != 0:
            problems.add(file, kind.line, f"{kind.code + 1} is no base: a unit with the factor 1 and no offset")
    for code, symbol in FIXED.items():
        if code not in units or units[code].symbol != symbol:
            problems.add(file, 1, f"the unit {code} is not {symbol}")


def check_differences(file, units, problems):
    kinds = collections.defaultdict(set)  # of the differences, by kind
    for unit in units.values():
        kinds[unit.code // 1000].add(unit.difference and unit.difference // 1000)
        if unit.difference is None:
            if unit.offset != 0:
                problems.add(file, unit.line, "has an offset, but no unit of differences")
            continue
        difference = units.get(unit.difference)
        if difference is None:
            problems.add(file, unit.line, f"the unit of differences {unit.difference} does not exist")
        elif difference.code // 1000 == unit.code // 1000:
            problems.add(file, unit.line, "the unit of differences is of the same kind")
        elif difference.offset != 0 or difference.difference is not None:
            problems.add(file, unit.line, f"the unit of differences {difference.code} is not linear")
        elif difference.factor != unit.factor:
            problems.add(file, unit.line, f"the unit of differences {difference.code} has another factor")
    for kind, found in kinds.items():
        if len(found) > 1:
            problems.add(file, units[kind * 1000 + 1].line if kind * 1000 + 1 in units else 1,
                         f"the units of the kind {kind} have differences of several kinds")


# ---- Languages


def check_language(file, kinds, units, problems):
    known = {**kinds, **units}
    rows = rows_of(file, problems)
    language = file.name.split("-")[0]
    if not rows or rows[0][0] != 1 or not re.fullmatch(rf"{language} \S+", "\t".join(rows[0][1])):
        problems.add(file, 1, f"is not the id {language} and one word")
    named = {}
    for line, fields in rows[1:]:
        code = int(fields[0]) if fields[0].isascii() and fields[0].isdigit() else None
        if len(fields) != 3:
            problems.add(file, line, f"has {len(fields)} fields instead of 3")
        elif code not in known:
            problems.add(file, line, f"{fields[0]} is not in the table")
        elif code in named:
            problems.add(file, line, f"the code {code} stands in another line too")
        else:
            named[code] = Name(line, code, *fields[1:])
            check_texts(file, line, *fields[1:], problems)
            if language == "en" and named[code][2:] != (known[code].symbol, known[code].name):
                problems.add(file, line, f"the table has another symbol or name for {code}")
    for code in sorted(known.keys() - named.keys()):
        problems.add(file, 1, f"there is no name for {code}")
    check_repeated(file, [row for row in named.values() if row.code in kinds],
                   [row for row in named.values() if row.code in units], problems)


def check_languages(folder, kinds, units, problems):
    files = sorted(folder.glob("*"))
    if [file.name for file in files] != [f"{language}-val.txt" for language in LANGUAGES]:
        sys.exit(f"LANG: has other files than those of {', '.join(LANGUAGES)}")
    for file in files:
        check_language(file, kinds, units, problems)


# ---- Peers: what each program says of an expression is (number, offset, dimensions), or None if it does not know it


def run(command, expressions):
    """The output of a program that asks for a unit and for what to convert it to: nothing, for its definition."""
    if not shutil.which(command[0]):
        sys.exit(f"there is no program {command[0]} (Debian: udunits-bin, units)")
    # The answers depend neither on units that the user has defined, nor on the language of the user.
    made = subprocess.run(command, input="".join(f"{expression}\n\n" for expression in expressions), encoding="utf-8",
                          env={"PATH": os.environ["PATH"], "LC_ALL": "C.UTF-8"}, stdout=subprocess.PIPE,
                          stderr=subprocess.DEVNULL, check=False)
    return made.stdout


def ask_udunits(expressions):
    # It asks for a unit again if it does not know the first, and for the empty line then.
    answers = iter(run(["udunits2", "-U"], expressions).split("You have:")[1:])
    found = {}
    for expression in expressions:
        answer = next(answers, "").strip()
        if not answer:
            next(answers, "")
            found[expression] = None
            continue
        definition = answer.removeprefix("You want:").strip()
        match = re.fullmatch(r"(?:([-+\d.e]+) )?(.*?)(?: @ ([-+\d.e]+))?", definition)
        factor = float(match[1] or 1)
        found[expression] = factor, factor * float(match[3] or 0), match[2]
    return found


def ask_gnu(expressions):
    lines = run(["units", "-f", "", "-t", "-o", "%.17g"], expressions).splitlines()
    lines = [line for line in lines if line.strip(" ^")]  # without the mark below a faulty expression
    if len(lines) != len(expressions):
        sys.exit(f"{GNU}: {len(lines)} answers to {len(expressions)} questions")
    found = {}
    for expression, line in zip(expressions, lines):
        match = re.fullmatch(r"(?:.* = )?([-+\d.e]+)(?: (.*))?", line)
        found[expression] = (float(match[1]), 0.0, match[2] or "") if match else None
    return found


def read_peers(file, units, problems):
    """{code: {program: expression}}"""
    peers = {}
    for line, fields in rows_of(file, problems):
        code = int(fields[0]) if fields[0].isascii() and fields[0].isdigit() else None
        if len(fields) != 3:
            problems.add(file, line, f"has {len(fields)} fields instead of 3")
        elif code not in units:
            problems.add(file, line, f"{fields[0]} is not in the table")
        elif code in peers:
            problems.add(file, line, f"the code {code} stands in another line too")
        else:
            peers[code] = {program: field for program, field in zip((UDUNITS, GNU), fields[1:]) if field}
            if not peers[code]:
                problems.add(file, line, f"no program knows {code}")
    for code in sorted(units.keys() - peers.keys()):
        problems.add(file, 1, f"there is no row for {code}")
    return peers


def questions_for(program, unit, expression):
    """GNU units has a function for each scale; UDUNITS-2 has units with an offset."""
    if program == GNU and unit.difference is not None:
        return [f"{expression}({point})" for point in POINTS]
    return [expression]


def compare(unit, base, answers):
    """What is wrong with a unit, according to the answers of one program for it and for the base unit of its kind."""
    if base is None or None in base:
        return "cannot be compared: the program does not know the base unit"
    if any(answer[2] != base[0][2] for answer in answers):
        return "is of another kind than the base unit"
    if unit.difference is None:
        factor, offset, _ = answers[0]
        if offset != 0:
            return "has an offset"
        theirs = factor / base[0][0]
        if abs(float(unit.factor) - theirs) > TOLERANCE * theirs:
            return f"has the factor {theirs!r}, not {float(unit.factor)!r}"
        return None
    if len(answers) == 1:
        answers = [(answers[0][0] * point + answers[0][1], 0, answers[0][2]) for point in POINTS]
    for point, (theirs, _, _) in zip(POINTS, answers):
        ours = float(unit.factor * point + unit.offset)
        if abs(ours - theirs) > TOLERANCE * max(1, theirs):
            return f"gives {theirs!r} of the base unit at {point}, not {ours!r}"
    return None


def compare_with_peers(file, units, peers_file, problems):
    """How many units each program knows."""
    peers = read_peers(peers_file, units, problems)
    counts = {}
    for program, ask in ((UDUNITS, ask_udunits), (GNU, ask_gnu)):
        questions = {code: questions_for(program, units[code], peers[code][program])
                     for code in peers if program in peers[code]}
        counts[program] = len(questions)
        found = ask(sorted(set(itertools.chain.from_iterable(questions.values()))))
        answers = {code: [found[question] for question in questions[code]] for code in questions}
        for code, answers_of_unit in answers.items():
            expression = peers[code][program]
            if None in answers_of_unit:
                problems.add(file, units[code].line, f"{program} does not know {expression}")
                continue
            wrong = compare(units[code], answers.get(code // 1000 * 1000 + 1), answers_of_unit)
            if wrong:
                problems.add(file, units[code].line, f"according to {program}, {expression} {wrong}")
    return counts


def main(folder, peers_file):
    folder, problems = pathlib.Path(folder), Problems()
    file = folder / "engineering.txt"
    kinds, units = read_table(file, problems)
    if not units:
        problems.add(file, 1, "has no units")
    check_repeated(file, kinds.values(), units.values(), problems)
    check_kinds(file, kinds, units, problems)
    check_differences(file, units, problems)
    check_languages(folder / "LANG", kinds, units, problems)
    counts = {} if problems.lines else compare_with_peers(file, units, pathlib.Path(peers_file), problems)
    compared = " and ".join(f"{count} with {program}" for program, count in counts.items())
    print("\n".join(problems.lines) or f"{len(units)} units of {len(kinds)} kinds are right: {compared} compared")
    return 1 if problems.lines else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
