#!/usr/bin/python3
"""Makes the pictures of photo/ in installation/: a device on the bench for each one that 3158.txt tells to be beyond
repair, one of them left without, since not everybody takes a picture.

Drawn with ImageMagick's primitives; the same pictures come out of every run.
"""

import pathlib
import random
import subprocess
import sys

import service_reports
from background import CONVERT

WIDTH, HEIGHT = 640, 440
LEFT, TOP, RIGHT, BOTTOM = 60, 110, 580, 330


def box(colour, left, top, right, bottom, round_by=0):
    shape = f"roundrectangle {left},{top} {right},{bottom} {round_by},{round_by}" if round_by else \
        f"rectangle {left},{top} {right},{bottom}"
    return ["-fill", colour, "-stroke", "none", "-draw", shape]


def ports(chance, count):
    """Two rows of sockets with their lamps; some of the lamps are out."""
    drawn = []
    for place in range(count):
        x, y = LEFT + 40 + place // 2 * 44, TOP + 110 + place % 2 * 48
        drawn += box("#20262b", x, y, x + 34, y + 30, 3) + box("#0c0f11", x + 8, y + 12, x + 26, y + 30)
        drawn += box(chance.choice(["#3f4a52", "#3f4a52", "#5fbf5f"]), x + 3, y - 8, x + 10, y - 4)
    return drawn


def damage(chance):
    """A scorched patch and cracks that run out of it."""
    x, y = chance.randint(LEFT + 150, RIGHT - 110), chance.randint(TOP + 50, BOTTOM - 60)
    drawn = []
    for radius, colour in ((58, "#3a2f28c0"), (40, "#241c18d0"), (22, "#120e0cf0")):
        drawn += ["-fill", colour, "-stroke", "none", "-draw", f"ellipse {x},{y} {radius},{radius * 2 // 3} 0,360"]
    for _ in range(6):
        points, px, py = [(x, y)], x, y
        for _ in range(5):
            px += chance.randint(-34, 34)
            py += chance.randint(-24, 24)
            points.append((px, py))
        path = " ".join(f"{a},{b}" for a, b in points)
        drawn += ["-fill", "none", "-stroke", "#15110f", "-strokewidth", "2", "-draw", f"polyline {path}"]
    return drawn


def draw(path, serial):
    chance = random.Random(serial)
    shade = chance.choice(["#8d979e", "#7f8a83", "#9a938a"])
    marks = ["-fill", "#2c3338", "-stroke", "none", "-font", "DejaVu-Sans-Bold", "-pointsize", "22",
             "-draw", f"text {LEFT + 40},{TOP + 52} '{serial.upper()}'"]
    subprocess.run(
        [CONVERT, "-size", f"{WIDTH}x{HEIGHT}", "gradient:#d9d3c7-#b9b1a2", *box("#00000038", LEFT + 10, BOTTOM - 6, RIGHT + 16, BOTTOM + 20, 10),
         *box(shade, LEFT, TOP, RIGHT, BOTTOM, 12), *box("#ffffff30", LEFT + 6, TOP + 4, RIGHT - 6, TOP + 14, 4),
         *box("#d8dcd6", LEFT + 30, TOP + 26, LEFT + 220, TOP + 66, 4), *marks, *ports(chance, 2 * chance.randint(5, 10)),
         *damage(chance), "-blur", "0x0.6", "-strip", "-density", "150", "-sampling-factor", "4:2:0", "-quality", "80",
         path], check=True)


def serials():
    rows = service_reports.make_reports()["3158.txt"]
    return [row[14].lower() for row in rows if service_reports.BEYOND in row][:-1]


def main(folder):
    (folder / "photo").mkdir(exist_ok=True)
    for serial in serials():
        draw(folder / "photo" / f"{serial}.jpg", serial)


if __name__ == "__main__":
    main(pathlib.Path(sys.argv[1]))
