#!/usr/bin/python3
"""How time and memory grow with rows, text, keys, workbooks and documents.

    growth_bench.py INSTALLATION [PART OF A NAME]        the folder of tarvik-play and its templates; the curves to measure

Each point is the processor time of the whole run of a player, its start taken off, so that a busy machine blurs little.
A curve is straight when the slope of its upper half in double logarithmic scale is about 1 or less; one that bends is
measured once more, and ends this with status 1 when it bends again.
"""

import multiprocessing
import pathlib
import sys
import tempfile
from math import log

from growth_inputs import CURVES
from measure import best, played, record

STEEPEST = 1.15
LEAST_SECONDS = 0.02             # what is less says nothing
SHORT_SECONDS, REPEATS = 2.0, 3  # short runs are repeated
START = 'say "idle"\n'


def point(player, curve, size, start, folder):
    # Made in a process of its own: the memory that it takes would count as the player's.
    making = multiprocessing.Process(target=curve.make, args=(folder, player.parent, size))
    making.start()
    making.join()
    if making.exitcode:
        sys.exit(f"no input for {curve.name}, {size} {curve.unit}")
    script = (folder / "script.play").read_text("utf-8")
    spent = [played(player, folder, script, folder / "drive")]
    if spent[0].cpu < SHORT_SECONDS:
        spent += [played(player, folder, script, folder / "drive") for _ in range(REPEATS - 1)]
    least = best(spent)
    return size, least.seconds, max(0.0, least.cpu - start), least.peak_mb


def slope(points):
    """Of the straight line through the upper half of the points in double logarithmic scale."""
    upper = [each for each in points[-max(3, (len(points) + 1) // 2):] if each[2] >= LEAST_SECONDS]
    if len(upper) < 2:
        return 0.0
    xs, ys = [log(each[0]) for each in upper], [log(each[2]) for each in upper]
    x_mean, y_mean = sum(xs) / len(xs), sum(ys) / len(ys)
    return sum((x - x_mean) * (y - y_mean) for x, y in zip(xs, ys)) / sum((x - x_mean) ** 2 for x in xs)


def measured(player, curve, start, work):
    points = []
    for size in curve.sizes:
        with tempfile.TemporaryDirectory(dir=work) as name:
            points.append(point(player, curve, size, start, pathlib.Path(name)))
    return points


def main(built, wanted=""):
    player, bends = built / "tarvik-play", False
    with tempfile.TemporaryDirectory(prefix="growth_bench", dir=built) as name:
        work = pathlib.Path(name)
        start = best([played(player, work, START) for _ in range(REPEATS)]).cpu
        for curve in (each for each in CURVES if wanted in each.name):
            points = measured(player, curve, start, work)
            if slope(points) > STEEPEST:
                points = measured(player, curve, start, work)
            straight = slope(points) <= STEEPEST
            bends = bends or not straight
            print(f"{curve.name}: slope {slope(points):.2f}{'' if straight else '   bends'}")
            for size, seconds, cpu, peak in points:
                print(f"  {size:10,} {curve.unit:10}{seconds:9.3f} s{cpu:9.3f} s of processor{peak:8.0f} MB", flush=True)
            record(kind="curve", name=curve.name, unit=curve.unit, points=points, slope=slope(points), straight=straight,
                   ends=curve.ends)
    return 1 if bends else 0


if __name__ == "__main__":
    sys.exit(main(pathlib.Path(sys.argv[1]).resolve(), *sys.argv[2:3]))
