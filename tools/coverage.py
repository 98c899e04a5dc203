#!/usr/bin/env python3
"""Prints how many lines and branches of the library the native tests have run, and fails below 100% of either.

    tools/coverage.py BUILD-FOLDER

Reads the profiles that the tests of the preset "coverage" have written to BUILD-FOLDER/profiles. Every condition has
two branches, true and false. A comment excuses code that no test can run. All excuses are listed with their reasons:

    // not covered: REASON                        excuses the rest of the block
    // not covered, false of `CONDITION`: REASON  excuses one branch of a condition that begins on the next line of code

An excuse is a problem too if its code was run or if there is no code for it.
"""

import json
import pathlib
import re
import subprocess
import sys

# The plural table is generated. Some branches of the conditions of CLDR are true or false for no number, because other
# branches decide first. plural_conditions_test.cpp compares the table with the texts of the conditions.
NOT_THE_LIBRARY = ("benchmarks/", "cldr/plural_table.h", "examples/", "lang/", "tests/")
ONLY_ON_WINDOWS = re.compile(r"^platform/windows/|_windows\.cpp$")
BLOCK = re.compile(r"^( *)// not covered: (.+)$")
BRANCH = re.compile(r"^ *// not covered, ((?:true|false) of `.+`): (.+)$")
END = re.compile(r"^ *}[;)]*$")
UNKNOWN = re.compile(r"^hash-mismatch: .* '(.+)' with hash = (0x[0-9a-f]+)$", re.MULTILINE)


def run_counts(build):
    """Returns {file: {line: count}}, {file: {(line, column, end line, end column): [true, false]}}, unknown functions.

    A condition that is compiled several times, as in a template or a header, is one condition here. A condition whose
    value the compiler knows has no branches. The functions of the JSON export leave it out; the files there do not.
    """
    profile = build / "merged.profdata"
    raw = [str(file) for file in sorted((build / "profiles").glob("*.profraw"))]
    subprocess.run(["llvm-profdata", "merge", "-o", profile, *raw], check=True)
    programs = [file for file in sorted((build / "bin").iterdir()) if file.is_file() and not file.is_symlink()]
    objects = [argument for program in programs[1:] for argument in ("-object", str(program))]

    def export(*options):
        command = ["llvm-cov", "export", *options, f"-instr-profile={profile}", str(programs[0]), *objects]
        result = subprocess.run(command, check=True, capture_output=True, text=True)
        return result.stdout, result.stderr

    lines, branches = {}, {}
    rows, notes = export("-format=lcov", "-dump")
    for row in rows.splitlines():
        kind, _, value = row.partition(":")
        if kind == "SF":
            counts = lines.setdefault(pathlib.Path(value).resolve(), {})
        elif kind == "DA":
            number, count = map(int, value.split(",")[:2])
            counts[number] = max(count, counts.get(number, 0))
    for function in json.loads(export("-format=text")[0])["data"][0]["functions"]:
        for *position, true, false, file, _, _ in function["branches"]:
            of_file = branches.setdefault(pathlib.Path(function["filenames"][file]).resolve(), {})
            taken = of_file.setdefault(tuple(position), [0, 0])
            taken[0] += true
            taken[1] += false
    # Functions that the exports leave out. The hash 0 marks a function that a program could call, but does not.
    unknown = {name for name, number in UNKNOWN.findall(notes) if int(number, 16) != 0}
    return lines, branches, unknown


def excuses(source):
    """For lines {line: (line of the comment, text)}, and for branches {(line, branch): (line of the comment, text)}."""
    lines, branches, waiting = {}, {}, []
    indent, excuse = 0, None
    for number, text in enumerate(source, 1):
        block, branch = BLOCK.match(text), BRANCH.match(text)
        if block:
            indent, excuse = len(block.group(1)), (number, block.group(2))
        elif excuse:
            is_inside = not text.strip() or len(text) - len(text.lstrip()) >= indent
            if is_inside or END.match(text):  # but not "} else {", which begins another block
                lines[number] = excuse
            if not is_inside:
                excuse = None
        if branch:
            waiting.append((branch.group(1), (number, f"{branch.group(1)}: {branch.group(2)}")))
        elif not text.lstrip().startswith("//"):
            branches.update({(number, name): of for name, of in waiting})
            waiting = []
    return lines, branches


def text_between(source, line, column, end_line, end_column):
    """A condition as in the file, joined to one line. Columns count bytes, from 1."""
    rows = [row.encode() for row in source[line - 1:end_line]]
    rows[-1] = rows[-1][:end_column - 1]
    rows[0] = rows[0][column - 1:]
    return " ".join(row.decode().strip() for row in rows)


def is_switched(source, line, column):
    """Whether a switch begins there. One without a default has a branch for values without a case. Only a switch over an
    enumeration has no default, and the compiler warns of a value without a case: no test can take that branch."""
    return source[line - 1].encode()[:column - 1].endswith(b"switch (")


class Report:
    """The counts, excuses and problems of one file."""

    def __init__(self, name, source, lines, branches):
        self.name, self.problems, self.exceptions = name, [], []
        self.lines, self.lines_run, self.branches, self.branches_taken = 0, 0, 0, 0
        excused_lines, excused_branches = excuses(source)
        self.excused = {excuse: [] for excuse in (*excused_lines.values(), *excused_branches.values())}
        for number, count in sorted(lines.items()):
            if self.is_needed(count, excused_lines.get(number), number, source[number - 1].strip()):
                self.lines += 1
                self.lines_run += count > 0
        for position, taken in sorted(branches.items()):
            if position[0] in excused_lines or is_switched(source, *position[:2]):
                continue
            for outcome, count in zip(("true", "false"), taken):
                branch = f"{outcome} of `{text_between(source, *position)}`"
                if self.is_needed(count, excused_branches.get((position[0], branch)), position[0], branch):
                    self.branches += 1
                    self.branches_taken += count > 0
        for (comment, text), numbers in sorted(self.excused.items()):
            if numbers:
                span = f"{numbers[0]}" if numbers[0] == numbers[-1] else f"{numbers[0]}-{numbers[-1]}"
                self.exceptions.append(f"{name}:{span}: {text}")
            else:
                self.problems.append(f"{name}:{comment}: excuses nothing: {text}")

    def is_needed(self, count, excuse, number, what):
        if excuse:
            self.excused[excuse].append(number)
            if count > 0 and not END.match(what):  # the end of a block counts as run if the code after it is run
                self.problems.append(f"{self.name}:{number}: {what}: was run, although it says that it cannot be")
        elif count == 0:
            self.problems.append(f"{self.name}:{number}: {what}")
        return not excuse


def main():
    build = pathlib.Path(sys.argv[1]).resolve()
    top = pathlib.Path(__file__).resolve().parent.parent
    lines, branches, unknown = run_counts(build)
    commands = json.loads((build / "compile_commands.json").read_text())
    compiled = {pathlib.Path(entry["file"]).resolve() for entry in commands}
    problems = [f"{name}: the profiles are of another build" for name in sorted(unknown)]
    elsewhere, reports = [], []
    print(f"{'lines':>7} {'run':>7} {'branches':>9} {'taken':>7}")
    listing = ["git", "ls-files", "--cached", "--others", "--exclude-standard", "*.h", "*.hpp", "*.cpp"]
    names = subprocess.run(listing, cwd=top, check=True, capture_output=True, text=True).stdout.splitlines()
    for name in sorted(names):
        if name.startswith(NOT_THE_LIBRARY):
            continue
        if ONLY_ON_WINDOWS.search(name):
            elsewhere.append(name)
            continue
        if top / name not in lines:  # only declarations
            if name.endswith(".cpp") and top / name not in compiled:
                problems.append(f"{name}: was never compiled")
            continue
        source = (top / name).read_text("utf-8").splitlines()
        report = Report(name, source, lines[top / name], branches.get(top / name, {}))
        reports.append(report)
        print(f"{report.lines:7} {report.lines_run:7} {report.branches:9} {report.branches_taken:7}  {name}")
    if not reports:
        sys.exit("no file of the library was run: the profiles are of another build")
    needed, run = sum(report.lines for report in reports), sum(report.lines_run for report in reports)
    outcomes, taken = sum(report.branches for report in reports), sum(report.branches_taken for report in reports)
    print(f"{needed:7} {run:7} {outcomes:9} {taken:7}  in all but the exceptions: {100 * run / needed:.2f}% of the lines,"
          f" {100 * taken / outcomes:.2f}% of the branches")
    exceptions = [entry for report in reports for entry in report.exceptions]
    problems += [entry for report in reports for entry in report.problems]
    for title, entries in (
        ("Only Windows has these; the tests under Wine run them", elsewhere),
        ("Exceptions", exceptions or ["none"]),
        ("NOT RUN", problems),
    ):
        if entries:
            print(f"\n{title}:", *entries, sep="\n  ")
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
