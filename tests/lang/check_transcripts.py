#!/usr/bin/env python3
"""check_transcripts.py [--update] FOLDER PROGRAM...: runs the commands of FOLDER/transcript.txt in FOLDER.

A line "$ kelmo-lang ARGUMENT..." is a command; below it stand its output and, unless it is 0, its exit status. Each
command must give exactly that; --update writes the transcript anew. On Windows, paths may have backslashes.
"""

import captured
import golden

MARK = "$ kelmo-lang "


def output(program, folder, arguments):
    status, text = captured.printed([*program, "--lang", "en", *arguments.split()], cwd=folder)
    return text + (f"exit status: {status}\n" if status else "")


def comparable(text, is_windows):
    return text.replace("\\", "/") if is_windows else text


def problems(folder, program, is_update):
    is_windows = program[-1].endswith(".exe")
    transcript = folder / "transcript.txt"
    written, *parts = transcript.read_text("utf-8").split(MARK)
    if written or not parts:
        yield f"{transcript} does not begin with a command"
    for part in parts:
        line, expected = part.split("\n", 1)
        given = output(program, folder, line)
        written += f"{MARK}{line}\n{given}\n"
        if comparable(given, is_windows) != comparable(expected[:-1], is_windows):
            yield f"{MARK}{line}\ngives\n{given}\nand the transcript says\n{expected}"
    if is_update:
        transcript.write_text(written, "utf-8")


if __name__ == "__main__":
    golden.main(problems)
