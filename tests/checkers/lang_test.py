"""The checkers of kelmo-lang refuse falsified inputs and programs: tests/lang/check_rules.py, check_mistakes.py,
check_texts.py, check_transcripts.py, check_hostile.py, check_manual.py, check_examples.py and catalogues.py.
"""

import struct
import sys
import unittest
from unittest import mock

from refusals import TOP, RefusalTest, Row, new_folder, write

sys.path[:0] = [str(TOP / "tests/lang")]
import catalogues  # noqa: E402
import check_mistakes  # noqa: E402

CHECKERS = TOP / "tests/lang"

# Finds the word "wrong" in the files of a folder.
PROGRAM = """#!/usr/bin/env python3
import pathlib, sys
if sys.argv[3] == "rules":
    print("spelling  error  A word is wrong.")
    sys.exit()
found = 0
for file in sorted(pathlib.Path(sys.argv[4]).iterdir()):
    for number, line in enumerate(file.read_text("utf-8").splitlines(), 1):
        if "wrong" in line:
            print(f"{file}:{number}:1: error: this is wrong [spelling]")
            found = 1
sys.exit(found)
"""
RULES = {
    "program": PROGRAM,
    "rules/spelling/bad/de.txt": "de Deutsch\nkey wrong\n",
    "rules/spelling/good/de.txt": "de Deutsch\nkey right\n",
    "rules/spelling/expected.txt": "bad/de.txt:2:1: error: this is wrong [spelling]\n",
}


class CheckRules(RefusalTest):
    def test_each_false_folder_is_refused(self):
        good = "rules/spelling/good/de.txt"
        bad = "rules/spelling/bad/de.txt"
        expected = "rules/spelling/expected.txt"
        rows = (
            Row("the bad file has no fault", bad, "wrong", "right", "spelling: the bad files give no [spelling]"),
            Row("the fault is in another line", bad, "key wrong", "key right\nkey wrong", "spelling: the bad files give bad/de.txt:3"),
            Row("the good file has the fault", good, "right", "wrong", "spelling: the good files give status 1"),
            Row("another message is expected", expected, "this is", "that is", "says bad/de.txt:2:1: error: that is wrong"),
            Row("the program finds something with another rule", "program", "[spelling]", "[words]",
                "the bad files give no [spelling]; status 1: bad/de.txt:2"),
            Row("a rule has no folder", "program", '")\n    sys.exit()', '\\nwords  note")\n    sys.exit()',
                "words: the rule has no folder"),
            Row("a folder has no rule", "program", "spelling  error", "spell  error", "spelling: there is no such rule"),
            Row("the program fails on good files", "program", "found = 0\n", "found = 2\n", "the good files give status 2"),
        )
        self.refuses_each(lambda folder: write(folder, RULES),
                          lambda folder: (sys.executable, CHECKERS / "check_rules.py", folder / "rules", folder / "program"), rows)

    def test_no_folders_are_refused(self):
        with new_folder(lambda folder: write(folder, {"program": PROGRAM, "rules/readme.txt": ""})) as folder:
            self.refuses("rules has no folders",
                         (sys.executable, CHECKERS / "check_rules.py", folder / "rules", folder / "program"))


# Prints a manual page.
MANUAL = {"program": """#!/bin/sh
cat <<'PAGE'
.TH KELMO-LANG 1
.SH NAME
kelmo-lang \\- checks
.SH SYNOPSIS
.SH DESCRIPTION
.SH OPTIONS
.SH COMMANDS
.SH EXIT STATUS
.SH ENVIRONMENT
.SH EXAMPLES
PAGE
"""}


class CheckManual(RefusalTest):
    def test_each_false_page_is_refused(self):
        rows = (
            Row("a section is missing", "program", ".SH OPTIONS\n", "", "the sections are NAME, SYNOPSIS, DESCRIPTION, COMMANDS"),
            Row("a macro that does not exist", "program", ".SH EXAMPLES\n", ".SH EXAMPLES\n.XX a\n", "macro 'XX' not defined"),
            Row("a text is missing", "program", ".SH EXAMPLES\n", ".SH EXAMPLES\nhelp.lint.base\n", "the text help.lint.base is missing"),
            Row("the program fails", "program", "PAGE\n", "PAGE\nexit 2\n", "status 2"),
        )
        self.refuses_each(lambda folder: write(folder, MANUAL),
                          lambda folder: (sys.executable, CHECKERS / "check_manual.py", folder / "program"), rows)


TEXTS = {
    "lang/rules/rule.cpp": 'constexpr Rule kRules[] = {{RuleId::kEmpty, "empty", kError}};\n',
    "lang/report.cpp": """// "page.comment" is no key.
const std::string key = "rule." + name + '.' + part;
const char* const parts[] = {"title", "cause", "library", "mend"};
Say({"empty.message", {key}}); Say({"page.files.#", {count, name}}); Open("page.html");
""",
    "lang/texts/en.txt": "en English\nempty.message\t%1 is empty\npage.files.one\t%2: a file\npage.files.other\t%2: %1 files\n"
                         "rule.empty.cause\ta\nrule.empty.library\tb\nrule.empty.mend\tc\nrule.empty.title\td\n",
    "lang/texts/de.txt": "de Deutsch\nempty.message\t%1 ist leer\npage.files.one\t%2: eine Datei\npage.files.other\t%2: %1 Dateien\n"
                         "rule.empty.cause\ta\nrule.empty.library\tb\nrule.empty.mend\tc\nrule.empty.title\td\n",
    "lang/texts/ru.txt": "ru Russian\nempty.message\t%1\npage.files.few\t%2 %1\npage.files.many\t%2 %1\npage.files.one\t%2 %1\n"
                         "rule.empty.cause\ta\nrule.empty.library\tb\nrule.empty.mend\tc\nrule.empty.title\td\n",
}


class CheckTexts(RefusalTest):
    def test_each_false_text_is_refused(self):
        base, german, russian, source = "lang/texts/en.txt", "lang/texts/de.txt", "lang/texts/ru.txt", "lang/report.cpp"
        mend = "rule.empty.mend\tc\n"
        rows = (
            Row("another language in the first line", german, "de ", "fr ", "de.txt: the first line does not begin with de"),
            Row("no end of the last line", german, "title\td\n", "title\td", "de.txt: the last line has no end"),
            Row("no tab", german, "mend\tc", "mend c", "de.txt:7: this is not a key, a tab and a text"),
            Row("two tabs", german, "mend\tc", "mend\tc\td", "de.txt:7: this is not a key, a tab and a text"),
            Row("no text", german, "mend\tc", "mend\t", "de.txt:7: this is not a key, a tab and a text"),
            Row("a key twice", german, mend, mend * 2, "the keys are not sorted, or one stands there twice: rule.empty.mend"),
            Row("not sorted", german, mend, mend + "aa\tb\n", "the keys are not sorted, or one stands there twice: empty.message"),
            Row("no text of a key", german, mend, "", "de.txt lacks the key rule.empty.mend"),
            Row("no plural form", russian, "page.files.few\t%2 %1\n", "", "ru.txt lacks the key page.files.few"),
            Row("a plural form of another language", german, "page.files.one", "page.files.few\t%1 %2\npage.files.one",
                "de.txt has the key page.files.few"),
            Row("a further key", german, mend, mend + "rule.empty.text\tt\n", "de.txt has the key rule.empty.text"),
            Row("no placeholder", german, "%1 ist", "x ist", "de.txt: empty.message has the placeholders []"),
            Row("another placeholder", german, "%1 ist", "%2 ist", "de.txt: empty.message has the placeholders ['%2']"),
            Row("no placeholder for many", russian, "many\t%2 %1", "many\t%2", "ru.txt: page.files.many has the placeholders ['%2']"),
            Row("no placeholder for one", russian, "one\t%2 %1", "one\t%1", "ru.txt: page.files.one has the placeholders ['%1']"),
            Row("a rule without texts", "lang/rules/rule.cpp", "{{", '{{RuleId::kTag, "tag", kError}, {', "lacks the key rule.tag.cause"),
            Row("texts without a rule", "lang/rules/rule.cpp", '"empty"', '"tag"', "explains the rule empty, which rule.cpp lacks"),
            Row("no rules", "lang/rules/rule.cpp", "RuleId", "Id", "rule.cpp names no rules"),
            Row("a key without a text", source, "empty.message", "empty.text", "a source names the key empty.text, which en.txt lacks"),
            Row("a plural key without a text", source, "page.files.#", "page.lines.#", "a source names the key page.lines.#"),
            Row("a text that no source names", source, 'Say({"empty.message", {key}});', "", "no source names the key empty.message"),
            Row("plural forms that no source names", source, "page.files.#", "page.files.one",
                "no source names the key page.files.other"),
            Row("parts that are not joined", source, '"mend"', '"men", "d"', "no source names the key rule.empty.mend"),
            Row("a further language", "lang/texts/fr.txt", None, "fr\n", "the languages are ['de', 'en', 'fr', 'ru']"),
        )
        self.refuses_each(lambda folder: write(folder, TEXTS),
                          lambda folder: (sys.executable, CHECKERS / "check_texts.py", folder / "lang"), rows)


TRANSCRIPT = {
    "program": "#!/usr/bin/env python3\nimport sys\nprint('text of', *sys.argv[4:])\nsys.exit('none' in sys.argv)\n",
    "shown/transcript.txt": """$ kelmo-lang show a
text of a

$ kelmo-lang show none
text of none
exit status: 1

""",
}


class CheckTranscripts(RefusalTest):
    def test_each_false_transcript_is_refused(self):
        transcript = "shown/transcript.txt"
        rows = (
            Row("another output", transcript, "text of a\n", "text of b\n", "$ kelmo-lang show a gives text of a"),
            Row("another status", transcript, "status: 1", "status: 2", "$ kelmo-lang show none gives text of none"),
            Row("a further line", transcript, "text of a\n", "text of a\nmore\n", "$ kelmo-lang show a gives text of a"),
            Row("no command", transcript, "$ kelmo-lang show a\ntext of a\n\n$ kelmo-lang", "kelmo-lang",
                "does not begin with a command"),
        )
        self.refuses_each(lambda folder: write(folder, TRANSCRIPT),
                          lambda folder: (sys.executable, CHECKERS / "check_transcripts.py", folder / "shown", folder / "program"),
                          rows)


class Answers:
    """A program that answers with prepared findings: `reports` has one for each run."""

    def __init__(self, folder, reports):
        self.folder, self.reports = folder, list(reports)

    def run(self, *_arguments):
        return 0, ""

    def findings(self, _file):
        return self.reports.pop(0)


class CheckMistakes(unittest.TestCase):
    """What is wrong with a mend, from the findings before and after it."""

    ROW = check_mistakes.Row("fr.txt", 2, "empty", check_mistakes.edit("a", "b"))
    EMPTY = check_mistakes.Finding("fr.txt", 2, "empty", "the text is empty")
    OTHER = check_mistakes.Finding("fr.txt", 3, "missing", "key \"x\" is missing")
    MOVED = OTHER._replace(line=2)

    def test_a_mend_removes_its_finding_and_adds_none(self):
        for name, before, after, problems in (
            ("mended", [self.EMPTY], [], []),
            ("another one stays in another line", [self.EMPTY, self.OTHER], [self.MOVED], []),
            ("nothing changed", [self.EMPTY], [self.EMPTY], ["the finding is still there"]),
            ("moved", [self.EMPTY], [self.EMPTY._replace(line=9)], ["the finding is still there"]),
            ("another one came", [self.EMPTY], [self.OTHER], [f"new findings: {[('missing', self.OTHER.message)]}"]),
            ("a second one of the other", [self.EMPTY, self.OTHER], [self.MOVED, self.OTHER],
             [f"new findings: {[('missing', self.OTHER.message)]}"]),
        ):
            with self.subTest(name), new_folder(lambda folder: write(folder, {"fr.txt": "a\n"})) as folder:
                made = list(check_mistakes.mend_problems(Answers(folder, [after]), self.ROW, b"a\n", before))
                self.assertEqual(made, problems)
                self.assertEqual((folder / "fr.txt").read_text(), "b\n")

    def test_an_edit_that_fits_nowhere_is_refused(self):
        for content in (b"", b"aa"):
            with self.assertRaises(ValueError):
                self.ROW.mend(content)

    def test_every_report_line_is_read(self):
        report = ('fr.txt: warning: key "a" is missing [missing]\n   base: en.txt:2 "a" [b]\n'
                  "cut/fr.txt:5:12: error: not UTF-8 [encoding]\n1 error\n")
        self.assertEqual([(found["file"], found["line"], found["rule"]) for found in check_mistakes.FINDING.finditer(report)],
                         [("fr.txt", None, "missing"), ("cut/fr.txt", "5", "encoding")])


HOSTILE = """#!/usr/bin/env python3
import pathlib, sys
size = pathlib.Path(sys.argv[4]).stat().st_size
print("fine")
sys.exit(0)
"""


class CheckHostile(RefusalTest):
    def test_each_bad_run_is_refused(self):
        end = "sys.exit(0)"
        rows = (
            Row("an unexpected status", "program", end, "sys.exit(2)", "REFUSED: status 2"),
            Row("a crash", "program", end, "import os; os.kill(os.getpid(), 11)", "REFUSED: status -11"),
            Row("a long report", "program", end, "print('x' * 1_000_001)", "REFUSED: a report of 1000007 bytes"),
            Row("REFUSED: a report that is not UTF-8", "program", end, r"sys.stdout.buffer.write(b'\xff')", "REFUSED: a report that is not UTF-8"),
            Row("much memory", "program", end, "len('x' * 250_000_000)", "MB of memory for a file of 0 MB"),
        )
        self.refuses_each(lambda folder: write(folder, {"program": HOSTILE}),
                          lambda folder: (sys.executable, CHECKERS / "check_hostile.py", "--scale", "0.001", folder / "program"),
                          rows)


class CheckExamples(RefusalTest):
    def test_silence_about_a_fault_and_a_warning_about_the_examples_are_refused(self):
        files = {"program": "#!/usr/bin/env python3\n" "import pathlib, sys\n"
                 "found = b'(\\n' in pathlib.Path('LANG/de.txt').read_bytes()\n"
                 "print('[bracket]')\n" "sys.exit(found)\n",
                 "examples/en.txt": "en\na\tb\n", "examples/de.txt": "de\na\tc\n", "examples/faulty.txt": "("}
        rows = (
            Row("a program that finds nothing", "program", "sys.exit(found)", "sys.exit(0)", "an open bracket in de.txt"),
            Row("a program that finds always", "program", "sys.exit(found)", "sys.exit(1)", "the examples give status 1"),
            Row("another rule", "program", "[bracket]", "[length]", "an open bracket in de.txt"),
        )
        self.refuses_each(lambda folder: write(folder, files),
                          lambda folder: (sys.executable, CHECKERS / "check_examples.py", folder / "examples",
                                          folder / "program"),
                          rows)


class CheckCatalogues(unittest.TestCase):
    def test_false_alarms_are_counted(self):
        warning = {"id": "de", "rule": "bracket", "key": "a", "severity": "warning", "message": "m"}
        error = {**warning, "severity": "error"}
        line = "bash\tde\tbracket\ta\t{}\treason\n"
        for name, texts, found, verdicts, is_too_many in (
            ("nothing found", 1000, [], "", False),
            ("one in 1,000", 1000, [warning], "", False),
            ("one in 999", 999, [warning], "", True),
            ("two in 1,999, one is true", 1999, [warning, {**warning, "key": "b"}], line.format("true"), False),
            ("two in 1,999, one is false", 1999, [warning, {**warning, "key": "b"}], line.format("false"), True),
            ("an error", 9000, [error], "", True),
            ("a true error", 9000, [error], line.format("true"), False),
            ("a false error", 9000, [error], line.format("false"), True),
            ("no texts", 0, [], "", True),
        ):
            with self.subTest(name), new_folder(lambda folder: write(folder, {"list.txt": "# comment\n"})) as folder, \
                    mock.patch.multiple(catalogues, GROUPS=[["bash"], ["bash"]],
                                        convert=lambda *_: {"de": texts}, findings=lambda *_: iter(found)):
                (folder / "list.txt").write_text(verdicts, "utf-8")
                self.assertEqual(catalogues.check(["program"], folder, folder / "list.txt")[1], is_too_many)

    def test_a_catalogue_is_read(self):
        texts = [(b"", b"header"), (b"menu\4Open", b"\xc3\x96ffnen"), (b"%d file\0%d files", b"%d Datei\0%d Dateien")]
        blobs = [blob for pair in zip(*texts) for blob in pair]
        tables, data = b"", b""
        start = 28 + 16 * len(texts)
        for blob in blobs:
            tables += struct.pack("<2I", len(blob), start + len(data))
            data += blob + b"\0"
        header = struct.pack("<7I", 0x950412DE, 0, len(texts), 28, 28 + 8 * len(texts), 0, 0)
        with new_folder(lambda folder: (folder / "a.mo").write_bytes(header + tables + data)) as folder:
            menu, files = catalogues.key_of("menu\4Open"), catalogues.key_of("%d file")
            self.assertEqual(list(catalogues.entries(folder / "a.mo", "de")), [
                (menu, "Open", "\u00d6ffnen"),
                (f"{files}.one", "%d file", ""), (f"{files}.other", "%d files", ""),
                (f"{files}.one", "", "%d Datei"), (f"{files}.other", "", "%d Dateien"),
            ])


if __name__ == "__main__":
    unittest.main()
