"""Compiles each header of kelmo alone, as each language that it supports, with each compiler: without a warning.

    python3 check_headers.py TOP-FOLDER [NAME-OF-A-SOURCE...]

- The compilers are GCC, Clang, GCC and Clang for Windows, and Clang in the place of Microsoft's compiler, which reads the
  same options.
- The headers in C compile from C99 on, those in C++ from C++17 to C++23. The header for fmt is not compiled as by
  Microsoft's compiler: fmt does not fit the headers of Windows that Clang uses there.
- Calls that kelmo.hpp refuses do not compile, and the compiler says its sentences.
- kelmo_interface.h holds: the sizes, offsets and values that hosts have compiled into themselves. It has each field and
  each value of kelmo.h.
"""

import concurrent.futures
import os
import pathlib
import re
import subprocess
import sys
import tempfile

top = pathlib.Path(sys.argv[1]).resolve()
chosen = sys.argv[2:]

MINGW = "x86_64-w64-mingw32"
WARNINGS = ["-Wall", "-Wextra", "-pedantic", "-Werror", "-Wconversion", "-Wshadow", "-fsyntax-only"]
C, CXX = ("c99", "c11", "c17"), ("c++17", "c++20", "c++2b")
RUNTIME = '#define KELMO_RUNTIME_IMPLEMENTATION\n#include "kelmo/kelmo_runtime.h"\n'
TWICE = '#include "kelmo/kelmo.h"\n#include "kelmo/kelmo.h"\n'
FACE = '#include "kelmo/kelmo.hpp"\n'
MICROSOFT = "Clang as Microsoft's compiler"
FMT = pathlib.Path("/usr/include/fmt")  # headers for all compilers
FMT_NAME = "kelmo_fmt.hpp"
FACE_OF_FMT = """#include "kelmo/kelmo_fmt.hpp"
std::string written(const kelmo::Quantity& quantity);
std::string written(const kelmo::Quantity& quantity) { return fmt::format("{:>9}", quantity); }
"""
INTERFACE = '#include "tests/host/kelmo_interface.h"\n'
REFUSED_NAME = "what kelmo.hpp refuses"
REFUSED = FACE + """#include <filesystem>
void refused(const kelmo::View& view, const kelmo::Quantity& quantity) {
  view.tr("truth", true);
  view.tr("character", 'c');
  view.tr("path", std::filesystem::path("pump.txt"));
  view.tr("path", kelmo::arg("name", std::filesystem::path("pump.txt")));
  view.tr("count", kelmo::count("three"));
  view.tr("counts", kelmo::count(1), kelmo::count(2));
  view.tr("count", kelmo::count(quantity));
  quantity * quantity;
}
"""
SENTENCES = ("say what a truth value means: give a text", "give a character as a text", "give a path as a text: path.u8string()",
             "a count is a number", "a text has one count at most",
             "quantities have no products: there is no algebra of dimensions")
# Name, languages, text. What does not depend on the version of the language is compiled as the first one.
SOURCES = (
    ("kelmo.h", (*C, *CXX), TWICE),
    ("kelmo_interface.h", (C[1], CXX[0]), INTERFACE),
    ("kelmo_runtime.h", (C[0], CXX[0]), RUNTIME),
    ("kelmo.hpp", CXX, FACE),
    ("kelmo.hpp behind kelmo_runtime.h", (CXX[0],), RUNTIME + FACE),
    (FMT_NAME, CXX, FACE_OF_FMT),
    (REFUSED_NAME, (CXX[0], CXX[1]), REFUSED),
)


def output(*command):
    return subprocess.run(command, check=True, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, errors="replace").stdout


def include_folders():
    """The folders of GCC's C++ library for Windows: Clang does not find Debian's. GCC's own headers are not for Clang."""
    said = output(f"{MINGW}-g++-posix", "-E", "-x", "c++", "-v", "/dev/null")
    folders = re.findall(r"^ (/\S.*)$", said.partition("search starts here:\n#include <...>")[2], re.M)
    return [folder for folder in folders if not re.search(r"/include(-fixed)?$", folder) or folder.endswith(f"{MINGW}/include")]


def commands():
    """Name of the compiler, and the command for a language, or nothing if it has no mode for it."""
    resources = output("clang", "-print-resource-dir").strip()
    windows = [part for folder in include_folders() for part in ("-isystem", folder)]
    cl = ["clang", "--driver-mode=cl", "--target=x86_64-pc-windows-msvc", "/X", "/W4", "/WX", "/Zs", "/EHs", "/GS-", "/utf-8",
          "/clang:-fgnuc-version=4.2.1", "/D__MINGW32__", "/D_UCRT", "/D_LIBCPP_NO_VCRUNTIME", "/clang:-nobuiltininc"]
    clang = pathlib.Path(resources).resolve()
    for folder in (clang.parents[2] / "include/c++/v1", clang / "include", pathlib.Path(f"/usr/{MINGW}/include")):
        cl += ["/imsvc", str(folder)]
    cl_languages = {"c99": "/TC", "c11": "/std:c11", "c17": "/std:c17", "c++17": "/std:c++17", "c++20": "/std:c++20",
                    "c++2b": "/std:c++latest"}

    def gnu(c, cxx, *options):
        return lambda language: [cxx if "+" in language else c, f"-std={language}", *WARNINGS, *options]

    yield "GCC", gnu("gcc", "g++")
    yield "Clang", gnu("clang", "clang++")
    yield "Clang with LLVM's library", lambda language: gnu("", "clang++", "-stdlib=libc++")(language) if "+" in language else None
    yield "GCC for Windows", gnu(f"{MINGW}-gcc-posix", f"{MINGW}-g++-posix")
    yield "Clang for Windows", lambda language: gnu("clang", "clang++", f"--target={MINGW}", *(
        ("-nostdinc++", *windows) if "+" in language else ()))(language)
    yield MICROSOFT, lambda language: [*cl, cl_languages[language]]


def compile_one(case, command, file):
    include, system, end = ("/I", "/imsvc", ["--"]) if "--driver-mode=cl" in command else ("-I", "-isystem", [])
    made = subprocess.run([*command, f"{include}{top}/include", f"{include}{top}", system, str(file.parent), *end, str(file)],
                          check=False, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, errors="replace")
    if file.stem == REFUSED_NAME:
        missing = [sentence for sentence in SENTENCES if sentence not in made.stdout]
        return f"{case} lacks {missing} in\n{made.stdout}" if missing or made.returncode == 0 else None
    return f"{case} does not compile:\n{made.stdout}" if made.returncode != 0 or made.stdout.strip() else None


def missing_names():
    """Fields and values of kelmo.h that kelmo_interface.h does not have."""
    declared = re.sub(r"/\*.*?\*/", "", (top / "include/kelmo/kelmo.h").read_text("utf-8"), flags=re.S)
    interface = (top / "tests/host/kelmo_interface.h").read_text("utf-8")
    names = [f"KELMO_VALUE({name}, " for name in re.findall(r"\b(KELMO_\w+)\s*= ?-?\d", declared)]
    for struct, fields in re.findall(r"typedef struct (kelmo_\w+) \{(.*?)\} \1;", declared, re.S):
        names += [f"KELMO_SIZE({struct}, ", *(f"KELMO_FIELD({struct}, {field}, " for field in re.findall(r"(\w+)(?:\[\d+\])?;", fields))]
    if not names:
        sys.exit("no name was read from kelmo.h")
    return [name for name in names if name not in interface]


def main():
    for name in missing_names():
        sys.exit(f"kelmo_interface.h lacks {name}...)")
    compilers, count = list(commands()), 0
    with tempfile.TemporaryDirectory() as scratch, concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        (pathlib.Path(scratch) / FMT.name).symlink_to(FMT)
        for name, languages, text in (source for source in SOURCES if not chosen or source[0] in chosen):
            files = {is_cxx: pathlib.Path(scratch) / f"{name}.{'cpp' if is_cxx else 'c'}" for is_cxx in (False, True)}
            for file in files.values():
                file.write_text(text)
            runs = [pool.submit(compile_one, f"{name} as {language} by {compiler}", command(language), files["+" in language])
                    for compiler, command in compilers for language in filter(command, languages)
                    if (name, compiler) != (FMT_NAME, MICROSOFT)]
            for run in runs:
                if run.result():
                    sys.exit(run.result())
            count += len(runs)
    if count == 0:
        sys.exit("there is no source to compile")
    print(f"{count} times a header compiles, and hosts see what kelmo_interface.h says")


if __name__ == "__main__":
    main()
