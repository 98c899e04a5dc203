#!/usr/bin/env python3
"""check_hostile.py [--scale NUMBER] PROGRAM...: kelmo-lang lint reads files that nobody writes by hand.

Each run ends with status 0 or 1, prints a short report in UTF-8, and needs at most six times the memory of its files
and a constant; for files with shorter lines than people write, so many bytes for each line. The timeout is far above what any run takes: it finds runs whose time grows with the square of the size.
--scale 5 takes lines of 1 GB, --scale 10 ten million keys.
"""

import os
import pathlib
import subprocess
import sys
import tempfile
import threading

MEGABYTE = 1_000_000
TIMES_FILE = 6
BYTES_FOR_LINE = 56
CONSTANT = 100 * MEGABYTE  # 50,000 findings of a rule are kept
SECONDS = 120
LONGEST_REPORT = MEGABYTE


def numbered(count, line):
    """Pieces of about 100,000 lines."""
    for first in range(0, count, 100_000):
        yield "".join(line(number) for number in range(first, min(first + 100_000, count))).encode()


def repeated(size, piece):
    piece *= max(1, min(MEGABYTE, size) // len(piece))
    for _ in range(size // len(piece)):
        yield piece


BASE = (b"en English\nkey\tText\nmenu.item.1\tText number %1\n",)


def hostile_files(scale):
    """Name and pieces of each file; a file of one line has 200 MB at scale 1."""
    millions, size = int(scale * 1_000_000), int(scale * 200 * MEGABYTE)
    half = size // 2
    yield "a single line", [b"xx X\nkey\t", *repeated(size, b"long text ")]
    yield "a single line that is no UTF-8", [b"xx X\nkey\t", *repeated(half, b"text \xE9t\xE9 ")]
    yield "a single key", [b"xx X\n", *repeated(half, b"key.")]
    yield "different keys", [b"xx X\n", *numbered(millions, lambda n: f"menu.item.{n}\tText number {n}\n")]
    yield "the same key", [b"xx X\n", *numbered(millions, lambda n: f"menu.item\tText number {n}\n")]
    yield "comments", [b"xx X\n", *numbered(millions, lambda n: f"# Comment {n}\n")]
    yield "bytes 0x80", repeated(half, b"\x80")
    yield "bytes 0x80 behind a key", [b"xx X\nkey text\n", *repeated(half, b"\x80")]
    yield "lines of one byte that is no UTF-8", [b"xx X\n", *repeated(half // 10, b"\xFF\n")]
    yield "NUL", repeated(half, b"\0")
    yield "NUL in a text", [b"xx X\nkey ", *repeated(half, b"\0")]
    yield "CR as line ends", [b"xx X\r", *numbered(millions, lambda n: f"menu.item.{n}\tText {n}\r")]
    yield "CR in every second place", [b"xx X\n", *repeated(half, b"\ra")]
    yield "0x1A in every second place", [b"xx X\n", *repeated(half, b"\x1Aa\n")]
    yield "UTF-16", ["xx X\n".encode("utf-16-le"),
                     *(piece.decode().encode("utf-16-le") for piece in
                       numbered(millions, lambda n: f"menu.item.{n}\tText {n}\n"))]
    yield "placeholders", [b"xx X\nkey ", *repeated(half, b"%1 {0} %s &amp; <b>")]
    yield "brackets", [b"xx X\nkey ", *repeated(half, b"([{<")]
    yield "combining characters", [b"xx X\nkey e", *repeated(half, b"\xCC\x81")]
    yield "UTF-8 saved twice", [b"xx X\nkey ", *repeated(half, "Ã¼".encode())]
    yield "no-break spaces in a key", [b"xx X\nkey", *repeated(half, "\u00A0".encode())]
    yield "tabs", [b"xx X\nkey\t", *repeated(half, b"a\t")]
    yield "quotation marks and commas", [b"xx X\n", *repeated(half, b'"a","b",')]
    yield "equals signs", [b"xx X\n", *repeated(half, b"a=b=")]
    yield "backslashes", [b"xx X\nkey ", *repeated(half, b"\\")]
    for name, piece in (("invisible characters", "a\u200B"), ("soft hyphens", "a\u00AD"), ("control characters", "a\x01"),
                        ("replacement characters", "a\uFFFD"), ("byte-order marks", "\uFEFF"),
                        ("characters beyond U+FFFF", "\U0001F600"), ("words of two scripts", "a\u0431 "),
                        ("question marks in words", "a?b "), ("doubled blanks", "a  "), ("letters of all scripts", "a\u03B1\u0430")):
        yield name, [b"xx X\nkey ", *repeated(half, piece.encode())]
        yield f"{name}, a few in each line", [b"xx X\n", *numbered(millions // 2, lambda n, piece=piece: f"k{n}\t{4 * piece}\n")]


def hostile_pairs(scale):
    """Name, pieces of the file and pieces of its base."""
    for name, pieces in hostile_files(scale):
        yield name, pieces, BASE
    count, size = int(scale * 300_000), int(scale * 30 * MEGABYTE)
    yield ("keys with a typing mistake", [b"xx X\n", *numbered(count, lambda n: f"menu.itm.{n}\tText {n}\n")],
           [b"en E\n", *numbered(count, lambda n: f"menu.item.{n}\tText {n}\n")])
    yield ("keys in another case", [b"xx X\n", *numbered(count, lambda n: f"Menu.Item.{n}\tText {n}\n")],
           [b"en E\n", *numbered(count, lambda n: f"menu.item.{n}\tText {n}\n")])
    yield ("other placeholders in each text", [b"xx X\n", *numbered(count, lambda n: f"menu.item.{n}\tText %{n} {{0}}\n")],
           [b"en E\n", *numbered(count, lambda n: f"menu.item.{n}\tText %1 {{{n}}}\n")])
    yield ("the same long text", [b"xx X\n", *numbered(count, lambda n: f"menu.item.{n}\tThis is the same text\n")],
           [b"en E\n", *numbered(count, lambda n: f"menu.item.{n}\tThis is the same text\n")])
    for name, ours, theirs in (("numbered placeholders", "%1 %2 ", "%2 %3 "), ("named placeholders", "{a} {b} ", "{b} {c} "),
                               ("different placeholders", None, None), ("tags", "<b></i>", "<i></b>"), ("entities", "&amp;&lt;", "&lt;&gt;"),
                               ("addresses", "http://a.example/ ", "http://b.example/ "),
                               ("longer addresses", "http://one.example/ ", "http://ones.example/ "),
                               ("schemes", "http://", "https://x.example/ "), ("mail addresses", "me@one.example ", "me@two.example "), ("accelerators", "&a ", "&b "),
                               ("line breaks", "\\n\\n", "\\n"), ("doubled words", "word word ", "word "),
                               ("brackets", "([{", ")]}"), ("opening quotation marks", "\u201E", "\u201C"),
                               ("scripts in turn", "a\u0431", "ab"), ("percent signs", "%", "% "), ("braces", "{", "}"),
                               ("angle brackets", "<", "<a "), ("ampersands", "&", "&a")):
        if ours is None:
            def placeholders(first):
                return numbered(size // 10, lambda n: f"{{n{n + first}}} ")
            yield name, [b"xx X\nkey ", *placeholders(0)], [b"en E\nkey ", *placeholders(5)]
        else:
            yield (f"{name} in a text", [b"xx X\nkey ", *repeated(size, ours.encode())],
                   [b"en E\nkey ", *repeated(size, theirs.encode())])


class Run:
    """One run of the program: its status, its output, and its peak memory (nothing if the system does not say it)."""

    def __init__(self, command, folder):
        process = subprocess.Popen(command, cwd=folder, stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        timer = threading.Timer(SECONDS, process.kill)
        timer.start()
        self.output = process.stdout.read()
        try:
            _, status, used = os.wait4(process.pid, 0)
            self.status, self.memory = os.waitstatus_to_exitcode(status), used.ru_maxrss * 1024
            process.returncode = self.status
        except AttributeError:  # on Windows
            self.status, self.memory = process.wait(), None
        timer.cancel()


def problems_of(run, size, lines):
    if run.status not in (0, 1):
        yield f"status {run.status}"
    if len(run.output) > LONGEST_REPORT:
        yield f"a report of {len(run.output)} bytes"
    try:
        run.output.decode("utf-8")
    except UnicodeDecodeError as error:
        yield f"a report that is not UTF-8: {error}"
    if run.memory is not None and run.memory > max(TIMES_FILE * size, size + BYTES_FOR_LINE * lines) + CONSTANT:
        yield f"{run.memory // MEGABYTE} MB of memory for a file of {size // MEGABYTE} MB"


def main():
    arguments = sys.argv[1:]
    scale = 1.0
    if arguments[0] == "--scale":
        scale = float(arguments[1])
        del arguments[:2]
    found = 0
    with tempfile.TemporaryDirectory() as scratch:
        folder = pathlib.Path(scratch)
        for name, pieces, base in hostile_pairs(scale):
            size = lines = 0
            for file, content in (("xx.txt", pieces), ("en.txt", base)):
                with (folder / file).open("wb") as stream:
                    for piece in content:
                        size += stream.write(piece)
                        lines += piece.count(b"\n")
            run = Run([*arguments, "--lang", "en", "lint", "xx.txt", "--base", "en.txt"], folder)
            problems = list(problems_of(run, size, lines))
            memory = f"take {run.memory / size:.1f} times as much memory" if run.memory else ""
            print(f"{name}: {size // MEGABYTE} MB {memory}", *problems, sep="\n  REFUSED: ", flush=True)
            found += len(problems)
    sys.exit(1 if found else 0)


if __name__ == "__main__":
    main()
