#!/usr/bin/env python3
"""check_includes.py FOLDER: checks the layers of the library in FOLDER.

A file may include files of lower layers, and files of its own folder in its own layer. Each header in platform/ has a
source of the same name for each system. No other file depends on the system. File names are unique, so that comments
need no paths.
"""

import collections
import pathlib
import re
import sys

# From the lowest to the highest. A file belongs to the first layer that lists a prefix of its path.
LAYERS = (
    ("cldr/", "storage/", "text/"),
    ("platform/",),
    ("frame/messages", "frame/error_list"),
    ("dictionary/", "include/kelmo_localizer.h", "phyval/"),
    ("unittables/",),
    ("host/", "include/kelmo/", "lang/"),  # kelmo and kelmo-lang stand on parts of the first library, not on its state
    ("frame/library_state",),
    ("frame/exports.cpp", "frame/dll_main_windows.cpp"),
)
BESIDE = ("host/", "include/kelmo/", "lang/")  # the first library uses nothing of them
# kelmo stands on these parts only: nothing in them has a state of the process.
KELMO = ("host/", "include/kelmo/")
PARTS_OF_KELMO = (*KELMO, "cldr/", "storage/", "text/", "platform/", "dictionary/dictionary_line", "dictionary/entry_estimate",
                  "phyval/rounding")
ROOMS = sorted({name.split("/")[0] for layer in LAYERS for name in layer})
OF_ONE_SYSTEM = re.compile(r"_(?:posix|windows|mingw)\.|/(?:posix|windows)/")
SYSTEM_MACRO = re.compile(r"^\s*#.*\b(?:_WIN32|__linux__|__unix__)\b", re.MULTILINE)
GENERATED = ("include/kelmo_localizer_runtime.h",)
SHARED_BY_SYSTEMS = ("platform/file_source.h", "platform/read_to_end.h", "platform/user_locale.h")  # not implemented for each system


def layer_of(name):
    return next((i for i, layer in enumerate(LAYERS) if name.startswith(layer)), None)


def included(name, source):
    for other in re.findall(r'^#include "([^"]+)"', source, re.MULTILINE):
        if name.startswith("include/kelmo/") and "/" not in other:  # beside it, in any folder of a host
            yield "include/kelmo/" + other
        else:
            yield "include/" + other if "/" not in other or other.startswith("kelmo/") else other


def problems(top):
    files = {f.relative_to(top).as_posix(): f.read_text("utf-8") for room in ROOMS
             for f in sorted((top / room).rglob("*")) if f.suffix in (".h", ".cpp")}
    if not files:
        yield "no source was found"
    for name, source in files.items():
        layer = layer_of(name)
        if layer is None:
            yield f"{name} has no layer"
            continue
        for other in included(name, source):
            if other in GENERATED:
                continue
            if other not in files:
                yield f"{name} includes {other}, which is not part of the library"
            elif layer_of(other) is None or layer_of(other) > layer:
                yield f"{name} includes {other}, which is above it"
            elif other.startswith(BESIDE) and not name.startswith(BESIDE):
                yield f"{name} includes {other}, which is not part of the library"
            elif name.startswith(KELMO) and not other.startswith(PARTS_OF_KELMO):
                yield f"{name} includes {other}, on which kelmo must not stand"
            elif layer_of(other) == layer and other.split("/")[0] not in (name.split("/")[0], "include"):
                yield f"{name} includes {other}, another folder of its layer"
        if not OF_ONE_SYSTEM.search(name) and not name.startswith("include/") and SYSTEM_MACRO.search(source):
            yield f"{name} depends on the system"
    for name in files:
        room, _, rest = name.partition("/")
        if room == "platform" and "/" not in rest and name not in SHARED_BY_SYSTEMS:
            for system in ("posix", "windows"):
                implementation = f"platform/{system}/{pathlib.PurePath(rest).stem}.cpp"
                if implementation not in files:
                    yield f"{name} has no {implementation}"
    paths = collections.defaultdict(set)
    for name in files:
        paths[pathlib.PurePath(name).name].add(re.sub(r"/(?:posix|windows)/", "/", name))
    for base, names in paths.items():
        if len(names) > 1:
            yield f"{base} is the name of {', '.join(sorted(names))}"


def main():
    found = list(problems(pathlib.Path(sys.argv[1])))
    print(*found, sep="\n")
    sys.exit(1 if found else 0)


if __name__ == "__main__":
    main()
