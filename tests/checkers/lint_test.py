"""tools/lint.sh refuses sources, tests, sources for Windows and scripts that one of its tools rejects."""

import json
import subprocess
import unittest

from refusals import TOP, RefusalTest, Row, write

SOURCES = ("dictionary/one.cpp", "examples/one.cpp", "frame/one.cpp", "lang/one.cpp", "phyval/one.cpp",
           "unittables/one.cpp", "platform/posix/one.cpp", "storage/one.cpp", "text/one.cpp", "cldr/one.cpp", "host/one.cpp")
TESTS = ("tests/one_test.cpp", "tests/two_test.cpp", "tests/nine_test.cpp")
WINDOWS = ("frame/one_windows.cpp", "platform/windows/one.cpp")
LINUX_COMMANDS, WINDOWS_COMMANDS = (f"build/{name}-release/compile_commands.json" for name in ("linux", "mingw"))
COMPILED_HEADER = "build/cmake_pch.hxx"
SOURCE = "namespace {\nint Two(int number) { return 2 * number; }\n}  // namespace\n"
TEST = f"#include <gtest/gtest.h>\n\n{SOURCE}"
FROM_THE_PROJECT = (".clang-format", ".clang-tidy", "tests/.clang-tidy", "tools/lint.sh", "tools/tidy.sh",
                    "tools/cppcheck.suppressions")


def commands(folder, compiler, files):
    """A line for each file, as CMake writes them."""
    return "[\n" + ",\n".join(
        json.dumps({"directory": str(folder), "file": str(folder / file), "output": f"{file}.o",
                    "command": f'{compiler} -isystem include -Winvalid-pch -include "{folder / COMPILED_HEADER}"'
                               f' -o one.o -c "{folder / file}"'})
        for file in files) + "\n]\n"


def write_folder(folder):
    write(folder, {
        **{name: (TOP / name).read_text() for name in FROM_THE_PROJECT},
        **{name: SOURCE for name in (*SOURCES, *WINDOWS)},
        **{name: TEST.replace("Two", f"Two{i}") for i, name in enumerate(TESTS)},
        **{name: "#!/bin/sh\necho fine\n" for name in ("demo", "test", "bench", ".ci/run")},
        "include/gtest/gtest.h": "#pragma once\n",
        COMPILED_HEADER: "",
        f"{COMPILED_HEADER}.gch": "Clang cannot read GCC's precompiled header",
        ".gitignore": "/build/\n",
        LINUX_COMMANDS: commands(folder, "c++", (*SOURCES, *TESTS)),
        WINDOWS_COMMANDS: commands(folder, "x86_64-w64-mingw32-g++-posix", WINDOWS),
    })
    subprocess.run(["git", "init", "--quiet", folder], check=True)


LOOP = "{\n  int zeros[4] = {};\n  return zeros[4] + number;\n}\n"
BRACES = "{\n  if (number == 0) return 1;\n  return 2 * number;\n}\n"
BODY = "{ return 2 * number; }\n"
BRACES_MISSING = "[readability-braces-around-statements"
ROWS = (
    Row("a wrongly formatted source", SOURCES[0], "{ return", "{return", "code should be clang-formatted"),
    Row("a wrongly formatted test", TESTS[0], "{ return", "{return", "code should be clang-formatted"),
    Row("a fault in a script", "demo", "echo fine", "cd $1", "SC2164"),
    Row("a fault in a script of CI", ".ci/run", "echo fine", "cd $1", "SC2164"),
    Row("a fault that cppcheck finds", SOURCES[1], BODY, LOOP, "[arrayIndexOutOfBounds]"),
    Row("a fault that cppcheck finds in a test", TESTS[1], BODY, LOOP, "[arrayIndexOutOfBounds]"),
    Row("a fault that cppcheck finds in a source for Windows", WINDOWS[1], BODY, LOOP, "[arrayIndexOutOfBounds]"),
    Row("a style that clang-tidy rejects", SOURCES[4], BODY, BRACES, BRACES_MISSING),
    Row("a style that clang-tidy rejects in one of several tests", TESTS[1], BODY, BRACES, BRACES_MISSING),
    Row("a style that clang-tidy rejects in a source for Windows", WINDOWS[0], BODY, BRACES, BRACES_MISSING),
    Row("an unconfigured build", WINDOWS_COMMANDS, None, None, "configure the builds first"),
    Row("a folder without a source", LINUX_COMMANDS, 'phyval/one.cpp", "output"', 'frame/one.cpp", "output"',
        "could not find any files matching the filter"),
)


class Lint(RefusalTest):
    def test_each_fault_is_refused(self):
        self.refuses_each(write_folder, lambda folder: [folder / "tools/lint.sh"], ROWS)


if __name__ == "__main__":
    unittest.main()
