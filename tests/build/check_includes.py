#!/usr/bin/env python3
"""check_includes.py FOLDER: whether the includes of the library in FOLDER go one way, from room to room.

A file includes files of lower layers, and of its own room in its own layer. Each header of platform/ that the system
answers has a source of its name for both systems. No other file asks which system it is compiled for. File names are
unique, so that a comment needs no path.
"""

import collections
import pathlib
import re
import sys

# From the ground up. A file belongs to the first layer that names its file or its folder.
LAYERS = (
    ("storage/", "text/"),
    ("platform/",),
    ("frame/messages", "frame/error_list"),
    ("dictionary/", "include/kelmo_localizer.h", "phyval/"),
    ("unittables/",),
    ("frame/library_state",),
    ("frame/exports.cpp", "frame/dll_main_windows.cpp"),
)
ROOMS = ("dictionary", "frame", "include", "phyval", "platform", "storage", "text", "unittables")
OF_ONE_SYSTEM = re.compile(r"_(?:posix|windows|mingw)\.|/(?:posix|windows)/")
SYSTEM_MACRO = re.compile(r"^\s*#.*\b(?:_WIN32|__linux__|__unix__)\b", re.MULTILINE)
GENERATED = ("include/kelmo_localizer_runtime.h",)
SHARED_BY_SYSTEMS = ("platform/file_source.h", "platform/user_locale.h")  # have no answers


def layer_of(name):
    return next((i for i, layer in enumerate(LAYERS) if name.startswith(layer)), None)


def included(source):
    for name in re.findall(r'^#include "([^"]+)"', source, re.MULTILINE):
        yield "include/" + name if "/" not in name else name


def problems(top):
    files = {f.relative_to(top).as_posix(): f.read_text("utf-8") for room in ROOMS
             for f in sorted((top / room).rglob("*")) if f.suffix in (".h", ".cpp")}
    if not files:
        yield "there is no source"
    for name, source in files.items():
        layer = layer_of(name)
        if layer is None:
            yield f"{name} has no layer"
            continue
        for other in included(source):
            if other in GENERATED:
                continue
            if other not in files:
                yield f"{name} includes {other}, which is not part of the library"
            elif layer_of(other) is None or layer_of(other) > layer:
                yield f"{name} includes {other}, which is above it"
            elif layer_of(other) == layer and other.split("/")[0] not in (name.split("/")[0], "include"):
                yield f"{name} includes {other}, another room of its layer"
        if not OF_ONE_SYSTEM.search(name) and name != "include/kelmo_localizer.h" and SYSTEM_MACRO.search(source):
            yield f"{name} asks for the system"
    for name in files:
        room, _, rest = name.partition("/")
        if room == "platform" and "/" not in rest and name not in SHARED_BY_SYSTEMS:
            for system in ("posix", "windows"):
                answer = f"platform/{system}/{pathlib.PurePath(rest).stem}.cpp"
                if answer not in files:
                    yield f"{name} has no {answer}"
    places = collections.defaultdict(set)
    for name in files:
        places[pathlib.PurePath(name).name].add(re.sub(r"/(?:posix|windows)/", "/", name))
    for base, names in places.items():
        if len(names) > 1:
            yield f"{base} is the name of {', '.join(sorted(names))}"


def main():
    found = list(problems(pathlib.Path(sys.argv[1])))
    print(*found, sep="\n")
    sys.exit(1 if found else 0)


if __name__ == "__main__":
    main()
