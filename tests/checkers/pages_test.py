"""tests/docs/check_pages.py refuses each kind of page that has drifted from its project."""

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
    "docs/messages.md": "# Messages\n\n### EL1: no, that is EL101\n\n## EL101. No.\n",
    "hello.cpp": "int main() {}\n",
    "hello.txt": "Hello\n",
    "CMakeLists.txt": "project(hello)\n",
    "hello.py": 'print("Hello")\n',
    "blanks.txt": "one\ttwo three\r\n",
    "parts.txt": "one\ntwo\nthree\nfour\n",
    "frame/messages.cpp": 'L"EL101. No.\\nKey: "\n',
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
    Row("C++ that is not its file", PAGE, "int main() {}", "int main() { }", "README.md: this block is not hello.cpp"),
    Row("text that is not its file", PAGE, "```text\nHello\n", "```text\nHallo\n", "this block is not hello.txt"),
    Row("CMake that is not its file", PAGE, "project(hello)", "project(hallo)", "this block is not CMakeLists.txt"),
    Row("Python that is not its file", PAGE, 'print("Hello")', 'print("Hallo")', "this block is not hello.py"),
    Row("a file that has changed", "hello.txt", "Hello", "Hallo", "this block is not hello.txt"),
    Row("a file with another line end", "hello.txt", "\n", "\r\n", "this block is not hello.txt"),
    Row("a space shown for a tab", PAGE, "one→two", "one·two", "this block is not blanks.txt"),
    Row("blanks of a file with the line ends LF", "blanks.txt", None, "one\ttwo three\n", "this block is not blanks.txt"),
    Row("a part that is not its file's", PAGE, "two\nthree\n", "three\ntwo\n", "this block is no part of parts.txt"),
    Row("a part with a gap", "parts.txt", "two\n", "two\n\n", "this block is no part of parts.txt"),
    Row("a part that begins within a line", "parts.txt", "two\n", "and two\n", "this block is no part of parts.txt"),
    Row("a file that is gone", "hello.py", None, None, "a block is to be hello.py, which there is not"),
    Row("C++ without a file", PAGE, "<!-- hello.cpp -->\n", "", "a block names no file: int main() {}"),
    Row("text without a file", PAGE, "<!-- hello.txt -->\n", "", "a block names no file: Hello"),
    Row("a drawing that does not say so", PAGE, "<!-- drawing -->\n", "", "a block names no file: |---|"),
    Row("C++ that says it is a drawing", PAGE, "hello.cpp -->", "drawing -->", "a block is to be drawing, which"),
    Row("shell commands that are not the file they name", PAGE, "# A project\n\n", "# A project\n\n<!-- run -->\n",
        "this block is not run"),
    Row("a block without a language", PAGE, "<!-- hello.txt -->\n```text", "```", "a block names no file: Hello"),
    Row("a block that is not closed", PAGE, "Hello\n```\n", "Hello\n", "a block is not closed, or indented"),
    Row("an indented block", PAGE, "<!-- drawing -->\n```text\n|---|\n```\n", "- A list\n\n  ```text\n  |---|\n  ```\n",
        "a block is not closed, or indented"),
    Row("a block in the other signs", PAGE, "<!-- drawing -->\n```text\n|---|\n```\n", "~~~\n|---|\n~~~\n",
        "a block is not closed, or indented"),
    # Shell commands
    Row("a preset that there is not", PAGE, "cmake --preset usual", "cmake --preset other",
        "there is no preset for cmake --preset other"),
    Row("a preset of another kind", PAGE, "--build --preset usual", "--build --preset tried",
        "there is no preset for cmake --build --preset tried"),
    Row("a preset that is hidden", PAGE, "cmake --preset usual", "cmake --preset base",
        "there is no preset for cmake --preset base"),
    Row("a script that there is not", PAGE, "tools/look.sh", "tools/see.sh", "there is no script tools/see.sh"),
    Row("a script of a folder that is not there", PAGE, "tools/glasses/clean.py", "tools/glasses/wipe.py",
        "there is no script tools/glasses/wipe.py"),
    Row("a command that there is not", PAGE, "./run", "./walk", "there is no script walk"),
    Row("a preset of the script for Windows", "tools/check_windows.ps1", "usual", "other",
        "there is no preset for cmake --preset other"),
    Row("a file of the script for Windows", "tools/check_windows.ps1", "hello_test", "hallo_test",
        "there is no tests/hallo_test.cpp"),
    Row("a page of the script for Windows", "tools/check_windows.ps1", "messages.md", "message.md",
        "there is no docs\\message.md"),
    Row("no file in the script for Windows", "tools/check_windows.ps1", None, "", "no file was found"),
    # Links and tests
    Row("a link to no file", PAGE, "(hello.cpp)", "(hallo.cpp)", "hallo.cpp leads nowhere"),
    Row("a link of a tool's page to no file", "tools/glasses/README.md", "(clean.py)", "(wipe.py)", "wipe.py leads nowhere"),
    Row("a link to no heading of another page", PAGE, "#el1-no-that-is-el101", "#el101",
        "docs/messages.md#el101: there is no such heading"),
    Row("a link to no heading of its page", PAGE, "(#a-project)", "(#the-project)",
        "#the-project: there is no such heading"),
    Row("a heading that has changed", "docs/messages.md", "### EL1: no", "### EL1: not", "there is no such heading"),
    Row("a test that there is not", PAGE, "`Hello.IsSaid`", "`Hello.IsSung`", "there is no test Hello.IsSung"),
    Row("a test of another name", "tests/hello_test.cpp", "IsSaid", "IsSung", "there is no test Hello.IsSaid"),
    # Tables and sections
    Row("an oddity without a test", "docs/compatibility.md", "`Hello.IsSaid`", "nothing",
        "a row names no test: | It greets. | nothing |"),
    Row("no oddities at all", "docs/compatibility.md", "| It greets. | `Hello.IsSaid` |\n", "", "no row was found"),
    Row("no section of a message", "docs/messages.md", "## EL101. No.\n", "",
        "docs/messages.md: the message is missing: EL101. No."),
    Row("a section of no message", "docs/messages.md", "## EL101. No.\n", "## EL101. No.\n\n## EL102. Yes.\n",
        "docs/messages.md: there is no such message: EL102. Yes."),
    Row("a message with another text", "frame/messages.cpp", "No.", "Never.", "the message is missing: EL101. Never."),
    Row("no messages in the source", "frame/messages.cpp", "EL101", "XX101", "no message was found in"),
    # Length
    Row("a long README", PAGE, "# A project\n", "# A project\n" + 120 * "\n", "README.md: is longer than 150 lines"),
    Row("a long page without a list of contents", "docs/long.md", "- [One](#one)\n- [Two words](#two-words)\n", "\n\n",
        "docs/long.md: the list of contents lacks the section One"),
    Row("a section that the contents lack", "docs/long.md", "- [Two words](#two-words)\n", "\n",
        "docs/long.md: the list of contents lacks the section Two words"),
    # Packages
    Row("a package left out", "CONTRIBUTING.md", " \\\n  clang", "", "./test installs clang cmake"),
    Row("a package that is not installed", "CONTRIBUTING.md", "clang", "clang gcc", "./test installs clang cmake"),
    Row("a package that is installed now", "tools/common.sh", "lint=(clang)", "lint=(clang-tidy)",
        "./test installs clang-tidy cmake"),
    Row("packages that are installed now", "test", "${packages[@]}", "${packages[@]} ${packages_bench[@]}",
        "./test installs clang cmake gnuplot"),
)


class Pages(RefusalTest):
    def test_each_drift_is_refused(self):
        self.refuses_each(lambda folder: write(folder, FILES),
                          lambda folder: [sys.executable, TOP / "tests/docs/check_pages.py", folder], ROWS)


if __name__ == "__main__":
    unittest.main()
