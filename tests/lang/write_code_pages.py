#!/usr/bin/env python3
"""write_code_pages.py FILE: writes what Python knows of code pages as rows of C++, for code_page_test.cpp."""

import pathlib
import sys

# By the names that Python has for them, in the order of CodePage.
CODE_PAGES = ("cp1250", "cp1251", "cp1252", "cp866", "koi8_r")


def character(code_page, byte):
    try:
        return ord(bytes([byte]).decode(code_page))
    except UnicodeDecodeError:
        return 0


def main():
    rows = ("{" + ", ".join(f"{character(code_page, byte):#x}" for byte in range(256)) + "},\n"
            for code_page in CODE_PAGES)
    pathlib.Path(sys.argv[1]).write_text("".join(rows), "utf-8")


if __name__ == "__main__":
    main()
