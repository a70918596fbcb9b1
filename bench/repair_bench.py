#!/usr/bin/python3
"""`An order` over a folder of sheets, ours and openpyxl's, on the same records in one run, every save flushed.

    repair_bench.py INSTALLATION        the folder of tarvik-play

Also tells whether the time grows with the lines and the records or with their product. Ends with status 1 when a goal
is missed or when the two sides wrote different cells.
"""

import pathlib
import sys
import tempfile

from openpyxl import load_workbook

import repair_generate
from measure import HERE, Goals, best, peer, played, with_flushing

SHEETS, RECORDS, REPEATS = 100, 20000, 2
RATIO_GOAL = 10.0
GROWTH = 4         # of sheets and records together: their product would take 16 times as long
GROWTH_GOAL = 1.5 * GROWTH
COMPARED = 5       # sheets whose cells are all compared
SCRIPT = r'''
file "{work}/records.txt"
click Command1(0)
set Text1(1) "An order"
input "d:\\filled\\"
file "{work}/sheets/sheet000.xlsx"
type Text1(1) "\r"
expect filecount {sheets}
'''


def ours(player, installation, work, sheets=SHEETS):
    """The best of several runs from start to end of the process; the sheets lie in work/drive/filled."""
    script = SCRIPT.format(work=work, sheets=sheets)
    return best([played(player, installation, script, work / "drive") for _ in range(REPEATS)])


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
        times.append(ours(player, installation, work, sheets).seconds)
    return times[1] / times[0]


def main(built):
    player, goals = built / "tarvik-play", Goals()
    with tempfile.TemporaryDirectory(prefix="repair_bench", dir=built) as name:
        work = pathlib.Path(name)
        installation = work / "installation"
        installation.mkdir()
        repair_generate.generate(work, SHEETS, RECORDS)
        spent = ours(player, installation, work)
        theirs = peer("repair_openpyxl.py", work / "records.txt", work / "sheets", work / "peer",
                      HERE.parent / "installation/维修规则.txt")
        wrong = differing(work / "drive" / "filled", work / "peer")
        lines = SHEETS * (repair_generate.LAST_LINE - repair_generate.FIRST_LINE + 1)
        goals.must(not wrong, f"the two sides differ: {', '.join(wrong)}")
        goals.faster(f"An order, {SHEETS} sheets with {lines:,} lines against {RECORDS:,} records",
                     with_flushing(spent, work / "drive" / "filled", work / "scratch"), "openpyxl", theirs, RATIO_GOAL)
        goals.at_most(f"{GROWTH} times the sheets and the records of An order take", growth(player, installation, work),
                      GROWTH_GOAL, "times as long")
    return goals.status()


if __name__ == "__main__":
    sys.exit(main(pathlib.Path(sys.argv[1]).resolve()))
