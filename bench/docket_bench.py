#!/usr/bin/python3
"""Dockets a second, ours and openpyxl's, on the same reports and templates in one run, every save flushed.

    docket_bench.py INSTALLATION        the folder of tarvik-play and its templates

Also tells the share of the flushing and the memory of the player before it does anything. Ends with status 1 when a
goal is missed or when the two sides made different dockets.
"""

import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import time

import docket_generate

RECEIPTS, DEVICES, REPEATS = 300, 20, 3
RATIO_GOAL, MEMORY_GOAL_MB = 5.0, 30.0
TEMPLATES = ["z2.xlsx", "z3.xlsx", "z5.xlsx", "z6.xlsx"]
SYSTEM_PYTHON = "/usr/bin/python3"  # the one that the package python3-openpyxl serves
HERE = pathlib.Path(__file__).parent
SCRIPT = r'''
file 3139.txt
click Command1(0)
set Text1(1) "An docket"
input "d:\\dockets\\"
reply ok
type Text1(1) "\r"
run
'''


def idle_memory_mb(player, installation):
    """The peak of a player that starts and waits for a script; it must be asked while this process is still small."""
    process = subprocess.Popen([player, "--install", installation, "-"], stdin=subprocess.PIPE, stdout=subprocess.DEVNULL)
    process.stdin.write(b'say "idle"\n')
    process.stdin.close()
    _, status, usage = os.wait4(process.pid, 0)
    process.returncode = os.waitstatus_to_exitcode(status)
    if process.returncode:
        sys.exit("the idle player failed")
    return usage.ru_maxrss / 1024


def our_seconds(player, installation, drive):
    """One run from start to end of the process; its dockets lie in drive/dockets."""
    started = time.perf_counter()
    subprocess.run([player, "--install", installation, "--drive", f"d={drive}", "-"], input=SCRIPT.encode(), check=True,
                   stdout=subprocess.DEVNULL)
    return time.perf_counter() - started


def openpyxl_seconds(installation, output):
    """The peer's own count of its work and of the flushing in it; its interpreter's start is not held against it."""
    told = subprocess.run([SYSTEM_PYTHON, HERE / "docket_openpyxl.py", installation, output],
                          check=True, capture_output=True, text=True).stdout
    return tuple(map(float, told.split()[1:]))


def flush_seconds(folder, scratch):
    """What our flushing costs, of each file and of the folder that it is renamed in: the same saves with and without."""
    contents = [path.read_bytes() for path in sorted(folder.rglob("*.xlsx"))]
    times = []
    for flush in (False, True):
        started = time.perf_counter()
        for number, content in enumerate(contents):
            with open(scratch / "new", "wb") as file:
                file.write(content)
                if flush:
                    file.flush()
                    os.fsync(file.fileno())
            os.replace(scratch / "new", scratch / f"{flush}{number}")
            if flush:
                opened = os.open(scratch, os.O_RDONLY)
                os.fsync(opened)
                os.close(opened)
        times.append(time.perf_counter() - started)
    return max(0.0, times[1] - times[0])


def names(folder):
    return sorted(str(path.relative_to(folder)) for path in folder.rglob("*.xlsx"))


def measure(player, installation, work):
    """The best of several runs of each side, side by side, and the folders that the last ones filled."""
    ours, peers = [], []
    for repeat in range(REPEATS):
        drive, peer = work / f"ours{repeat}", work / f"peer{repeat}"
        drive.mkdir()
        ours.append(our_seconds(player, installation, drive))
        peers.append(openpyxl_seconds(installation, peer))
    return min(ours), *min(peers), drive / "dockets", peer


def main(built):
    player = built / "tarvik-play"
    with tempfile.TemporaryDirectory(prefix="docket_bench", dir=built) as name:
        work = pathlib.Path(name)
        installation = work / "installation"
        installation.mkdir()
        for template in TEMPLATES:
            shutil.copy(built / template, installation)
        memory = idle_memory_mb(player, installation)
        docket_generate.generate(installation, RECEIPTS, DEVICES)
        ours, peer, peer_flush, our_folder, peer_folder = measure(player, installation, work)
        same = names(our_folder) == names(peer_folder) and len(names(our_folder)) == RECEIPTS
        (work / "scratch").mkdir()
        our_flush = flush_seconds(our_folder, work / "scratch")
    ratio = peer / ours
    print(f"{RECEIPTS} receipts with {DEVICES} lines each, best of {REPEATS}, every save flushed")
    print(f"{'':10}{'seconds':>9}{'dockets/s':>11}{'of it flushing':>17}")
    print(f"{'ours':10}{ours:9.2f}{RECEIPTS / ours:11.0f}{our_flush:12.2f} s {our_flush / ours:4.0%}")
    print(f"{'openpyxl':10}{peer:9.2f}{RECEIPTS / peer:11.0f}{peer_flush:12.2f} s {peer_flush / peer:4.0%}")
    print(f"ratio {ratio:.1f} (goal {RATIO_GOAL:g})   idle player {memory:.1f} MB (goal under {MEMORY_GOAL_MB:g})")
    if not same:
        print("the two sides made different dockets")
    return 0 if same and ratio >= RATIO_GOAL and memory < MEMORY_GOAL_MB else 1


if __name__ == "__main__":
    sys.exit(main(pathlib.Path(sys.argv[1]).resolve()))
