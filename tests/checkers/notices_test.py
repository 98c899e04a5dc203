"""tests/abi/check_notices.py refuses a page and a map that name different parts or none.

    python3 notices_test.py NOTICES.md FILE MAP
"""

import pathlib
import re
import sys
import unittest

from refusals import TOP, RefusalTest, Row, write

PAGE, FILE, MAP = sys.argv[1:] if __name__ == "__main__" else [""] * 3
IS_DLL = FILE.endswith(".dll")
START_UP = "dllcrt2.o" if IS_DLL else "crti.o"
NO_TABLE = f"the page has no table for {FILE}"


def text_of(path):
    return pathlib.Path(path).read_text("utf-8", "surrogateescape")


def rows():
    page, linked = text_of(PAGE), text_of(MAP)
    version = int(re.search(r"/gcc/[^/]+/(\d+)", linked)[1])
    # On Windows the table has a row for GCC 14. It becomes one for every version, or for a later one.
    other, complaint = (99, "in the file, but not in the table") if version >= 14 else (
        0, "in the table, but not in the file")
    newer = (
        Row("a part of other versions of the compiler", "page", None,
            page.replace("since GCC 14: `cxx11-stdexcept.o`", f"since GCC {other}: `cxx11-stdexcept.o`"),
            f"libstdc++.a(cxx11-stdexcept.o) is {complaint}"),
    ) if IS_DLL else ()
    return newer + (
        Row("a map without the version of the compiler", "map", None,
            re.sub(rf"(/gcc/[^/]+/){version}\b", r"\g<1>compiler", linked), "which names its version"),
        Row("an additional archive in the map", "map", None, f"/a folder/libmore.a(more.o)\n{linked}",
            "libmore.a(more.o) is in the file, but not in the table"),
        Row("an additional member of an archive whose members are named", "map", None,
            f"/a folder/libstdc++.a(floating_from_chars.o)\n{linked}",
            "libstdc++.a(floating_from_chars.o) is in the file, but not in the table"),
        Row("an additional start-up object in the map", "map", None, f"{linked}\nLOAD /a folder/папка/crtmore.o\n",
            "crtmore.o is in the file, but not in the table"),
        Row("a part that the page lacks", "page", None, page.replace(f"`{START_UP}`", "`other.o`"),
            f"{START_UP} is in the file, but not in the table"),
        Row("a part that the map lacks", "map", None, linked.replace(f"/{START_UP}\n", "/nothing\n"),
            f"{START_UP} is in the table, but not in the file"),
        Row("an archive of the page without a member in the map", "page", None,
            page.replace(f"`{START_UP}`", f"`{START_UP}`, `libnone.a`"), "libnone.a is in the table, but not in the file"),
        Row("no table", "page", None, page.replace(f"`{FILE}`", "`other`"), NO_TABLE),
        Row("no rows in the table", "page", None, page.replace("| `", "| "), NO_TABLE),
        Row("an empty map", "map", None, "", "no linker has written it"),
        Row("a map of another program", "map", None, linked.replace("CMakeFiles/", "other/"), "no linker has written it"),
    )


class Notices(RefusalTest):
    def test_each_difference_is_refused(self):
        self.refuses_each(lambda folder: write(folder, {"page": text_of(PAGE), "map": text_of(MAP)}), lambda folder: [
            sys.executable, TOP / "tests/abi/check_notices.py", folder / "page", FILE, folder / "map"], rows())


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
