"""The Python scripts that judge measurements, coverage and mutants refuse missing and bad results.

If a whole script would take long, the test calls only its judging part, with made-up results.
"""

import contextlib
import io
import json
import pathlib
import sys
import tempfile
import unittest
from unittest import mock

from refusals import TOP

sys.path[:0] = [str(TOP / "tools"), str(TOP / "tools/mutants"), str(TOP / "benchmarks")]
import bench_report  # noqa: E402
import coverage  # noqa: E402
import lang_benchmark  # noqa: E402
import mutate  # noqa: E402


def printed(function, *arguments):
    """The function's result and its output."""
    with contextlib.redirect_stdout(io.StringIO()) as output:
        result = function(*arguments)
    return result, output.getvalue()


class BenchReport(unittest.TestCase):
    """The last lines of tools/bench_report.py: "N of M targets are met", and the targets that were not judged."""

    MAPS = bench_report.HASH_MAPS
    TARGETS = (bench_report.Target("lookup/hot", 0.5, MAPS), bench_report.Target("lookup/hot", 2, ("icu",)))
    GROWTHS = (bench_report.Growth("loading/english", "kelmo", 10, 1000, 1.5),)
    COUNTERS = {"held_ratio": 1.25}
    MEASURED = {
        "lookup/hot/kelmo/100": {"ns": 1.0},
        **{f"lookup/hot/{subject}/100": {"ns": 2.0} for subject in MAPS},
        "lookup/hot/icu/100": {"ns": 2.0},
        "loading/english/kelmo/10": {"ns": 10.0},
        "loading/english/kelmo/1000": {"ns": 15.0},
        "memory/english/kelmo/10": {"ns": 1.0, "held_ratio": 1.25},
    }

    def end(self, changed):
        """The last lines of the report on MEASURED with changed entries; None removes an entry."""
        measured = {name: entry for name, entry in {**self.MEASURED, **changed}.items() if entry}
        with mock.patch.multiple(bench_report, TARGETS=self.TARGETS, GROWTHS=self.GROWTHS,
                                          COUNTER_TARGETS=self.COUNTERS):
            _, text = printed(bench_report.Report(measured).print)
        return text[text.rindex("\n\n") + 2:]

    def test_only_measured_targets_within_their_limits_are_met(self):
        hot = "lookup/hot/{}/100".format
        for name, changed, end in (
            ("all at their limits", {}, "4 of 4 targets are met.\n"),
            ("too slow compared with the fastest", {hot(self.MAPS[1]): {"ns": 1.9}}, "3 of 4 targets are met.\n"),
            ("growth", {"loading/english/kelmo/1000": {"ns": 15.1}}, "3 of 4 targets are met.\n"),
            ("growth in between", {"loading/english/kelmo/100": {"ns": 15.1}}, "3 of 4 targets are met.\n"),
            ("a counter", {"memory/english/kelmo/10": {"ns": 1.0, "held_ratio": 1.26}}, "3 of 4 targets are met.\n"),
            ("no number", {hot("kelmo"): {"ns": float("nan")}}, "2 of 4 targets are met.\n"),
            ("one of two subjects is missing", {hot(self.MAPS[0]): None},
             f"3 of 3 targets are met.\nNot judged:\n  lookup/hot: without {self.MAPS[0]}\n"),
            ("one of two is missing, and the other is faster", {hot(self.MAPS[0]): None, hot(self.MAPS[1]): {"ns": 1.9}},
             "3 of 4 targets are met.\n"),
            ("the only subject is missing", {hot("icu"): None},
             "3 of 3 targets are met.\nNot judged:\n  lookup/hot: without icu\n"),
            ("the only subject is missing at one size", {"lookup/hot/kelmo/10": {"ns": 1.0},
                                                         **{f"lookup/hot/{name}/10": {"ns": 2.0} for name in self.MAPS}},
             "5 of 5 targets are met.\nNot judged:\n  lookup/hot: without icu\n"),
            ("ours is missing", {hot("kelmo"): None}, "2 of 2 targets are met.\nNot judged:\n  lookup/hot: not measured\n"),
            ("the row is missing", {hot(subject): None for subject in ("kelmo", "icu", *self.MAPS)},
             "2 of 2 targets are met.\nNot judged:\n  lookup/hot: not measured\n"),
            ("the largest size is missing",
             {"loading/english/kelmo/1000": None, "loading/english/kelmo/100": {"ns": 10.0}},
             "3 of 3 targets are met.\nNot judged:\n  loading/english: without 1,000\n"),
            ("all sizes but one are missing", {"loading/english/kelmo/1000": None},
             "3 of 3 targets are met.\nNot judged:\n  loading/english: not measured\n"),
            ("a counter is missing", {"memory/english/kelmo/10": {"ns": 1.0}},
             "3 of 3 targets are met.\nNot judged:\n  english 10: without held_ratio\n  held_ratio: not measured\n"),
        ):
            with self.subTest(name):
                self.assertEqual(self.end(changed), end)

    def test_a_limit_holds_from_its_first_size_to_its_last(self):
        limits = tuple(bench_report.Target("lookup/hot", limit, ("icu",), *sizes)
                       for limit, sizes in ((1, (0, 8)), (0.5, (9, 32)), (0.25, (33, 99))))
        for ours, met in ((1.0, 2), (0.5, 4), (0.25, 5)):
            with self.subTest(ours):
                found = {f"lookup/hot/{subject}/{size}": {"ns": time}
                         for subject, time in (("kelmo", ours), ("icu", 1.0)) for size in (1, 8, 9, 32, 33, 100)}
                with mock.patch.multiple(bench_report, TARGETS=limits, GROWTHS=(), COUNTER_TARGETS={}):
                    _, text = printed(bench_report.Report(found).print)
                self.assertIn(f"\n{met} of 5 targets are met.\n", text)

    def test_a_run_that_failed_or_took_no_time_is_refused(self):
        good = {"name": "lookup/hot/kelmo/100", "run_type": "iteration", "real_time": 2.0, "time_unit": "us"}
        for changed, complaint in (
            ({}, None),
            ({"error_occurred": True, "error_message": "no file"}, "lookup/hot/kelmo/100: no file"),
            ({"real_time": 0.0}, "lookup/hot/kelmo/100: no time was measured"),
            ({"real_time": float("nan")}, "lookup/hot/kelmo/100: no time was measured"),
        ):
            with self.subTest(complaint), tempfile.TemporaryDirectory() as folder:
                file = pathlib.Path(folder) / "result.json"
                file.write_text(json.dumps({"benchmarks": [{**good, **changed}]}))
                if complaint:
                    with self.assertRaises(SystemExit) as refusal:
                        bench_report.minima([file])
                    self.assertEqual(str(refusal.exception), complaint)
                else:
                    self.assertEqual(bench_report.minima([file]), {"lookup/hot/kelmo/100": {"ns": 2000.0}})


class LangBenchmark(unittest.TestCase):
    """The verdict of benchmarks/lang_benchmark.py."""

    TIMES = {"one": 0.2, "all": 4.9, "msgfmt -c": 0.1, "pofilter": 2.0}

    def verdict(self, **changed):
        subjects = []
        for name, seconds in {**self.TIMES, **changed}.items():
            if seconds:
                subjects.append(lang_benchmark.Subject(name, [], limit={"msgfmt -c": 2.0, "pofilter": 0.1}.get(name)))
                subjects[-1].times = [seconds / 2, seconds, seconds * 2]
        is_met, text = printed(lang_benchmark.report, subjects)
        return is_met, text.count("MISSED")

    def test_each_target_can_be_missed(self):
        for name, changed, verdict in (
            ("all at their limits", {}, (True, 0)),
            ("all languages too slow", {"all": 5.0}, (False, 1)),
            ("one language slower than both peers allow", {"one": 0.21}, (False, 2)),
            ("msgfmt is faster", {"msgfmt -c": 0.09}, (False, 1)),
            ("pofilter is faster", {"pofilter": 1.9}, (False, 1)),
            ("without peers", {"msgfmt -c": None, "pofilter": None}, (True, 0)),
        ):
            with self.subTest(name):
                self.assertEqual(self.verdict(**changed), verdict)

    def test_a_run_that_fails_is_refused(self):
        lang_benchmark.Subject("fine", ["true"]).measure(".")
        with self.assertRaises(SystemExit) as refusal:
            lang_benchmark.Subject("crash", ["false"]).measure(".")
        self.assertEqual(str(refusal.exception), "false ended with 1")


class Coverage(unittest.TestCase):
    """The problems that tools/coverage.py finds in a file."""

    SOURCE = """void F(int i) {
  // not covered, false of `i > 0`: no caller has it
  if (i > 0) {
    Call();
  } else {
    // not covered: Windows only
    Other();
  }
}
""".splitlines()
    LINES = {1: 1, 3: 1, 4: 1, 5: 1, 7: 0, 8: 1, 9: 1}  # the end of a block that was not run counts as run
    CONDITION = (3, 7, 3, 12)
    BRANCHES = {CONDITION: [1, 0]}

    def problems(self, lines=(), branches=None, old="", new=""):
        source = [line.replace(old, new) for line in self.SOURCE]
        return coverage.Report("f.cpp", source, {**self.LINES, **dict(lines)}, branches or self.BRANCHES).problems

    def test_lines_that_were_run_or_are_excused_are_no_problem(self):
        self.assertEqual(self.problems(), [])

    def test_lines_that_were_not_run_and_wrong_excuses_are_problems(self):
        of_block, of_branch = "// not covered: Windows only", "// not covered, false of `i > 0`: no caller has it"
        for name, changed, problems in (
            ("a line", dict(lines={4: 0}), ["f.cpp:4: Call();"]),
            ("a line with a removed excuse", dict(old=of_block, new=""), ["f.cpp:7: Other();"]),
            ("a line with an excuse without a reason", dict(old=of_block, new="// not covered:"), ["f.cpp:7: Other();"]),
            ("a branch", dict(branches={self.CONDITION: [0, 0]}), ["f.cpp:3: true of `i > 0`"]),
            ("a branch with a removed excuse", dict(old=of_branch, new=""), ["f.cpp:3: false of `i > 0`"]),
            ("a branch with an excuse of the other outcome", dict(old="false of", new="true of"),
             ["f.cpp:3: true of `i > 0`: was run, although it says that it cannot be", "f.cpp:3: false of `i > 0`"]),
            ("an excused line that was run", dict(lines={7: 1}),
             ["f.cpp:7: Other();: was run, although it says that it cannot be"]),
            ("an excused branch that was taken", dict(branches={self.CONDITION: [1, 1]}),
             ["f.cpp:3: false of `i > 0`: was run, although it says that it cannot be"]),
            ("an excuse of a missing branch", dict(branches={(4, 5, 4, 9): [1, 1]}),
             ["f.cpp:2: excuses nothing: false of `i > 0`: no caller has it"]),
        ):
            with self.subTest(name):
                self.assertEqual(self.problems(**changed), problems)

    def test_an_excuse_does_not_cover_the_end_of_its_block(self):
        source = ["  // not covered: Windows only", "    Other();", "    } while (More());"]
        self.assertEqual(coverage.Report("f.cpp", source, {2: 0, 3: 1}, {}).problems,
                         ["f.cpp:3: } while (More());: was run, although it says that it cannot be"])

    def test_an_excuse_of_a_block_that_is_not_compiled_is_a_problem(self):
        self.assertEqual(coverage.Report("f.cpp", ["  // not covered: Windows only", "  Other();"], {}, {}).problems, [
            "f.cpp:1: excuses nothing: Windows only"])


class Mutate(unittest.TestCase):
    """How tools/mutants/mutate.py reads the list of equivalent mutants and judges a run."""

    MUTANTS = {"a.cpp": mutate.Changes("a.cpp", "int F() {\n  const int room = 64;\n  return room < 7;\n}\n").all()}
    LIST = """# A comment.

a.cpp
  const int room = 64;
    64 -> 63
    64 -> 65
    = room shows in nothing
"""

    def wrong(self, old="", new=""):
        self.assertEqual(self.LIST.count(old) if old else 1, 1)
        return mutate.equivalent_mutants(self.MUTANTS, self.LIST.replace(old, new) if old else self.LIST)[1]

    def test_a_list_that_matches_is_accepted(self):
        known, wrong = mutate.equivalent_mutants(self.MUTANTS, self.LIST)
        self.assertEqual(wrong, [])
        self.assertEqual(sorted(m.change for m in self.MUTANTS["a.cpp"] if m.name in known), ["64 -> 63", "64 -> 65"])

    def test_a_list_that_does_not_match_is_refused(self):
        line = "a.cpp: const int room = 64;: "
        reason = "    = room shows in nothing\n"
        for name, old, new, wrong in (
            ("another file", "a.cpp", "b.cpp",
             ["b.cpp: const int room = 64;: 64 -> 63: there is no such mutant",
              "b.cpp: const int room = 64;: 64 -> 65: there is no such mutant"]),
            ("another line", "room = 64;", "rooms = 64;",
             ["a.cpp: const int rooms = 64;: 64 -> 63: there is no such mutant",
              "a.cpp: const int rooms = 64;: 64 -> 65: there is no such mutant"]),
            ("another change", "64 -> 65", "64 -> 66", [f"{line}64 -> 66: there is no such mutant"]),
            ("no reason", reason, "", [f"{line}64 -> 63, 64 -> 65: no reason"]),
            ("an empty reason", "= room shows in nothing", "= ",
             [f"{line}=: there is no such mutant", f"{line}64 -> 63, 64 -> 65, =: no reason"]),
            ("the reason of another line", reason, f"  return room < 7;\n    7 -> 8\n{reason}",
             [f"{line}64 -> 63, 64 -> 65: no reason"]),
            ("a line without a change", reason, f"{reason}  return room < 7;\n",
             ["a.cpp: return room < 7;: no change: no reason"]),
            ("a reason without a change", reason, f"{reason}  return room < 7;\n{reason}",
             ["a.cpp: return room < 7;: no change: = room shows in nothing"]),
        ):
            with self.subTest(name):
                self.assertEqual(self.wrong(old, new), wrong)

    def judged(self, *states, wanted=None):
        results = {m.name: (m, state, "") for m, state in zip(self.MUTANTS["a.cpp"], states)}
        with tempfile.TemporaryDirectory() as folder, mock.patch.object(mutate, "WORK", pathlib.Path(folder)):
            return printed(mutate.report, results, {}, self.MUTANTS, wanted or len(states), 1)

    def test_a_run_passes_only_if_all_were_tried_and_caught(self):
        for states, wanted, passes, said in (
            (("caught", "timed out", "not compiled"), None, True, "2 caught (100.0 %), 0 survived; 1 did not compile."),
            (("caught", "survived"), None, False, "Survivors. Write a test for each"),
            (("caught",), 3, False, "2 mutants were not tried."),
            (("caught", "lost"), None, False, "1 mutants were not tried."),
            (("not compiled", "not compiled"), None, False, "0 built and tested"),
        ):
            with self.subTest(states=states, wanted=wanted):
                result, text = self.judged(*states, wanted=wanted)
                self.assertEqual(result, passes, text)
                self.assertIn(said, text)


if __name__ == "__main__":
    unittest.main()
