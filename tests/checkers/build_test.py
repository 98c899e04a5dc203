"""The checks of the builds refuse missing warnings, wrong presets, wrong layers, wrong output and the like.

    python3 build_test.py CMAKE COMPILER
"""

import sys
import unittest

from refusals import TOP, RefusalTest, Row, write

CMAKE, COMPILER = sys.argv[1:] if __name__ == "__main__" else [""] * 2

# ---- tests/build/check_warnings.cmake

SWITCHES = "-Wall -Wextra -Wpedantic -Wconversion -Wshadow"
COMPILED = "compile_commands.json"
ERROR = "deliberate_warnings.cpp:{0}:1: error: here [-Werror={1}]\n"
KINDS = ("shadow", "parentheses", "vla", "unused-parameter", "float-conversion")
WARNINGS = {
    COMPILED: f"""[
  "command": "g++ -I\\"/a folder, да\\" -O3 {SWITCHES} -std=c++17 -Werror -o one.o -c /one.cpp",
  "command": "g++ -isystem /usr/src/googletest/googletest/include -O0 {SWITCHES} -Werror -o two.o -c \\"/a folder, да/two.cpp\\"",
  "command": "g++ -Wall -Wno-error -o all.o -c /usr/src/googletest/src/gtest-all.cc",
  "command": "g++ -o faults.o -c /tests/build/deliberate_faults.cpp",
  "command": "gcc -o table.o -c /table.S",
  "command": "x86_64-w64-mingw32-windres -O coff /table.rc table.res",
]""",
    "deliberate_warnings.cpp": "".join(f"code;  // expect: {kind}\n" for kind in KINDS),
    "errors.txt": "".join(ERROR.format(*line) for line in enumerate(KINDS, 1)),
    "CMakeCache.txt": "CMAKE_GENERATOR:INTERNAL=Ninja\nCMAKE_MAKE_PROGRAM:STRING=ninja\nCMAKE_PROJECT_NAME:STRING=made_up\n",
    "build.ninja": """rule compile
  command = cat errors.txt && exit 1
build warnings: compile
""",
}
WITHOUT_WARNINGS = "compiled without warnings as errors:"
WARNINGS_ROWS = (
    Row("no commands", COMPILED, None, "[]", "no command was read"),
    Row("a source without an option", COMPILED, "-Wshadow -std", "-std", WITHOUT_WARNINGS),
    Row("warnings that are no errors", COMPILED, "-std=c++17 -Werror", "-std=c++17", WITHOUT_WARNINGS),
    Row("a test without warnings, with GoogleTest's headers", COMPILED, f"-O0 {SWITCHES}", "-O0", WITHOUT_WARNINGS),
    Row("a disabled warning", COMPILED, "-std=c++17", "-Wno-shadow", WITHOUT_WARNINGS),
    Row("all warnings disabled", COMPILED, "-std=c++17", "-w", WITHOUT_WARNINGS),
    Row("a source with a similar name to an exception", COMPILED, "deliberate_faults.cpp", "more_faults.cpp",
        WITHOUT_WARNINGS),
    Row("a build that passes", "build.ninja", "exit 1", "exit 0", "compiles in spite of its warnings"),
    Row("an error that is missing", "errors.txt", ERROR.format(3, "vla"), "", "no error of -Wvla in line 3"),
    Row("an error of another line", "errors.txt", ERROR.format(3, "vla"), ERROR.format(4, "vla"),
        "no error of -Wvla in line 3"),
    Row("an error of another switch", "errors.txt", "vla", "main", "no error of -Wvla in line 3"),
    Row("an unexpected error", "errors.txt", ERROR.format(3, "vla"),
        ERROR.format(3, "vla") + ERROR.format(9, "vla"), "expected 5 errors, at least 5, but found 6"),
    Row("too few marked lines", "deliberate_warnings.cpp", "expect: vla", "", "expected 4 errors, at least 5, but found 5"),
)

# ---- tests/build/check_presets.cmake

PRESETS = {
    "CMakePresets.json": """{ "version": 6, "configurePresets": [
  { "name": "linux-release", "generator": "Ninja",
    "cacheVariables": { "KELMO_LOCALIZER_TESTS": true, "KELMO_LOCALIZER_EXAMPLES": true, "NONE": true } },
  { "name": "sanitized", "inherits": "linux-release",
    "cacheVariables": { "KELMO_LOCALIZER_INSTRUMENTED": "SANITIZERS", "CMAKE_C_FLAGS": "-fsanitize=address" } },
  { "name": "fuzzed", "inherits": "sanitized" },
  { "name": "counted", "inherits": "linux-release",
    "cacheVariables": { "KELMO_LOCALIZER_INSTRUMENTED": "COVERAGE", "CMAKE_CXX_FLAGS": "-fprofile-instr-generate" } },
  { "name": "debugged", "inherits": "linux-release",
    "cacheVariables": { "KELMO_LOCALIZER_INSTRUMENTED": "DEBUG_MODE", "CMAKE_CXX_FLAGS": "-D_GLIBCXX_DEBUG" } }
] }""",
    "CMakeLists.txt": """cmake_minimum_required(VERSION 3.25)
project(presets LANGUAGES NONE)
enable_testing()
if(KELMO_LOCALIZER_TESTS)
  add_test(NAME unit_tests COMMAND true)
endif()
if(KELMO_LOCALIZER_TESTS AND KELMO_LOCALIZER_EXAMPLES)
  add_test(NAME demo_host_output COMMAND true)
endif()
""",
}
INSTRUMENTED = '"KELMO_LOCALIZER_INSTRUMENTED": "{}",'
PRESETS_ROWS = (
    Row("undeclared sanitizers", "CMakePresets.json", INSTRUMENTED.format("SANITIZERS"), "",
        "sanitized: KELMO_LOCALIZER_INSTRUMENTED is OFF, but the flags add SANITIZERS"),
    Row("undeclared sanitizers in an inheriting preset", "CMakePresets.json",
        '"inherits": "sanitized"', '"inherits": "sanitized", "cacheVariables": { "KELMO_LOCALIZER_INSTRUMENTED": "OFF" }',
        "fuzzed: KELMO_LOCALIZER_INSTRUMENTED is OFF, but the flags add SANITIZERS"),
    Row("undeclared coverage", "CMakePresets.json", INSTRUMENTED.format("COVERAGE"), "",
        "counted: KELMO_LOCALIZER_INSTRUMENTED is OFF, but the flags add COVERAGE"),
    Row("an undeclared debug mode", "CMakePresets.json", INSTRUMENTED.format("DEBUG_MODE"), "",
        "debugged: KELMO_LOCALIZER_INSTRUMENTED is OFF, but the flags add DEBUG_MODE"),
    Row("a wrong instrumentation", "CMakePresets.json", INSTRUMENTED.format("COVERAGE"),
        INSTRUMENTED.format("SANITIZERS"),
        "counted: KELMO_LOCALIZER_INSTRUMENTED is SANITIZERS, but the flags add COVERAGE"),
    Row("an instrumentation without its flag", "CMakePresets.json", '"NONE": true', INSTRUMENTED.format("COVERAGE")[:-1],
        "linux-release: KELMO_LOCALIZER_INSTRUMENTED is COVERAGE, but the flags add OFF"),
    Row("no preset", "CMakePresets.json", None, '{ "version": 6, "configurePresets": [] }', "no preset was found"),
    Row("a preset without tests", "CMakePresets.json", '"KELMO_LOCALIZER_TESTS": true,', "",
        "unit_tests is still missing"),
    Row("a preset without examples", "CMakePresets.json", '"KELMO_LOCALIZER_EXAMPLES": true,', "",
        "demo_host_output is still missing"),
    Row("tests that always exist", "CMakeLists.txt", "if(KELMO_LOCALIZER_TESTS)", "if(TRUE)",
        "unit_tests exists without tests and examples"),
    Row("examples that always exist", "CMakeLists.txt", "if(KELMO_LOCALIZER_TESTS AND KELMO_LOCALIZER_EXAMPLES)",
        "if(TRUE)", "demo_host_output exists without tests and examples"),
    Row("a test with a longer name", "CMakeLists.txt", "NAME unit_tests", "NAME unit_tests_again",
        "unit_tests is still missing"),
    Row("a project with an error", "CMakeLists.txt", "enable_testing()", "message(FATAL_ERROR gone)", "gone"),
)

# ---- tests/build/check_windows.cmake

WINDOWS = {"CMakeLists.txt": """cmake_minimum_required(VERSION 3.25)
project(windows LANGUAGES C CXX)
enable_testing()
find_package(GTest REQUIRED)
if(MSVC AND CMAKE_HOST_WIN32 AND NOT CMAKE_CROSSCOMPILING AND KELMO_LOCALIZER_TESTS)
  foreach(name unit_tests model_test values_test demo_host_output)
    add_test(NAME ${name} COMMAND ${name})
  endforeach()
endif()
"""}
WINDOWS_ROWS = (
    Row("a test of a missing program", "CMakeLists.txt", "endforeach()",
        "endforeach()\n  add_test(NAME last COMMAND $<TARGET_FILE:valgrind_test>)", 'No target "valgrind_test"'),
    Row("no tests on Windows", "CMakeLists.txt", "AND NOT CMAKE_CROSSCOMPILING", "AND CMAKE_CROSSCOMPILING",
        "unit_tests is missing"),
    Row("no examples", "CMakeLists.txt", " demo_host_output", "", "demo_host_output is missing"),
    Row("a missing package", "CMakeLists.txt", "enable_testing()", "find_package(None REQUIRED)", "FindNone.cmake"),
)

# ---- tests/abi/check_one_definition.cmake

HEADER = "kelmo_localizer.h"
MEMBER = "  KELMO_LOCALIZER_MEMBER double Return();"
HEADER_ROWS = (
    Row("a member that only the library sees", HEADER, MEMBER, f"#ifdef KELMO_LOCALIZER_BUILDING\n{MEMBER}\n#endif",
        "with KELMO_LOCALIZER_BUILDING the header differs from that of a host"),
    Row("a member that the tests define differently", HEADER, MEMBER,
        f"#ifdef KELMO_LOCALIZER_STATIC\n  double Return() {{ return 0; }}\n#else\n{MEMBER}\n#endif",
        "with KELMO_LOCALIZER_STATIC the header differs from that of a host"),
    Row("an empty header", HEADER, None, "", "the header was not read"),
    Row("no header", HEADER, None, None, "No such file or directory"),
)

# ---- tests/abi/check_declared_names.cmake

DECLARED = {
    "kelmo.h": """#define KELMO_API __declspec(dllexport)
/** As kelmo_old() was. */
KELMO_API const char* kelmo_name(kelmo_status status, int (*use)(void));
KELMO_API void kelmo_end(void);
static inline int kelmo_twice(int number) { return 2 * number; }
""",
    "names.map": "# kelmo_old;\n{\n  global:\n    kelmo_end;\n    kelmo_name;\n  local:\n    *;\n};\n",
    "names.def": "; kelmo_old\nEXPORTS\n    kelmo_end\n    kelmo_name\n",
}
DECLARED_ROWS = (
    Row("a function that no linker knows", "kelmo.h", "static inline int kelmo_twice(int number) { return 2 * number; }",
        "KELMO_API int kelmo_twice(int number);", "names.map has kelmo_end kelmo_name but"),
    Row("a function that is not declared", "kelmo.h", "KELMO_API void kelmo_end(void);", "", "declares kelmo_name"),
    Row("a name that only the map has", "names.def", "    kelmo_end\n", "", "names.def has kelmo_name but"),
    Row("a name that only the other list has", "names.map", "    kelmo_end;\n", "", "names.map has kelmo_name but"),
    Row("a header without a function", "kelmo.h", None, "", "no name was read from"),
    Row("an empty map", "names.map", None, "{ };\n", "no name was read from"),
    Row("an empty list", "names.def", None, "EXPORTS\n", "no name was read from"),
)

# ---- tests/build/check_byte_order.cmake

WORD = "word.h"
REJECTED_ORDER = "__BYTE_ORDER__ != __ORDER_LITTLE_ENDIAN__"
WORD_ROWS = (
    Row("a header for any byte order", WORD, REJECTED_ORDER, "0", "compiles on a big-endian system"),
    Row("a header that does not know the byte order", WORD, "#if defined(__BYTE_ORDER__)", "#if defined(BYTE_ORDER)",
        "compiles on a big-endian system"),
    Row("a header that rejects this system", WORD, REJECTED_ORDER, "1", "does not compile on this system"),
    Row("another reason", WORD, "needs a little-endian system", "is at fault",
        "rejects a big-endian system for another reason"),
    Row("no header", WORD, None, None, "does not compile on this system"),
)

# ---- tests/cmake/check_output.cmake

OUTPUT = {"program": "#!/bin/sh\nprintf 'one\\ntwo\\n'\n", "expected.txt": "one\ntwo\n"}
OUTPUT_ROWS = (
    Row("another text", "expected.txt", "two", "three", "printed"),
    Row("less text", "program", "one\\ntwo\\n", "one\\n", "printed"),
    Row("more text", "program", "two\\n", "two\\nthree\\n", "printed"),
    Row("no line end", "program", "two\\n", "two", "printed"),
    Row("a NUL and more", "program", "two\\n", "two\\n\\0", "printed"),
    Row("CR LF instead of LF", "program", "one\\n", "one\\r\\n", "printed"),
    Row("expected CR LF instead of LF", "expected.txt", "one\n", "one\r\n", "printed"),
    Row("an empty expected file", "expected.txt", None, "", "is empty: a program that does nothing would print that"),
    Row("a failure", "program", "two\\n'", "two\\n'; exit 3", "ended with 3 after"),
    Row("a crash", "program", "two\\n'", "two\\n'; kill -SEGV $$", "ended with Segmentation fault after"),
    Row("no program", "program", None, None, "ended with"),
)

# ---- tests/build/check_includes.py

INCLUDES = {
    "cldr/plural_rules.h": "#include <cstdint>\n",
    "dictionary/dictionary_line.h": "#include <string>\n",
    "dictionary/lookup.cpp": '#include "platform/files.h"\n#include "frame/messages.h"\n#include "storage/arena.h"\n',
    "frame/exports.cpp": '#include "dictionary/lookup.cpp"\n#include "kelmo_localizer.h"\n',
    "frame/messages.h": '#include "storage/arena.h"\n',
    "host/view.cpp": '#include "dictionary/dictionary_line.h"\n#include "kelmo/kelmo.h"\n',
    "include/kelmo/kelmo.h": "#if defined(_WIN32)\n#endif\n",
    "include/kelmo/kelmo_runtime.h": '#include "kelmo.h"\n',
    "include/kelmo_localizer.h": "#if defined(_WIN32)\n#endif\n",
    "lang/finding.h": '#include "dictionary/lookup.cpp"\n',
    "phyval/double.cpp": '#include "kelmo_localizer.h"\n',
    "platform/files.h": '#include "text/utf8.h"\n',
    "platform/posix/files.cpp": '#include "platform/files.h"\n',
    "platform/windows/files.cpp": '#include "platform/files.h"\n#ifdef _WIN32\n#endif\n',
    "storage/arena.h": "#include <vector>\n",
    "text/utf8.h": "#include <string>\n",
}
INCLUDES_ROWS = (
    Row("an include upwards", "storage/arena.h", "#include <vector>", '#include "platform/files.h"',
        "storage/arena.h includes platform/files.h, which is above it"),
    Row("an include upwards within a folder", "frame/messages.h", "storage/arena.h", "frame/exports.cpp",
        "frame/messages.h includes frame/exports.cpp, which is above it"),
    Row("an include of another folder in the layer", "dictionary/lookup.cpp", "storage/arena.h", "phyval/double.cpp",
        "dictionary/lookup.cpp includes phyval/double.cpp, another folder of its layer"),
    Row("an include of a missing file", "text/utf8.h", "#include <string>", '#include "text/ascii.h"',
        "text/utf8.h includes text/ascii.h, which is not part of the library"),
    Row("an include of the tool by the library", "frame/exports.cpp", "kelmo_localizer.h", "lang/finding.h",
        "frame/exports.cpp includes lang/finding.h, which is not part of the library"),
    Row("an include of the second library by the first", "frame/exports.cpp", "dictionary/lookup.cpp", "host/view.cpp",
        "frame/exports.cpp includes host/view.cpp, which is not part of the library"),
    Row("an include of the tool by the second library", "host/view.cpp", "dictionary/dictionary_line.h", "lang/finding.h",
        "host/view.cpp includes lang/finding.h, on which kelmo must not stand"),
    Row("an include of a dictionary with messages by the second library", "host/view.cpp", "dictionary/dictionary_line.h",
        "dictionary/lookup.cpp", "host/view.cpp includes dictionary/lookup.cpp, on which kelmo must not stand"),
    Row("an include of the list of messages by the second library", "host/view.cpp", "dictionary/dictionary_line.h",
        "frame/messages.h", "host/view.cpp includes frame/messages.h, on which kelmo must not stand"),
    Row("an include of the first library's header by one of the second", "include/kelmo/kelmo_runtime.h", "kelmo.h",
        "kelmo_localizer.h",
        "include/kelmo/kelmo_runtime.h includes include/kelmo/kelmo_localizer.h, which is not part of the library"),
    Row("an include of the first library's state by the second", "host/view.cpp", "dictionary/dictionary_line.h",
        "frame/exports.cpp", "host/view.cpp includes frame/exports.cpp, which is above it"),
    Row("an include of the library's state by the tool", "lang/finding.h", "dictionary/lookup.cpp", "frame/exports.cpp",
        "lang/finding.h includes frame/exports.cpp, which is above it"),
    Row("an include of a higher layer by the tables", "cldr/plural_rules.h", "#include <cstdint>",
        '#include "platform/files.h"', "cldr/plural_rules.h includes platform/files.h, which is above it"),
    Row("a file without a layer", "frame/notes.h", None, "", "frame/notes.h has no layer"),
    Row("a platform header without an implementation", "platform/windows/files.cpp", None, None,
        "platform/files.h has no platform/windows/files.cpp"),
    Row("a source that depends on the system", "text/utf8.h", "#include <string>", "#ifdef _WIN32\n#endif",
        "text/utf8.h depends on the system"),
    Row("two files with one name", "text/arena.h", None, "", "arena.h is the name of storage/arena.h, text/arena.h"),
)


class Build(RefusalTest):
    def test_an_include_against_the_order_is_refused(self):
        self.refuses_each(lambda folder: write(folder, INCLUDES), lambda folder: [
            sys.executable, TOP / "tests/build/check_includes.py", folder], INCLUDES_ROWS)

    def test_a_build_without_its_warnings_is_refused(self):
        self.refuses_each(lambda folder: write(folder, WARNINGS), lambda folder: [
            CMAKE, f"-DBUILD={folder}", "-DTARGET=warnings", f"-DSOURCE={folder}/deliberate_warnings.cpp",
            "-P", TOP / "tests/build/check_warnings.cmake"], WARNINGS_ROWS)

    def test_a_wrong_preset_is_refused(self):
        self.refuses_each(lambda folder: write(folder, PRESETS), lambda folder: [
            CMAKE, f"-DSOURCE={folder}", f"-DWORK={folder}/work", "-P", TOP / "tests/build/check_presets.cmake"],
            PRESETS_ROWS)

    def test_a_project_that_windows_does_not_configure_is_refused(self):
        self.refuses_each(lambda folder: write(folder, WINDOWS), lambda folder: [
            CMAKE, f"-DSOURCE={folder}", f"-DWORK={folder}/work", "-P", TOP / "tests/build/check_windows.cmake"],
            WINDOWS_ROWS)

    def test_a_header_of_two_definitions_is_refused(self):
        text = (TOP / "include/kelmo_localizer.h").read_text("utf-8")
        self.refuses_each(lambda folder: write(folder, {HEADER: text}), lambda folder: [
            CMAKE, f"-DHEADER={folder / HEADER}", "-DMACRO=KELMO_LOCALIZER", r"-DCONTAINS=~Double\(\)",
            f"-DCOMPILER={COMPILER}",
            "-P", TOP / "tests/abi/check_one_definition.cmake"], HEADER_ROWS)

    def test_lists_of_other_functions_than_the_header_are_refused(self):
        self.refuses_each(lambda folder: write(folder, DECLARED), lambda folder: [
            CMAKE, f"-DHEADER={folder}/kelmo.h", f"-DMAP={folder}/names.map", f"-DDEF={folder}/names.def",
            "-P", TOP / "tests/abi/check_declared_names.cmake"], DECLARED_ROWS)

    def test_a_header_for_any_byte_order_is_refused(self):
        text = (TOP / "storage/word.h").read_text("utf-8")
        self.refuses_each(lambda folder: write(folder, {WORD: text}), lambda folder: [
            CMAKE, f"-DHEADER={folder / WORD}", f"-DCOMPILER={COMPILER}",
            "-P", TOP / "tests/build/check_byte_order.cmake"], WORD_ROWS)

    def test_a_program_with_wrong_output_is_refused(self):
        self.refuses_each(lambda folder: write(folder, OUTPUT), lambda folder: [
            CMAKE, f"-DCOMMAND={folder}/program", f"-DEXPECTED={folder}/expected.txt", f"-DOUTPUT={folder}/output.txt",
            "-P", TOP / "tests/cmake/check_output.cmake"], OUTPUT_ROWS)

    def test_line_ends_are_all_that_a_windows_program_may_print_otherwise(self):
        def write_folder(folder):
            write(folder, {"program.exe": OUTPUT["program"].replace("\\n", "\\r\\n"), "expected.txt": "one\ntwo\n"})

        self.refuses_each(write_folder, lambda folder: [
            CMAKE, f"-DCOMMAND={folder}/program.exe", f"-DEXPECTED={folder}/expected.txt",
            f"-DOUTPUT={folder}/output.txt", "-P", TOP / "tests/cmake/check_output.cmake"],
            (Row("another text", "expected.txt", "two", "three", "printed"),
             Row("a stray CR", "program.exe", "one", "on\\re", "printed")))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
