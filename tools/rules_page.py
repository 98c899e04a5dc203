#!/usr/bin/env python3
"""Writes docs/rules.md, the page about the rules of kelmo-lang.

    tools/rules_page.py TOP-FOLDER > docs/rules.md

The names and severities come from lang/rules/rule.cpp, the sentences from lang/texts/en.txt, which the program shows
too, and the examples from the golden files of the rules.
"""

import pathlib
import re
import sys
import textwrap

RULE = re.compile(r'\{RuleId::k\w+,\s*"([\w-]+)",\s*k(Error|Warning|Note)(?:,\s*(kBesideBase|false))?(?:,\s*(kOff))?\}')
HEAD = """# The rules of kelmo-lang

For translators: what each rule of [the checker](checker.md) finds, why it matters, and how to mend it. `tools/rules_page.py`
writes this page from the texts of the program, which says the same: `kelmo-lang rules NAME`.

An **error** is something that the library loses or misreads, or a broken placeholder. A **warning** was probably not
meant. A **note** is about style.
"""


def rules(top):
    found = RULE.findall((top / "lang/rules/rule.cpp").read_text("utf-8"))
    declared = re.findall(r"^  k\w+,", re.search(r"enum class RuleId .*?\};", (top / "lang/rules/rule.h").read_text("utf-8"),
                                                 re.S)[0], re.M)
    if len(found) != len(declared):
        sys.exit(f"{len(found)} rules were read, but RuleId has {len(declared)}")
    return found


def texts(top):
    lines = (top / "lang/texts/en.txt").read_text("utf-8").splitlines()[1:]
    return dict(line.split("\t", 1) for line in lines if "\t" in line)


def example(top, name):
    """The first finding of the rule in its golden output, with the lines that belong to it."""
    file = f"tests/data/lang/rules/{name}/expected.txt"
    lines = (top / file).read_text("utf-8").splitlines()
    first = next((i for i, line in enumerate(lines) if line.endswith(f"[{name}]")), None)
    if first is None:
        sys.exit(f"{file} has no finding of [{name}]")
    last = first + 1
    while last < len(lines) and lines[last].startswith(" "):
        last += 1
    return [f"<!-- {file}, in part -->", "```text", *lines[first:last], "```"]


def wrapped(text, indent=""):
    return textwrap.wrap(text, 120, subsequent_indent=indent, break_long_words=False, break_on_hyphens=False)


def page(top):
    sentences = texts(top)
    found = rules(top)
    lines = [HEAD]
    for severity in ("Error", "Warning", "Note"):
        names = ", ".join(f"[{name}](#{name})" for name, kind, *_ in found if kind == severity)
        lines += wrapped(f"- {severity}s: {names}", "  ")
    for name, severity, beside, off in found:
        what = severity.lower() + (", beside a base" if beside == "kBesideBase" else "") + (", off unless asked for" if off else "")
        lines += ["", f"## {name}", "", f"({what})", ""]
        for part, label in (("cause", ""), ("library", "**What the program shows** "), ("mend", "**What to do** ")):
            lines += [*wrapped(label + sentences[f"rule.{name}.{part}"]), ""]
        lines += example(top, name)
    return "\n".join(lines) + "\n"


if __name__ == "__main__":
    sys.stdout.reconfigure(encoding="utf-8", newline="\n")
    sys.stdout.write(page(pathlib.Path(sys.argv[1])))
