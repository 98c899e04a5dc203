"""Installs the project, and follows the links of the installed pages: each leads to an installed file or heading.

    python3 -B check_installed_pages.py CMAKE BUILD-FOLDER WORK-FOLDER
"""

import pathlib
import shutil
import subprocess
import sys

from page_links import problem_of, relative_links


def problems_of(page, prefix):
    for target, file, anchor in relative_links(page):
        problem = problem_of(file, anchor) if file.is_relative_to(prefix) else "it leads out of the package"
        if problem:
            yield f"{page.relative_to(prefix)}: {target}: {problem}"


def main(cmake, build, work):
    prefix = pathlib.Path(work).resolve()
    shutil.rmtree(prefix, ignore_errors=True)
    installed = subprocess.run([cmake, "--install", build, "--prefix", prefix], check=False, stdout=subprocess.DEVNULL)
    if installed.returncode != 0:
        sys.exit("the installation has failed")
    pages = sorted(prefix.rglob("*.md"))
    if not pages:
        sys.exit("no page is installed")
    problems = [problem for page in pages for problem in problems_of(page, prefix)]
    links = sum(1 for page in pages for _ in relative_links(page))
    print("\n".join(problems) or f"{links} links of {len(pages)} installed pages lead somewhere")
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
