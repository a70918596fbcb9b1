#!/usr/bin/python3
"""How time and memory grow with rows, text, keys, workbooks and documents.

    growth_bench.py INSTALLATION [PART OF A NAME]        the folder of tarvik-play and its templates; the curves to measure

Each point is the processor time of the whole run of a player, its start taken off, so that a busy machine blurs little. A
curve is straight when the slope of its upper half in double logarithmic scale is about 1 or less; one that bends is
measured once more, and ends this with status 1 when it bends again. The kernel's part counts where files are made; elsewhere
it is the handing out of memory, whose price differs from run to run, and is told only.
"""

import multiprocessing
import pathlib
import sys
import tempfile
from math import log

from growth_inputs import CURVES
from measure import best, played, record

STEEPEST = 1.15
LEAST_SECONDS = 0.02              # what is less says nothing
ENOUGH_SECONDS, REPEATS = 5.0, 3  # a point is measured so often, or for so long
START = 'say "idle"\n'


def user_time(spent):
    return spent.cpu - spent.kernel


def point(player, curve, size, start, folder):
    # Made in a process of its own: the memory that it takes would count as the player's.
    making = multiprocessing.Process(target=curve.make, args=(folder, player.parent, size))
    making.start()
    making.join()
    if making.exitcode:
        sys.exit(f"no input for {curve.name}, {size} {curve.unit}")
    script = (folder / "script.play").read_text("utf-8")
    spent = [played(player, folder, script, folder / "drive")]
    while len(spent) < REPEATS and sum(each.cpu for each in spent) < ENOUGH_SECONDS:
        spent.append(played(player, folder, script, folder / "drive"))
    made = sum(path.is_file() for path in (folder / "drive").rglob("*.*"))
    if curve.makes_files and made != size:
        sys.exit(f"{curve.name}: {size} {curve.unit} asked for, {made} made")
    least = best(spent)
    # Which part of a run is the kernel's is known to a few milliseconds: where both count, their sum is the least of all runs.
    user = user_time(least) if curve.makes_files else min(map(user_time, spent))
    return {"size": size, "user": max(0.0, user - start), "kernel": least.kernel, "peak": least.peak_mb}


def judged(curve, point):
    return point["user"] + (point["kernel"] if curve.makes_files else 0.0)


def slope(curve, points):
    """Of the straight line through the upper half of the points in double logarithmic scale."""
    upper = [(log(each["size"]), log(judged(curve, each))) for each in points[-max(3, (len(points) + 1) // 2):]
             if judged(curve, each) >= LEAST_SECONDS]
    if len(upper) < 2:
        return 0.0
    x_mean, y_mean = (sum(each) / len(upper) for each in zip(*upper))
    return sum((x - x_mean) * (y - y_mean) for x, y in upper) / sum((x - x_mean) ** 2 for x, _ in upper)


def measured(player, curve, start, work):
    points = []
    for size in curve.sizes:
        with tempfile.TemporaryDirectory(dir=work) as name:
            points.append(point(player, curve, size, start, pathlib.Path(name)))
    return points


def lesser(curve, once, again):
    return [min(pair, key=lambda each: judged(curve, each)) for pair in zip(once, again)]


def main(built, wanted=""):
    player, bends = built / "tarvik-play", False
    with tempfile.TemporaryDirectory(prefix="growth_bench", dir=built) as name:
        work = pathlib.Path(name)
        start = min(user_time(played(player, work, START)) for _ in range(REPEATS))
        for curve in (each for each in CURVES if wanted in each.name):
            points = measured(player, curve, start, work)
            if slope(curve, points) > STEEPEST:
                points = lesser(curve, points, measured(player, curve, start, work))
            steepness = slope(curve, points)
            straight = steepness <= STEEPEST
            bends = bends or not straight
            print(f"{curve.name}: slope {steepness:.2f}{'' if straight else '   bends'}")
            for each in points:
                print("  {size:10,} {unit:10}{user:9.3f} s{kernel:9.3f} s in the kernel{peak:8.0f} MB".format(
                    unit=curve.unit, **each), flush=True)
            record(kind="curve", name=curve.name, unit=curve.unit, points=points, slope=steepness, straight=straight,
                   ends=curve.ends)
    return 1 if bends else 0


if __name__ == "__main__":
    sys.exit(main(pathlib.Path(sys.argv[1]).resolve(), *sys.argv[2:3]))
