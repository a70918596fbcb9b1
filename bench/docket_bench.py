#!/usr/bin/python3
"""Dockets, ours and openpyxl's, on the same reports and templates in one run, every save flushed.

    docket_bench.py INSTALLATION        the folder of tarvik-play and its templates

On our templates, and on a plain one, in which a docket is little more than its cells. Also tells the memory of the
player before it does anything. Ends with status 1 when a goal is missed or when the two sides made different dockets.
"""

import pathlib
import shutil
import subprocess
import sys
import tempfile

import docket_generate
from measure import HERE, SYSTEM_PYTHON, Goals, in_turn, peer, played, with_flushing

RECEIPTS, DEVICES, REPEATS = 300, 20, 3
RATIO_GOAL, PLAIN_GOAL, MEMORY_GOAL_MB = 10.0, 10.0, 30.0
TEMPLATES = ["z2.xlsx", "z3.xlsx", "z5.xlsx", "z6.xlsx"]
SCRIPT = r'''
file 3139.txt
click Command1(0)
set Text1(1) "An docket"
input "d:\\dockets%d\\"
reply ok
type Text1(1) "\r"
run
'''


def names(folder):
    return sorted(str(path.relative_to(folder)) for path in folder.rglob("*.xlsx"))


def dockets(goals, player, installation, what, goal):
    """Both sides over one installation folder that holds templates; its reports are made here."""
    docket_generate.generate(installation, RECEIPTS, DEVICES)
    made, peer_made = installation / "drive" / "dockets0", installation / "peer0"
    # A folder of its own each turn: who replaces files makes the file system look for room beside those just removed.
    ours, theirs = in_turn(REPEATS, lambda turn: played(player, installation, SCRIPT % turn, installation / "drive"),
                           lambda turn: peer("docket_openpyxl.py", installation, installation / f"peer{turn}"))
    goals.must(names(made) == names(peer_made) and len(names(made)) == RECEIPTS, "the two sides made different dockets")
    goals.faster(f"{RECEIPTS} dockets of {DEVICES} lines, {what}", with_flushing(ours, made, installation / "scratch"),
                 "openpyxl", theirs, goal)


def main(built):
    player, goals = built / "tarvik-play", Goals()
    with tempfile.TemporaryDirectory(prefix="docket_bench", dir=built) as name:
        ours, plain = pathlib.Path(name) / "ours", pathlib.Path(name) / "plain"
        for folder in (ours, plain):
            folder.mkdir()
        for template in TEMPLATES:
            shutil.copy(built / template, ours)
        # Asked for first: a peak is never less than that of the process that asks.
        memory = played(player, ours, 'say "idle"\n').peak_mb
        # Made by a process of its own for the same reason.
        subprocess.run([SYSTEM_PYTHON, HERE / "docket_generate.py", "--plain", *(plain / each for each in TEMPLATES)], check=True)
        size = (plain / "z5.xlsx").stat().st_size / 1000
        dockets(goals, player, ours, "our template", RATIO_GOAL)
        dockets(goals, player, plain, f"a plain template of {size:.0f} KB", PLAIN_GOAL)
    goals.at_most("idle player", memory, MEMORY_GOAL_MB, "MB")
    return goals.status()


if __name__ == "__main__":
    sys.exit(main(pathlib.Path(sys.argv[1]).resolve()))
