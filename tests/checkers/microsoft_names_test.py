"""tests/abi/check_microsoft_names.py refuses a header, a host and a list that do not match."""

import shutil
import sys
import unittest

from refusals import TOP, RefusalTest, Row, new_folder, write

HEADER, HOST, LIST = "include/kelmo_localizer.h", "tests/abi/microsoft_host.cpp", "tests/abi/exported_names_microsoft.txt"
COUNT = len((TOP / LIST).read_text().splitlines())
FUNCTION = "KELMO_LOCALIZER_API void ClearErrors(void);"
ROWS = (
    Row("a name that is not listed", LIST, "UseLanguage\n", "", "but the list says"),
    Row("a name that is listed and not imported", LIST, "UseLanguage\n", "UseLanguage\nUseText\n", "but the list says"),
    Row("an empty list", LIST, None, "", "but the list says"),
    Row("a function that the host does not use", HEADER, FUNCTION, f"{FUNCTION}\nKELMO_LOCALIZER_API void Clear(void);",
        f"the header declares {COUNT + 1} functions and members, but microsoft_host.cpp uses {COUNT}"),
    Row("a function that is not imported", HEADER, FUNCTION, "void ClearErrors(void);", "but the list says"),
    Row("a function with another type", HEADER, "UseLanguage(const wchar_t* id);", "UseLanguage(const char* id);",
        "clang does not compile tests/abi/microsoft_host.cpp"),
    Row("a class of another layout", HEADER, "  double absTolerance; /*", "  float absTolerance; /*",
        "clang does not compile tests/abi/microsoft_host.cpp"),
    Row("a host that uses nothing", HOST, None, "", "but the list says"),
)


def write_folder(folder):
    for part in ("include", "tests/abi", "tests/support"):
        shutil.copytree(TOP / part, folder / part)


def command(folder):
    return [sys.executable, TOP / "tests/abi/check_microsoft_names.py", folder]


class MicrosoftNames(RefusalTest):
    def test_each_difference_is_refused(self):
        self.refuses_each(write_folder, command, ROWS)

    def test_empty_files_are_refused(self):
        with new_folder(write_folder) as folder:
            write(folder, {HEADER: "", HOST: "", LIST: ""})
            self.refuses("a host imports but the list says", command(folder))


if __name__ == "__main__":
    unittest.main()
