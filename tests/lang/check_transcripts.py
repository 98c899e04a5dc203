#!/usr/bin/env python3
"""check_transcripts.py [--update] FOLDER PROGRAM...: runs the commands of FOLDER/transcript.txt in FOLDER.

A line "$ kelmo-lang ARGUMENT..." is a command; below it stand its output and, unless it is 0, its exit status. Each
command must give exactly that; --update writes the transcript anew. On Windows, paths may have backslashes.
"""

import os
import pathlib
import sys

import captured

MARK = "$ kelmo-lang "


def output(program, folder, arguments):
    command = [*program, "--lang", "en", *arguments.split()]
    run = captured.run(command, cwd=folder)
    text = (run.stdout + run.stderr).decode("utf-8").replace("\r\n", "\n")
    return text + (f"exit status: {run.returncode}\n" if run.returncode else "")


def comparable(text, is_windows):
    return text.replace("\\", "/") if is_windows else text


def main():
    arguments = sys.argv[1:]
    is_update = arguments[0] == "--update"
    if is_update:
        arguments.pop(0)
    folder = pathlib.Path(arguments[0])
    program = [os.path.abspath(part) for part in arguments[1:]]
    is_windows = program[-1].endswith(".exe")
    transcript = folder / "transcript.txt"
    parts = transcript.read_text("utf-8").split(MARK)
    written = parts[0]
    found = [] if len(parts) > 1 and not parts[0] else [f"{transcript} does not begin with a command"]
    for part in parts[1:]:
        line, expected = part.split("\n", 1)
        given = output(program, folder, line)
        written += f"{MARK}{line}\n{given}\n"
        if comparable(given, is_windows) != comparable(expected[:-1], is_windows):
            found.append(f"{MARK}{line}\ngives\n{given}\nand the transcript says\n{expected}")
    if is_update:
        transcript.write_text(written, "utf-8")
    print(*found, sep="\n")
    sys.exit(1 if found else 0)


if __name__ == "__main__":
    main()
