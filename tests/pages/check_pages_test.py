"""Shows that check_pages.py notices what it is there for: a small project that agrees with its pages, and each page
with one fault.

    python3 check_pages_test.py
"""

import pathlib
import subprocess
import sys
import tempfile

checker = pathlib.Path(__file__).with_name("check_pages.py")

PROJECT = {
    "README.md": """# Top
[a page](docs/messages.md#el101-twice)
<!-- host.cpp -->
```cpp
int main() {}
```
<!-- output.txt -->
```text
1.5 m
```
```text
a drawing
```
<!-- words.txt, blanks shown -->
```text
a→b·c
```
```sh
cmake --preset one && ./test
```
| [`EL101. Twice`](docs/messages.md#el101-twice) | `Suite.Name` |
""",
    "CONTRIBUTING.md": "```sh\napt-get install gcc\n```\n",
    "docs/messages.md": "## EL101. Twice\n",
    "docs/compatibility.md": "| Behaviour | Held by |\n|---|---|\n| odd | `Suite.Name` |\n",
    "host.cpp": "int main() {}\n",
    "output.txt": "1.5 m\n",
    "words.txt": "a\tb c\r\n",
    "test": "",
    "frame/messages.cpp": 'L"EL101. Twice\\nKey: "\n',
    "tests/suite.cpp": "TEST(Suite, Name) {\n",
    "CMakePresets.json": '{"buildPresets": [{"name": "one"}], "testPresets": []}',
    "tools/common.sh": "packages=(gcc) packages_native_tests=() packages_wine=() packages_lint=() packages_heavy=()\n"
    "packages_coverage=()\n",
}

# The file, what of it is replaced by what, and a part of the complaint.
FAULTS = [
    ("README.md", "int main() {}", "int main() { }", "this block is not host.cpp"),
    ("README.md", "1.5 m", "1.6 m", "this block is not output.txt"),
    ("README.md", "a→b·c", "a·b·c", "this block is not words.txt"),
    ("README.md", "<!-- host.cpp -->\n", "", "a block names no file"),
    ("README.md", "a drawing\n```", "a drawing\n", "a block is not closed"),
    ("README.md", "--preset one", "--preset two", "there is no preset two"),
    ("README.md", "./test", "./tests", "there is no script tests"),
    ("README.md", "(docs/messages.md#el101-twice)\n", "(docs/message.md)\n", "leads nowhere"),
    ("README.md", "#el101-twice)\n", "#el101)\n", "there is no such heading"),
    ("README.md", "`Suite.Name`", "`Suite.Other`", "there is no test Suite.Other"),
    ("README.md", "| [`EL101. Twice`]", "| [`EL102. Twice`]", "either no message or one that is missing here"),
    ("CONTRIBUTING.md", "gcc", "clang", "./test installs gcc"),
    ("docs/messages.md", "## EL101. Twice\n", "## EL101. Twice\n## EL102. New\n", "EL102. New"),
    ("docs/compatibility.md", "`Suite.Name`", "somewhere", "a row names no test"),
    ("frame/messages.cpp", "EL101", "", "no message was found"),
]


def complaints(project):
    """What the checker says of a project, a text for each file; empty where it is content."""
    with tempfile.TemporaryDirectory() as folder:
        for name, text in project.items():
            file = pathlib.Path(folder, name)
            file.parent.mkdir(parents=True, exist_ok=True)
            file.write_bytes(text.encode())
        run = subprocess.run([sys.executable, checker, folder], capture_output=True, encoding="utf-8", check=False)
        if run.stderr or run.returncode not in (0, 1):
            sys.exit(run.stderr)
        return run.stdout if run.returncode == 1 else ""


missed = [f"of pages that agree: {text}" for text in [complaints(PROJECT)] if text]
for name, right, wrong, complaint in FAULTS:
    if PROJECT[name].count(right) != 1:
        sys.exit(f"{name}: not once: {right}")
    said = complaints({**PROJECT, name: PROJECT[name].replace(right, wrong)})
    if complaint not in said:
        missed.append(f"{name}: {right!r} as {wrong!r}: expected {complaint!r}, was told {said!r}")

print("\n".join(missed) or f"the checker notices {len(FAULTS)} faults")
sys.exit(1 if missed else 0)
