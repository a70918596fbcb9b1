#!/usr/bin/python3
"""Makes what a large run of designed reports works on: the marks of many students with the design of their reports, and
a folder of workbooks whose key cells stand in another list.

    designed_generate.py marks FOLDER STUDENTS
    designed_generate.py books FOLDER BOOKS ROWS
"""

import pathlib
import sys

LINES = 4  # of a student
FIRST_ROW = 7
CLASS, KEY_COLUMN = "一班", 2
SINGLE = [((3, 2), 2), ((3, 4), 3), ((3, 6), 4), ((4, 2), 5), ((4, 4), 6), ((4, 6), 7)]  # cell, field
BLOCK = [(1, 8), (2, 9), (3, 10), (4, 11), (5, 12), (6, 13)]                            # column, field
KEYS_A_BOOK = 200
COPIED = [(3, 3), (4, 4), (5, 5)]  # column of the workbook, field


def text(lines):
    return "".join("\t".join(map(str, line)) + "\r\n" for line in lines).encode("gb18030")


def design():
    """What stands in the boxes of the design, where to and where from: 30 cells a report."""
    targets, sources = ["0"] * 50, ["0"] * 28 + ["-1", "0"] * 11
    for pair, ((row, column), field) in enumerate(SINGLE):
        targets[2 * pair], targets[2 * pair + 1], sources[2 * pair + 1] = str(row), str(column), str(field)
    targets[28] = str(FIRST_ROW)
    for place, (column, field) in enumerate(BLOCK):
        targets[29 + 2 * place], sources[29 + 2 * place] = str(column), str(field)
    return targets, sources


def marks(folder, students):
    """3159.txt and automation.bin."""
    lines = []
    for student in range(students):
        for line in range(LINES):
            lines.append([len(lines) + 1, f"s{student:06d}", f"学生{student}", CLASS, "女", "温雅", "2024上学期",
                          f"科目{line}", f"教师{line}", 60 + line, 70 + line, 80 + student % 20, 75])
    (folder / "3159.txt").write_bytes(text(lines))
    targets, sources = design()
    (folder / "automation.bin").write_bytes(("*".join([CLASS, *targets, *sources, str(KEY_COLUMN)]) + "\r\n").encode("gb18030"))


def books(folder, count, rows):
    """books/*.xlsx and list.txt; as many rows find a key cell as there are key cells, or rows."""
    from openpyxl import Workbook  # which only the making of workbooks needs

    (folder / "books").mkdir()
    (folder / "list.txt").write_bytes(text([row + 1, f"k{row:06d}", 50 + row % 50, f"b{row % 7}", "一班"]
                                           for row in range(rows)))
    key = 0
    for number in range(count):
        book = Workbook()
        for row in range(1, KEYS_A_BOOK + 1):
            book.active.append([f"K{key % rows:06d}", f"学生{key}", None, None, "待定"])
            key += 1
        book.save(folder / "books" / f"book{number:03d}.xlsx")


if __name__ == "__main__":
    {"marks": marks, "books": books}[sys.argv[1]](pathlib.Path(sys.argv[2]), *map(int, sys.argv[3:]))
