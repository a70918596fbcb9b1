#!/usr/bin/python3
"""Writes the page of the figures and the picture of the growth curves.

    report.py FIGURES FOLDER MINUTES      the figures that the benchmarks kept in so many minutes; where performance.md
                                          and pictures/growth.svg go

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
BUSY = 1.5   # programs that want a core, over a quarter of an hour


def shown(figure):
    return f"{figure:,.0f}" if figure >= 100 else f"{figure:.3g}"


def table(head, lines):
    rows = [head, ["---"] + ["--:"] * (len(head) - 1), *lines]
    return "\n".join("| " + " | ".join(row) + " |" for row in rows)


def machine(minutes):
    memory = os.sysconf("SC_PAGE_SIZE") * os.sysconf("SC_PHYS_PAGES") / 2**30
    busy = os.getloadavg()[2] / os.cpu_count()
    return (f"a machine with {os.cpu_count()} cores of {platform.machine()} and {memory:.0f} GB of memory, {platform.system()}, "
            + (f"which other work kept busy ({busy:.0f} programs for each core): see the processor time." if busy > BUSY
               else "with nothing else to do.")
            + f"\nAll benchmarks took {minutes} minutes.")


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
        for place, each in enumerate(curve["points"]):
            lines.append(["" if place else curve["name"], f"{each['size']:,} {curve['unit']}", f"{each['user']:.3f} s",
                          f"{each['kernel']:.3f} s", f"{each['peak']:.0f} MB",
                          f"{curve['slope']:.2f}" + ("" if curve["straight"] else " (bends)") if place == last else ""])
        if curve["ends"]:
            lines[-1][1] += f"; {curve['ends']}"
    return table(["Curve", "size", "program", "kernel", "peak", "slope"], lines)


def draw(curves, path):
    rows = -(-len(curves) // COLUMNS)
    figure, axes = pyplot.subplots(rows, COLUMNS, figsize=(2.9 * COLUMNS, 2.3 * rows), layout="constrained", squeeze=False)
    for place in axes.flat[len(curves):]:
        place.set_visible(False)
    for place, curve in zip(axes.flat, curves):
        sizes, user = ([each[what] for each in curve["points"]] for what in ("size", "user"))
        place.loglog(sizes, [user[-1] * size / sizes[-1] for size in sizes], color="0.75", linewidth=1, linestyle="--")
        place.loglog(sizes, user, color="#1f5fa8", marker="o", markersize=3, linewidth=1.2)
        place.set_title(f"{curve['name']}  ({curve['slope']:.2f})", fontsize=8)
        place.set_xlabel(curve["unit"], labelpad=1)
        for axis in (place.xaxis, place.yaxis):
            axis.set_major_formatter(ticker.FuncFormatter(lambda value, _: f"{value:,.0f}" if value >= 1 else f"{value:g}"))
        place.minorticks_off()
        place.grid(color="0.93")
    figure.supylabel("seconds of the program; dashed: straight growth to the last point")
    figure.savefig(path, metadata={"Date": None, "Creator": None})


def main(kept, folder, minutes):
    figures = [json.loads(line) for line in kept.read_text("utf-8").splitlines()]
    curves = [each for each in figures if each["kind"] == "curve"]
    (folder / "pictures").mkdir(parents=True, exist_ok=True)
    page = PAGE.read_text("utf-8")
    for name, made in (("machine", machine(minutes)), ("ratios", ratios(figures)), ("limits", limits(figures)),
                       ("growth", growth(curves))):
        head, rest = page.split(f"<!-- {name} -->\n")
        page = f"{head}<!-- {name} -->\n{made}\n<!-- end -->{rest.split('<!-- end -->', 1)[1]}"
    (folder / "performance.md").write_text(page, "utf-8")
    draw(curves, folder / "pictures" / "growth.svg")
    print(f"written: {folder / 'performance.md'}, {folder / 'pictures/growth.svg'}")


if __name__ == "__main__":
    main(*map(pathlib.Path, sys.argv[1:3]), sys.argv[3])
