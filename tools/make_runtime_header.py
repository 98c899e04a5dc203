#!/usr/bin/env python3
"""Writes kelmo_runtime.h, which loads kelmo while a program runs, from the functions that kelmo.h declares.

    tools/make_runtime_header.py [--check]

With --check it writes nothing and fails if kelmo_runtime.h differs.
"""

import pathlib
import re
import sys

TOP = pathlib.Path(__file__).resolve().parent.parent
SOURCE = TOP / "include/kelmo/kelmo.h"
TEMPLATE = TOP / "tools/kelmo_runtime.h.in"
TARGET = TOP / "include/kelmo/kelmo_runtime.h"

FUNCTION = re.compile(r"^KELMO_API ([\w ]+?\b\*?) ?(kelmo_\w+)\(([^)]*)\);", re.M)
# What a function returns while no library is loaded, by its type. Texts have their own line below.
RESULTS = {"kelmo_status": "KELMO_RUNTIME_NOT_OPEN", "uint32_t": "0", "size_t": "0"}
RESULTS |= dict.fromkeys(("kelmo_texts*", "kelmo_view*", "kelmo_units*"), "NULL")
TEXTS = {"kelmo_view_text": "kelmo_runtime_no_text(size)"}


def functions():
    """Yields result type, name, parameters, and the names of the parameters."""
    text = SOURCE.read_text("utf-8")
    found = FUNCTION.findall(text)
    if len(found) != text.count("\nKELMO_API "):
        sys.exit(f"{SOURCE.name}: {text.count(chr(10) + 'KELMO_API ')} functions are declared, {len(found)} were read")
    for result, name, parameters in found:
        parameters = " ".join(parameters.split())
        names = ", ".join(re.findall(r"(\w+)(?:,|$)", parameters)) if parameters != "void" else ""
        yield result, name, parameters, names


def statuses():
    """The names of all statuses: those of kelmo.h, and those that only the written header has."""
    for path, begin in (SOURCE, "typedef int32_t kelmo_status;"), (TEMPLATE, "Results beside those of kelmo.h"):
        names = re.findall(r"^  (KELMO_\w+) = ", path.read_text("utf-8").partition(begin)[2].partition("};")[0], re.M)
        if not names:
            sys.exit(f"{path.name}: no status was found")
        yield from names


def member(name):
    """The pointer to a function."""
    return name.replace("kelmo_", "", 1)


def wrapper(result, name, parameters, names):
    call = f"kelmo_runtime_loaded.{member(name)}({names})"
    if result == "void":
        body = f"if (kelmo_runtime_is_open()) {{\n    {call};\n  }}"
    elif name == "kelmo_status_name":
        body = f"return kelmo_runtime_status_name({names});"
    elif name in TEXTS:
        body = f"return kelmo_runtime_is_open() ? {call} : {TEXTS[name]};"
    else:
        body = f"return kelmo_runtime_is_open() ? {call} : {RESULTS[result]};"
    return f"KELMO_API {result} {name}({parameters}) {{\n  {body}\n}}\n"


def header():
    all_functions = list(functions())
    lines = {
        "@RENAMED@": "".join(f"#define {name} kelmo_loaded_{member(name)}\n" for _, name, _, _ in all_functions),
        "@MEMBERS@": "".join(f"  {result} (*{member(name)})({parameters});\n" for result, name, parameters, _ in all_functions),
        "@STATUSES@": "".join(f'    case {name}:\n      return "{name}";\n' for name in statuses()),
        "@FUNCTIONS@": "\n".join(wrapper(*function) for function in all_functions),
        "@NAMES@": "".join(f'    {{"{name}", offsetof(struct kelmo_runtime_functions, {member(name)})}},\n'
                           for _, name, _, _ in all_functions),
    }
    text = TEMPLATE.read_text("utf-8")
    for mark, value in lines.items():
        text = text.replace(mark + "\n", value)
    return text


def main():
    if sys.argv[1:] != ["--check"]:
        TARGET.write_text(header(), "utf-8")
    elif TARGET.read_text("utf-8") != header():
        sys.exit(f"{TARGET.name} differs from what {SOURCE.name} declares; run tools/make_runtime_header.py")


if __name__ == "__main__":
    main()
