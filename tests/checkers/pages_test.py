"""tests/docs/check_pages.py refuses every kind of page that differs from its project."""

import sys
import unittest

from refusals import TOP, RefusalTest, Row, write

README = """# A project

```sh
./run --fast
tools/look.sh
tools/glasses/clean.py
cmake --preset usual && cmake --build --preset usual
```

<!-- hello.cpp -->
```cpp
int main() {}
```

<!-- hello.txt -->
```text
Hello
```

<!-- CMakeLists.txt -->
```cmake
project(hello)
```

<!-- hello.py -->
```python
print("Hello")
```

<!-- blanks.txt, blanks shown -->
```text
one→two·three
```

<!-- parts.txt, in part -->
```text
two
three
```

<!-- drawing -->
```text
|---|
```

[Messages](docs/messages.md#el1-no-that-is-el101), [the program](hello.cpp), [here](#a-project).
`Hello.IsSaid` tests it.
"""
FILES = {
    "README.md": README,
    "CONTRIBUTING.md": "```sh\napt-get install cmake \\\n  clang\n```\n",
    "docs/compatibility.md": "| Behaviour | Held by |\n|---|---|\n| It greets. | `Hello.IsSaid` |\n",
    "docs/long.md": "# Long\n\n- [One](#one)\n- [Two words](#two-words)\n\n## One\n\n## Two words\n" + 143 * "\n",
    "docs/kelmo.md": "# Codes\n\n| Code | Value |\n|---|---|\n| `KELMO_BAD` | -1 |\n| `LOST` | 101 |\n"
                     "| `KELMO_RUNTIME_LOST` | -9 |\n",
    "docs/messages.md": "# Messages\n\n### EL1: no, that is EL101\n\n## EL101. No.\n",
    "hello.cpp": "int main() {}\n",
    "hello.txt": "Hello\n",
    "CMakeLists.txt": "project(hello)\n",
    "hello.py": 'print("Hello")\n',
    "blanks.txt": "one\ttwo three\r\n",
    "parts.txt": "one\ntwo\nthree\nfour\n",
    "frame/messages.cpp": 'L"EL101. No.\\nKey: "\n',
    "include/kelmo/kelmo.h": "typedef int32_t kelmo_status;\nenum {\n  KELMO_BAD = -1\n};\nenum {\n"
                             "  KELMO_PROBLEM_LOST =\n      101\n};\nenum { KELMO_MARKED = 2 };\n",
    "include/kelmo/kelmo_runtime.h": "enum {\n  KELMO_RUNTIME_LOST = -9\n};\n",
    "tests/hello_test.cpp": "TEST(Hello, IsSaid) {\n",
    "CMakePresets.json": """{
 "configurePresets": [{ "name": "usual" }, { "name": "base", "hidden": true }, { "name": "tried" }],
 "buildPresets": [{ "name": "usual" }]
}""",
    "run": "",
    "test": 'install_packages "${packages[@]}" "${packages_lint[@]}"\n',
    "tools/common.sh": "packages=(cmake)\npackages_lint=(clang)\npackages_bench=(gnuplot)\n",
    "tools/look.sh": "",
    "tools/glasses/clean.py": "",
    "tools/glasses/README.md": "[The program](clean.py)\n",
    "tools/check_windows.ps1": "run 'cmake --preset usual'\nread 'docs\\messages.md', 'tests/hello_test.cpp'\n",
}
PAGE = "README.md"
ROWS = (
    # Blocks and their files
    Row("C++ that differs from its file", PAGE, "int main() {}", "int main() { }", "README.md: this block differs from hello.cpp"),
    Row("text that differs from its file", PAGE, "```text\nHello\n", "```text\nHallo\n", "this block differs from hello.txt"),
    Row("CMake that differs from its file", PAGE, "project(hello)", "project(hallo)", "this block differs from CMakeLists.txt"),
    Row("Python that differs from its file", PAGE, 'print("Hello")', 'print("Hallo")', "this block differs from hello.py"),
    Row("a changed file", "hello.txt", "Hello", "Hallo", "this block differs from hello.txt"),
    Row("a file with another line end", "hello.txt", "\n", "\r\n", "this block differs from hello.txt"),
    Row("a space shown for a tab", PAGE, "one→two", "one·two", "this block differs from blanks.txt"),
    Row("blanks of a file with the line ends LF", "blanks.txt", None, "one\ttwo three\n", "this block differs from blanks.txt"),
    Row("a part that differs from its file", PAGE, "two\nthree\n", "three\ntwo\n", "this block is not part of parts.txt"),
    Row("a part with a gap", "parts.txt", "two\n", "two\n\n", "this block is not part of parts.txt"),
    Row("a part that begins within a line", "parts.txt", "two\n", "and two\n", "this block is not part of parts.txt"),
    Row("a missing file", "hello.py", None, None, "a block names hello.py, which does not exist"),
    Row("C++ without a file", PAGE, "<!-- hello.cpp -->\n", "", "a block names no file: int main() {}"),
    Row("text without a file", PAGE, "<!-- hello.txt -->\n", "", "a block names no file: Hello"),
    Row("a drawing without its comment", PAGE, "<!-- drawing -->\n", "", "a block names no file: |---|"),
    Row("C++ marked as a drawing", PAGE, "hello.cpp -->", "drawing -->", "a block names drawing, which"),
    Row("shell commands that are not the file they name", PAGE, "# A project\n\n", "# A project\n\n<!-- run -->\n",
        "this block differs from run"),
    Row("a block without a language", PAGE, "<!-- hello.txt -->\n```text", "```", "a block names no file: Hello"),
    Row("a block that is not closed", PAGE, "Hello\n```\n", "Hello\n", "a block is not closed, is indented or begins with ~~~"),
    Row("an indented block", PAGE, "<!-- drawing -->\n```text\n|---|\n```\n", "- A list\n\n  ```text\n  |---|\n  ```\n",
        "a block is not closed, is indented or begins with ~~~"),
    Row("a block with tildes", PAGE, "<!-- drawing -->\n```text\n|---|\n```\n", "~~~\n|---|\n~~~\n",
        "a block is not closed, is indented or begins with ~~~"),
    # Shell commands
    Row("a missing preset", PAGE, "cmake --preset usual", "cmake --preset other",
        "there is no preset for cmake --preset other"),
    Row("a preset of another kind", PAGE, "--build --preset usual", "--build --preset tried",
        "there is no preset for cmake --build --preset tried"),
    Row("a hidden preset", PAGE, "cmake --preset usual", "cmake --preset base",
        "there is no preset for cmake --preset base"),
    Row("a missing script", PAGE, "tools/look.sh", "tools/see.sh", "there is no script tools/see.sh"),
    Row("a missing script of a folder", PAGE, "tools/glasses/clean.py", "tools/glasses/wipe.py",
        "there is no script tools/glasses/wipe.py"),
    Row("a missing command", PAGE, "./run", "./walk", "there is no script walk"),
    Row("a missing preset of the script for Windows", "tools/check_windows.ps1", "usual", "other",
        "there is no preset for cmake --preset other"),
    Row("a missing file of the script for Windows", "tools/check_windows.ps1", "hello_test", "hallo_test",
        "there is no tests/hallo_test.cpp"),
    Row("a missing page of the script for Windows", "tools/check_windows.ps1", "messages.md", "message.md",
        "there is no docs\\message.md"),
    Row("no file in the script for Windows", "tools/check_windows.ps1", None, "", "no file was found"),
    # Links and tests
    Row("a link to a missing file", PAGE, "(hello.cpp)", "(hallo.cpp)", "hallo.cpp: there is no such file"),
    Row("a link of a tool's page to a missing file", "tools/glasses/README.md", "(clean.py)", "(wipe.py)",
        "wipe.py: there is no such file"),
    Row("a link to a missing heading of another page", PAGE, "#el1-no-that-is-el101", "#el101",
        "docs/messages.md#el101: there is no such heading"),
    Row("a link to a missing heading of its page", PAGE, "(#a-project)", "(#the-project)",
        "#the-project: there is no such heading"),
    Row("a changed heading", "docs/messages.md", "### EL1: no", "### EL1: not", "there is no such heading"),
    Row("a missing test", PAGE, "`Hello.IsSaid`", "`Hello.IsSung`", "there is no test Hello.IsSung"),
    Row("a renamed test", "tests/hello_test.cpp", "IsSaid", "IsSung", "there is no test Hello.IsSaid"),
    # Tables and sections
    Row("a row without a test", "docs/compatibility.md", "`Hello.IsSaid`", "nothing",
        "a row names no test: | It greets. | nothing |"),
    Row("no rows", "docs/compatibility.md", "| It greets. | `Hello.IsSaid` |\n", "", "no row was found"),
    Row("a missing section of a message", "docs/messages.md", "## EL101. No.\n", "",
        "docs/messages.md: the message is missing: EL101. No."),
    Row("a section without a message", "docs/messages.md", "## EL101. No.\n", "## EL101. No.\n\n## EL102. Yes.\n",
        "docs/messages.md: there is no such message: EL102. Yes."),
    Row("a message with another text", "frame/messages.cpp", "No.", "Never.", "the message is missing: EL101. Never."),
    Row("no messages in the source", "frame/messages.cpp", "EL101", "XX101", "no message was found in"),
    Row("a missing row of a status", "docs/kelmo.md", "| `KELMO_BAD` | -1 |\n", "",
        "docs/kelmo.md: there is no row for KELMO_BAD with the value -1"),
    Row("a missing row of a status of the runtime header", "docs/kelmo.md", "| `KELMO_RUNTIME_LOST` | -9 |\n", "",
        "docs/kelmo.md: there is no row for KELMO_RUNTIME_LOST with the value -9"),
    Row("another value of a status", "docs/kelmo.md", "| -1 |", "| -2 |", "there is no row for KELMO_BAD with the value -1"),
    Row("a row of a problem that does not exist", "docs/kelmo.md", "| `LOST` | 101 |\n",
        "| `LOST` | 101 |\n| `FOUND` | 102 |\n", "docs/kelmo.md: there is no FOUND with the value 102"),
    Row("a new problem", "include/kelmo/kelmo.h", "101\n", "101,\n  KELMO_PROBLEM_FOUND = 102\n",
        "there is no row for FOUND with the value 102"),
    Row("no codes in the header", "include/kelmo/kelmo.h", None, "", "no code was found in include/kelmo/kelmo.h"),
    # Length
    Row("a long README", PAGE, "# A project\n", "# A project\n" + 120 * "\n", "README.md: is longer than 150 lines"),
    Row("a long page without a list of contents", "docs/long.md", "- [One](#one)\n- [Two words](#two-words)\n", "\n\n",
        "docs/long.md: the list of contents lacks the section One"),
    Row("a section missing in the contents", "docs/long.md", "- [Two words](#two-words)\n", "\n",
        "docs/long.md: the list of contents lacks the section Two words"),
    # Packages
    Row("a missing package", "CONTRIBUTING.md", " \\\n  clang", "", "./test installs clang cmake"),
    Row("a package that is not installed", "CONTRIBUTING.md", "clang", "clang gcc", "./test installs clang cmake"),
    Row("a changed package", "tools/common.sh", "lint=(clang)", "lint=(clang-tidy)",
        "./test installs clang-tidy cmake"),
    Row("an added list of packages", "test", "${packages[@]}", "${packages[@]} ${packages_bench[@]}",
        "./test installs clang cmake gnuplot"),
)


class Pages(RefusalTest):
    def test_each_difference_is_refused(self):
        self.refuses_each(lambda folder: write(folder, FILES),
                          lambda folder: [sys.executable, "-B", TOP / "tests/docs/check_pages.py", folder], ROWS)


if __name__ == "__main__":
    unittest.main()
