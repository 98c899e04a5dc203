#!/usr/bin/env python3
"""check_rules.py [--update] FOLDER PROGRAM...: runs kelmo-lang on the golden files of each rule.

FOLDER has a folder for each rule, under its name: `bad` has files with the fault, `good` has files without it, and
`expected.txt` is the report about `bad`; --update writes it. Every rule that `kelmo-lang rules` lists has a folder. The
base is the file en.txt, if there is one.
"""

import pathlib

import captured
import golden


def rules(program):
    """The names of all rules: the first word of each line."""
    run = captured.run([*program, "--lang", "en", "rules"], check=True)
    return {line.split()[0] for line in run.stdout.decode("utf-8").splitlines() if line.strip()}


def lint(program, folder, name):
    base = ["--base", f"{name}/en.txt"] if (folder / name / "en.txt").exists() else []
    command = [*program, "--lang", "en", "lint", name, *base, "--all"]
    return captured.printed(command, cwd=folder)


def problems(top, program, is_update):
    folders = sorted(folder for folder in top.iterdir() if folder.is_dir())
    if not folders:
        yield f"{top} has no folders"
    names = {folder.name for folder in folders}
    for name in sorted(rules(program) ^ names):
        yield f"{name}: there is no such rule" if name in names else f"{name}: the rule has no folder"
    for folder in folders:
        mark = f"[{folder.name}]"
        status, report = lint(program, folder, "bad")
        report = report.replace("bad\\", "bad/")
        expected = folder / "expected.txt"
        if is_update:
            expected.write_text(report, "utf-8")
        if mark not in report:
            yield f"{folder.name}: the bad files give no {mark}; status {status}:\n{report}"
        elif report != expected.read_text("utf-8"):
            yield f"{folder.name}: the bad files give\n{report}\nbut {expected} says\n{expected.read_text('utf-8')}"
        status, report = lint(program, folder, "good")
        if mark in report or status != 0:
            yield f"{folder.name}: the good files give status {status} and\n{report}"


if __name__ == "__main__":
    golden.main(problems)
