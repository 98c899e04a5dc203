#!/usr/bin/env python3
"""check_examples.py FOLDER PROGRAM...: kelmo-lang has nothing but notes about the example dictionaries of FOLDER.

All files are checked but faulty.txt; a warning about the last text of one of them shows that they are.
"""

import pathlib
import shutil
import sys
import tempfile

import captured


def lint(program, folder):
    """The exit status, which is 1 for findings from warnings upwards, and the report."""
    command = [*program, "lint", "LANG", "--base", "LANG/en.txt", "--fail-on", "warning"]
    return captured.printed(command, cwd=folder)


def main():
    examples, *program = sys.argv[1:]
    problems = []
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        copy = folder / "LANG"
        copy.mkdir()
        for path in sorted(pathlib.Path(examples).iterdir()):
            if path.name != "faulty.txt":
                shutil.copyfile(path, copy / path.name)
        status, report = lint(program, folder)
        if status != 0:
            problems.append(f"the examples give status {status} and\n{report}")
        for path in sorted(copy.glob("??.txt")):
            if path.name == "en.txt":
                continue
            path.write_bytes(path.read_bytes().rstrip() + b" (\n")
            status, report = lint(program, folder)
            if status != 1 or "[bracket]" not in report:
                problems.append(f"an open bracket in {path.name} gives status {status} and\n{report}")
    print(*problems, sep="\n")
    sys.exit(1 if problems else 0)


if __name__ == "__main__":
    main()
