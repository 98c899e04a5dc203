#!/usr/bin/env python3
"""check_manual.py PROGRAM...: checks the manual page that kelmo-lang prints.

man must read it without a warning, it must have the usual sections, and no text of it may be missing: the tool shows
the key of a missing text.
"""

import re
import subprocess
import sys

SECTIONS = ("NAME", "SYNOPSIS", "DESCRIPTION", "OPTIONS", "COMMANDS", "EXIT STATUS", "ENVIRONMENT", "EXAMPLES")


def problems(program):
    run = subprocess.run([*program, "--lang", "en", "--man-page"], capture_output=True, check=False)
    if run.returncode != 0 or run.stderr:
        yield f"status {run.returncode}: {run.stderr.decode()}"
    page = run.stdout.decode("utf-8")
    sections = tuple(re.findall(r"^\.SH (.*)$", page, re.MULTILINE))
    if sections != SECTIONS:
        yield f"the sections are {', '.join(sections)}"
    for key in re.findall(r"^(?:help|manual)\.[a-z.]+$", page, re.MULTILINE):
        yield f"the text {key} is missing"
    man = subprocess.run(["man", "--warnings", "-E", "UTF-8", "-l", "-Tutf8", "-Z", "-"], input=run.stdout,
                         capture_output=True, check=False)
    if man.returncode != 0 or man.stderr:
        yield f"man says {man.stderr.decode()}"


def main():
    found = list(problems(sys.argv[1:]))
    print(*found, sep="\n")
    sys.exit(1 if found else 0)


if __name__ == "__main__":
    main()
