"""Compares the pages with the project, so that they stay up to date.

    python3 -B check_pages.py TOP-FOLDER

- A comment before a block names its file, <!-- FILE -->, which must be identical to the byte. In a block with visible
  blanks, <!-- FILE, blanks shown -->, an arrow means a tab and a dot a space, and the file has the line ends CR LF. A
  block with <!-- FILE, in part --> must be consecutive lines of the file. Two kinds of blocks name no file: shell
  commands ("sh"), whose presets and scripts must exist, and drawings, <!-- drawing -->.
- Links lead to existing files of the project and to existing headings.
- The README has at most 150 lines. A longer page in docs/ begins with a list of contents, which links to each section.
- Tests that a page names, `Suite.Name`, exist; each row of docs/compatibility.md names one.
- docs/messages.md has exactly one section for each message of the library, with its text.
- docs/kelmo.md has a row for each status and each problem code of include/kelmo/kelmo.h, and for each status of
  kelmo_runtime.h, with its value.
- CONTRIBUTING.md names the packages that ./test installs.
- Presets and files that tools/check_windows.ps1 names exist, because that script does not run here.
"""

import json
import pathlib
import re
import subprocess
import sys

from page_links import anchor_of, problem_of, relative_links, without_blocks

top = pathlib.Path(sys.argv[1])
pages = sorted([*top.glob("*.md"), *(top / "docs").rglob("*.md"), *(top / "tools").rglob("*.md")])
problems = []

BLOCK = re.compile(r"(?:^<!-- ([^,\n]+?)(, blanks shown|, in part)? -->\n)?^```(\w*)\n(.*?)^```$", re.M | re.S)
DRAWING = "drawing"
MAX_LINES = 150  # of the README, and of a page without a list of contents
PRESETS = {
    "cmake": "configurePresets",
    "cmake --build": "buildPresets",
    "cmake --workflow": "workflowPresets",
    "ctest": "testPresets",
}


def problem(page, text):
    problems.append(f"{page.relative_to(top)}: {text}")


def check_commands(page, block, presets):
    for command, preset in re.findall(r"(\S+(?: --build| --workflow)?) --preset (\S+)", block):
        kind = PRESETS.get(command, "")
        if not any(entry["name"] == preset and not entry.get("hidden") for entry in presets.get(kind, [])):
            problem(page, f"there is no preset for {command} --preset {preset}")
    for script in re.findall(r"(?:^|\s)(?:\./)?((?:[\w-]+/)*[\w-]+\.(?:sh|py)|(?<=\./)\w+)\b", block):
        if not (top / script).is_file():
            problem(page, f"there is no script {script}")


def check_windows_script(script, presets):
    text = script.read_text("utf-8").replace("'", " ")
    check_commands(script, text, presets)
    files = re.findall(r"\b(?:docs|examples|frame|platform|tests|tools)[/\\][\w./\\]*\w", text)
    if not files:
        problem(script, "no file was found")
    for file in files:
        if not (top / file.replace("\\", "/")).exists():
            problem(script, f"there is no {file}")


def check_blocks(page, text, presets):
    found = 0
    for file, way, language, block in BLOCK.findall(text):
        found += 1
        if language == "sh" and not file:
            check_commands(page, block, presets)
        elif not file:
            problem(page, f"a block names no file:\n{block}")
        elif file == DRAWING and language == "text":
            continue
        elif not (top / file).is_file():
            problem(page, f"a block names {file}, which does not exist")
        else:
            shown, whole = block.encode(), (top / file).read_bytes()
            if way == ", blanks shown":
                shown = block.replace("→", "\t").replace("·", " ").replace("\n", "\r\n").encode()
            if way == ", in part":
                if b"\n" + shown not in b"\n" + whole:
                    problem(page, f"this block is not part of {file}:\n{block}")
            elif shown != whole:
                problem(page, f"this block differs from {file}:\n{block}")
    if found != len(re.findall(r"^[ >]*(?:```|~~~)", text, re.M)) / 2:
        problem(page, "a block is not closed, is indented or begins with ~~~")


def check_links(page):
    for target, file, anchor in relative_links(page):
        found = problem_of(file, anchor)
        if found:
            problem(page, f"{target}: {found}")


def check_length(page, text):
    if text.count("\n") <= MAX_LINES:
        return
    if page.parent == top:
        problem(page, f"is longer than {MAX_LINES} lines")
        return
    contents, _, sections = without_blocks(text).partition("\n## ")
    for heading in re.findall(r"^## (.+)$", "## " + sections, re.M):
        if f"](#{anchor_of(heading)})" not in contents:
            problem(page, f"the list of contents lacks the section {heading}")


def check_tests(page, text, tests):
    for name in re.findall(r"`([A-Z]\w+\.[A-Z]\w+)`", text):
        if name not in tests:
            problem(page, f"there is no test {name}")


def check_oddities(page):
    rows = re.findall(r"^\|(?! Behaviour \||-).*$", page.read_text("utf-8"), re.M)
    if not rows:
        problem(page, "no row was found")
    for row in rows:
        if not re.search(r"`[A-Z]\w+\.[A-Z]\w+`", row):
            problem(page, f"a row names no test:\n{row}")


def check_messages(page):
    source = (top / "frame/messages.cpp").read_text("utf-8")
    texts = set(re.findall(r'L"(E[LV]\d{3}\. [^"\\]+)', source))
    sections = set(re.findall(r"^## (E[LV]\d{3}\. .+)$", page.read_text("utf-8"), re.M))
    if not texts:
        problem(page, "no message was found in frame/messages.cpp")
    for text in sorted(texts - sections):
        problem(page, f"the message is missing: {text}")
    for text in sorted(sections - texts):
        problem(page, f"there is no such message: {text}")


def check_codes(page):
    header = (top / "include/kelmo/kelmo.h").read_text("utf-8")
    statuses = re.search(r"typedef int32_t kelmo_status;(.*?)\};", header, re.S)
    codes = set(re.findall(r"(KELMO_\w+) = (-?\d+)", statuses[1] if statuses else ""))
    codes |= set(re.findall(r"KELMO_PROBLEM_(\w+) =\s+(\d+)", header))
    if not codes:
        problem(page, "no code was found in include/kelmo/kelmo.h")
    runtime = (top / "include/kelmo/kelmo_runtime.h").read_text("utf-8")
    codes |= set(re.findall(r"(KELMO_RUNTIME_\w+) = (-\d+)", runtime))
    rows = set(re.findall(r"^\| `(\w+)` \| (-?\d+) \|", page.read_text("utf-8"), re.M))
    for name, value in sorted(codes - rows):
        problem(page, f"there is no row for {name} with the value {value}")
    for name, value in sorted(rows - codes):
        problem(page, f"there is no {name} with the value {value}")


def check_packages(page, text):
    """The packages of all modes of ./test, but not those of ./bench."""
    arrays = sorted(set(re.findall(r"\$\{packages\w*\[@\]\}", (top / "test").read_text("utf-8"))))
    command = ["bash", "-c", f". tools/common.sh && echo {' '.join(arrays)}"]
    installed = sorted(set(subprocess.run(command, cwd=top, capture_output=True, text=True, check=True).stdout.split()))
    lines = re.findall(r"^apt-get install (.+)$", re.sub(r"\\\n", "", text), re.M)
    if not installed or len(lines) != 1 or sorted(lines[0].split()) != installed:
        problem(page, f"./test installs {' '.join(installed)}")


tests = set()
for file in (top / "tests").rglob("*.cpp"):
    for suite, name in re.findall(r"^TEST(?:_F|_P)?\((\w+), (\w+)\)", file.read_text("utf-8"), re.M):
        tests.add(f"{suite}.{name}")
presets = json.loads((top / "CMakePresets.json").read_text())

for page in pages:
    text = page.read_text("utf-8")
    check_blocks(page, text, presets)
    check_links(page)
    check_tests(page, text, tests)
check_length(top / "README.md", (top / "README.md").read_text("utf-8"))
for page in (top / "docs").rglob("*.md"):
    check_length(page, page.read_text("utf-8"))
check_oddities(top / "docs/compatibility.md")
check_messages(top / "docs/messages.md")
check_codes(top / "docs/kelmo.md")
check_windows_script(top / "tools/check_windows.ps1", presets)
check_packages(top / "CONTRIBUTING.md", (top / "CONTRIBUTING.md").read_text("utf-8"))

print("\n".join(problems) or f"{len(pages)} pages agree with the project")
sys.exit(1 if problems else 0)
