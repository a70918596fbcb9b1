#!/usr/bin/python3
"""How the scans of a run grow with its keys, on a report of one size, and how long a list of characters takes.

    keyed_scans_bench.py INSTALLATION        the folder of tarvik-play

Every key of the run is looked for in a report of 66 MB; no sheet is made, so what is measured is the scans. The time of
opening, splitting and listing the keys is taken off, as a run whose keys are never ticked. The peer scans the report
with `grep -c -F` once for each of a few keys. Ends with status 1 when a goal is missed.
"""

import os
import pathlib
import subprocess
import sys
import tempfile
import time

KEYS = [100, 1000, 10000]
REPORT_BYTES = 66_000_000
# Ten times the keys may take four times the time at most: the index is made once, hits grow not at all.
GROWTH_GOAL = 4.0
CHARACTERS, CHARACTERS_GOAL = 1_000_000, 1.0
PEER_KEYS = 20
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


def seconds(player, folder, script):
    started = time.perf_counter()
    subprocess.run([player, "--install", folder, "--drive", f"d={folder}", "-"], input=script.encode(), check=True,
                   stdout=subprocess.DEVNULL)
    return time.perf_counter() - started


def scan_seconds(player, folder, keys):
    write_reports(folder, keys)
    # The first tick decodes the reports, which no later one does.
    start = seconds(player, folder, START + "tick 1\n")
    return seconds(player, folder, START + f"run {10 * max(KEYS)}\n") - start


def peer_seconds(folder):
    started = time.perf_counter()
    for number in range(PEER_KEYS):
        subprocess.run(["grep", "-c", "-F", key(number), folder / "3139.txt"], env={**os.environ, "LC_ALL": "C"},
                       stdout=subprocess.DEVNULL, check=True)
    return (time.perf_counter() - started) / PEER_KEYS


def character_seconds(player, folder):
    (folder / "text.txt").write_text("中文 and text\r\n" * (CHARACTERS // 13), newline="", encoding="utf-8")
    opened = "file text.txt\nclick Command1(0)\n"
    script = opened + 'set Text1(1) "An statistic"\ntype Text1(1) "\\r"\n'
    return seconds(player, folder, script) - seconds(player, folder, opened)


def main(built):
    player, missed = built / "tarvik-play", False
    with tempfile.TemporaryDirectory(prefix="keyed_scans_bench", dir=built) as name:
        folder = pathlib.Path(name)
        times = [scan_seconds(player, folder, keys) for keys in KEYS]
        peer = peer_seconds(folder)
        print(f"scans of a report of {REPORT_BYTES / 1e6:.0f} MB; grep of one key {peer * 1000:.0f} ms")
        for keys, taken in zip(KEYS, times):
            print(f"  {keys:6} keys {taken:7.2f} s  {taken / keys * 1000:8.3f} ms a key  "
                  f"grep/ours {peer * keys / taken:8.1f}")
        for earlier, later in zip(times, times[1:]):
            missed |= later > GROWTH_GOAL * earlier
        print(f"  goal: ten times the keys take at most {GROWTH_GOAL} times the time: {'missed' if missed else 'met'}")
        listed = character_seconds(player, folder)
        missed |= listed > CHARACTERS_GOAL
        print(f"list of {CHARACTERS} characters {listed:.2f} s (goal {CHARACTERS_GOAL} s)")
    return 1 if missed else 0


if __name__ == "__main__":
    sys.exit(main(pathlib.Path(sys.argv[1]).resolve()))
