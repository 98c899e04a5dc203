"""Compares the pictures of docs/performance.md with the results that they show, and tests the drawing.

    python3 -B check_pictures.py TOP-FOLDER

After a change of the drawing: tools/bench_pictures.py benchmarks/results.json docs
"""

import json
import pathlib
import sys
import unittest

top = pathlib.Path(sys.argv[1])
sys.path.insert(0, str(top / "tools"))
import bench_pictures


def results():
    return json.loads((top / "benchmarks/results.json").read_text("utf-8"))


class Pictures(unittest.TestCase):
    def test_committed_pictures_show_the_committed_results(self):
        committed = {file.name: file.read_text("utf-8") for file in (top / "docs").glob("performance_*.svg")}
        drawn = bench_pictures.draw_all(results())
        self.assertEqual(sorted(committed), sorted(drawn))
        for name in drawn:
            with self.subTest(name):
                self.assertEqual(committed[name], drawn[name])

    def test_the_page_shows_each_picture(self):
        page = (top / "docs/performance.md").read_text("utf-8")
        for name in bench_pictures.draw_all(results()):
            self.assertIn(f"]({name})", page)

    def test_another_time_changes_only_the_picture_of_its_row(self):
        falsified = results()
        falsified["minima"]["loading/english/simdjson/1000"]["ns"] *= 1.1
        before, after = bench_pictures.draw_all(results()), bench_pictures.draw_all(falsified)
        self.assertEqual([name for name in before if before[name] != after[name]], ["performance_load.svg"])

    def test_lookups_by_length_are_drawn_if_they_are_measured(self):
        made_up = results()
        row = bench_pictures.PICTURES["length"].row
        others = {name: entry for name, entry in made_up["minima"].items() if not name.startswith(row + "/")}
        made_up["minima"] = others
        before = bench_pictures.draw_all(made_up)
        lengths = {"kelmo": 1.25, "boost_flat_map": 2, "absl_flat_hash_map": 2.5, "key_length": 0.5}
        made_up["minima"] = {**others, **{f"{row}/{subject}/{length}": {"ns": 10 + factor * length}
                                          for subject, factor in lengths.items() for length in (1, 20, 300)}}
        after = bench_pictures.draw_all(made_up)
        new = "performance_length.svg"
        self.assertNotIn(new, before)
        self.assertEqual({**before, new: after[new]}, after)
        for label in ("kelmo, 385 ns", "Boost flat map, 610 ns", "Abseil flat_hash_map, 760 ns",
                      "end of the key alone, 160 ns", "characters of the key", ">300<"):
            self.assertIn(label, after[new])
        self.assertEqual(after[new].count("<circle"), 3 * len(lengths))

    def test_labels_of_lines_with_the_same_end_do_not_overlap(self):
        equal = results()
        for name, entry in equal["minima"].items():
            if name.startswith("lookup/shuffled/") and name.endswith("/1000000"):
                entry["ns"] = 15
        self.assertIn("std::map, 15 ns", bench_pictures.draw_all(equal)["performance_find.svg"])

    def test_overlapping_labels_are_refused(self):
        drawing = bench_pictures.Drawing("")
        drawing.text(100, 100, "one")
        drawing.text(100, 113, "just below")
        drawing.svg()
        drawing.text(100, 125, "too close")
        with self.assertRaisesRegex(bench_pictures.MisplacedLabel, "'just below' and 'too close' overlap"):
            drawing.svg()

    def test_a_label_that_leaves_the_picture_is_refused(self):
        drawing = bench_pictures.Drawing("")
        drawing.text(690, 100, "right")
        with self.assertRaisesRegex(bench_pictures.MisplacedLabel, "'right' leaves the picture"):
            drawing.svg()

    def test_positions_are_spread_as_little_as_possible(self):
        for wanted, expected in (
            ([], []),
            ([10, 30], [10, 30]),
            ([10, 14], [7, 17]),
            ([20, 20, 20], [10, 20, 30]),
            ([2, 32, 32, 38], [2, 24, 34, 44]),
            ([10, 23, 24], [9, 19, 29]),
            ([0, 0, 30], [0, 10, 30]),
            ([20, 50, 50], [20, 40, 50]),
        ):
            with self.subTest(wanted=wanted):
                self.assertEqual(bench_pictures.spread(wanted, 10, 0, 50), expected)

    def test_scales_begin_and_end_at_round_numbers(self):
        self.assertEqual(bench_pictures.round_numbers(15, 1700, (1, 2, 5)), [10, 20, 50, 100, 200, 500, 1000, 2000])
        self.assertEqual(bench_pictures.round_numbers(100, 1000, (1,)), [100, 1000])


unittest.main(argv=sys.argv[:1])
