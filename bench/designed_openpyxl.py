#!/usr/bin/python3
"""The peers of the designed reports, with openpyxl.

    designed_openpyxl.py reports INSTALLATION OUTPUT      `An testsesame A`
    designed_openpyxl.py books FOLDER OUTPUT              `An Excelfile`, its keys found through a dict
    designed_openpyxl.py differ OURS PEER                 names the workbooks whose cells are not the same

The first two print the number of workbooks, the seconds that the run took, the start of the interpreter left out, how
many of them went into flushing, and the seconds of processor.
"""

import pathlib
import sys
import time

from openpyxl import load_workbook

from designed_generate import BLOCK, COPIED, FIRST_ROW, SINGLE
from docket_openpyxl import read_rows, save


def reports(installation, output):
    rows = {}
    for row in read_rows(installation / "3159.txt"):
        rows.setdefault(row[1], []).append(row)
    flushing = 0.0
    for key, lines in rows.items():
        book = load_workbook(installation / "designerA.xlsx")
        sheet = book.worksheets[0]
        for (row, column), field in SINGLE:
            sheet.cell(row, column).value = lines[0][field - 1].upper()
        for offset, line in enumerate(lines):
            for column, field in BLOCK:
                sheet.cell(FIRST_ROW + offset, column).value = line[field - 1].upper()
        flushing += save(book, output / f"{key.upper()}.xlsx", True)
    return len(rows), flushing


def books(folder, output):
    rows = {row[1].upper(): row for row in read_rows(folder / "list.txt")}
    flushing = 0.0
    paths = sorted((folder / "books").iterdir())
    for path in paths:
        book = load_workbook(path)
        for sheet in book.worksheets:
            for cells in sheet.iter_rows(max_col=1):
                found = rows.get(str(cells[0].value).upper())
                if found:
                    for column, field in COPIED:
                        sheet.cell(cells[0].row, column).value = found[field - 1].upper()
        flushing += save(book, output / f"A{path.name}", True)
    return len(paths), flushing


def cells(path):
    return list(load_workbook(path, read_only=True).worksheets[0].iter_rows(values_only=True))


def differ(ours, peer):
    """The names that only one side has, or else those of a few compared workbooks that are not the same."""
    names = [{path.name for path in folder.iterdir()} for folder in (ours, peer)]
    common = sorted(names[0])[::max(1, len(names[0]) // 5)]
    return sorted(names[0] ^ names[1]) or [name for name in common if cells(ours / name) != cells(peer / name)]


def main(arguments):
    folder, output = map(pathlib.Path, arguments[1:3])
    if arguments[0] == "differ":
        print(" ".join(differ(folder, output)))
        return
    output.mkdir(parents=True)
    start, start_cpu = time.perf_counter(), time.process_time()
    count, flushing = {"reports": reports, "books": books}[arguments[0]](folder, output)
    print(count, f"{time.perf_counter() - start:.6f} {flushing:.6f} {time.process_time() - start_cpu:.6f}")


if __name__ == "__main__":
    main(sys.argv[1:])
