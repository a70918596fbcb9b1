#!/usr/bin/python3
"""Designed reports, ours and openpyxl's, on the same texts and workbooks in one run, every save flushed:
`An testsesame A` and `An Excelfile`.

    designed_bench.py INSTALLATION        the folder of tarvik-play and its templates

Also tells whether the time of `An Excelfile` grows with the workbooks and the rows or with their product. Ends with
status 1 when a goal is missed or when the two sides wrote different cells.
"""

import pathlib
import shutil
import subprocess
import sys
import tempfile
import time

from designed_generate import COPIED
from docket_bench import flush_seconds

STUDENTS, CELLS, REPORT_GOAL = 1000, 30, 5.0
BOOKS, ROWS, BOOK_GOAL = 100, 20000, 10.0
GROWTH = 4  # of workbooks and rows together: their product would take 16 times as long
GROWTH_GOAL = 1.5 * GROWTH
REPEATS = 2
SYSTEM_PYTHON = "/usr/bin/python3"  # the one that the package python3-openpyxl serves
HERE = pathlib.Path(__file__).parent
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


def our_seconds(player, installation, drive, script):
    """The best of several runs from start to end of the process; the workbooks lie in drive/made."""
    times = []
    for _ in range(REPEATS):
        shutil.rmtree(drive, ignore_errors=True)
        drive.mkdir()
        started = time.perf_counter()
        subprocess.run([player, "--install", installation, "--drive", f"d={drive}", "-"], input=script.encode(),
                       check=True, stdout=subprocess.DEVNULL)
        times.append(time.perf_counter() - started)
    return min(times)


def openpyxl(what, folder, output):
    return subprocess.run([SYSTEM_PYTHON, HERE / "designed_openpyxl.py", what, folder, output], check=True,
                          capture_output=True, text=True).stdout.split()


def openpyxl_seconds(what, folder, output):
    """The peer's own count of its work and of the flushing in it; its interpreter's start is not held against it."""
    return tuple(map(float, openpyxl(what, folder, output)[1:]))


def table(title, count, ours, peer, goal, folders):
    """Prints the two sides; gives whether the goal is reached and both wrote the same."""
    wrong = openpyxl("differ", *folders)
    scratch = folders[1].with_name("scratch")
    scratch.mkdir()
    flush = flush_seconds(folders[0], scratch)
    shutil.rmtree(scratch)
    print(title)
    print(f"{'':10}{'seconds':>9}{'a second':>10}{'of it flushing':>17}")
    print(f"{'ours':10}{ours:9.2f}{count / ours:10.0f}{flush:12.2f} s {flush / ours:4.0%}")
    print(f"{'openpyxl':10}{peer[0]:9.2f}{count / peer[0]:10.0f}{peer[1]:12.2f} s {peer[1] / peer[0]:4.0%}")
    print(f"ratio {peer[0] / ours:.1f} (goal {goal:g})")
    if wrong:
        print("the two sides differ:", ", ".join(wrong[:5]))
    return not wrong and peer[0] / ours >= goal


def reports(player, built, work):
    installation = work / "reports"
    installation.mkdir()
    shutil.copy(built / "designerA.xlsx", installation)
    generate("marks", installation, STUDENTS)
    ours = our_seconds(player, installation, work / "ours", REPORTS)
    peer = openpyxl_seconds("reports", installation, work / "peer")
    return table(f"{STUDENTS} reports of {CELLS} cells, every save flushed", STUDENTS, ours, peer, REPORT_GOAL,
                 (work / "ours" / "made", work / "peer"))


def book_seconds(player, folder, books, rows):
    folder.mkdir()
    (folder / "installation").mkdir()
    generate("books", folder, books, rows)
    return our_seconds(player, folder / "installation", folder / "ours", BOOK_RUN.format(work=folder, rows=rows))


def books(player, work):
    ours = book_seconds(player, work / "books", BOOKS, ROWS)
    peer = openpyxl_seconds("books", work / "books", work / "books" / "peer")
    reached = table(f"{BOOKS} workbooks against {ROWS} rows, every save flushed", BOOKS, ours, peer, BOOK_GOAL,
                    (work / "books" / "ours" / "made", work / "books" / "peer"))
    growing = ours / book_seconds(player, work / "few", BOOKS // GROWTH, ROWS // GROWTH)
    print(f"{GROWTH} times the workbooks and the rows take {growing:.1f} times as long (goal under {GROWTH_GOAL:g})")
    return reached and growing < GROWTH_GOAL


def main(built):
    player = built / "tarvik-play"
    with tempfile.TemporaryDirectory(prefix="designed_bench", dir=built) as name:
        work = pathlib.Path(name)
        reached = [reports(player, built, work), books(player, work)]
    return 0 if all(reached) else 1


if __name__ == "__main__":
    sys.exit(main(pathlib.Path(sys.argv[1]).resolve()))
