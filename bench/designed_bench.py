#!/usr/bin/python3
"""Designed reports, ours and openpyxl's, on the same texts and workbooks in one run, every save flushed:
`An testsesame A` and `An Excelfile`; and the designer's preview.

    designed_bench.py INSTALLATION        the folder of tarvik-play and its templates

Also tells whether the time of `An Excelfile` grows with the workbooks and the rows or with their product. Ends with
status 1 when a goal is missed or when the two sides wrote different cells.
"""

import pathlib
import shutil
import subprocess
import sys
import tempfile

from designed_generate import CLASS, COPIED, KEY_COLUMN, LINES, design
from measure import HERE, SYSTEM_PYTHON, Goals, best, peer, played, played_stretch, with_flushing

STUDENTS, CELLS, REPORT_GOAL = 1000, 30, 5.0
BOOKS, ROWS, BOOK_GOAL = 100, 20000, 10.0
GROWTH = 4  # of workbooks and rows together: their product would take 16 times as long
GROWTH_GOAL = 1.5 * GROWTH
REPEATS = 2
PREVIEW_ROWS, PREVIEW_GOAL = 10_000, 0.2
REPORTS = r'''
file 3159.txt
click Command1(0)
set Text1(1) "An testsesame A"
input "d:\\made\\"
reply ok
type Text1(1) "\r"
run
expect Timer7.Enabled False
'''
# A key cell in every row of column 1, whose row of the list gives its fields to the same row of the workbook.
BOOK_BOXES = "\n".join(["set Form4.Text3 一班", "set Form4.Text4 200", "set Form4.Text1(0) -1", "set Form4.Text1(1) 1",
                        "set Form4.Text2(1) 2"] +
                       [f"set Form4.Text1({2 * pair}) -1\nset Form4.Text1({2 * pair + 1}) {column}\n"
                        f"set Form4.Text2({2 * pair + 1}) {field}" for pair, (column, field) in enumerate(COPIED, 1)])
BOOK_RUN = BOOK_BOXES + r'''
file "{work}/list.txt"
click Command1(0)
set Text1(1) "An Excelfile"
input "d:\\made\\"
file "{work}/books/book000.xlsx"
type Text1(1) "\r"
run
expect sheetno {rows}
'''


def generate(*arguments):
    subprocess.run([SYSTEM_PYTHON, HERE / "designed_generate.py", *map(str, arguments)], check=True)


def ours(player, installation, drive, script):
    """The best of several runs from start to end of the process; the workbooks lie in drive/made."""
    times = []
    for _ in range(REPEATS):
        shutil.rmtree(drive, ignore_errors=True)
        times.append(played(player, installation, script, drive))
    return best(times)


def beside_openpyxl(goals, what, spent, kind, folder, made, goal):
    """The peer's turn in the same folder; both must have written the same."""
    theirs = peer("designed_openpyxl.py", kind, folder, folder / "peer")
    words = [SYSTEM_PYTHON, HERE / "designed_openpyxl.py", "differ", made, folder / "peer"]
    wrong = subprocess.run(words, check=True, capture_output=True, text=True).stdout.split()
    goals.must(not wrong, f"the two sides differ: {', '.join(wrong[:5])}")
    goals.faster(what, with_flushing(spent, made, folder / "scratch"), "openpyxl", theirs, goal)


def reports(goals, player, built, work):
    folder = work / "reports"
    folder.mkdir()
    shutil.copy(built / "designerA.xlsx", folder)
    generate("marks", folder, STUDENTS)
    spent = ours(player, folder, folder / "drive", REPORTS)
    beside_openpyxl(goals, f"An testsesame A, {STUDENTS} reports of {CELLS} cells", spent, "reports", folder,
                    folder / "drive" / "made", REPORT_GOAL)


def preview(goals, player, built, work):
    """On the design of the reports and a text of as many rows as a clerk's year may have."""
    folder = work / "preview"
    folder.mkdir()
    shutil.copy(built / "designerA.xlsx", folder)
    generate("marks", folder, PREVIEW_ROWS // LINES)
    boxes = [f"set Form4.Text{list_number}({place}) {text}" for list_number, texts in enumerate(design(), 1)
             for place, text in enumerate(texts)]
    before = "\n".join(["file 3159.txt", "click Command1(0)", f"set Form4.Text3 {CLASS}", f"set Form4.Text4 {KEY_COLUMN}",
                        *boxes])
    shown = best([played_stretch(player, folder, before, "reply yes\nclick Form4.Command3") for _ in range(REPEATS)])
    goals.at_most(f"preview of a design on {PREVIEW_ROWS:,} rows", shown.seconds, PREVIEW_GOAL, "s")


def book_run(player, folder, books, rows):
    folder.mkdir()
    (folder / "installation").mkdir()
    generate("books", folder, books, rows)
    return ours(player, folder / "installation", folder / "drive", BOOK_RUN.format(work=folder, rows=rows))


def books(goals, player, work):
    folder = work / "books"
    spent = book_run(player, folder, BOOKS, ROWS)
    beside_openpyxl(goals, f"An Excelfile, {BOOKS} workbooks against {ROWS:,} rows", spent, "books", folder,
                    folder / "drive" / "made", BOOK_GOAL)
    growing = spent.seconds / book_run(player, work / "few", BOOKS // GROWTH, ROWS // GROWTH).seconds
    goals.at_most(f"{GROWTH} times the workbooks and the rows of An Excelfile take", growing, GROWTH_GOAL, "times as long")


def main(built):
    player, goals = built / "tarvik-play", Goals()
    with tempfile.TemporaryDirectory(prefix="designed_bench", dir=built) as name:
        work = pathlib.Path(name)
        preview(goals, player, built, work)
        reports(goals, player, built, work)
        books(goals, player, work)
    return goals.status()


if __name__ == "__main__":
    sys.exit(main(pathlib.Path(sys.argv[1]).resolve()))
