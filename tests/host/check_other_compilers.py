"""Builds the hosts of tests/consumer/kelmo_host with Clang against kelmo as GCC has built it, and compares what they print.

    python3 check_other_compilers.py TOP-FOLDER WORK-FOLDER LIBRARY
    python3 check_other_compilers.py TOP-FOLDER WORK-FOLDER LIBRARY IMPORT-LIBRARY DEF-FILE EMULATOR

On Linux: the host in C, and that in C++ with LLVM's C++ library, so that the program has two C++ libraries. On Windows, with
an import library: both hosts with MinGW-w64's libraries, and the host in C as Microsoft's compiler and linker would build it,
with an import library that is made of the installed .def file.
"""

import pathlib
import re
import shutil
import subprocess
import sys

top, work, library = (pathlib.Path(argument).resolve() for argument in sys.argv[1:4])
on_windows = sys.argv[4:]
hosts = top / "tests/consumer/kelmo_host"
MINGW = "x86_64-w64-mingw32"
STRICT = ["-Wall", "-Wextra", "-pedantic", "-Werror", f"-I{top}/include"]


def run(*command):
    made = subprocess.run(list(map(str, command)), check=False, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, cwd=work)
    output = made.stdout.decode("utf-8", "replace").replace("\r\n", "\n")
    if made.returncode != 0:
        sys.exit(f"{' '.join(map(str, command))} ended with {made.returncode} after\n{output}")
    return output


def check(name, *command):
    output = run(*command)
    if output != (hosts / "output.txt").read_text("utf-8"):
        sys.exit(f"{name} printed\n{output}")
    print(f"{name}: as expected")


def on_linux():
    options = [*STRICT, library, f"-Wl,-rpath,{library.parent}", "-o"]
    run("clang", "-std=c99", hosts / "host.c", *options, "c_host")
    check("C by Clang", work / "c_host")
    for standard in ("c++17", "c++20", "c++2b"):
        run("clang++", f"-std={standard}", "-stdlib=libc++", hosts / "host.cpp", *options, "cxx_host")
        needed = re.findall(r"NEEDED +(\S+)", run("objdump", "-p", "cxx_host"))
        if "libc++.so.1" not in needed or "libstdc++.so.6" in needed:
            sys.exit(f"the host in C++ needs {needed}")
        check(f"{standard} by Clang with LLVM's library", work / "cxx_host")


def with_mingw(import_library, emulator):
    # Clang does not find the C++ library of Debian's MinGW-w64. GCC's own headers are not for Clang.
    said = run(f"{MINGW}-g++-posix", "-E", "-x", "c++", "-v", "/dev/null")
    folders = re.findall(r"^ (/\S.*)$", said.partition("#include <...> search starts here:")[2], re.M)
    folders = [folder for folder in folders if not re.search(r"(?<!mingw32)/include(-fixed)?$", folder)]
    include = ["-nostdinc++", *(part for folder in folders for part in ("-isystem", folder))]
    for name, compiler, linker, options in (("host.c", "clang", "gcc", ["-std=c99"]), ("host.cpp", "clang++", "g++", ["-std=c++17", *include])):
        run(compiler, f"--target={MINGW}", *options, *STRICT, "-c", hosts / name, "-o", "host.obj")
        run(f"{MINGW}-{linker}-posix", "host.obj", import_library, "-static", "-o", "host.exe")
        check(f"{name} by Clang for MinGW-w64", emulator, work / "host.exe")


def as_microsoft(def_file, emulator):
    # The headers and the C runtime of MinGW-w64 take the place of Microsoft's, without start-up code.
    clang_headers = run("clang", "-print-resource-dir").strip() + "/include"
    run("llvm-dlltool", "-m", "i386:x86-64", "-d", def_file, "-l", "kelmo.lib")
    run("clang", "--driver-mode=cl", "--target=x86_64-pc-windows-msvc", "/X", "/imsvc", clang_headers, "/imsvc", f"/usr/{MINGW}/include",
        "/clang:-fgnuc-version=4.2.1", "/D__MINGW32__", "/D__USE_MINGW_ANSI_STDIO=0", "/W4", "/WX", "/GS-", f"/I{top}/include",
        "/c", "/Fohost.obj", "--", hosts / "host.c")
    run("lld-link", "/entry:main", "/subsystem:console", "/nodefaultlib", "/out:host.exe", "host.obj", "kelmo.lib",
        f"/usr/{MINGW}/lib/libmsvcrt.a")
    check("host.c as Microsoft's compiler and linker would build it", emulator, work / "host.exe")


shutil.rmtree(work, ignore_errors=True)
work.mkdir(parents=True)
if on_windows:
    import_library, def_file, emulator = (pathlib.Path(argument).resolve() for argument in on_windows)
    shutil.copy(library, work)
    with_mingw(import_library, emulator)
    as_microsoft(def_file, emulator)
else:
    on_linux()
