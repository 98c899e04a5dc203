#!/usr/bin/env python3
"""Draws what a program prints in colours as a picture of a terminal (SVG).

    tools/terminal_picture.py 'COMMAND LINE AS SHOWN' PROGRAM ARGUMENT... > PICTURE.svg

Runs the program and draws the command line and its output. It understands the colours of ANSI escape sequences: bold,
the colours 30 to 37 and 90 to 97, and their ends.
"""

import html
import re
import subprocess
import sys
import unicodedata

CELL_WIDTH, LINE_HEIGHT, MARGIN = 8.4, 19, 16
BACKGROUND, FOREGROUND = "#1e1e2e", "#cdd6f4"
COLOURS = {30: "#45475a", 31: "#f38ba8", 32: "#a6e3a1", 33: "#f9e2af", 34: "#89b4fa", 35: "#f5c2e7", 36: "#94e2d5",
           37: "#bac2de", 90: "#7f849c"}
ESCAPE = re.compile(r"\x1b\[([\d;]*)m")


def spans(line, style):
    """Splits a line at its escape sequences: [(text, bold, colour)], and the style behind it."""
    found = []
    bold, colour = style
    parts = ESCAPE.split(line)
    for index, part in enumerate(parts):
        if index % 2 == 0:
            if part:
                found.append((part, bold, colour))
            continue
        for code in map(int, (part or "0").split(";")):
            if code == 0:
                bold, colour = False, None
            elif code == 1:
                bold = True
            elif code in (22, 39):
                bold, colour = (False, colour) if code == 22 else (bold, None)
            elif code in COLOURS or code - 60 in COLOURS:
                colour = COLOURS.get(code, COLOURS.get(code - 60))
            else:
                sys.exit(f"unknown escape sequence: {part}")
    return found, (bold, colour)


def cells(text):
    return sum(0 if unicodedata.combining(c) else 2 if unicodedata.east_asian_width(c) in "WF" else 1 for c in text)


def draw(lines):
    style = (False, None)
    texts = []
    width = 0
    for row, line in enumerate(lines):
        column = 0
        found, style = spans(line, style)
        for text, bold, colour in found:
            attributes = f' fill="{colour}"' if colour else ""
            attributes += ' font-weight="bold"' if bold else ""
            if text.strip():
                indent = len(text) - len(text.lstrip(" "))
                x = MARGIN + (column + indent) * CELL_WIDTH
                y = MARGIN + (row + 1) * LINE_HEIGHT - 5
                shown = text.strip(" ")
                texts.append(f'<text x="{x:.1f}" y="{y}" textLength="{cells(shown) * CELL_WIDTH:.1f}"{attributes} '
                             f'xml:space="preserve">{html.escape(shown)}</text>')
            column += cells(text)
        width = max(width, column)
    size = f"{2 * MARGIN + width * CELL_WIDTH:.0f}", f"{2 * MARGIN + len(lines) * LINE_HEIGHT}"
    return "\n".join((
        f'<svg xmlns="http://www.w3.org/2000/svg" width="{size[0]}" height="{size[1]}" '
        f'viewBox="0 0 {size[0]} {size[1]}" font-family="DejaVu Sans Mono, Consolas, Menlo, monospace" font-size="14" '
        f'fill="{FOREGROUND}">',
        f'<rect width="100%" height="100%" rx="8" fill="{BACKGROUND}"/>', *texts, "</svg>", ""))


def main():
    shown, *command = sys.argv[1:]
    run = subprocess.run(command, check=False, capture_output=True)
    output = run.stdout.decode("utf-8")
    if not output:
        sys.exit(f"the program printed nothing and ended with {run.returncode}: {run.stderr.decode('utf-8')}")
    sys.stdout.reconfigure(encoding="utf-8", newline="\n")
    sys.stdout.write(draw([f"\x1b[90m$\x1b[0m \x1b[1m{shown}\x1b[0m", *output.rstrip("\n").split("\n")]))


if __name__ == "__main__":
    main()
