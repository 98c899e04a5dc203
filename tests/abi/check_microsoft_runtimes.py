"""Compiles hosts with each runtime of Microsoft's compiler for a library with each: the header rejects bad
combinations.

    python3 check_microsoft_runtimes.py TOP-FOLDER

Clang replaces that compiler: /MD and similar options define the same macros. The host microsoft_host.cpp uses the
classes. Two more hosts, in C++ and in C, call only functions, which any host may do.
"""

import pathlib
import subprocess
import sys
import tempfile

top = pathlib.Path(sys.argv[1])
abi = top / "tests/abi"
resources = subprocess.run(["clang", "-print-resource-dir"], check=True, stdout=subprocess.PIPE, text=True).stdout.strip()
clang = ["clang", "--driver-mode=cl", "--target=x86_64-pc-windows-msvc", "/X", "/imsvc", abi / "microsoft",
         "/imsvc", f"{resources}/include", "/I", top, "/I", top / "include", "/W4", "/WX", "/c"]

STATIC, DEBUG = "KELMO_LOCALIZER_STATIC_RUNTIME", "KELMO_LOCALIZER_DEBUG_RUNTIME"
LIBRARIES = {"/MD": (), "/MDd": (DEBUG,), "/MT": (STATIC,), "/MTd": (STATIC, DEBUG)}
REFUSED = "The classes of kelmo_Mestrel_Localizer, built with {}, cannot be used here: {}"
OTHER_RUNTIME = "compile the host with the same runtime, and define no _DEBUG that the runtime does not."
OTHER_LEVEL = "compile the host with the usual _ITERATOR_DEBUG_LEVEL."
OTHER_HEAP = "build it with /MDd, so that the host has the same heap."
FUNCTIONS = """#include "kelmo_localizer.h"
int Count(void);
int Count(void) { return LANG(L"")[GetErrorsCount()] != 0; }
"""

count = 0


def compiled(options, source):
    """The object or None, and the compiler's output."""
    global count
    count += 1
    target = folder / "host.obj"
    made = subprocess.run([*clang, *options, f"/Fo{target}", "--", source], check=False, stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, text=True, errors="replace")
    return target.read_bytes() if made.returncode == 0 else None, made.stdout


def accepts(case, options, source=abi / "microsoft_host.cpp"):
    seen, said = compiled(options, source)
    if seen is None:
        sys.exit(f"{case} is refused:\n{said}")
    return seen


def accepts_classes(case, library, options):
    """The object also names the library's runtime for the linker, which detects contradictions in one program."""
    if f'/FAILIFMISMATCH:"kelmo_Mestrel_Localizer={library}"'.encode() not in accepts(case, options):
        sys.exit(f"{case}: the linker is not told the runtime")


def refuses_classes(case, library, options, why):
    sentence = REFUSED.format(library, why)
    seen, said = compiled(options, abi / "microsoft_host.cpp")
    if seen is not None or sentence not in said:
        sys.exit(f"{case} is not refused with: {sentence}\n{said}")


def check_runtimes(library, host, *said):
    case = f"a host with {host} of a library with {library}"
    if host != library:
        refuses_classes(case, library, [host, *said], OTHER_RUNTIME)
    elif host == "/MTd":
        refuses_classes(case, library, [host, *said], OTHER_HEAP)
    else:
        accepts_classes(case, library, [host, *said])


with tempfile.TemporaryDirectory() as scratch:
    folder = pathlib.Path(scratch)
    record = folder / "installed/kelmo_localizer_runtime.h"
    record.parent.mkdir()
    refuses_classes("a host with /MD that defines _DEBUG", "/MD", ["/MD", "/D_DEBUG"], OTHER_RUNTIME)
    for name in ("functions.cpp", "functions.c"):
        (folder / name).write_text(FUNCTIONS)
        accepts("a host with /MTd that calls only functions", ["/MTd"], folder / name)

    for library, definitions in LIBRARIES.items():
        said_by_host = [f"/D{name}" for name in definitions]
        for host in LIBRARIES:
            check_runtimes(library, host, *said_by_host)
        record.write_text("".join(f"#define {name}\n" for name in definitions))
        check_runtimes(library, "/MDd", f"/I{record.parent}")
        accepts_classes(f"the library with {library}", library, [library, *said_by_host, "/DKELMO_LOCALIZER_BUILDING"])
    for name in ("KELMO_LOCALIZER_ANY_RUNTIME", "KELMO_LOCALIZER_STATIC"):
        accepts(f"a host with /MTd and {name}", ["/MTd", f"/D{name}"])
    for host, usual in (("/MD", 0), ("/MT", 0), ("/MDd", 2)):
        for level in range(3):
            options = [host, f"/D_ITERATOR_DEBUG_LEVEL={level}", *(f"/D{name}" for name in LIBRARIES[host])]
            case = f"a host with {host} and the level {level}"
            if level == usual:
                accepts_classes(case, host, options)
            else:
                refuses_classes(case, host, options, OTHER_LEVEL)

print(f"{count} hosts are accepted or refused as they must be")
