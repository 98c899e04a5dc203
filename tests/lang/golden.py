"""The main function of the checks that compare with expected files, which --update writes anew."""

import os
import pathlib
import sys


def main(problems):
    """Runs `problems(folder, program, is_update)` for the arguments [--update] FOLDER PROGRAM..., prints what it yields and
    ends with status 1 if that is anything."""
    arguments = sys.argv[1:]
    is_update = arguments[0] == "--update"
    if is_update:
        arguments.pop(0)
    folder, *program = arguments
    found = list(problems(pathlib.Path(folder), [os.path.abspath(part) for part in program], is_update))
    print(*found, sep="\n")
    sys.exit(1 if found else 0)
