#!/usr/bin/python3
"""Makes the background picture 123.jpg of installation/: warm paper, a golden spiral of squares, traces of a board.

The window's controls lie on it in the colours of old paper, so the drawing keeps close to those and stays quiet.
"""

import math
import pathlib
import random
import subprocess
import sys

WIDTH, HEIGHT, MARGIN = 1280, 809, 24
GOLDEN = (math.sqrt(5) - 1) / 2
CONVERT = "/usr/bin/convert"


def golden_squares():
    """The squares of a golden rectangle and the quarter circles in them."""
    left, top, width = float(MARGIN), float(MARGIN), WIDTH - 2.0 * MARGIN
    height = width * GOLDEN
    shapes = []
    for turn in range(9):
        side = min(width, height)
        square_left = left + (width - side if turn % 4 == 2 else 0)
        square_top = top + (height - side if turn % 4 == 3 else 0)
        centre = ((square_left + side, square_top + side), (square_left, square_top + side),
                  (square_left, square_top), (square_left + side, square_top))[turn % 4]
        start = (180, 270, 0, 90)[turn % 4]
        shapes.append(f"rectangle {square_left:.1f},{square_top:.1f} {square_left + side:.1f},{square_top + side:.1f}")
        shapes.append(f"ellipse {centre[0]:.1f},{centre[1]:.1f} {side:.1f},{side:.1f} {start},{start + 90}")
        if turn % 2 == 0:
            left, width = left + (side if turn % 4 == 0 else 0), width - side
        else:
            top, height = top + (side if turn % 4 == 1 else 0), height - side
    return shapes


def traces():
    """Three bundles of parallel lines that run in from the left, climb by half a right angle and end in pads."""
    chance = random.Random(123)
    shapes = []
    for first_y, turn, rise, lanes in ((HEIGHT - 14, 330, 70, 5), (HEIGHT - 92, 240, 110, 6), (HEIGHT - 176, 60, 60, 4)):
        for lane in range(lanes):
            y, bend = first_y - lane * 12, turn - lane * 5
            end = bend + rise + chance.randrange(8, 18) * 12
            shapes.append(f"polyline 0,{y} {bend},{y} {bend + rise},{y - rise} {end},{y - rise}")
            shapes.append(f"circle {end + 4},{y - rise} {end + 8},{y - rise}")
    return shapes


def main(folder):
    subprocess.run(
        [CONVERT, "-size", f"{WIDTH}x{HEIGHT}", "gradient:#f1ecc6-#dcd3a0", "-fill", "none",
         "-stroke", "#c9bd84", "-strokewidth", "1.4", "-draw", " ".join(golden_squares()),
         "-stroke", "#bfb78c", "-strokewidth", "1.8", "-draw", " ".join(traces()),
         "-blur", "0x0.5", "-strip", "-sampling-factor", "4:2:0", "-quality", "82", folder / "123.jpg"], check=True)


if __name__ == "__main__":
    main(pathlib.Path(sys.argv[1]))
