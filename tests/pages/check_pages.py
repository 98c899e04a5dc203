"""Compares the pages with the project, so that they cannot drift.

    python3 check_pages.py TOP-FOLDER

- A block of code names its file in a comment in front of it, <!-- FILE -->, and is that file, to the byte. A block
  that shows blanks, <!-- FILE, blanks shown -->, has an arrow for each tab and a dot for each space, and its file has
  the line ends CR LF. Blocks of shell commands ("sh") name no file: the presets and scripts in them must be there.
  A block of "text" without a file is a drawing.
- Links to files of the project lead to a file, those to a heading to that heading.
- Tests that a page names, `Suite.Name`, are in the sources of the tests; each row of docs/compatibility.md names one.
- docs/messages.md has a section for each message of the library, with its text, and none besides; the README's table
  has a row for each.
- CONTRIBUTING.md names the packages that ./test installs.
"""

import json
import pathlib
import re
import subprocess
import sys

top = pathlib.Path(sys.argv[1])
pages = sorted([*top.glob("*.md"), *(top / "docs").rglob("*.md")])
problems = []


def problem(page, text):
    problems.append(f"{page.relative_to(top)}: {text}")


def without_blocks(text):
    return re.sub(r"^```.*?^```$", "", text, flags=re.M | re.S)


def anchors(page):
    headings = re.findall(r"^#+ (.+)$", without_blocks(page.read_text("utf-8")), re.M)
    return {re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", "-") for heading in headings}


def check_blocks(page, text):
    all_presets = json.loads((top / "CMakePresets.json").read_text())
    presets = {preset["name"] for preset in all_presets["buildPresets"] + all_presets["testPresets"]}
    found = 0
    for match in re.finditer(r"(?:^<!-- ([^,\n]+?)(, blanks shown)? -->\n)?^```(\w*)\n(.*?)^```$", text, re.M | re.S):
        found += 1
        file, blanks_shown, language, block = match.groups()
        if language == "sh":
            for preset in re.findall(r"--preset (\S+)", block):
                if preset not in presets:
                    problem(page, f"there is no preset {preset}")
            for script in re.findall(r"(?:^|\s)(?:\./)?((?:tools/)?[\w-]+\.sh|(?<=\./)\w+)\b", block):
                if not (top / script).is_file():
                    problem(page, f"there is no script {script}")
            continue
        if language == "text" and file is None:  # a drawing
            continue
        if file is None:
            problem(page, f"a block names no file:\n{block}")
            continue
        shown = block.encode()
        if blanks_shown:
            shown = block.replace("→", "\t").replace("·", " ").replace("\n", "\r\n").encode()
        if shown != (top / file).read_bytes():
            problem(page, f"this block is not {file}:\n{block}")
    if found != len(re.findall(r"^```", text, re.M)) / 2:
        problem(page, "a block is not closed, or indented")


def check_links(page, text):
    for target in re.findall(r"\]\(([^)\s]+)\)", without_blocks(text)):
        if re.match(r"\w+:", target):
            continue
        path, _, anchor = target.partition("#")
        file = (page.parent / path).resolve() if path else page
        if not file.exists():
            problem(page, f"{target} leads nowhere")
        elif anchor and anchor not in anchors(file):
            problem(page, f"{target}: there is no such heading")


def check_tests(page, text, tests):
    for name in re.findall(r"`([A-Z]\w+\.[A-Z]\w+)`", text):
        if name not in tests:
            problem(page, f"there is no test {name}")


def check_oddities(page):
    for row in re.findall(r"^\| (?!Behaviour)[^-].*$", page.read_text("utf-8"), re.M):
        if not re.search(r"`[A-Z]\w+\.[A-Z]\w+`", row):
            problem(page, f"a row names no test:\n{row}")


def check_messages(page, each):
    source = (top / "frame/messages.cpp").read_text("utf-8")
    texts = set(re.findall(r'L"(E[LV]\d{3}\. [^"\\]+)\\n', source))
    sections = set(re.findall(each, page.read_text("utf-8"), re.M))
    if not texts:
        problem(page, "no message was found in frame/messages.cpp")
    for text in texts ^ sections:
        problem(page, f"either no message or one that is missing here: {text}")


def check_packages(page, text):
    arrays = ("packages", "packages_native_tests", "packages_wine", "packages_lint", "packages_heavy", "packages_coverage")
    command = ". tools/common.sh && echo " + " ".join(f"${{{array}[@]}}" for array in arrays)
    installed = subprocess.run(["bash", "-c", command], cwd=top, capture_output=True, text=True, check=True).stdout.split()
    lines = re.findall(r"^apt-get install (.+)$", re.sub(r"\\\n", "", text), re.M)
    if len(lines) != 1 or sorted(lines[0].split()) != sorted(installed):
        problem(page, f"./test installs {' '.join(installed)}")


tests = set()
for file in (top / "tests").rglob("*.cpp"):
    for suite, name in re.findall(r"^TEST(?:_F)?\((\w+), (\w+)\)", file.read_text("utf-8"), re.M):
        tests.add(f"{suite}.{name}")

for page in pages:
    text = page.read_text("utf-8")
    check_blocks(page, text)
    check_links(page, text)
    check_tests(page, text, tests)
check_oddities(top / "docs/compatibility.md")
check_messages(top / "docs/messages.md", r"^## (E[LV]\d{3}\. .+)$")
check_messages(top / "README.md", r"^\| \[`(E[LV]\d{3}\. .+)`\]")
check_packages(top / "CONTRIBUTING.md", (top / "CONTRIBUTING.md").read_text("utf-8"))

print("\n".join(problems) or f"{len(pages)} pages agree with the project")
sys.exit(1 if problems else 0)
