#!/usr/bin/env python3
"""check_mistakes.py [--update] FOLDER PROGRAM...: a translator's mistakes are found, and mended by what the tool says.

FOLDER has a French dictionary with mistakes, fr.txt, and its base, en.txt. Mistakes that concern a whole file are in
folders of their own. For each row of the table below: the tool reports exactly these findings; after the mend this
finding is gone, and there is no new one. `expected.txt` is the whole transcript; --update writes it.
"""

import collections
import pathlib
import re
import shutil
import tempfile

import captured
import golden

# A finding and its mend: FIX, or a function from the bytes of the file to those of the mended one.
Row = collections.namedtuple("Row", "file line rule mend")
Finding = collections.namedtuple("Finding", "file line rule message")

FIX = None  # the command that the report names


def edit(old, new):
    """Replaces a part of the file that occurs once."""
    def mend(content):
        if content.count(old.encode()) != 1:
            raise ValueError(f"{old!r} occurs {content.count(old.encode())} times")
        return content.replace(old.encode(), new.encode())
    return mend


ROWS = (
    # Keys and separators
    Row("fr.txt", 6, "blank-in-key", edit("menu.file.print\u00A0", "menu.file.print\t")),
    Row("fr.txt", 10, "indented-line", edit("  menu.edit.copy", "menu.edit.copy")),
    Row("fr.txt", 13, "blank-in-key", edit("menu.view plan", "menu.view.plan")),
    Row("fr.txt", 17, "missing", edit("button.aply", "button.apply")),
    Row("fr.txt", 27, "look-alike-key", edit("Pump.power", "pump.power")),
    Row("fr.txt", 30, "lost-separator", edit("pump.bearingT", "pump.bearing\tT")),
    Row("fr.txt", 58, "duplicate-key", edit("alarm.list\tListe des alarmes\nalarm.none", "alarm.none")),
    Row("fr.txt", 59, "duplicate-key", edit("tank.full\tRéservoir plein\n", "")),
    Row("fr.txt", 60, "missing", edit("report.saved", "report.page\tPage %1 sur %2\nreport.saved")),
    # Lines of other formats
    Row("fr.txt", 34, "continued-text", edit("été\ndémarrée", "été démarrée")),
    Row("fr.txt", 43, "lost-separator", edit("valve.safety=", "valve.safety\t")),
    Row("fr.txt", 54, "comment", edit("# Alarmes\n", "")),
    # Texts
    Row("fr.txt", 24, "placeholder", edit("en défaut : %3", "en défaut : %2")),
    Row("fr.txt", 38, "empty", edit("valve.close\t", "valve.close\tFermer la vanne")),
    Row("fr.txt", 46, "double-encoding", edit("dÃ©bit", "débit")),
    Row("fr.txt", 51, "lost-letter", edit("r\uFFFDservoir", "réservoir")),
    Row("fr.txt", 64, "untranslated", edit("The connection to the control unit is interrupted.", "La liaison est interrompue.")),
    # Whole files
    Row("windows-1252/fr.txt", 23, "encoding", FIX),
    Row("cut/fr.txt", 52, "encoding", lambda content: content.replace(b"r\xC3servoir est vide", "réservoir est vide".encode())),
    Row("utf-16/fr.txt", 1, "encoding", FIX),
    Row("saved-twice/fr.txt", 4, "double-encoding", lambda content: content.decode("utf-8").encode("windows-1252")),
    Row("byte-order-mark/fr.txt", 1, "byte-order-mark", FIX),
    Row("cr/fr.txt", 1, "line-end", FIX),
    Row("no-header/fr.txt", 1, "header", lambda content: "fr Français\n".encode() + content),
)

FINDING = re.compile(r"^(?P<file>\S+?\.txt)(?::(?P<line>\d+):\d+)?: (?:error|warning|note): (?P<message>.*) \[(?P<rule>[a-z-]+)\]$",
                     re.MULTILINE)


class Tool:
    """The program in a folder."""

    def __init__(self, program, folder):
        self.program, self.folder = program, folder

    def run(self, *arguments):
        return captured.printed([*self.program, "--lang", "en", *arguments], cwd=self.folder, timeout=100)

    def report(self, file):
        status, text = self.run("lint", file, "--base", "en.txt")
        return f"$ kelmo-lang lint {file} --base en.txt\n{text}status {status}\n"

    def findings(self, file):
        return [Finding(found["file"], int(found["line"] or 0), found["rule"], found["message"])
                for found in FINDING.finditer(self.report(file))]


def mend(tool, row):
    """Returns what went wrong."""
    file = tool.folder / row.file
    if row.mend is not FIX:
        file.write_bytes(row.mend(file.read_bytes()))
        return ""
    command = re.search(r"mend: kelmo-lang (fix .*)$", tool.report(row.file), re.MULTILINE)
    if not command:
        return "the report names no command"
    status, text = tool.run(*command[1].split())
    return "" if status == 0 else f"{command[1]} ended with {status}: {text}"


def places(findings):
    return sorted((found.line, found.rule) for found in findings)


def mend_problems(tool, row, original, before):
    """Mends one mistake in a file of its own."""
    (tool.folder / row.file).write_bytes(original)
    complaint = mend(tool, row)
    if complaint:
        yield complaint
    after = tool.findings(row.file)
    # By rule and message: the lines behind a removed one have other numbers.
    more = (collections.Counter((found.rule, found.message) for found in after)
            - collections.Counter((found.rule, found.message) for found in before))
    if more:
        yield f"new findings: {sorted(more)}"
    if len([found for found in after if found.rule == row.rule]) >= len([found for found in before if found.rule == row.rule]):
        yield "the finding is still there"


def problems(data, program, is_update):
    transcript = ""
    with tempfile.TemporaryDirectory() as scratch:
        folder = pathlib.Path(scratch) / "папка с переводами"
        shutil.copytree(data, folder)
        tool = Tool(program, folder)
        for file in dict.fromkeys(row.file for row in ROWS):
            rows = [row for row in ROWS if row.file == file]
            original = (folder / file).read_bytes()
            transcript += tool.report(file).replace("\\fr.txt", "/fr.txt") + "\n"
            before = tool.findings(file)
            # A fault of a whole file may be reported in several lines; the first one counts.
            seen = places(before) if file == "fr.txt" else places(before)[:1]
            if len({found.rule for found in before} - {row.rule for row in rows}) > 0 or seen != places(rows):
                missing = collections.Counter(places(rows)) - collections.Counter(seen)
                more = collections.Counter(places(before)) - collections.Counter(places(rows))
                yield f"{file}: not found: {sorted(missing)}, found beside: {sorted(more)}"
            for row in rows:
                for problem in mend_problems(tool, row, original, before):
                    yield f"{file}:{row.line} [{row.rule}]: {problem}"
            (folder / file).write_bytes(original)
            for row in reversed(rows):
                mend(tool, row)
            if tool.run("lint", file, "--base", "en.txt", "--fail-on", "note")[0] != 0:
                yield f"{file}: with all mistakes mended:\n{tool.report(file)}"
    expected = data / "expected.txt"
    if is_update:
        expected.write_text(transcript, "utf-8", newline="")
    elif transcript != expected.read_text("utf-8"):
        yield f"the transcript is\n{transcript}\nbut {expected} says\n{expected.read_text('utf-8')}"


if __name__ == "__main__":
    golden.main(problems)
