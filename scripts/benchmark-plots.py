#!/usr/bin/env python3
"""Draws how the time of an answer grows, as two SVG pictures.

usage: benchmark-plots.py FIGURES PLOTS

FIGURES is the folder with the figures that scripts/benchmark has gathered. PLOTS gets
"growth-entities.svg" and "growth-products.svg": a panel for each class of queries, both axes
logarithmic.
"""

import json
import math
import sys
from pathlib import Path
from xml.sax.saxutils import escape

FIGURES, PLOTS = Path(sys.argv[1]), Path(sys.argv[2])

# What is drawn: a name, the engines that it may be (the fastest counts), colour, dashes.
LINES = [
    ("floor", ["floor"], "#999999", "2 3"),
    ("plain walk", ["walk"], "#2a9d5c", "6 3"),
    ("SQLite", ["SQLite b-tree", "SQLite trigrams"], "#d1762a", ""),
    ("library", ["library"], "#1f4fa3", ""),
]
COLUMNS, WIDTH, HEIGHT = 5, 216, 168
LEFT, RIGHT, TOP, BOTTOM = 44, 10, 26, 24
HEAD = 58


def times(size):
    """The seconds of each engine by class."""
    report = json.loads((FIGURES / f"queries-{size}.json").read_text(encoding="utf-8"))
    return {
        row["class"]: {figure["engine"]: figure["seconds"] for figure in row["figures"]}
        for row in report["classes"]
    }


def label(seconds):
    for unit, name in ((1, "s"), (1e-3, "ms"), (1e-6, "µs"), (1e-9, "ns")):
        if seconds >= unit * 0.999:
            return f"{seconds / unit:.0f} {name}"
    return ""


def count(number):
    return {3: "10³", 4: "10⁴", 5: "10⁵", 6: "10⁶"}.get(round(math.log10(number))) if number >= 1000 else str(number)


def text(x, y, words, anchor="middle", size=10, extra=""):
    return (f'<text x="{x:.1f}" y="{y:.1f}" font-size="{size}" text-anchor="{anchor}"{extra}>'
            f"{escape(words)}</text>")


def panel(title, curves, steps, x0, y0):
    """One class: curves are lists of (number, seconds) by line name."""
    inner_width, inner_height = WIDTH - LEFT - RIGHT, HEIGHT - TOP - BOTTOM
    seconds = [s for points in curves.values() for _, s in points]
    low = math.floor(math.log10(min(seconds)))
    high = max(math.ceil(math.log10(max(seconds))), low + 1)
    first, last = math.log10(steps[0]), math.log10(steps[-1])

    def place(number, value):
        return (x0 + LEFT + inner_width * (math.log10(number) - first) / (last - first),
                y0 + TOP + inner_height * (high - math.log10(value)) / (high - low))

    parts = [text(x0 + LEFT, y0 + TOP - 8, title, "start", 11, ' font-weight="bold"')]
    for power in range(low, high + 1):
        _, y = place(steps[0], 10**power)
        parts.append(f'<line x1="{x0 + LEFT}" x2="{x0 + WIDTH - RIGHT}" y1="{y:.1f}" y2="{y:.1f}" '
                     'stroke="#dddddd"/>')
        if high - low <= 5 or (power - low) % 2 == 0:
            parts.append(text(x0 + LEFT - 4, y + 3, label(10.0**power), "end", 9))
    for step in steps:
        x, _ = place(step, 10**low)
        parts.append(f'<line x1="{x:.1f}" x2="{x:.1f}" y1="{y0 + TOP}" y2="{y0 + HEIGHT - BOTTOM}" '
                     'stroke="#eeeeee"/>')
        parts.append(text(x, y0 + HEIGHT - BOTTOM + 13, count(step), size=9))
    for name, _, colour, dashes in LINES:
        points = [place(*point) for point in curves.get(name, [])]
        if not points:
            continue
        path = " ".join(f"{x:.1f},{y:.1f}" for x, y in points)
        width = 2.2 if name == "library" else 1.4
        parts.append(f'<polyline points="{path}" fill="none" stroke="{colour}" '
                     f'stroke-width="{width}" stroke-dasharray="{dashes or "none"}"/>')
        parts += [f'<circle cx="{x:.1f}" cy="{y:.1f}" r="{width:.1f}" fill="{colour}"/>'
                  for x, y in points]
    return parts


def draw(file, title, sizes):
    """sizes: the number on the x axis and the name of the size, ascending."""
    measured = [(number, times(size)) for number, size in sizes]
    classes = [name for name in measured[-1][1] if all(name in found for _, found in measured)]
    rows = math.ceil(len(classes) / COLUMNS)
    width, height = COLUMNS * WIDTH + 10, HEAD + rows * HEIGHT + 6
    parts = [
        f'<svg xmlns="http://www.w3.org/2000/svg" width="{width}" height="{height}" '
        f'viewBox="0 0 {width} {height}" font-family="sans-serif" fill="#222222">',
        f'<rect width="{width}" height="{height}" fill="#ffffff"/>',
        text(14, 22, title, "start", 15, ' font-weight="bold"'),
    ]
    x = 14
    for name, _, colour, dashes in reversed(LINES):
        parts.append(f'<line x1="{x}" x2="{x + 26}" y1="42" y2="42" stroke="{colour}" '
                     f'stroke-width="2.2" stroke-dasharray="{dashes or "none"}"/>')
        parts.append(text(x + 32, 46, name, "start", 12))
        x += 48 + 8 * len(name)
    for n, name in enumerate(classes):
        curves = {}
        for line, engines, _, _ in LINES:
            points = [(number, min(found[name][e] for e in engines if e in found[name]))
                      for number, found in measured if any(e in found[name] for e in engines)]
            if points:
                curves[line] = points
        parts += panel(name, curves, [number for number, _ in sizes],
                       n % COLUMNS * WIDTH, HEAD + n // COLUMNS * HEIGHT)
    parts.append("</svg>")
    (PLOTS / file).write_text("\n".join(parts) + "\n", encoding="utf-8")


draw("growth-entities.svg", "Time of one answer by the number of entities, in 200 products",
     [(10**power, f"{10**power}x200") for power in range(3, 7)])
draw("growth-products.svg", "Time of one answer by the number of products, of 100,000 entities",
     [(products, f"100000x{products}") for products in (1, 10, 100, 1000)])
