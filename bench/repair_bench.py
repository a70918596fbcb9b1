#!/usr/bin/python3
"""`An order` over a folder of sheets, ours and openpyxl's, on the same records in one run, every save flushed.

    repair_bench.py INSTALLATION        the folder of tarvik-play

Also tells whether the time grows with the lines and the records or with their product. Ends with status 1 when a goal
is missed or when the two sides wrote different cells.
"""

import pathlib
import subprocess
import sys
import tempfile
import time

from openpyxl import load_workbook

import repair_generate
from docket_bench import flush_seconds

SHEETS, RECORDS, REPEATS = 100, 20000, 2
RATIO_GOAL = 10.0
GROWTH = 4         # of sheets and records together: their product would take 16 times as long
GROWTH_GOAL = 1.5 * GROWTH
COMPARED = 5       # sheets whose cells are all compared
SYSTEM_PYTHON = "/usr/bin/python3"  # the one that the package python3-openpyxl serves
HERE = pathlib.Path(__file__).parent
SCRIPT = r'''
file "{work}/records.txt"
click Command1(0)
set Text1(1) "An order"
input "d:\\filled\\"
file "{work}/sheets/sheet000.xlsx"
type Text1(1) "\r"
expect filecount {sheets}
'''


def our_seconds(player, installation, work, drive, sheets=SHEETS):
    """One run from start to end of the process; its sheets lie in drive/filled."""
    drive.mkdir()
    script = SCRIPT.format(work=work, sheets=sheets)
    started = time.perf_counter()
    subprocess.run([player, "--install", installation, "--drive", f"d={drive}", "-"], input=script.encode(), check=True,
                   stdout=subprocess.DEVNULL)
    return time.perf_counter() - started


def openpyxl_seconds(work, output):
    """The peer's own count of its work and of the flushing in it; its interpreter's start is not held against it."""
    told = subprocess.run([SYSTEM_PYTHON, HERE / "repair_openpyxl.py", work / "records.txt", work / "sheets", output,
                           HERE.parent / "repair_rules/rules.txt"], check=True, capture_output=True, text=True).stdout
    return tuple(map(float, told.split()[1:]))


def cells(path):
    sheet = load_workbook(path, read_only=True).worksheets[0]
    return [row for row in sheet.iter_rows(values_only=True)]


def differing(ours, peer):
    """The names of compared sheets that are not the same, or of all that only one side has."""
    names = [{path.name for path in folder.iterdir()} for folder in (ours, peer)]
    return sorted(names[0] ^ names[1]) or [name for name in sorted(names[0])[:COMPARED]
                                           if cells(ours / name) != cells(peer / name)]


def growth(player, installation, folder):
    """How many times as long so many times the sheets take against so many times the records."""
    times = []
    for factor in (1, GROWTH):
        work = folder / f"growth{factor}"
        work.mkdir()
        sheets = SHEETS // GROWTH // 2 * factor
        repair_generate.generate(work, sheets, RECORDS // GROWTH * factor)
        times.append(min(our_seconds(player, installation, work, work / f"drive{repeat}", sheets)
                         for repeat in range(REPEATS)))
    return times[1] / times[0]


def main(built):
    player = built / "tarvik-play"
    with tempfile.TemporaryDirectory(prefix="repair_bench", dir=built) as name:
        work = pathlib.Path(name)
        installation = work / "installation"
        installation.mkdir()
        repair_generate.generate(work, SHEETS, RECORDS)
        ours = min(our_seconds(player, installation, work, work / f"ours{repeat}") for repeat in range(REPEATS))
        peer, peer_flush = openpyxl_seconds(work, work / "peer")
        wrong = differing(work / "ours0" / "filled", work / "peer")
        (work / "scratch").mkdir()
        our_flush = flush_seconds(work / "ours0" / "filled", work / "scratch")
        growing = growth(player, installation, work)
    ratio = peer / ours
    lines = SHEETS * (repair_generate.LAST_LINE - repair_generate.FIRST_LINE + 1)
    print(f"{SHEETS} sheets with {lines} lines in all against {RECORDS} records, every save flushed")
    print(f"{'':10}{'seconds':>9}{'lines/s':>10}{'of it flushing':>17}")
    print(f"{'ours':10}{ours:9.2f}{lines / ours:10.0f}{our_flush:12.2f} s {our_flush / ours:4.0%}")
    print(f"{'openpyxl':10}{peer:9.2f}{lines / peer:10.0f}{peer_flush:12.2f} s {peer_flush / peer:4.0%}")
    print(f"ratio {ratio:.1f} (goal {RATIO_GOAL:g})   {GROWTH} times the sheets and the records take "
          f"{growing:.1f} times as long (goal under {GROWTH_GOAL:g})")
    if wrong:
        print("the two sides differ:", ", ".join(wrong))
    return 0 if not wrong and ratio >= RATIO_GOAL and growing < GROWTH_GOAL else 1


if __name__ == "__main__":
    sys.exit(main(pathlib.Path(sys.argv[1]).resolve()))
