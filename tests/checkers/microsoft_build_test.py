"""tests/abi/check_microsoft_build.py refuses a project that Microsoft's compiler would refuse, and wrong exports.

Compiles only the sources that the rows falsify, and those that define the exports.
"""

import os
import sys
import unittest

from refusals import TOP, RefusalTest, Row, copy_library, falsify, new_folder, write

HEADER, LIST, DEFINITION = "include/kelmo_localizer.h", "tests/abi/exported_names_microsoft.txt", "frame/exports_windows.def"
INLINING, VALUE_TYPE, DOUBLE, SCRIPT = "storage/inlining.h", "phyval/value_type.cpp", "phyval/double.cpp", "resources/default_unit_table.rc"
SOURCES = ("c.c", "cxx11.cpp", "exports.cpp", "double.cpp", "double_windows.cpp", "value_type.cpp", "default_unit_table.rc",
           "c_api.cpp", "c_quantities.cpp", "c_units.cpp")
GET_SID = "int ValueType::GetSid() { return code < 100 ? 0 : code % 1000; }"
FUNCTION = "KELMO_LOCALIZER_API void ClearErrors(void);"
MEMBER = "  KELMO_LOCALIZER_MEMBER int GetSid();"
OTHER_NAMES = "but the list says"
ROWS = (
    Row("a GNU expression", VALUE_TYPE, GET_SID, GET_SID.replace("code % 1000", "({ code % 1000; })"),
        "use of GNU statement expression extension"),
    Row("a GNU function", VALUE_TYPE, GET_SID, GET_SID.replace("code < 100", "__builtin_expect(code < 100, 0)"),
        f"does not know {VALUE_TYPE}: __builtin_expect"),
    Row("a GNU attribute", HEADER, MEMBER, f"  __attribute__((cold)) {MEMBER}",
        f"does not know {HEADER}: __attribute__"),
    Row("a GNU keyword that Clang accepts", VALUE_TYPE, GET_SID, f'{GET_SID}\nvoid Nothing() {{ asm("nop"); }}', "asm"),
    Row("a GNU extension in the branch of Microsoft's compiler", INLINING, "__forceinline",
        "__attribute__((always_inline)) inline", f"does not know {INLINING}: __attribute__"),
    Row("a GNU extension behind the branches", INLINING, "#endif", "#endif\n#define KELMO_COLD __attribute__((cold))",
        f"does not know {INLINING}: __attribute__"),
    Row("a POSIX header", VALUE_TYPE, "#include", "#include <unistd.h>\n#include", "<unistd.h>"),
    Row("a warning", VALUE_TYPE, GET_SID, f"{GET_SID}\n\nstatic int Unused() {{ return 1; }}", "unused function 'Unused'"),
    Row("a missing include", DOUBLE, "#include <cfloat>\n", "", "use of undeclared identifier 'FLT_EVAL_METHOD'"),
    Row("a header that is not valid C", HEADER, FUNCTION, f"{FUNCTION}\nbool Clear();", "unknown type name 'bool'"),
    Row("a header that is not valid C++11", HEADER, MEMBER, f"{MEMBER}\n  auto Get() {{ return code; }}",
        "deduced return types are a C++14 extension"),
    Row("a resource script without its table", SCRIPT, "default_unit_table.txt", "default_table.txt", "default_table.txt"),
    Row("a member without its macro", HEADER, MEMBER, "  int GetSid();", OTHER_NAMES),
    Row("a member that is not defined", VALUE_TYPE, GET_SID, "", OTHER_NAMES),
    Row("a function that is not defined", "frame/exports.cpp", "int64_t GetErrorsCount()", "int64_t Count()", OTHER_NAMES),
    Row("a function that is not exported", DEFINITION, "    UseLanguage\n", "", OTHER_NAMES),
    Row("a name that is listed and not exported", LIST, "UseLanguage\n", "UseLanguage\nUseText\n", OTHER_NAMES),
    Row("a function of kelmo that is not listed", "host/kelmo_exports_windows.def", "    kelmo_version\n", "", OTHER_NAMES),
    Row("a GNU attribute in kelmo.h", "include/kelmo/kelmo.h", "KELMO_API uint32_t kelmo_version(void);",
        "__attribute__((cold)) KELMO_API uint32_t kelmo_version(void);", "does not know include/kelmo/kelmo.h: __attribute__"),
    Row("an empty list", LIST, None, "", OTHER_NAMES),
)


def write_folder(folder):
    copy_library(folder, "examples", "tests/abi")


def command(folder, *sources):
    return [sys.executable, TOP / "tests/abi/check_microsoft_build.py", folder, folder / "build", *sources]


class MicrosoftBuild(RefusalTest):
    def test_each_difference_is_refused(self):
        with new_folder(write_folder) as folder:  # the same for all rows, so that little is compiled again
            said = self.accepts(command(folder, *SOURCES))
            for row in ROWS:
                self.assertNotIn(row.complaint, said)
                with self.subTest(row.name):
                    file = folder / row.file
                    original = file.read_bytes()
                    falsify(file, row.old, row.new)
                    self.refuses(row.complaint, command(folder, *SOURCES))
                    file.write_bytes(original)
            self.accepts(command(folder, *SOURCES))

    def test_a_source_that_is_not_compiled_is_refused(self):
        with new_folder(write_folder) as folder:
            self.refuses("there is no source to compile", command(folder, "value_types.cpp"))

    def test_a_missing_standard_library_is_refused(self):
        with new_folder(lambda folder: write(folder, {"clang": "#!/bin/sh\necho /llvm/lib/clang/14\n"})) as folder:
            self.refuses("/llvm/include/c++/v1/string is missing: install the package libc++-dev", [
                "env", f"PATH={folder}:{os.environ['PATH']}", *command(folder)])


if __name__ == "__main__":
    unittest.main()
