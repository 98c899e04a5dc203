"""Compiles the project as Microsoft's compiler would, and compares the exports of the objects with the reviewed list.

    python3 check_microsoft_build.py TOP-FOLDER BUILD-FOLDER [NAME-OF-A-SOURCE...]

Clang replaces that compiler. Under the name clang-cl it reads the same options, and CMake passes it the project's
options for Windows. microsoft_build/CMakeLists.txt lists the sources. As at the prompt of Visual Studio, the variables
CL and INCLUDE configure the compiler beyond CMake: here with LLVM's C++ standard library, and with the headers of
MinGW-w64 for the C runtime and Windows. All are Debian packages. microsoft_build/library declares what Microsoft's
library has and LLVM's lacks.

- Each source and each resource script compiles without a warning. If sources are named, only these are compiled.
- No source contains a GNU extension that Clang accepts also as clang-cl, but Microsoft's compiler does not.
- The objects export each member on the list, and define each listed function, which exports_windows.def exports. Nothing is
  linked.
"""

import json
import os
import pathlib
import re
import shutil
import subprocess
import sys
import zlib

top, build = (pathlib.Path(argument).resolve() for argument in sys.argv[1:3])
chosen = sys.argv[3:]
abi = top / "tests/abi"

# The headers of MinGW-w64 need GCC's version and the choice of the C runtime: the newer one. LLVM's library needs to
# know that the runtimes for C and C++ are not Microsoft's; its headers come before Clang's.
COMPILER = (
    "--target=x86_64-pc-windows-msvc /clang:-fms-compatibility-version=19.44 /clang:-fgnuc-version=4.2.1 /D_UCRT"
    " /D__MINGW32__ /D_LIBCPP_NO_VCRUNTIME /clang:-nobuiltininc")
WARNINGS = "-Wpedantic -Wmicrosoft /WX"
GNU_WORDS = re.compile(
    r"\b(?:__(?:(?:builtin|sync|atomic|c11_atomic)_\w+|(?:attribute|asm|typeof|signed|complex|real|imag)(?:__)?"
    r"|(?:extension|int128(?:_t)?|PRETTY_FUNCTION|restrict|inline|const|volatile|alignof|label)__|int128(?:_t)?|thread|null)"
    r"|asm|ssize_t|__has_(?:attribute|builtin|feature|extension|declspec_attribute|warning))\b"
    r"|#\s*pragma\s+(?:GCC|clang)\b|_Pragma\s*\(\s*\"(?:GCC|clang)\b|\[\[[^\]]*\b(?:gnu|clang)\s*(?:::|:)"
    r"|#\s*include\s*<(?:unistd|strings|dirent|getopt|libgen|pthread\w*|sched|semaphore|cpuid|x86intrin|utime|sys/(?!types|stat|timeb|utime)\w+)\.h>")
# The type of the texts that members return, as it appears in mangled names.
LLVM_STRING = "V?$basic_string@_WU?$char_traits@_W@__1@std@@V?$allocator@_W@23@@__1@std@@"
MICROSOFT_STRING = "V?$basic_string@_WU?$char_traits@_W@std@@V?$allocator@_W@2@@std@@"


def run(*command, **options):
    done = subprocess.run(list(map(str, command)), check=False, encoding="utf-8", **options)
    if done.returncode != 0:
        sys.exit(f"{pathlib.Path(command[0]).name} has failed")
    return done.stdout


def include_folders():
    clang = pathlib.Path(run("clang", "-print-resource-dir", stdout=subprocess.PIPE).strip()).resolve()
    yield str(abi / "microsoft_build/library")
    for folder, header, package in (
        (clang.parents[2] / "include/c++/v1", "string", "libc++-dev"),
        (clang / "include", "stddef.h", "clang"),
        (pathlib.Path("/usr/x86_64-w64-mingw32/include"), "windows.h", "g++-mingw-w64-x86-64-posix"),
    ):
        if not (folder / header).is_file():
            sys.exit(f"{folder / header} is missing: install the package {package}")
        yield str(folder)


def configure():
    """Returns CMake's list of compile commands."""
    clang_cl.parent.mkdir(parents=True, exist_ok=True)
    clang_cl.unlink(missing_ok=True)
    clang_cl.symlink_to(shutil.which("clang"))
    run("cmake", "-G", "Ninja", "-S", abi / "microsoft_build", "-B", build,
        "-D", "CMAKE_SYSTEM_NAME=Windows", "-D", "CMAKE_SYSTEM_PROCESSOR=AMD64",
        "-D", f"CMAKE_C_COMPILER={clang_cl}", "-D", f"CMAKE_CXX_COMPILER={clang_cl}",
        "-D", "CMAKE_TRY_COMPILE_TARGET_TYPE=STATIC_LIBRARY",  # there are no libraries to link a program with
        "-D", "CMAKE_BUILD_TYPE=Release", "-D", "CMAKE_EXPORT_COMPILE_COMMANDS=ON",
        env=environment, stdout=subprocess.PIPE)
    return json.loads((build / "compile_commands.json").read_text("utf-8"))


def gnu_words(sources):
    """The GNU extensions in all branches of the project's files, without comments."""
    for file in sorted(sources):
        text = re.sub(r"/\*.*?\*/|//[^\n]*", " ", file.read_text("utf-8"), flags=re.S)
        # Remove the branches for other systems and compilers.
        text = re.sub(r"#(?:el)?if !defined\(_WIN32\).*?#elif", "#if", text, flags=re.S)
        text = re.sub(r"(#ifdef _MSC_VER\b(?:(?!#\s*(?:if|el)).)*)#else\b(?:(?!#\s*if).)*?#endif", r"\1#endif", text, flags=re.S)
        yield from (f"{file.relative_to(top)}: {word}" for word in GNU_WORDS.findall(text))


def listed_functions(def_file):
    return re.findall(r"^    (\w+)$", (top / def_file).read_text(), re.M)


def exported_names(objects):
    functions = listed_functions("frame/exports_windows.def")
    for file in objects:
        symbols = run("llvm-nm", "--defined-only", "--extern-only", "--format=posix", file, stdout=subprocess.PIPE)
        yield from (symbol for symbol in re.findall(r"^\S+", symbols, re.M) if symbol in functions)
        for member in re.findall(rb'/EXPORT:"?([^\s",\0]+)', file.read_bytes()):
            yield member.decode().replace(LLVM_STRING, MICROSOFT_STRING)


environment = {**os.environ, "CL": COMPILER, "INCLUDE": ";".join(include_folders())}
for variable in ("_CL_", "CFLAGS", "CXXFLAGS", "LDFLAGS", "RCFLAGS"):
    environment.pop(variable, None)
# CMake and Ninja do not notice changes of these, so each combination has its own folder.
build /= f"{zlib.crc32(repr((COMPILER, WARNINGS, environment['INCLUDE'])).encode()):08x}"
clang_cl = build / "bin/clang-cl"

entries = [entry for entry in configure() if not chosen or pathlib.Path(entry["file"]).name in chosen]
outputs = [re.search(r" /fo ?(\S+)", entry["command"], re.I)[1] for entry in entries]
if not outputs:
    sys.exit("there is no source to compile")
environment["CL"] += f" {WARNINGS}"
run("cmake", "--build", build, "--parallel", os.cpu_count(), "--target", *outputs, env=environment)

files = [pathlib.Path(entry["file"]) for entry in entries]
read = {file for file in files if top in file.parents and file.suffix != ".rc"}
read |= {file for folder in ("cldr", "dictionary", "examples", "frame", "host", "include", "phyval", "platform", "storage", "text", "unittables")
         for file in (top / folder).rglob("*.h") if "posix" not in file.parts}
words = sorted(set(gnu_words(read)))
if words:
    print("Microsoft's compiler does not know", *words, sep="\n  ")
    sys.exit(1)

names = sorted(exported_names(build / output for output in outputs if output.endswith(".obj")))
expected = (abi / "exported_names_microsoft.txt").read_text().splitlines()
if not chosen or "c_api.cpp" in chosen:  # kelmo's functions say in the header that they are exported
    expected = sorted(expected + listed_functions("host/kelmo_exports_windows.def"))
if not names or names != expected:
    print("the objects export", *names, "but the list says", *expected, sep="\n  ")
    sys.exit(1)
print(f"{len(outputs)} sources compile, and the {len(names)} names that they export are those of the list")
