#!/usr/bin/env python3
"""Draws an hour of Velko's work, minute by minute, into docs/pictures/hour.svg: tools/draw_cost.py [BENCHMARK]

BENCHMARK is the program VelkoBenchmark; by default that of the release build. The hour passes on the simulated Mac, so
the picture is the same on every machine.
"""
import json
import subprocess
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
PICTURE = ROOT / "docs" / "pictures" / "hour.svg"
BENCHMARK = ROOT / "build" / "release" / "benchmarks" / "VelkoBenchmark"

MINUTES = 60
LEFT, WIDTH, BAR = 70, 780, 13
PHASES = [(0, 20, "everything on"), (20, 40, "pop-outs off"), (40, 60, "displays asleep")]
CHARTS = [("bursts", "Wake-ups a minute, counted once if they come together", 90, 110, "#2f6fb5"),
          ("messages", "Accessibility messages a minute", 260, 110, "#b5702f")]


def measured(benchmark):
    """The counters of the charted hour."""
    command = [str(benchmark), "--benchmark_filter=chartedHour", "--benchmark_format=json"]
    answer = json.loads(subprocess.run(command, capture_output=True, text=True, check=True).stdout)
    hour = answer["benchmarks"][0]
    return {name: [round(hour[f"{name}{minute:02}"]) for minute in range(MINUTES)] for name, *_ in CHARTS}


def text(x, y, words, size=13, anchor="start", weight=400, fill="#3c4a59"):
    return (f'<text x="{x}" y="{y}" font-size="{size}" font-weight="{weight}" text-anchor="{anchor}" '
            f'fill="{fill}">{words}</text>')


def bars(values, top, height, colour):
    """The columns of a chart, its axis and the largest value."""
    largest = max(values) or 1
    lines = [f'<path d="M{LEFT} {top + height}h{WIDTH}" stroke="#9fb2c6"/>',
             text(LEFT - 8, top + 10, f"{largest:,}", 12, "end"), text(LEFT - 8, top + height, "0", 12, "end")]
    for minute, value in enumerate(values):
        length = round(value / largest * height, 1)
        if length > 0:
            lines.append(f'<rect x="{LEFT + minute * BAR + 1}" y="{round(top + height - length, 1)}" width="{BAR - 2}" '
                         f'height="{length}" fill="{colour}"/>')
    return lines


def drawn(hour):
    lines = ['<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 880 420" width="880" height="420" '
             "font-family=\"-apple-system, 'Helvetica Neue', Arial, sans-serif\" role=\"img\" "
             'aria-label="What Velko does in an hour with 25 apps, minute by minute">',
             '<rect width="880" height="420" rx="14" fill="#f9fbfd"/>',
             text(24, 36, "An hour with 25 apps, 8 of them tucked", 17, weight=700, fill="#1d2733")]
    for begin, end, name in PHASES:
        x = LEFT + begin * BAR
        lines.append(f'<rect x="{x + 1}" y="50" width="{(end - begin) * BAR - 2}" height="340" rx="6" fill="#eceff3"/>')
        lines.append(text(x + (end - begin) * BAR / 2, 408, f"{name}, minutes {begin} to {end}", 12, "middle"))
    for name, title, top, height, colour in CHARTS:
        lines.append(text(LEFT + 8, top - 18, title, weight=700))
        lines += bars(hour[name], top, height, colour)
    return "\n".join([*lines, "</svg>", ""])


def main():
    hour = measured(Path(sys.argv[1]) if len(sys.argv) > 1 else BENCHMARK)
    PICTURE.write_text(drawn(hour), encoding="utf-8")
    print(f"{PICTURE.relative_to(ROOT)}: {sum(hour['bursts']):,} bursts, {sum(hour['messages']):,} messages")


if __name__ == "__main__":
    main()
