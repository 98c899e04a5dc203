"""The checks of the built file (tests/abi/*.cmake) refuse wrong exports, wrong dependencies and missing protections.

    python3 built_files_test.py CMAKE OBJDUMP NM LIBRARY VERSION NEEDED-LIBRARIES EXPORTED-NAMES [LACKING]

LIBRARY has all protections but LACKING. The rows falsify the tools' output for LIBRARY and the reviewed lists.
"""

import pathlib
import re
import subprocess
import sys
import unittest

from refusals import TOP, RefusalTest, Row, write

CMAKE, OBJDUMP, NM, LIBRARY, VERSION, NEEDED, EXPORTED, *LACKING = sys.argv[1:] if __name__ == "__main__" else [""] * 7
NAMES = pathlib.Path(EXPORTED).read_text().split() if EXPORTED else [""] * 4
LAST_NAME = NAMES[-1]  # no other name begins with it
WINDOWS = LIBRARY.endswith(".dll")
PLAIN = pathlib.Path(LIBRARY).name.partition(".so")[0] + ".so"
SONAME = f"{PLAIN}.{VERSION.partition('.')[0]}\n"
ABI = TOP / "tests/abi"
PROTECTIONS = (
    ("ASLR", "high-entropy ASLR", "non-executable data", "no TLS directory") if WINDOWS else
    ("RELRO", "immediate binding", "non-executable stack", "stack protector", "checked copying",
     "direct calls of its own functions"))
# Prints the file that is named after the tool and its first option.
TOOL = '#!/bin/sh\ncat "$0$1"\n'


def said(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def write_folder(folder):
    files = {
        "objdump": TOOL,
        "objdump-p": said(OBJDUMP, "-p", LIBRARY),
        "nm": TOOL,
        "exported_names.txt": "".join(f"{name}\n" for name in NAMES),
        "needed_libraries.txt": pathlib.Path(NEEDED).read_text(),
        "objdump-t": "SYMBOL TABLE:\nno symbols\n",
    }
    if not WINDOWS:
        files["objdump-T"] = said(OBJDUMP, "-T", LIBRARY)
        files["objdump-R"] = said(OBJDUMP, "-R", LIBRARY)
        files["nm-D"] = said(NM, "-D", "--defined-only", "--format=posix", LIBRARY)
    write(folder, files)


def command(check, folder, *options):
    library = folder / pathlib.Path(LIBRARY).name
    return [CMAKE, f"-DLIBRARY={library}", f"-DOBJDUMP={folder}/objdump", *options, "-P", ABI / f"check_{check}.cmake"]


LISTED = "exported_names.txt"
EXPORTS = (
    Row("a name that is not listed", LISTED, f"{LAST_NAME}\n", "", f"{LAST_NAME} but the list"),
    Row("a name that is listed and not exported", LISTED, f"{LAST_NAME}\n", f"{LAST_NAME}\n{LAST_NAME}Line\n",
        f"{LAST_NAME} {LAST_NAME}Line"),
    Row("an empty list", LISTED, None, "", "but the list"),
    *((
        Row("a function that is not exported", "objdump-p", f" {LAST_NAME}\n", f" {LAST_NAME}Fault\n",
            f"{LAST_NAME}Fault but the list"),
        Row("a missing table of names", "objdump-p", "[Ordinal/Name Pointer]", "[Pointer]",
            "no name was read from"),
        Row("a tool that prints nothing", "objdump-p", None, "", "no name was read from"),
    ) if WINDOWS else (
        Row("a function that is not exported", "nm-D", f"{LAST_NAME} T", f"{LAST_NAME}Fault T",
            f"{LAST_NAME}Fault but the list"),
        Row("a tool that prints nothing", "nm-D", None, "", "no name was read from"),
    )),
)
DEPENDENCIES = (
    Row("a library that is not listed", "needed_libraries.txt", "msvcrt.dll" if WINDOWS else "libc.so.6", "",
        "but the list"),
    Row("a library that is listed and not needed", "needed_libraries.txt", None, "all.dll\n", "but the list"),
    Row("a tool that prints nothing", "objdump-p", None, "", "no name was read from"),
    *((
        Row("another library", "objdump-p", "DLL Name: msvcrt.dll", "DLL Name: ucrtbase.dll",
            "ucrtbase.dll but the list"),
    ) if WINDOWS else (
        Row("another library", "objdump-p", "libgcc_s.so.1\n  NEEDED", "libgomp.so.1\n  NEEDED",
            "libgomp.so.1 libstdc++.so.6 but the list"),
        Row("another SONAME", "objdump-p", SONAME, f"{PLAIN}.77\n", "does not have the SONAME"),
        Row("almost the SONAME", "objdump-p", SONAME, SONAME.replace(".so", "-so"), "does not have the SONAME"),
        Row("a longer SONAME", "objdump-p", SONAME, SONAME.replace("\n", ".1\n"), "does not have the SONAME"),
        Row("no SONAME", "objdump-p", "  SONAME ", "  RUNPATH ", "does not have the SONAME"),
    )),
)


def lacks(protection):
    """What the check says of a file that lacks this protection beside those of LACKING."""
    return f"lacks: {';'.join(name for name in PROTECTIONS if name == protection or name in LACKING)} expected:"


def hardening():
    """Rows that need the output of the tools."""
    rows = [Row("a tool that prints nothing", "objdump-p", None, "", "was not read")]
    headers = "objdump-p"
    if WINDOWS:
        return rows + [
            Row("a file of another system", headers, "pei-x86-64", "elf64-x86-64", "was not read"),
            Row("a fixed address", headers, "\tDYNAMIC_BASE", "\tNONE", lacks("ASLR")),
            Row("no high-entropy ASLR", headers, "HIGH_ENTROPY_VA", "NONE", lacks("high-entropy ASLR")),
            Row("executable data", headers, "NX_COMPAT", "NONE", lacks("non-executable data")),
            Row("a TLS directory", headers, "Entry 9 0000000000000000 00000000", "Entry 9 0000000000068000 00000028",
                lacks("no TLS directory")),
        ]
    symbols = said(OBJDUMP, "-T", LIBRARY)
    text = said(OBJDUMP, "-p", LIBRARY)
    stack = re.search(r"   STACK off .*\n.*flags rw-\n", text).group()
    flags = re.search(r"  FLAGS  .*\n", text).group()
    file_format = re.search(r"elf64-[\w-]+", text).group()
    return rows + [
        Row("a file of another system", headers, file_format, "pei-x86-64", "was not read"),
        Row("no symbols", "objdump-T", None, "", "was not read"),
        Row("no RELRO", headers, " RELRO off", " OTHER off",
            lacks("RELRO")),
        Row("lazy binding", headers, flags, re.sub("0x.*", "0x0000000000000002", flags),
            lacks("immediate binding")),
        Row("an executable stack", headers, stack, stack.replace("rw-", "rwx"), lacks("non-executable stack")),
        Row("no stack protector", "objdump-T", " __stack_chk_fail\n", " stack_chk_fail\n",
            lacks("stack protector")),
        Row("no checked copying", "objdump-T", None, re.sub(r" __(?!stack)(\w+)_chk\n", r" \1\n", symbols),
            lacks("checked copying")),
        Row("a call through a relocation", "objdump-R", " __stack_chk_fail@", " _ZN9KelmoLibs8Localize1fEv@",
            lacks("direct calls of its own functions")),
        Row("relocations that were not read", "objdump-R", None, "", lacks("direct calls of its own functions")),
    ]


class BuiltFiles(RefusalTest):
    def test_each_difference_of_the_exported_names_is_refused(self):
        self.refuses_each(write_folder, lambda folder: command(
            "exports", folder, f"-DEXPECTED={folder / LISTED}", f"-DNM={folder}/nm"), EXPORTS)

    def test_each_difference_of_the_needed_libraries_is_refused(self):
        self.refuses_each(write_folder, lambda folder: command(
            "dependencies", folder, f"-DEXPECTED={folder}/needed_libraries.txt", f"-DPLAIN={PLAIN}", f"-DVERSION={VERSION}"),
            DEPENDENCIES)

    @unittest.skipIf(WINDOWS, "the version of a DLL is in its resources")
    def test_a_file_of_another_version_is_refused(self):
        self.refuses("but the version is 9.0.0", [
            CMAKE, f"-DLIBRARY={LIBRARY}", f"-DOBJDUMP={OBJDUMP}", f"-DEXPECTED={NEEDED}", f"-DPLAIN={PLAIN}",
            "-DVERSION=9.0.0",
            "-P", ABI / "check_dependencies.cmake"])

    def test_a_symbol_table_is_refused(self):
        self.refuses_each(write_folder, lambda folder: command("stripped", folder), (
            Row("the symbol table of the built file", "objdump-t", None, said(OBJDUMP, "-t", LIBRARY),
                "There is a symbol table in"),
            Row("a tool that prints nothing", "objdump-t", None, "", "There is a symbol table in")))

    def test_each_missing_protection_is_refused(self):
        expected = [lacks(protection) for protection in PROTECTIONS if protection not in LACKING]
        rows = [row for row in hardening() if not row.complaint.startswith("lacks:") or row.complaint in expected]
        self.refuses_each(write_folder, lambda folder: command(
            "hardening", folder, f"-DLACKS={';'.join(LACKING)}"), rows)
        for complaint in expected:
            self.assertIn(complaint, [row.complaint for row in rows])

    def test_an_existing_protection_does_not_count_as_missing(self):
        self.refuses("expected: all", [
            CMAKE, f"-DLIBRARY={LIBRARY}", f"-DOBJDUMP={OBJDUMP}", "-DLACKS=all", "-P", ABI / "check_hardening.cmake"])

    def test_an_unread_library_does_not_count_as_unprotected(self):
        self.refuses("was not read", [
            CMAKE, f"-DLIBRARY={LIBRARY}", "-DOBJDUMP=true", f"-DLACKS={';'.join(PROTECTIONS)}",
            "-P", ABI / "check_hardening.cmake"])


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
