"""tests/docs/check_installed_pages.py refuses a page with a link that leads nowhere once it is installed.

    python3 installed_pages_test.py CMAKE
"""

import sys
import unittest

from refusals import TOP, RefusalTest, Row, write

CMAKE = sys.argv[1] if __name__ == "__main__" else ""
PAGE, INSTALL = "share/docs/guide.md", "build/cmake_install.cmake"
FILES = {
    PAGE: "# Guide\n\n[A page](more.md#two-words), [a program](../examples/hello.c), [here](#guide), ![picture](look.svg),\n"
          "[the web](https://localhost/none.md)\n\n```text\n[no link](none.md)\n```\n",
    "share/docs/more.md": "# More\n\n## Two words\n",
    "share/docs/look.svg": "",
    "share/docs/plan.txt": "not installed\n",
    "share/examples/hello.c": "",
    INSTALL: 'file(COPY "${CMAKE_CURRENT_LIST_DIR}/../share" DESTINATION "${CMAKE_INSTALL_PREFIX}" PATTERN plan.txt EXCLUDE)\n',
}
ROWS = (
    Row("a link to a file that does not exist", PAGE, "more.md#two", "less.md#two", "guide.md: less.md#two-words: there is no such file"),
    Row("a link to a file that is not installed", PAGE, "look.svg", "plan.txt", "plan.txt: there is no such file"),
    Row("a file that is no longer installed", INSTALL, " PATTERN", " PATTERN hello.c EXCLUDE PATTERN",
        "../examples/hello.c: there is no such file"),
    Row("a link to a heading of another page", PAGE, "#two-words", "#three-words", "more.md#three-words: there is no such heading"),
    Row("a link to a heading of its page", PAGE, "(#guide)", "(#guides)", "#guides: there is no such heading"),
    Row("a changed heading", "share/docs/more.md", "Two words", "Words", "there is no such heading"),
    Row("a link to a file of the project", PAGE, "../examples/hello.c", "../../../share/docs/plan.txt",
        "plan.txt: it leads out of the package"),
    Row("no page", INSTALL, "share\"", "share/examples\"", "no page is installed"),
    Row("an installation that fails", INSTALL, "file(COPY", "file(COPIED", "the installation has failed"),
)


def command(folder):
    return [sys.executable, "-B", TOP / "tests/docs/check_installed_pages.py", CMAKE, folder / "build", folder / "work"]


class InstalledPages(RefusalTest):
    def test_each_dead_link_is_refused(self):
        self.refuses_each(lambda folder: write(folder, FILES), command, ROWS)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
