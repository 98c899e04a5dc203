"""The tests of the checkers fail if a checker accepts a false input or fails for another reason."""

import unittest

from refusals import RefusalTest, Row, write

FINDS_FAULTS = "grep -q good said || { echo 'it is bad'; exit 1; }"
ACCEPTS_ALL = "true"
REFUSES_ALL = "echo 'it is bad'; exit 1"
DIES = "grep -q good said || { echo 'sh: disk full'; exit 2; }"
CRASHES = "grep -q good said || { echo 'it is bad'; kill -9 $$; }"
STUMBLES = "grep -q good said || { echo 'Traceback: it is bad'; exit 1; }"
COMPLAINS_ALWAYS = "echo 'it is bad'; grep -q good said"

BAD = Row("bad", "said", "good", "bad", "it is bad")


class Refusals(unittest.TestCase):
    def failures(self, checker, row=BAD):
        """The number of failures of a table with that row."""

        class Table(RefusalTest):
            def test(self):
                self.refuses_each(lambda folder: write(folder, {"said": "good\n"}),
                                  lambda folder: ["sh", "-c", f'cd "{folder}" && {checker}'], [row])

        result = unittest.TestResult()
        Table("test").run(result)
        return len(result.failures) + len(result.errors)

    def test_a_checker_that_finds_the_fault_passes(self):
        self.assertEqual(self.failures(FINDS_FAULTS), 0)

    def test_other_checkers_fail(self):
        for checker in (ACCEPTS_ALL, REFUSES_ALL, DIES, CRASHES, STUMBLES, COMPLAINS_ALWAYS):
            with self.subTest(checker):
                self.assertEqual(self.failures(checker), 1)

    def test_a_row_that_falsifies_nothing_fails(self):
        self.assertEqual(self.failures(FINDS_FAULTS, BAD._replace(old="fair")), 1)

    def test_a_complaint_that_is_not_made_fails(self):
        self.assertEqual(self.failures(FINDS_FAULTS, BAD._replace(complaint="it is worse")), 1)


if __name__ == "__main__":
    unittest.main()
