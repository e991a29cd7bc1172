#!/usr/bin/env python3
"""Makes docs/performance.md and a bar chart a family, docs/performance-FAMILY.svg, of a run of the benchmark.

Usage: report.py [BENCH.json [MEMORY.json]], by default those in build/. Why a row is behind its best peer is said
in limits.tsv: a pattern of row names, a tab, the words."""
import fnmatch
import html
import json
import math
import os
import re
import sys

HERE = os.path.dirname(os.path.abspath(__file__))
ROOT = os.path.dirname(HERE)
MEASURED, FLOOR = "Lum", "Floor"
# Rows scatter: what is less behind than this is level.
LEVEL = 1.05
# The operation's time for an element may grow so much from 1 KB to 1 MB.
FLAT = 1.5
FAMILIES = {
    "uri": "URIs",
    "strings": "16-bit strings",
    "transcoding": "Conversions",
    "time": "Time stamps",
    "resources": "Strings by number",
}
# The rows of a chart, where a family has too many for one.
CHARTED = {"transcoding": r"1 MB (to|from) UTF-16$|/\S+ [a-z]\S+-\S+ (to|from) UTF-16$|(macintosh|shift_jis|gb18030) \S+ UTF-16$"}


def read_json(path):
    with open(path, encoding="utf-8") as file:
        return json.load(file)


def read_limits():
    with open(os.path.join(HERE, "limits.tsv"), encoding="utf-8") as file:
        return [line.rstrip("\n").split("\t") for line in file if "\t" in line]


def peers(case):
    return {name: cell for name, cell in case["subjects"].items() if name not in (MEASURED, FLOOR)}


def best_peer(case):
    """The fastest peer and the ratio to it; nothing where there is none."""
    found = [(cell["median_ns"], name) for name, cell in peers(case).items()]
    if not found or MEASURED not in case["subjects"]:
        return None
    nanoseconds, name = min(found)
    return name, case["subjects"][MEASURED]["median_ns"] / nanoseconds


def row_name(case):
    return case["name"].split("/", 1)[1]


def duration(nanoseconds):
    for unit, size in (("ms", 1e6), ("µs", 1e3), ("ns", 1)):
        if nanoseconds >= size or unit == "ns":
            return f"{nanoseconds / size:.3g} {unit}"


def table(head, rows):
    align = ["---"] + ["--:"] * (len(head) - 1)
    return ["| " + " | ".join(cells) + " |" for cells in [head, align, *rows]] + [""]


def chart(title, cases):
    """A bar a row: Lum's time as a part of the best peer's, which ends at the line."""
    step, left, right, top = 20, 330, 190, 56
    width = 900
    rows = [(row_name(case), *best_peer(case)) for case in cases if best_peer(case)]
    most = 2.0
    scale = (width - left - right) / most
    height = top + step * len(rows) + 16
    out = [
        f'<svg xmlns="http://www.w3.org/2000/svg" width="{width}" height="{height}" '
        f'viewBox="0 0 {width} {height}" font-family="sans-serif" font-size="12">',
        f'<rect width="{width}" height="{height}" fill="#ffffff"/>',
        f'<text x="12" y="22" font-size="15" font-weight="bold" fill="#222222">{html.escape(title)}</text>',
        f'<text x="12" y="40" fill="#555555">time of Lum / time of the fastest peer; shorter is better, '
        f"the line is the peer</text>",
    ]
    for i, (name, peer, ratio) in enumerate(rows):
        y = top + step * i
        bar = min(ratio, most) * scale
        colour = "#2f7f6f" if ratio <= 1 else "#c98a2b" if ratio <= 1.5 else "#b5483a"
        more = " →" if ratio > most else ""
        out += [
            f'<text x="{left - 8}" y="{y + 13}" text-anchor="end" fill="#222222">{html.escape(name)}</text>',
            f'<rect x="{left}" y="{y + 3}" width="{max(bar, 1):.1f}" height="{step - 7}" fill="{colour}"/>',
            f'<text x="{width - right + 8}" y="{y + 13}" fill="#444444">{ratio:.2f} of {html.escape(peer)}{more}</text>',
        ]
    out.append(f'<line x1="{left + scale:.1f}" y1="{top - 4}" x2="{left + scale:.1f}" y2="{height - 12}" '
               'stroke="#222222" stroke-dasharray="4 3"/>')
    return "\n".join(out + ["</svg>", ""])


def ratio_table(cases):
    names = []
    for case in cases:
        names += [name for name in peers(case) if name not in names]
    rows = []
    for case in cases:
        cells = [row_name(case), duration(case["subjects"][MEASURED]["median_ns"])]
        best = best_peer(case)
        for name in names:
            cell = case["subjects"].get(name)
            text = f"{cell['ratio']:.2f}" if cell else ""
            cells.append(f"**{text}**" if best and name == best[0] else text)
        rows.append(cells)
    return table(["", MEASURED, *names], rows)


def behind(cases, limits, unexplained):
    """A line for each row that is slower than its best peer, with what limits it; like reasons together."""
    reasons = {}
    for case in cases:
        best = best_peer(case)
        if best is None or best[1] <= LEVEL:
            continue
        words = next((words for pattern, words in limits if fnmatch.fnmatchcase(case["name"], pattern)), None)
        if words is None:
            unexplained.append(case["name"])
        reasons.setdefault(words or "Not looked into yet.", []).append(f"{row_name(case)} ({best[1]:.2f} of {best[0]})")
    return [f"- {'; '.join(rows)}: {words}" for words, rows in reasons.items()]


def held_table(cases):
    out = []
    for case in cases:
        held = {name: cell["held_bytes"] for name, cell in case["subjects"].items() if "held_bytes" in cell}
        if held:
            others = ", ".join(f"{name} {bytes_:.0f}" for name, bytes_ in held.items() if name != MEASURED)
            out.append([row_name(case).replace("hold ", ""), f"{held.get(MEASURED, math.nan):.0f}", others])
    return table(["bytes held by an object", MEASURED, "beside"], out) if out else []


def growth_table(rows):
    """Operations that walk a text, from 1 KB to 1 MB; the others keep to their own sizes."""
    walks = [row for row in rows if re.search(r"/(bytes|units) of ", row["name"])]
    out = []
    for row in walks:
        figures = [figure["median_ns_an_element"] for figure in row["figures"]]
        # What does not depend on the text's length, or little, has no time for an element.
        grows = max(figures[1:]) / figures[0] if len(figures) > 1 else 1
        mark = f"**{grows:.2f}**" if grows > FLAT else f"{grows:.2f}"
        out.append([row["name"].split(" of ", 1)[1], *(f"{figure:.3f}" for figure in figures), mark])
    return table(["ns a byte (strings: a unit)", "1 KB", "32 KB", "1 MB", "greatest / 1 KB"], out) if out else []


def memory_part(path):
    if not os.path.exists(path):
        return []
    memory = read_json(path)
    rows = [[row["operation"], row["program"], f"{row['peak_kb'] / 1024:.1f} MB"] for row in memory["rows"]]
    size = memory["stream_bytes"] / 2**30
    return [f"## The tool's memory", "", f"The most that a process held while a stream of {size:g} GB went through it:",
            "", *table(["", "program", "peak"], rows)]


def main():
    bench = sys.argv[1] if len(sys.argv) > 1 else os.path.join(ROOT, "build", "bench.json")
    memory = sys.argv[2] if len(sys.argv) > 2 else os.path.join(ROOT, "build", "memory.json")
    data = read_json(bench)
    run, limits, unexplained = data["run"], read_limits(), []
    text = [
        "# Performance", "",
        "Made by `benchmarks/report.py` from one run of the benchmark; do not edit. Every table gives Lum's time and, "
        "for each peer, Lum's time divided by the peer's in the same run: below 1, Lum is faster. The fastest peer "
        "is bold. Absolute times mean nothing on another machine.", "",
        f"- Machine: {run['processor']}, {run['cores']} cores, {run['instructions']}.",
        f"- Compiler: {run['compiler']}, release build. Peers: Debian's packages, and those built from source.",
        f"- Date: {run['date']}; medians of {run['repetitions']} repetitions of at least {run['min_time']:g} s.",
        "- Repeat, and remake this page: `./dev bench --report --with simdutf=DIR --with ada=DIR --texts DIR --urls FILE`. "
        "Peers, texts and URLs that are not given are left out or made up.",
        "- Instructions do not depend on the machine: `./dev bench --counts` compares them with "
        "`benchmarks/counts/counts.txt`, and `./dev check` fails where a case needs more.", "",
    ]
    families = {family["family"]: family for family in data["families"]}
    for name, title in FAMILIES.items():
        family = families.get(name)
        if family is None or not (family["cases"] or family["growth"]):
            continue
        measured = [case for case in family["cases"] if MEASURED in case["subjects"]]
        compared = [case for case in measured if peers(case)]
        charted = [case for case in compared if re.search(CHARTED.get(name, ""), case["name"])]
        text += [f"## {title}", ""]
        if charted:
            with open(os.path.join(ROOT, "docs", f"performance-{name}.svg"), "w", encoding="utf-8") as file:
                file.write(chart(title, charted))
            text += [f"![{title}: Lum beside the fastest peer](performance-{name}.svg)", ""]
        if compared:
            text += ratio_table(compared)
        slower = behind(compared, limits, unexplained)
        if slower:
            text += ["Behind the fastest peer, and what limits them:", "", *slower, ""]
        text += held_table(measured)
        growth = growth_table(family["growth"])
        if growth:
            text += ["How the time of operations that walk a text grows with it:", "", *growth]
        text += ["What the rows measure:", "", *(f"- {note}" for note in family["notes"]), ""]
    text += memory_part(memory)
    with open(os.path.join(ROOT, "docs", "performance.md"), "w", encoding="utf-8") as file:
        file.write("\n".join(text).rstrip("\n") + "\n")
    for name in unexplained:
        print(f"report.py: nothing in limits.tsv says what limits {name}", file=sys.stderr)


main()
