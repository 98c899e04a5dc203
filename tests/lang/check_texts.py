#!/usr/bin/env python3
"""check_texts.py LANG: the texts of kelmo-lang are complete in each of its languages, and each of them is used.

LANG is the folder of the tool. Its dictionaries must have the same keys, but for plural forms, and the same placeholders.
The keys must be those that the sources name; a source may also join a key from several strings ("rule." and a name).
"""

import pathlib
import re
import sys

BASE = "en"
# The plural forms of whole numbers, as texts.cpp chooses them. The first one stands for 1; where it stands for no other
# number, its text need not show the number.
FORMS = {"de": ("one", "other"), "en": ("one", "other"), "ru": ("one", "few", "many")}
RULE_PARTS = ("cause", "library", "mend", "title")

RULE = re.compile(r'\{RuleId::\w+, "([a-z-]+)"')
# A string of one line, or the character that joins two parts of a key.
STRING = re.compile(r'"((?:[^"\\\n]|\\.)*)"|\'([.-])\'')
COMMENT = re.compile(r"^\s*//.*$", re.M)
HELP = "help"  # command_line.cpp joins the keys of the help from it and the names of commands and options
FILE_NAME = re.compile(r"\.(html|json|txt)$")
PLACEHOLDER = re.compile(r"%[1-9]")


def read_texts(path, problems):
    """The texts of a dictionary by their keys."""
    lines = path.read_text("utf-8").split("\n")
    if not lines[0].startswith(path.stem + " "):
        problems.append(f"{path.name}: the first line does not begin with {path.stem}")
    if lines[-1]:
        problems.append(f"{path.name}: the last line has no end")
    rows = [line.split("\t") for line in lines[1:-1]]
    for number, row in enumerate(rows, 2):
        if len(row) != 2 or not all(row):
            problems.append(f"{path.name}:{number}: this is not a key, a tab and a text")
    rows = [row for row in rows if len(row) == 2]
    keys = [key for key, _ in rows]
    if keys != sorted(set(keys)):
        wrong = next(key for key, right in zip(keys, [*sorted(set(keys)), None]) if key != right)
        problems.append(f"{path.name}: the keys are not sorted, or one stands there twice: {wrong}")
    return dict(rows)


def expected_texts(base, language):
    """The keys that a dictionary must have. For each, the placeholders that it must have, and those that it may have."""
    expected = {}
    for key, text in base.items():
        stem, _, form = key.rpartition(".")
        forms = f"{stem}.one" in base and f"{stem}.other" in base and form in FORMS[BASE]
        needed = set(PLACEHOLDER.findall(text))
        if not forms:
            expected[key] = needed, needed
        elif form == "one":
            expected[f"{stem}.one"] = needed, set(PLACEHOLDER.findall(base[f"{stem}.other"]))
        else:
            expected.update({f"{stem}.{name}": (needed, needed) for name in FORMS[language][1:]})
    return expected


def check_language(name, texts, base, problems):
    """Compares a dictionary with the English one."""
    expected = expected_texts(base, name)
    problems += [f"{name}.txt lacks the key {key}" for key in expected if key not in texts]
    problems += [f"{name}.txt has the key {key}, and {BASE}.txt does not need it" for key in texts if key not in expected]
    for key in texts.keys() & expected.keys():
        needed, allowed = expected[key]
        found = set(PLACEHOLDER.findall(texts[key]))
        if not needed <= found <= allowed:
            problems.append(f"{name}.txt: {key} has the placeholders {sorted(found)}, and {BASE}.txt has {sorted(allowed)}")


def is_joined(key, strings):
    """Whether strings of the sources, one behind the other, give the key. The first one shows that they are a key."""
    ends = {end for end in range(len(key) + 1) if key[:end] in strings and ("." in key[:end] or key[:end] == HELP)}
    for start in range(1, len(key)):
        if start in ends and (key[start - 1] in ".-" or key[start] in ".-"):
            ends |= {end for end in range(start + 1, len(key) + 1) if key[start:end] in strings}
    return len(key) in ends


def check_keys(base, sources, problems):
    """Compares the keys with the strings of the sources."""
    strings = {text or character for source in sources for text, character in STRING.findall(COMMENT.sub("", source))}
    strings -= {string for string in strings if len(string) == 1 and string not in ".-12"}
    families = {key.split(".")[0] for key in base}
    plurals = {key[: -len("other")] + "#" for key in base if key.endswith(".other") and key[: -len("other")] + "one" in base}
    for string in sorted(strings):
        family, dot, _ = string.partition(".")
        if dot and family in families and not FILE_NAME.search(string) and re.fullmatch(r"[a-z0-9_.#-]+", string):
            prefix = string if string.endswith(".") else string + "."
            if string not in base and string not in plurals and not any(key.startswith(prefix) for key in base):
                problems.append(f"a source names the key {string}, which {BASE}.txt lacks")
    for key in base:
        stem, _, form = key.rpartition(".")
        names = [key] + ([f"{stem}.#"] if form in FORMS[BASE] and f"{stem}.#" in plurals else [])
        if not any(is_joined(name, strings) for name in names):
            problems.append(f"no source names the key {key} of {BASE}.txt")


def main():
    folder = pathlib.Path(sys.argv[1])
    problems = []
    texts = {path.stem: read_texts(path, problems) for path in sorted((folder / "texts").glob("*.txt"))}
    if texts.keys() != FORMS.keys():
        sys.exit(f"the languages are {sorted(texts)}, not {sorted(FORMS)}")
    base = texts[BASE]
    for name, found in texts.items():
        check_language(name, found, base, problems)
    rules = RULE.findall((folder / "rules/rule.cpp").read_text("utf-8"))
    if not rules:
        problems.append("rule.cpp names no rules")
    problems += [f"{BASE}.txt lacks the key {key}" for rule in rules for part in RULE_PARTS
                 if (key := f"rule.{rule}.{part}") not in base]
    problems += [f"{BASE}.txt explains the rule {key.split('.')[1]}, which rule.cpp lacks" for key in base
                 if key.startswith("rule.") and key.split(".")[1] not in rules]
    check_keys(base, [path.read_text("utf-8") for suffix in ("cpp", "h") for path in sorted(folder.rglob(f"*.{suffix}"))],
               problems)
    print(*problems, sep="\n")
    sys.exit(1 if problems else 0)


if __name__ == "__main__":
    main()
