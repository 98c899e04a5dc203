#!/usr/bin/env python3
"""Draws the chart of docs/performance.md: how times grow with the size of the dictionary.

    tools/bench_chart.py benchmarks/results.json docs/performance.svg

The same results give the same file, to the byte. Needs gnuplot.
"""

import json
import subprocess
import sys

# Title, rows of results.json, what the sizes count.
PANELS = (
    ("Finding a text", "lookup/shuffled", "entries, asked in disorder"),
    ("Loading, for each entry", "loading/english", "entries of the English file"),
    ("A missing key, asked again", "missing/repeated", "messages listed before"),
    ("A missing key, asked for the first time", "missing/first", "keys"),
)
# A subject looks the same in every panel; the legends have this order.
COLORS = {
    "kelmo": "#c2410c",
    "boost_flat_map": "#1d4ed8",
    "absl_flat_hash_map": "#0891b2",
    "std_unordered_map": "#4d7c0f",
    "std_unordered_set": "#4d7c0f",
    "std_map": "#a16207",
    "gettext": "#7e22ce",
    "icu": "#be185d",
    "simdjson": "#1d4ed8",
    "simdjson_reserved": "#0891b2",
    "key_length": "#9ca3af",
    "read_validate_decode": "#9ca3af",
}
PAGE = """set terminal svg size 900,860 font "sans-serif,13" background rgb "white"
set output "{target}"
set multiplot layout 2,2 title "{machine}; both scales are logarithmic"
set logscale xy
set format xy "%.0f"
set rmargin 5
set bmargin 8
set border 3
set tics nomirror
set mxtics 1
set mytics 1
set grid xtics ytics linetype 1 linewidth 1 linecolor rgb "#e5e7eb"
set ylabel "nanoseconds"
set key noenhanced horizontal at graph 0.5,-0.22 center top
"""
PANEL = """set title "{title}"
set xlabel "{counted}"
plot {curves}
"""
CURVE = "{data} using 1:2 title '{subject}' with linespoints linecolor rgb '{color}' linewidth {width} pointtype 7 pointsize 0.5"


def curves(minima, row):
    """{subject: [(size, nanoseconds)]}."""
    found = {}
    for name, entry in minima.items():
        job, part, subject, *size = name.split("/")
        if f"{job}/{part}" == row:
            found.setdefault(subject, []).append((int(size[0]), entry["ns"]))
    return found


def main():
    source, target = sys.argv[1:]
    with open(source, encoding="utf-8") as file:
        results = json.load(file)
    script = PAGE.format(target=target, machine=f"{results['cpu']}, {results['compiler']}")
    for number, (title, row, counted) in enumerate(PANELS):
        found = curves(results["minima"], row)
        there = [subject for subject in COLORS if subject in found]
        for subject in there:
            points = "".join(f"{size} {time}\n" for size, time in sorted(found[subject]))
            script += f"$points_{number}_{subject} << end\n{points}end\n"
        script += PANEL.format(title=title, counted=counted, curves=", ".join(
            CURVE.format(data=f"$points_{number}_{subject}", subject=subject, color=COLORS[subject],
                         width=2.5 if subject == "kelmo" else 1.5) for subject in there))
    subprocess.run(["gnuplot"], input=script, text=True, check=True)


main()
