#!/usr/bin/python3
"""How the scans of a run grow with its keys, on a report of one size, and how long a list of characters takes.

    keyed_scans_bench.py INSTALLATION        the folder of tarvik-play

Every key of the run is looked for in a report of 66 MB; no sheet is made, so what is measured is the scans. The time of
opening, splitting and listing the keys is taken off, as a run whose keys are never ticked. The peer scans the report
with `grep -c -F` once for each of a few keys. Ends with status 1 when a goal is missed.
"""

import os
import pathlib
import sys
import tempfile

from measure import Goals, Spent, played, timed

KEYS = [100, 1000, 10000]
REPORT_BYTES = 66_000_000
# Ten times the keys may take four times the time at most: the index is made once, hits grow not at all.
GROWTH_GOAL = 4.0
CHARACTERS, CHARACTERS_GOAL = 1_000_000, 1.0
PEER_KEYS, PEER_GOAL = 20, 1.0
START = r'''
file keys.txt
click Command1(0)
set Text1(1) "An docket"
input "d:\\out\\"
reply ok
type Text1(1) "\r"
'''


def key(number):
    return f"49003{number:05d}"


def write_reports(folder, keys):
    """3139.txt has the same lines whatever the number of keys; keys.txt lists them, and no sheet is made of any."""
    line = "x\t9\t{}\tABC{:08d}\tRouter " + "A" * 60 + "\tport broken\tF.1\tcustomer of the north\t138/0755\r\n"
    with open(folder / "3139.txt", "w", newline="") as report:
        size, number = 0, 0
        while size < REPORT_BYTES:
            size += report.write(line.format(key(number % max(KEYS)), number))
            number += 1
    (folder / "keys.txt").write_text("".join(line.format(key(i), i) for i in range(keys)), newline="")
    (folder / "3138.txt").write_text("nothing of these\r\n", newline="")


def scans(player, folder, keys):
    write_reports(folder, keys)
    # The first tick decodes the reports, which no later one does.
    start = played(player, folder, START + "tick 1\n", folder)
    all_keys = played(player, folder, START + f"run {10 * max(KEYS)}\n", folder)
    return Spent(all_keys.seconds - start.seconds, all_keys.cpu - start.cpu)


def grep(folder):
    """One key, the mean of a few. The counts go to a file: grep ends at the first hit when its output is thrown away."""
    c_locale = {**os.environ, "LC_ALL": "C"}
    with open(folder / "counts.txt", "wb") as counts:
        spent = [timed(["grep", "-c", "-F", key(number), folder / "3139.txt"], stdout=counts, env=c_locale)
                 for number in range(PEER_KEYS)]
    return Spent(*(sum(each) / PEER_KEYS for each in zip(*spent)))


def listed_characters(player, folder):
    (folder / "text.txt").write_text("中文 and text\r\n" * (CHARACTERS // 13), newline="", encoding="utf-8")
    opened = "file text.txt\nclick Command1(0)\n"
    script = opened + 'set Text1(1) "An statistic"\ntype Text1(1) "\\r"\n'
    return played(player, folder, script).seconds - played(player, folder, opened).seconds


def main(built):
    player, goals = built / "tarvik-play", Goals()
    with tempfile.TemporaryDirectory(prefix="keyed_scans_bench", dir=built) as name:
        folder = pathlib.Path(name)
        spent = [scans(player, folder, keys) for keys in KEYS]
        one = grep(folder)
        for keys, ours in zip(KEYS, spent):
            goals.faster(f"{keys:,} keys looked for in {REPORT_BYTES / 1e6:.0f} MB", ours, "grep -F",
                         Spent(keys * one.seconds, keys * one.cpu), PEER_GOAL)
        for keys, earlier, later in zip(KEYS[1:], spent, spent[1:]):
            goals.at_most(f"{keys:,} keys beside a tenth of them", later.seconds / earlier.seconds, GROWTH_GOAL,
                          "times as long")
        goals.at_most(f"list of {CHARACTERS:,} characters", listed_characters(player, folder), CHARACTERS_GOAL, "s")
    return goals.status()


if __name__ == "__main__":
    sys.exit(main(pathlib.Path(sys.argv[1]).resolve()))
