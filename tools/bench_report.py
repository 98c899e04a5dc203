#!/usr/bin/env python3
"""Prints the results of the benchmarks, and writes them to one file.

    tools/bench_report.py BUILD-FOLDER RESULT... --out FILE

Each RESULT is the file that a program of BUILD-FOLDER wrote with --benchmark_out. The fastest round of a benchmark
counts: other programs can only add to a time. FILE gets these minima, the machine, the compiler and the commit.
"""

import argparse
import collections
import json
import os
import pathlib
import re
import subprocess

LANGUAGES = ("english", "german", "russian")
ALPHABETS = ("cyrillic", "chinese", "mixed")
HASH_MAPS = ("boost_flat_map", "absl_flat_hash_map")
CATALOGUES = ("gettext", "boost_locale", "qt")  # libraries of texts; the keys of ICU's are ASCII
NO_MAXIMUM = 10**12

# For sizes from `smallest` to `largest`, our time must be at most `limit` times that of the fastest of `subjects`.
Target = collections.namedtuple("Target", "row limit subjects smallest largest", defaults=(0, NO_MAXIMUM))
# {row_ENTRIES: limits for keys of up to 8 characters, of up to 32, and longer}. The size is the length of the keys.
KEYS = {
    "length_1000": (1, 0.85, 0.7),
    "length_100000": (1, 0.85, 0.7),
    **{f"alphabet_{alphabet}_1000": (1, 0.85, 0.7) for alphabet in ALPHABETS},
    **{f"alphabet_{alphabet}_100000": (1, 1, 0.85) for alphabet in ALPHABETS},
}
# {row: limits for 1,000 and for 100,000 entries}
TEXTS = {
    **{f"script_{script}": (0.9, 0.55) for script in ("english", "german", "russian", "greek")},  # 1 or 2 UTF-8 bytes
    **{f"script_{script}": (1, 0.65) for script in ("hindi", "chinese", "korean", "emoji")},  # 3 or 4 bytes
    **{f"long_texts_{script}": (1.2, 0.85) for script in ("english", "chinese")},
}
TARGETS = (
    Target("lookup/shuffled", 0.5, HASH_MAPS),
    Target("lookup/shuffled", 0.25, ("gettext", "icu")),
    Target("lookup/hot", 0.7, HASH_MAPS),
    *(
        Target(f"lookup/{row}", limit, HASH_MAPS, *lengths)
        for row, limits in KEYS.items()
        for limit, lengths in zip(limits, ((0, 8), (9, 32), (33, NO_MAXIMUM)))
    ),
    Target("lookup/mixed_lengths", 0.85, HASH_MAPS),
    Target("missing/repeated", 1.5, HASH_MAPS),
    Target("missing/length_1000", 2, ("kelmo_hit",)),
    *(
        Target(f"missing/{row}", 2.5, ("std_unordered_set",))
        for row in ("first", "first_long", "first_chinese")
    ),
    *(
        target
        for language in LANGUAGES
        for target in (
            Target(f"loading/{language}", 0.9, ("simdjson",), 0, 99_999),
            Target(f"loading/{language}", 0.35, ("simdjson",), 100_000),
            Target(f"loading/{language}", 3, ("read_validate_decode",)),
        )
    ),
    *(
        Target(f"loading/{row}", limit, ("simdjson",), entries, entries)
        for row, limits in TEXTS.items()
        for limit, entries in zip(limits, (1_000, 100_000))
    ),
    Target("loading/again", 3, ("kelmo_first",)),
    *(
        Target(f"values/{operation}", 3, ("udunits_converter",))
        for operation in ("add", "add_any_units", "subtract")
    ),
    *(
        Target(f"values/{operation}", 2, ("udunits_converter",))
        for operation in ("equal", "less", "greater", "convert")
    ),
    Target("values/construct_by_code", 1.5, ("udunits_converter",)),
    *(
        Target(f"values/construct_by_{text}", *limit)
        for text in ("symbol", "name", "unknown_text")
        for limit in ((5, ("udunits_converter",)), (0.03, ("udunits_parse",)))
    ),
    *(
        Target(f"printing/separator{shape}", 0.6, ("std_to_chars",))
        for shape in ("", "_integers", "_rounded", "_small", "_large", "_many_decimals", "_any")
    ),
    *(
        Target(f"values/construct_by_{text}", 5, ("udunits_converter",))
        for text in ("cyrillic", "any_text")
    ),
    Target("printing/users_locale", 1.2, ("setlocale",)),
    *(
        Target(f"format/{row}", 1.5, ("fmt",))
        for row in ("text", "integer", "rounded", "shortest", "width", "three", "five")
    ),
    Target("start/whole_process", 1, ("gettext",)),
    *(
        target
        for row in ("shuffled", "length_1000", "length_100000", "alphabet_cyrillic_1000")
        for target in (Target(f"view/{row}", 1.25, ("lang",)), Target(f"view/{row}", 1, CATALOGUES))
    ),
    *(Target(f"view/{row}", 1, ("icu",)) for row in ("shuffled", "length_1000", "length_100000", "missing")),
    *(Target(f"view/chain_{entries}", 1, ("gettext", "qt")) for entries in (1_000, 100_000)),
    Target("view/missing", 1, CATALOGUES),
    *(
        Target(f"plural/{language}", 1, (*CATALOGUES, "icu", "icu_parsing"))
        for language in ("en", "ru", "pl", "ar")
    ),
    *(
        Target(f"quantity/convert_{values}", 2, ("plain_loop",), 1_000, 1_000)
        for values in ("numbers", "structs", "points", "point_structs")
    ),
    *(
        target
        for shape in ("usual", "integers", "small", "large", "many", "any")
        for target in (
            Target(f"quantity/print_{shape}", 2, ("std_to_chars",)),
            Target(f"quantity/print_{shape}", 0.1, ("double_locale",)),
        )
    ),
    Target("quantity/print_all_digits", 2, ("std_to_chars",)),
    *(
        Target(f"quantity/read_{shape}", 0.1, ("udunits",))
        for shape in ("millimetres", "groups", "exponent", "degrees", "name", "keyboard", "unknown", "ambiguous", "any")
    ),
    *(Target(f"adding/{language}", 1.1, ("load_dictionary",)) for language in LANGUAGES),
    *(Target(f"readers/{row}", 1.1, ("kelmo_own",)) for row in ("hit", "hit_beside_copies")),
)
# For sizes from `smallest` to `largest`, the slowest time per operation of `subject` must be at most `limit` times its
# fastest. Rows of hostile keys have no limit: they are compared with rows of ordinary keys.
Growth = collections.namedtuple("Growth", "row subject smallest largest limit", defaults=(None,))
GROWTHS = (
    *(Growth(f"loading/{language}", "kelmo", 10_000, 1_000_000, 1.5) for language in LANGUAGES),
    *(
        Growth(row, subject, 0, NO_MAXIMUM)
        for row in ("loading/hostile", "lookup/hostile")
        for subject in ("kelmo", "kelmo_usual")
    ),
    # The size is the place of the language that has the key: each costs one lookup more.
    *(
        Growth(f"view/chain_{entries}", "kelmo", 1, languages, languages)
        for entries in (1_000, 100_000)
        for languages in (2, 3)
    ),
    Growth("readers/hit", "kelmo", 1, 8, 1.1),  # the size is the number of threads
)
COUNTER_JOB, COUNTER_TARGETS = "memory", {"held_ratio": 1.25, "peak_ratio": 1}

OURS = ("kelmo", "kelmo_second")
NANOSECONDS = {"ns": 1, "us": 1e3, "ms": 1e6, "s": 1e9}
NOT_A_COUNTER = re.compile(r"name|family_index|per_family_instance_index|run_|repetition|threads|iterations|"
                           r"(real|cpu)_time|time_unit|operations|(items|bytes)_per_second")


def minima(files):
    """{name: {"ns": minimum time of one operation, counter: minimum value}}."""
    measured = {}
    for file in files:
        for run in json.loads(file.read_text())["benchmarks"]:
            if run["run_type"] != "iteration":
                continue
            if run.get("error_occurred"):
                raise SystemExit(f"{run['name']}: {run['error_message']}")
            name = re.sub(r"/(manual_time|real_time|process_time|(iterations|repeats|min_time):[^/]+)", "", run["name"])
            time = run["real_time"] * NANOSECONDS[run["time_unit"]] / run.get("operations", 1)
            if not 0 < time < float("inf"):
                raise SystemExit(f"{run['name']}: no time was measured")
            entry = measured.setdefault(name, {"ns": time})
            entry["ns"] = min(entry["ns"], time)
            for counter, value in run.items():
                if not NOT_A_COUNTER.match(counter):
                    entry[counter] = min(value, entry.get(counter, value))
    return measured


def origin(build):
    def output(*command):
        return subprocess.run(command, capture_output=True, text=True, check=True).stdout.strip()

    compiler = next(build.glob("CMakeFiles/*/CMakeCXXCompiler.cmake"))
    commands = json.loads((build / "compile_commands.json").read_text())
    library = next(entry["command"] for entry in commands if entry["file"].endswith("frame/exports.cpp"))
    cpu = re.search(r"^model name\s*: (.*)$", pathlib.Path("/proc/cpuinfo").read_text(), re.M)
    return {
        "cpu": cpu.group(1) if cpu else "unknown",
        "cores": os.cpu_count(),
        "compiler": " ".join(re.findall(r'CMAKE_CXX_COMPILER_(?:ID|VERSION) "(.+)"', compiler.read_text())),
        "flags": " ".join(re.findall(r" (-(?:O|f|m|std=|DNDEBUG|W)\S*)", library)),
        "commit": output("git", "describe", "--always", "--dirty", "--abbrev=12"),
    }


def split(name):
    """("job/row", subject, argument) of "job/row/subject/argument". The argument is a size, a text, or 0 if missing."""
    job, row, subject, argument = (*name.split("/", 3), "0")[:4]
    return f"{job}/{row}", subject, int(argument) if argument.isdigit() else argument


class Report:
    def __init__(self, measured):
        self.rows = {}  # {(row, argument): {subject: entry}}
        for name, entry in measured.items():
            row, subject, argument = split(name)
            self.rows.setdefault((row, argument), {})[subject] = entry
        self.met = self.judged = 0
        self.seen = set()  # targets, growths and counters that were compared
        self.not_judged = []

    def verdict(self, what, value, limit, missing=()):
        """A target with missing peers can be missed, but not met."""
        self.seen.add(what)
        if missing and value <= limit:
            self.not_judged.append(f"{what.row}: without {', '.join(missing)}")
            return f"at most {limit:g}: not judged"
        self.judged += 1
        self.met += value <= limit
        return f"at most {limit:g}: {'met' if value <= limit else 'MISSED'}"

    def verdicts(self, row, argument, time, entries):
        """{subject: verdict} for the fastest subject of each target."""
        verdicts = {}
        size = argument if isinstance(argument, int) else 0
        for target in TARGETS:
            if target.row == row and target.smallest <= size <= target.largest:
                measured = {subject: entries[subject]["ns"] for subject in target.subjects if subject in entries}
                missing = [subject for subject in target.subjects if subject not in measured]
                fastest = min(measured, key=measured.get, default=None)
                value = time / measured[fastest] if measured else 0
                verdicts[fastest] = self.verdict(target, value, target.limit, missing)
        return verdicts

    def print_counters(self, label, entry):
        self.not_judged += [f"{label}: without {counter}" for counter in COUNTER_TARGETS if counter not in entry]
        for counter, value in entry.items():
            if counter != "ns":
                limit = COUNTER_TARGETS.get(counter)
                verdict = self.verdict(counter, value, limit) if limit else ""
                print(f"{label:<28}{counter:<22}{value:>14,.2f}{'':11}{verdict}".rstrip())
                label = ""

    def print_times(self, label, row, argument, entries):
        ours = next((subject for subject in OURS if subject in entries), None)
        time = entries[ours]["ns"] if ours else 0
        verdicts = self.verdicts(row, argument, time, entries) if ours else {}
        for subject, entry in sorted(entries.items(), key=lambda item: (item[0] != ours, item[1]["ns"])):
            ratio = f"{time / entry['ns']:.3g}" if ours and subject != ours else ""
            print(f"{label:<28}{subject:<22}{entry['ns']:>14,.1f}{ratio:>9}  {verdicts.get(subject, '')}".rstrip())
            label = ""

    def print_row(self, row, argument, entries):
        label = row.partition("/")[2]
        if argument:
            label += f" {argument:,}" if isinstance(argument, int) else f" {argument}"
        if row.startswith(COUNTER_JOB):
            self.print_counters(label, entries["kelmo"])
        else:
            self.print_times(label, row, argument, entries)

    def print_growth(self, job):
        for growth in GROWTHS:
            times = {size: entries[growth.subject]["ns"] for (row, size), entries in self.rows.items()
                     if row == growth.row and growth.smallest <= size <= growth.largest and growth.subject in entries}
            if growth.row.startswith(job) and len(times) > 1:
                value = max(times.values()) / min(times.values())
                label = f"{growth.row.partition('/')[2]} {min(times):,} to {max(times):,}: slowest by fastest"
                missing = [f"{size:,}" for size in (growth.smallest, growth.largest) if size not in times]
                verdict = self.verdict(growth, value, growth.limit, missing) if growth.limit else ""
                print(f"{label:<50}{growth.subject:<14}{value:>9.3g}  {verdict}".rstrip())

    def print(self):
        for job in dict.fromkeys(row.partition("/")[0] for row, _ in self.rows):
            unit, ratio = ("", "") if job == COUNTER_JOB else ("ns", "ours/its")
            print(f"\n{job:<50}{unit:>14}{ratio:>9}  target")
            for row, argument in sorted(self.rows, key=lambda key: (key[0], isinstance(key[1], str), key[1])):
                if row.partition("/")[0] == job:
                    self.print_row(row, argument, self.rows[row, argument])
            self.print_growth(job)
        limited = [growth for growth in GROWTHS if growth.limit]
        not_seen = [target.row for target in (*TARGETS, *limited) if target not in self.seen]
        not_seen += [counter for counter in COUNTER_TARGETS if counter not in self.seen]
        self.not_judged += [f"{row}: not measured" for row in not_seen]
        print(f"\n{self.met} of {self.judged} targets are met.")
        if self.not_judged:
            print("Not judged:", *dict.fromkeys(self.not_judged), sep="\n  ")


def main():
    arguments = argparse.ArgumentParser(description="Prints the results of the benchmarks.")
    arguments.add_argument("build", type=pathlib.Path)
    arguments.add_argument("results", type=pathlib.Path, nargs="+")
    arguments.add_argument("--out", type=pathlib.Path, required=True)
    given = arguments.parse_args()
    measured = minima(given.results)
    date = json.loads(given.results[0].read_text())["context"]["date"]
    results = {**origin(given.build), "date": date, "minima": dict(sorted(measured.items()))}
    given.out.write_text(json.dumps(results, indent=1) + "\n")
    print("\n{cpu}, {cores} cores; {compiler}; {commit}".format(**results))
    Report(measured).print()


if __name__ == "__main__":
    main()
