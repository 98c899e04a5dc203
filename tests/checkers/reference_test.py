"""tools/reference.sh makes the reference of kelmo, and refuses what has no comment."""

import shutil
import unittest

from refusals import TOP, RefusalTest, Row, new_folder

C, CPP = "include/kelmo/kelmo.h", "include/kelmo/kelmo.hpp"
ROWS = (
    Row("a function without a comment", C, "/** The number of problems; 0 for null. */\n", "",
        "kelmo_problems_count(const kelmo_problems *problems) (function) of file kelmo.h is not documented"),
    Row("an inline function without a comment", C, "/** An integer. */\n", "",
        "kelmo_integer_argument(int64_t integer) (function) of file kelmo.h is not documented"),
    Row("a struct without a comment", C, "/** A text and where it comes from. The strings live as long as the texts. */\n",
        "", "kelmo_text is not documented"),
    Row("a field without a comment", C, " /**< number of `languages` */", "",
        "Member language_count (variable) of"),
    Row("a member function without a comment", CPP, "  /** Whether there is no problem. */\n", "",
        "of class kelmo::Problems is not documented"),
    Row("a parameter that does not exist", C, "Null is allowed, and does nothing. Thread-safe. */\nKELMO_API void kelmo_view",
        "@param texts the view */\nKELMO_API void kelmo_view", "argument 'texts' of command @param is not found"),
    Row("a link to nothing", "docs/reference.md", "@ref kelmo.h", "@ref kelmo.hh", "unable to resolve reference to 'kelmo.hh'"),
)


def write_reference(folder):
    for part in ("docs/Doxyfile", "docs/reference.md", "tools/reference.sh", C, CPP):
        (folder / part).parent.mkdir(parents=True, exist_ok=True)
        shutil.copy(TOP / part, folder / part)


class Reference(RefusalTest):
    def test_what_has_no_comment_is_refused(self):
        self.refuses_each(write_reference, lambda folder: [folder / "tools/reference.sh"], ROWS)

    def test_it_has_what_hosts_use_and_nothing_private(self):
        with new_folder(write_reference) as folder:
            self.accepts([folder / "tools/reference.sh"])
            pages = {page.name: page.read_text("utf-8") for page in (folder / "build/reference").glob("*.html")}
        for page, shown in (("kelmo_8h.html", "kelmo_view_format"), ("classkelmo_1_1View.html", "take_problems")):
            self.assertIn(shown, pages[page])
        self.assertEqual([page for page in pages if "detail" in page], [])
        self.assertNotIn("KELMO_API", pages["kelmo_8h.html"])


if __name__ == "__main__":
    unittest.main()
