"""Plots as SVG: bars of medians with every run as a dot, and exponents."""

import statistics
from html import escape

from .rows import number

WIDTH = 720
LEFT = 220
RIGHT = 110
LINE = 46
TOP = 44
OURS = "#25c17a"
PEER = "#9aa5b1"
TARGET = "#d4453a"
# Runs scatter; a slope of so much over one is still a straight line.
LINEAR = 1.05


def _text(x, y, text, anchor="start", size=13, weight="normal", fill="#2b3440"):
    return (f'<text x="{x:.1f}" y="{y:.1f}" text-anchor="{anchor}" font-size="{size}" font-weight="{weight}" '
            f'fill="{fill}">{escape(text)}</text>')


def _picture(height, label, parts):
    return (f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {WIDTH} {height}" width="{WIDTH}" height="{height}" '
            f'role="img" aria-label="{escape(label)}" font-family="sans-serif">\n'
            f'<rect width="{WIDTH}" height="{height}" fill="#ffffff"/>\n' + "\n".join(parts) + "\n</svg>\n")


def _mark(x, top, bottom, text):
    """A dashed line across the bars with its name below, kept inside the picture."""
    anchor = "end" if x > WIDTH - 160 else "middle"
    return [f'<line x1="{x:.1f}" x2="{x:.1f}" y1="{top}" y2="{bottom}" stroke="{TARGET}" stroke-width="1.5" '
            f'stroke-dasharray="5 3"/>', _text(x, bottom + 16, text, anchor, 12, fill=TARGET)]


def pair(row):
    bars = [("vant-student", row.ours, OURS)]
    if row.peer:
        bars.append((row.peer_name, row.peer, PEER))
    most = max([row.most] + [value for _, samples, _ in bars for value in samples]) * 1.04

    def place(value):
        return LEFT + (WIDTH - LEFT - RIGHT) * value / most

    bottom = TOP + LINE * len(bars)
    parts = [_text(16, 26, row.title, size=15, weight="bold"), *_mark(place(row.most), TOP, bottom, row.target_text)]
    for index, (name, samples, colour) in enumerate(bars):
        middle = TOP + LINE * index + LINE / 2
        median = statistics.median(samples)
        parts.append(_text(LEFT - 10, middle + 4, name if len(name) < 30 else name[:28] + "…", "end"))
        parts.append(f'<rect x="{LEFT}" y="{middle - 12:.1f}" width="{place(median) - LEFT:.1f}" height="24" '
                     f'fill="{colour}" rx="3"/>')
        parts += [f'<circle cx="{place(value):.1f}" cy="{middle:.1f}" r="3" fill="#2b3440" fill-opacity="0.45"/>'
                  for value in samples]
        parts.append(_text(WIDTH - 12, middle + 4, f"{number(median)} {row.unit}", "end", weight="bold"))
    return _picture(bottom + 28, row.line(), parts)


def growth(rows):
    rows = [row for row in rows if row.exponent is not None]
    most = max([1.2] + [row.exponent for row in rows])
    line = 26
    left = 330

    def place(value):
        return left + (WIDTH - left - 70) * max(0, value) / most

    bottom = TOP + line * len(rows)
    parts = [_text(16, 26, "Growth: exponent over 1, 4 and 16 times the work", size=15, weight="bold"),
             *_mark(place(1), TOP, bottom, "linear")]
    for index, row in enumerate(rows):
        middle = TOP + line * index + line / 2
        parts.append(_text(left - 10, middle + 4, row.title, "end", 12))
        parts.append(f'<rect x="{left}" y="{middle - 8:.1f}" width="{place(row.exponent) - left:.1f}" height="16" '
                     f'fill="{OURS if row.exponent <= LINEAR else TARGET}" rx="2"/>')
        parts.append(_text(WIDTH - 12, middle + 4, f"{row.exponent:.2f}", "end", 12, "bold"))
    return _picture(bottom + 28, "Growth of each figure", parts)
