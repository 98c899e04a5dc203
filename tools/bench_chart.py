#!/usr/bin/python3
"""Draws the chart of docs/performance.md: how times grow with the size of the dictionary.

    tools/bench_chart.py benchmarks/results.json docs/performance.svg

The same results give the same file, to the byte. Debian's own Python has the package python3-matplotlib.
"""

import json
import math
import sys

import matplotlib

matplotlib.use("svg")
matplotlib.rcParams.update({"svg.hashsalt": "kelmo", "font.size": 9, "axes.spines.top": False, "axes.spines.right": False})
from matplotlib import pyplot, ticker  # noqa: E402: the lines above must come first

# Title, rows of results.json, what the sizes count.
PANELS = (
    ("Finding a text", "lookup/shuffled", "entries, asked in disorder"),
    ("Loading, for each entry", "loading/english", "entries of the English file"),
    ("A missing key, asked again", "missing/repeated", "messages listed before"),
    ("A missing key, asked for the first time", "missing/first", "keys"),
)

def peer(color):
    return {"color": color, "marker": "."}


# A subject looks the same in every panel; the legends have this order.
STYLES = {
    "kelmo": {"color": "#c2410c", "marker": "o", "linewidth": 2.5, "zorder": 3},
    "boost_flat_map": peer("#1d4ed8"),
    "absl_flat_hash_map": peer("#0891b2"),
    "std_unordered_map": peer("#4d7c0f"),
    "std_unordered_set": peer("#4d7c0f"),
    "std_map": peer("#a16207"),
    "gettext": peer("#7e22ce"),
    "icu": peer("#be185d"),
    "simdjson": peer("#1d4ed8"),
    "simdjson_reserved": peer("#0891b2"),
    "key_length": peer("#9ca3af"),
    "read_validate_decode": peer("#9ca3af"),
}


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
    figure, panels = pyplot.subplots(2, 2, figsize=(9, 8), layout="constrained", facecolor="white")
    for panel, (title, row, counted) in zip(panels.flat, PANELS):
        found = curves(results["minima"], row)
        for subject, style in STYLES.items():
            if subject in found:
                panel.plot(*zip(*sorted(found[subject])), label=subject, **style)
        panel.set_xscale("log")
        panel.set_yscale("log")
        panel.set_title(title, fontweight="bold")
        panel.set_xlabel(counted)
        panel.set_ylabel("nanoseconds")
        lowest, highest = panel.get_ylim()
        panel.set_ylim(10 ** math.floor(math.log10(lowest)), 10 ** math.ceil(math.log10(highest)))
        for axis in (panel.xaxis, panel.yaxis):
            axis.set_major_formatter(ticker.StrMethodFormatter("{x:,.0f}"))
            axis.set_minor_formatter(ticker.NullFormatter())
        panel.grid(which="major", color="#e5e7eb")
        panel.legend(frameon=False, fontsize=8, ncols=3, loc="upper center", bbox_to_anchor=(0.5, -0.16))
    figure.suptitle(f"{results['cpu']}, {results['compiler']}; both scales are logarithmic", fontsize=9)
    figure.savefig(target, metadata={"Date": None})


main()
