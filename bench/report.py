#!/usr/bin/python3
"""Writes the page of the figures and the picture of the growth curves.

    report.py FIGURES FOLDER      the figures that the benchmarks kept; where performance.md and pictures/growth.svg go

The page is docs/performance.md with each table between its marks made anew.
"""

import json
import os
import pathlib
import platform
import sys

import matplotlib

matplotlib.use("svg")
matplotlib.rcParams.update({"svg.hashsalt": "growth", "svg.fonttype": "none", "font.size": 8})
from matplotlib import pyplot, ticker  # once the way to draw is chosen

PAGE = pathlib.Path(__file__).parent.parent / "docs" / "performance.md"
COLUMNS = 4  # of curves in the picture


def shown(figure):
    return f"{figure:,.0f}" if figure >= 100 else f"{figure:.3g}"


def table(head, lines):
    rows = [head, ["---"] + ["--:"] * (len(head) - 1), *lines]
    return "\n".join("| " + " | ".join(row) + " |" for row in rows)


def machine():
    memory = os.sysconf("SC_PAGE_SIZE") * os.sysconf("SC_PHYS_PAGES") / 2**30
    return f"a machine with {os.cpu_count()} cores of {platform.machine()} and {memory:.0f} GB of memory, {platform.system()}."


def ratios(figures):
    return table(["What", "ours", "peer", "its time", "times as fast", "by processor", "goal"],
                 [[each["what"], f"{shown(each['ours'])} s", each["peer"], f"{shown(each['theirs'])} s",
                   shown(each["ratio"]) + ("" if each["ratio"] >= each["goal"] else " (missed)"),
                   shown(each["cpu"]) if each["cpu"] else "", f"{each['goal']:g}"]
                  for each in figures if each["kind"] == "ratio"])


def limits(figures):
    return table(["What", "figure", "at most"],
                 [[each["what"], f"{shown(each['figure'])} {each['unit']}" + ("" if each["figure"] <= each["goal"] else " (missed)"),
                   f"{each['goal']:g}"] for each in figures if each["kind"] == "figure"])


def growth(curves):
    lines = []
    for curve in curves:
        last = len(curve["points"]) - 1
        for place, (size, _, cpu, peak) in enumerate(curve["points"]):
            lines.append(["" if place else curve["name"], f"{size:,} {curve['unit']}", f"{cpu:.3f} s", f"{peak:.0f} MB",
                          f"{curve['slope']:.2f}" + ("" if curve["straight"] else " (bends)") if place == last else ""])
        if curve["ends"]:
            lines[-1][1] += f"; {curve['ends']}"
    return table(["Curve", "size", "processor", "peak", "slope"], lines)


def draw(curves, path):
    rows = -(-len(curves) // COLUMNS)
    figure, axes = pyplot.subplots(rows, COLUMNS, figsize=(2.9 * COLUMNS, 2.3 * rows), layout="constrained", squeeze=False)
    for place in axes.flat[len(curves):]:
        place.set_visible(False)
    for place, curve in zip(axes.flat, curves):
        sizes, _, cpu, _ = zip(*curve["points"])
        place.loglog(sizes, [cpu[-1] * size / sizes[-1] for size in sizes], color="0.75", linewidth=1, linestyle="--")
        place.loglog(sizes, cpu, color="#1f5fa8", marker="o", markersize=3, linewidth=1.2)
        place.set_title(f"{curve['name']}  ({curve['slope']:.2f})", fontsize=8)
        place.set_xlabel(curve["unit"], labelpad=1)
        for axis in (place.xaxis, place.yaxis):
            axis.set_major_formatter(ticker.FuncFormatter(lambda value, _: f"{value:,.6g}"))
        place.minorticks_off()
        place.grid(color="0.93")
    figure.supylabel("seconds of processor; dashed: straight growth to the last point")
    figure.savefig(path, metadata={"Date": None, "Creator": None})


def main(kept, folder):
    figures = [json.loads(line) for line in kept.read_text("utf-8").splitlines()]
    curves = [each for each in figures if each["kind"] == "curve"]
    (folder / "pictures").mkdir(parents=True, exist_ok=True)
    page = PAGE.read_text("utf-8")
    for name, made in (("machine", machine()), ("ratios", ratios(figures)), ("limits", limits(figures)),
                       ("growth", growth(curves))):
        head, rest = page.split(f"<!-- {name} -->\n")
        page = f"{head}<!-- {name} -->\n{made}\n<!-- end -->{rest.split('<!-- end -->', 1)[1]}"
    (folder / "performance.md").write_text(page, "utf-8")
    draw(curves, folder / "pictures" / "growth.svg")
    print(f"written: {folder / 'performance.md'}, {folder / 'pictures/growth.svg'}")


if __name__ == "__main__":
    main(*map(pathlib.Path, sys.argv[1:3]))
