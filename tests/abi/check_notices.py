"""Compares the parts of other projects in a built library, which the linker's map lists, with the table in NOTICES.md.

    python3 check_notices.py NOTICES.md FILE MAP

The table is below the heading that names the file, such as `kelmo-lang.exe`. Its first column names an archive alone, for all its
members, or with the members that are in the file: `libgcc.a`, or `libstdc++.a`: `tree.o`, `tinfo.o`. Parts that newer
versions of the compiler add have their own rows: `libstdc++.a` since GCC 14: `system_error.o`.
"""

import pathlib
import re
import sys


def parts_in_map(text):
    """Object files of other projects, (file, None), and members of archives, (archive, member)."""
    objects = re.findall(r"^LOAD (.+\.o(?:bj)?)$", text, re.M)
    others = {(path.split("/")[-1], None) for path in objects if "CMakeFiles/" not in path}
    if not others or len(others) == len(objects):
        sys.exit("the map lacks the objects of the compiler or those of the library: no linker has written it")
    # Only in the list of the needed members they are at the beginning of a line.
    members = [(archive, member) for archive, member in re.findall(r"^(\S.*?\.a)\(([^()]+)\)", text, re.M)
               if not archive.split("/")[-1].startswith("libkelmo_")]  # the project's own
    # MinGW-w64 puts the archive's name in front of some members: lib64_libmingwex_a-gdtoa.o
    return others | {(path.split("/")[-1], re.sub(r"^lib\w+_l?a-", "", member)) for path, member in members}


def version_in_map(text):
    """The version of the GCC whose runtime was linked, from a folder like /usr/lib/gcc/x86_64-w64-mingw32/12-posix."""
    version = re.search(r"^LOAD .*/gcc/[^/]+/(\d+)\b", text, re.M)
    if not version:
        sys.exit("the map lacks the folder of the compiler's own objects, which names its version")
    return int(version[1])


def parts_in_page(page, file, version):
    """The parts that the page lists for that version of GCC; (archive, None) means all members of an archive."""
    table = re.search(rf"^### [^\n]*`{re.escape(file)}`[^\n]*$(.*?)^#", page, re.M | re.S)
    rows = re.findall(r"^\| (`.+?) \|", table[1], re.M) if table else []
    if not rows:
        sys.exit(f"the page has no table for {file}")
    parts = set()
    for row in rows:
        archive, colon, members = row.partition(": ")
        archive, since, first = archive.partition(" since GCC ")
        if since and version < int(first):
            continue
        if colon:
            parts |= {(archive.strip("`"), member) for member in re.findall(r"`([^`]+)`", members)}
        else:
            parts |= {(name, None) for name in re.findall(r"`([^`]+)`", row)}
    return parts


def differences(in_map, in_page):
    whole = {file for file, member in in_page if member is None}
    shown = {(file, None if file in whole else member) for file, member in in_map}
    for file, member in sorted(shown ^ in_page, key=str):
        part = f"{file}({member})" if member else file
        if (file, member) in shown:
            yield f"{part} is in the file, but not in the table: find out its project, and add it with its terms"
        else:
            yield f"{part} is in the table, but not in the file: remove it"


def main(page, file, link_map):
    # Paths in the map may contain invalid UTF-8.
    text = pathlib.Path(link_map).read_text("utf-8", "surrogateescape")
    in_map = parts_in_map(text)
    in_page = parts_in_page(pathlib.Path(page).read_text("utf-8"), file, version_in_map(text))
    problems = list(differences(in_map, in_page))
    print("\n".join(problems) or f"all {len(in_map)} parts of other projects are in the table")
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
