#!/usr/bin/env python3
"""Prints which lines of the library's own code the native tests have run, and fails below 100%.

    tools/coverage.py BUILD-FOLDER

Reads the profiles that the tests of the preset "coverage" have left in BUILD-FOLDER/profiles. Lines that cannot be run
are listed with their reason: a comment "// not covered: REASON" excuses the rest of the block that it stands in.
"""

import json
import pathlib
import re
import subprocess
import sys

NOT_THE_LIBRARY = ("benchmarks/", "examples/", "tests/")
ONLY_ON_WINDOWS = re.compile(r"_(windows|mingw)\.cpp$")
REASON = re.compile(r"^( *)// not covered: (.+)$")


def run_counts(build):
    """Of every file that was compiled: {line number: how often it ran}."""
    profile = build / "merged.profdata"
    raw = [str(file) for file in sorted((build / "profiles").glob("*.profraw"))]
    subprocess.run(["llvm-profdata", "merge", "-o", profile, *raw], check=True)
    programs = [file for file in sorted((build / "bin").iterdir()) if file.is_file() and not file.is_symlink()]
    objects = [argument for program in programs[1:] for argument in ("-object", str(program))]
    export = ["llvm-cov", "export", "-format=lcov", f"-instr-profile={profile}", str(programs[0]), *objects]
    counts = {}
    for line in subprocess.run(export, check=True, capture_output=True, text=True).stdout.splitlines():
        kind, _, value = line.partition(":")
        if kind == "SF":
            lines = counts.setdefault(pathlib.Path(value).resolve(), {})
        elif kind == "DA":
            number, count = map(int, value.split(",")[:2])
            lines[number] = max(count, lines.get(number, 0))
    return counts


def reasons(source):
    """{line number: reason} of the lines that need not be run."""
    excused = {}
    indent, reason = 0, None
    for number, line in enumerate(source, 1):
        match = REASON.match(line)
        if match:
            indent, reason = len(match.group(1)), match.group(2)
        elif reason:
            excused[number] = reason
            if line.strip() and len(line) - len(line.lstrip()) < indent:
                reason = None  # the end of the block
    return excused


def main():
    build = pathlib.Path(sys.argv[1]).resolve()
    top = pathlib.Path(__file__).resolve().parent.parent
    counts = run_counts(build)
    compiled = {pathlib.Path(entry["file"]).resolve() for entry in json.loads((build / "compile_commands.json").read_text())}
    problems, exceptions, elsewhere, total, total_run = [], [], [], 0, 0
    print(f"{'lines':>7} {'run':>7}")
    listing = ["git", "ls-files", "--cached", "--others", "--exclude-standard", "*.h", "*.cpp"]
    names = subprocess.run(listing, cwd=top, check=True, capture_output=True, text=True).stdout.splitlines()
    for name in sorted(names):
        if name.startswith(NOT_THE_LIBRARY):
            continue
        if ONLY_ON_WINDOWS.search(name):
            elsewhere.append(name)
            continue
        lines = counts.get(top / name)
        if lines is None:  # declarations alone
            if name.endswith(".cpp") and top / name not in compiled:
                problems.append(f"{name}: was never compiled")
            continue
        source = (top / name).read_text("utf-8").splitlines()
        excused = reasons(source)
        for number, count in sorted(lines.items()):
            reason = excused.get(number)
            if count == 0 and reason:
                exceptions.append(f"{name}:{number}: {reason}")
            elif count == 0:
                problems.append(f"{name}:{number}: {source[number - 1].strip()}")
            elif reason:
                problems.append(f"{name}:{number}: was run, although it says that it cannot be")
        needed = [number for number in lines if number not in excused]
        run = sum(lines[number] > 0 for number in needed)
        total, total_run = total + len(needed), total_run + run
        print(f"{len(needed):7} {run:7}  {name}")
    print(f"{total:7} {total_run:7}  in all but the exceptions: {100 * total_run / total:.2f}%")
    for title, entries in (
        ("Only Windows has these; the tests under Wine run them", elsewhere),
        ("Exceptions", exceptions or ["none"]),
        ("NOT RUN", problems),
    ):
        if entries:
            print(f"\n{title}:", *entries, sep="\n  ")
    return 1 if problems else 0


sys.exit(main())
