#!/usr/bin/env python3
"""Draws the pictures of docs/performance.md, one for each question.

    tools/bench_pictures.py benchmarks/results.json docs

The same results give the same files, to the byte. If two labels of a picture overlap, no file is written. A picture
whose row was not measured is left out.
"""

import collections
import itertools
import json
import math
import pathlib
import sys
from xml.sax.saxutils import escape

# row: in results.json. y_axis and x_axis: their titles. digits: the leading digits of the numbers on the x axis.
# lower_bound: a subject of LOWER_BOUNDS, or none.
Picture = collections.namedtuple("Picture", "row question note y_axis x_axis digits lower_bound", defaults=((1,), None))
PICTURES = {
    "find": Picture(
        "lookup/shuffled", "How long does a text take to find?",
        "LANG of every key, in disorder. The others hold the same texts.",
        "nanoseconds for one text", "entries in the dictionary"),
    "length": Picture(
        "lookup/length_1000", "How long does a key of each length take to find?",
        "LANG of 1,000 ASCII keys of one length, in disorder, beside other maps.",
        "nanoseconds for one text", "characters of the key", digits=(1, 3), lower_bound="key_length"),
    "load": Picture(
        "loading/english", "How long does an entry take to load?",
        "LoadDictionary, in English. simdjson reads JSON into a std::unordered_map.",
        "nanoseconds for one entry", "entries in the file"),
    "missing": Picture(
        "missing/repeated", "How long does a missing key take?",
        "LANG of a key whose message is listed already. The maps keep no messages.",
        "nanoseconds for one key", "messages in the list"),
    "missing_first": Picture(
        "missing/first", "How long does a missing key take the first time?",
        "LANG adds a message to the list. The set takes a copy of the same message.",
        "nanoseconds for one key", "missing keys, one after another"),
}

# The colours of Okabe and Ito, which colour-blind readers can distinguish. Ours is darker than theirs, because our name
# is written in it.
Subject = collections.namedtuple("Subject", "name color")
SUBJECTS = {
    "boost_flat_map": Subject("Boost flat map", "#0072b2"),
    "absl_flat_hash_map": Subject("Abseil flat_hash_map", "#56b4e9"),
    "std_unordered_map": Subject("std::unordered_map", "#009e73"),
    "std_unordered_set": Subject("std::unordered_set", "#009e73"),
    "std_map": Subject("std::map", "#e69f00"),
    "gettext": Subject("gettext", "#000000"),
    "icu": Subject("ICU", "#cc79a7"),
    "simdjson": Subject("simdjson", "#0072b2"),
    "simdjson_reserved": Subject("simdjson, reserved", "#56b4e9"),
    "kelmo": Subject("kelmo", "#c24f00"),  # the last, so that its line is above the others
}
# The minimum cost of the work. Their lines are below the others.
LOWER_BOUNDS = {"key_length": Subject("end of the key alone", "#8c959f")}
INK, MUTED, GRID = "#24292f", "#57606a", "#e1e4e8"

WIDTH, HEIGHT = 700, 410
LEFT, RIGHT, TOP, BOTTOM = 62, 420, 98, 338  # edges of the plot
LABEL_GAP = 20
CHARACTER = {"normal": 0.64, "bold": 0.72}  # width / size; at least that of a digit in DejaVu Sans, a wide font


class MisplacedLabel(Exception):
    """A label overlaps another one, or leaves the picture."""


class Drawing:
    """Elements of an SVG file, and the boxes of its texts."""

    def __init__(self, title):
        # A light background is readable on light and dark pages. prefers-color-scheme does not help: in <img> it is the
        # setting of the browser, not of the page, and many viewers ignore it.
        self._elements = [
            f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {WIDTH} {HEIGHT}" width="{WIDTH}" height="{HEIGHT}" '
            'role="img" font-family="Helvetica, Arial, sans-serif">',
            f"<title>{escape(title)}</title>",
            f'<rect x="0.5" y="0.5" width="{WIDTH - 1}" height="{HEIGHT - 1}" rx="10" fill="#ffffff" '
            'stroke="#d0d7de"/>',
        ]
        self._boxes = []

    def text(self, x, y, text, size=13, anchor="start", color=INK, weight="normal"):
        """`y` is the vertical centre."""
        width = CHARACTER[weight] * size * len(text)
        left = x - {"start": 0, "middle": width / 2, "end": width}[anchor]
        self._boxes.append((left, y - size / 2, left + width, y + size / 2, text))
        self._elements.append(f'<text x="{x:.1f}" y="{y + 0.35 * size:.1f}" font-size="{size}" font-weight="{weight}" '
                              f'text-anchor="{anchor}" fill="{color}">{escape(text)}</text>')

    def line(self, points, color, width=1):
        path = " ".join(f"{x:.1f},{y:.1f}" for x, y in points)
        self._elements.append(f'<polyline points="{path}" fill="none" stroke="{color}" stroke-width="{width}" '
                              'stroke-linejoin="round"/>')

    def dot(self, x, y, color, radius):
        self._elements.append(f'<circle cx="{x:.1f}" cy="{y:.1f}" r="{radius}" fill="{color}"/>')

    def svg(self):
        for (left, top, right, bottom, text), other in itertools.combinations(self._boxes, 2):
            if left < other[2] and other[0] < right and top < other[3] and other[1] < bottom:
                raise MisplacedLabel(f"{text!r} and {other[4]!r} overlap")
        for left, top, right, bottom, text in self._boxes:
            if left < 0 or top < 0 or right > WIDTH or bottom > HEIGHT:
                raise MisplacedLabel(f"{text!r} leaves the picture")
        return "\n".join([*self._elements, "</svg>", ""])


def spread(wanted, gap, lowest, highest):
    """Positions from `lowest` to `highest`, at least `gap` apart, as close as possible to `wanted`, which ascend."""
    groups = []  # neighbours that touch: the mean of the positions wanted for the first of them, and their number
    for number, position in enumerate(wanted):
        mean, count = position - number * gap, 1
        while groups and groups[-1][0] > mean:
            previous_mean, previous_count = groups.pop()
            sum_of_counts = previous_count + count
            mean, count = (previous_mean * previous_count + mean * count) / sum_of_counts, sum_of_counts
        groups.append((mean, count))
    highest_first = highest - (len(wanted) - 1) * gap
    means = [max(lowest, min(mean, highest_first)) for mean, count in groups for _ in range(count)]
    return [mean + number * gap for number, mean in enumerate(means)]


def round_numbers(lowest, highest, digits):
    """Numbers that begin with one of `digits`. The first is `lowest` or less, the last is `highest` or more."""
    powers = range(math.floor(math.log10(lowest)), math.ceil(math.log10(highest)) + 1)
    numbers = [digit * 10**power for power in powers for digit in digits]
    first = max(i for i, number in enumerate(numbers) if number <= lowest)
    last = min(i for i, number in enumerate(numbers) if number >= highest)
    return numbers[first:last + 1]


def logarithmic(lowest, highest, start, end):
    """The function from numbers to positions on an axis."""
    return lambda number: start + (end - start) * math.log(number / lowest) / math.log(highest / lowest)


def subjects(picture):
    """{subject: Subject} of all that the picture may show, in the order of drawing."""
    return {**{name: bound for name, bound in LOWER_BOUNDS.items() if name == picture.lower_bound}, **SUBJECTS}


def curves(minima, picture):
    """{subject: [(size, nanoseconds)]}, sorted by size."""
    points = {}
    for name, entry in minima.items():
        job, part, subject, *size = name.split("/")
        if f"{job}/{part}" == picture.row:
            points.setdefault(subject, []).append((int(size[0]), entry["ns"]))
    return {subject: sorted(points[subject]) for subject in subjects(picture) if subject in points}


def draw(picture, results):
    """The text of the file, or None if nothing of the picture was measured."""
    drawn = curves(results["minima"], picture)
    if not drawn:
        return None
    sizes, times = zip(*itertools.chain(*drawn.values()))
    # The y axis ends at no less than five times its start, so that small differences look small.
    middle = math.sqrt(min(times) * max(times))
    ticks = round_numbers(min(*times, middle / 5**0.5), max(*times, middle * 5**0.5), (1, 2, 5))
    across = logarithmic(min(sizes), max(sizes), LEFT + 12, RIGHT)
    up = logarithmic(ticks[0], ticks[-1], BOTTOM, TOP)

    drawing = Drawing(picture.question)
    drawing.text(18, 28, picture.question, size=18, weight="bold")
    drawing.text(18, 52, picture.note, color=MUTED)
    drawing.text(18, 78, picture.y_axis + " (lower is better; both scales are logarithmic)")
    for tick in ticks:
        drawing.line([(LEFT, up(tick)), (RIGHT, up(tick))], GRID)
        drawing.text(LEFT - 8, up(tick), f"{tick:,}", anchor="end")
    for tick in round_numbers(min(sizes), max(sizes), picture.digits):
        drawing.line([(across(tick), TOP), (across(tick), BOTTOM)], GRID)
        drawing.text(across(tick), BOTTOM + 16, f"{tick:,}", anchor="middle")
    drawing.line([(LEFT, BOTTOM), (RIGHT, BOTTOM)], MUTED)
    drawing.text((LEFT + RIGHT) / 2, BOTTOM + 37, picture.x_axis, anchor="middle")
    drawing.text(18, HEIGHT - 14, f"{results['cpu']}, {results['compiler']}", size=11, color=MUTED)

    ends = sorted((up(points[-1][1]), subject) for subject, points in drawn.items())
    labels = spread([y for y, _ in ends], LABEL_GAP, TOP, BOTTOM)
    label_of = {subject: label for (_, subject), label in zip(ends, labels)}
    for subject, points in drawn.items():
        name, color = subjects(picture)[subject]
        ours = subject == "kelmo"
        positions = [(across(size), up(time)) for size, time in points]
        drawing.line([positions[-1], (RIGHT + 22, label_of[subject])], color)
        drawing.line(positions, color, width=4 if ours else 2)
        for x, y in positions:
            drawing.dot(x, y, color, radius=5 if ours else 3.5)
        drawing.text(RIGHT + 26, label_of[subject], f"{name}, {points[-1][1]:,.0f} ns",
                     color=color if ours else INK, weight="bold" if ours else "normal")
    return drawing.svg()


def draw_all(results):
    """{file name: text}."""
    drawn = {f"performance_{name}.svg": draw(picture, results) for name, picture in PICTURES.items()}
    return {name: svg for name, svg in drawn.items() if svg}


def main():
    source, folder = map(pathlib.Path, sys.argv[1:])
    for name, svg in draw_all(json.loads(source.read_text("utf-8"))).items():
        (folder / name).write_text(svg, "utf-8")


if __name__ == "__main__":
    main()
