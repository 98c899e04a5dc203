"""tests/host/check_headers.py refuses headers of kelmo that do not compile everywhere, and changes of the interface."""

import shutil
import sys
import unittest

from refusals import TOP, RefusalTest, Row

HEADER, FACE, INTERFACE = "include/kelmo/kelmo.h", "include/kelmo/kelmo.hpp", "tests/host/kelmo_interface.h"
VERSION = "KELMO_API uint32_t kelmo_version(void);"
ROWS = (
    Row("a header that is not valid C", HEADER, VERSION, f"{VERSION}\nbool kelmo_is_open(void);", "kelmo.h as c99 by GCC does not"),
    Row("a header that is not valid C99", HEADER, VERSION, f"{VERSION}\ntypedef int kelmo_one;\ntypedef int kelmo_one;",
        "kelmo.h as c99 by GCC does not"),
    Row("a header that is not valid C++", HEADER, VERSION, f"{VERSION}\nint kelmo_open(int class);",
        "kelmo.h as c++17 by GCC does not"),
    Row("a missing include", HEADER, "#include <stdint.h>\n", "", "does not compile"),
    Row("a warning", HEADER, "argument.size = (uint32_t)sizeof argument;", "argument.size = sizeof argument + argument.text.size;",
        "does not compile"),
    Row("a warning for Windows only", HEADER, VERSION,
        f"{VERSION}\n#ifdef _WIN32\nstatic inline int kelmo_open(int path) {{ return 0; }}\n#endif",
        "kelmo.h as c99 by GCC for Windows does not compile"),
    Row("a warning of Microsoft's compiler only", HEADER, VERSION,
        f"{VERSION}\n#ifdef _MSC_VER\nstatic inline int kelmo_open(int path) {{ return 0; }}\n#endif",
        "kelmo.h as c99 by Clang as Microsoft's compiler does not compile"),
    Row("a larger field", HEADER, "  uint32_t flags; /**< KELMO_LOAD_... */", "  uint64_t flags;", "kelmo_interface.h as c11 by GCC"),
    Row("another value", HEADER, "KELMO_CANNOT_READ = -3,", "KELMO_CANNOT_READ = -5,", "kelmo_interface.h as c11 by GCC"),
    Row("a field that is not in the interface", HEADER, "  uint32_t flags; /**< KELMO_LOAD_... */",
        "  uint32_t flags;\n  uint32_t more;", "lacks KELMO_FIELD(kelmo_load_options, more, ...)"),
    Row("a value that is not in the interface", HEADER, "KELMO_CANNOT_READ = -3,", "KELMO_CANNOT_READ = -3,\n  KELMO_LOST = -9,",
        "lacks KELMO_VALUE(KELMO_LOST, ...)"),
    Row("an interface without a size", INTERFACE, "KELMO_SIZE(kelmo_text, 88);\n", "", "lacks KELMO_SIZE(kelmo_text, ...)"),
)
FACE_ROWS = (
    Row("a call that compiles", FACE, 'static_assert(std::is_arithmetic_v<Number>, "a count is a number");', "",
        "what kelmo.hpp refuses as c++17 by GCC lacks ['a count is a number']"),
    Row("a product of quantities", FACE, "there is no algebra of dimensions\");", "there is none\");",
        "what kelmo.hpp refuses as c++17 by GCC lacks ['quantities have no products: there is no algebra of dimensions']"),
)


def write_folder(folder):
    shutil.copytree(TOP / "include", folder / "include")
    (folder / "tests/host").mkdir(parents=True)
    shutil.copy(TOP / INTERFACE, folder / INTERFACE)


def command(folder, *sources):
    return [sys.executable, TOP / "tests/host/check_headers.py", folder, *sources]


class KelmoHeaders(RefusalTest):
    def test_each_difference_is_refused(self):
        self.refuses_each(write_folder, lambda folder: command(folder, "kelmo.h", "kelmo_interface.h"), ROWS)

    def test_a_call_that_must_not_compile_is_refused(self):
        self.refuses_each(write_folder, lambda folder: command(folder, "what kelmo.hpp refuses"), FACE_ROWS)


if __name__ == "__main__":
    unittest.main()
