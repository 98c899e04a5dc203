"""Compares the names that Microsoft's compiler gives to the functions and members that a host imports with the reviewed
list.

    python3 check_microsoft_names.py TOP-FOLDER

Clang replaces that compiler. It compiles microsoft_host.cpp, which uses every function and member, for the same target,
with that compiler's default C++ standard, with the headers of the folder microsoft/ instead of its library, and for the
runtime /MD, which defines _DLL. class_layout.h also checks the layout of the classes. The number of imports must be the
same in the host and in the header.
"""

import json
import pathlib
import re
import subprocess
import sys

top = pathlib.Path(sys.argv[1])
abi = top / "tests/abi"
clang = ["clang", "--target=x86_64-pc-windows-msvc", "-fms-extensions", "-ffreestanding", "-nostdinc++", "-std=c++14"]
clang += ["-D_DLL", "-Wall", "-Wextra", "-Wpedantic", "-Wshadow", "-Werror", "-isystem", abi / "microsoft", "-I", top]
clang += ["-I", top / "include", "-x", "c++"]


def compiled(*arguments):
    made = subprocess.run([*clang, *arguments], check=False, stdout=subprocess.PIPE, text=True)
    if made.returncode != 0:
        sys.exit(f"clang does not compile {arguments[-1].relative_to(top)}")
    return made.stdout


def imported_declarations(node):
    own = sum(part.get("kind") == "DLLImportAttr" for part in node.get("inner", []))
    return own + sum(imported_declarations(part) for part in node.get("inner", []))


assembly = compiled("-S", "-O1", "-o", "-", abi / "microsoft_host.cpp")
names = sorted(set(re.findall(r'__imp_([^"\s,()]+)', assembly)))
expected = (abi / "exported_names_microsoft.txt").read_text().splitlines()
if not names or names != expected:
    print("a host imports", *names, "but the list says", *expected, sep="\n  ")
    sys.exit(1)

header = compiled("-fsyntax-only", "-Xclang", "-ast-dump=json", top / "include/kelmo_localizer.h")
declared = imported_declarations(json.loads(header))
if declared != len(names):
    print(f"the header declares {declared} functions and members, but microsoft_host.cpp uses {len(names)}")
    sys.exit(1)
print(f"{len(names)} names are those of the list")
