#!/usr/bin/python3
"""Makes a school's reports for installation/: the marks of a term 3159.txt, what is added to them 3160.txt, the
templates designerA.xlsx (a student's transcript) and designerB.xlsx (a class's book of marks), and the designs that
bring them together: automation.bin, automation2.bin and automation3.bin.

Everything in them is invented. The generator is seeded: the same files come out of every run.
"""

import pathlib
import random
import sys

from openpyxl import Workbook

from templates import BAND, BOX, CENTRE, DARK, ENTRY, HEAD, LABEL, LEFT, LIST_BOX, MADE, SMALL, TITLE, VALUE
from templates import fixed_bytes, merge, style

TERM = "2024上学期"
MARKS_HEAD = ["序号", "学号", "姓名", "班级", "性别", "班主任", "科目", "任课教师", "平时", "期中", "期末", "总评", "等第", "学期"]
ADDED_HEAD = ["序号", "学号", "姓名", "班级", "体育", "艺术", "劳动", "评语", "学期"]
CLASSES = {
    "一班": ("温雅", ["林知夏 女", "江远舟 男", "白小满 女", "季晴川 男", "顾南星 女", "唐一诺 女", "葛天佑 男", "卞星河 男"]),
    "二班": ("季思远", ["陆清和 男", "闵沐晨 女", "申屠越 男", "柳如是安 女", "范子墨 男", "祝安然 女", "车启明 男"]),
    "三班": ("宗铁军", ["丁若水 女", "翁以宁 男", "欧阳朵 女", "雷震宇 男", "戚可心 女", "屠向阳 男", "查语桐 女"]),
}
SUBJECTS = [("语文", "温雅"), ("数学", "季思远"), ("英语", "陆小曼"), ("物理", "宗铁军"), ("化学", "柳青"), ("历史", "卞书林")]
ABSENT = {("20240203", "物理"), ("20240305", "化学")}  # no mark in the final examination
REMARKS = ["思维活跃，肯动脑筋", "踏实认真，书写工整", "乐于助人，劳动积极", "进步明显，仍需细心", "有主见，善于表达"]
GRADES = [(90, "A"), (80, "B"), (70, "C"), (60, "D"), (0, "E")]


def students():
    for class_number, (name, (teacher, members)) in enumerate(CLASSES.items(), 1):
        for place, member in enumerate(members, 1):
            student, gender = member.split(" ")
            yield f"2024{class_number:02d}{place:02d}", student, gender, name, teacher


def mark_lines(chance):
    for number, student, gender, class_name, teacher in students():
        talent = chance.randint(58, 92)
        for subject, subject_teacher in SUBJECTS:
            daily, middle, final = (max(30, min(100, talent + chance.randint(-12, 12))) for _ in range(3))
            total = round(daily * 0.3 + middle * 0.3 + final * 0.4)
            grade = next(letter for least, letter in GRADES if total >= least)
            ending = ["缺考", "", ""] if (number, subject) in ABSENT else [final, total, grade]
            yield [number, student, class_name, gender, teacher, subject, subject_teacher, daily, middle, *ending, TERM]


def added_lines(chance):
    """One line a student, but for the one who changed schools."""
    for number, student, _, class_name, _ in students():
        if number == "20240107":
            continue
        sport, art, work = (chance.choice(["优", "良", "良", "合格"]) for _ in range(3))
        yield [number, student, class_name, sport, art, work, chance.choice(REMARKS), TERM]


def report(head, lines):
    """A text of lines with TABs between the fields, the first of which counts the lines."""
    rows = [head, *([number, *line] for number, line in enumerate(lines, 1))]
    return "".join("\t".join(map(str, row)) + "\r\n" for row in rows).encode("gb18030")


def add_report(path, lines):
    """Behind the lines of the service bills, which have the same file."""
    kept = path.read_bytes().split(lines.split(b"\r\n")[0])[0] if path.exists() else b""
    path.write_bytes(kept + lines)


def labelled(sheet, row, labels):
    """A label in every other cell; what stands right of it is filled in by the design."""
    style(sheet, f"A{row}:G{row}", VALUE, LEFT, border=BOX, height=21)
    for column, text in labels.items():
        sheet[f"{column}{row}"] = text
        style(sheet, f"{column}{row}:{column}{row}", LABEL, CENTRE, BAND, BOX)


def listing(sheet, head_row, heads, rows):
    last = "ABCDEFGH"[len(heads) - 1]
    style(sheet, f"A{head_row}:{last}{head_row}", HEAD, CENTRE, DARK, BOX, 21)
    for column, text in zip("ABCDEFGH", heads):
        sheet[f"{column}{head_row}"] = text
    style(sheet, f"A{head_row + 1}:{last}{head_row + rows}", ENTRY, CENTRE, border=LIST_BOX, height=19)


def page(sheet, widths):
    for column, width in zip("ABCDEFGH", widths):
        sheet.column_dimensions[column].width = width
    sheet.sheet_view.showGridLines = False
    sheet.page_setup.paperSize, sheet.page_setup.fitToHeight = sheet.PAPERSIZE_A4, 0
    sheet.sheet_properties.pageSetUpPr.fitToPage = True
    sheet.print_options.horizontalCentered = True


def new_book(title):
    book = Workbook()
    book.properties.creator, book.properties.title, book.properties.created = "晨光中学教务处", title, MADE
    book.active.title = title
    return book, book.active


def transcript():
    book, sheet = new_book("成绩单")
    style(sheet, "A1:G1", TITLE, CENTRE, height=36)
    merge(sheet, "A1:G1", "晨光中学学生成绩单")
    style(sheet, "A2:G2", SMALL, LEFT)
    merge(sheet, "A2:G2", "说明：总评由平时、期中各三成，期末四成合成。")
    labelled(sheet, 3, {"A": "学号", "C": "姓名", "E": "班级"})
    labelled(sheet, 4, {"A": "性别", "C": "班主任", "E": "学期"})
    for row in (3, 4):
        merge(sheet, f"F{row}:G{row}")
    listing(sheet, 6, ["科目", "任课教师", "平时", "期中", "期末", "总评", "等第"], 10)
    labelled(sheet, 17, {"A": "科目数"})
    merge(sheet, "B17:G17", "=COUNTA(A7:A16)")
    labelled(sheet, 18, {"A": "体育", "C": "艺术", "E": "劳动"})
    merge(sheet, "F18:G18")
    labelled(sheet, 19, {"A": "评语"})
    merge(sheet, "B19:G19")
    page(sheet, [13, 14, 11, 13, 11, 11, 11])
    return book


def class_book():
    book, sheet = new_book("成绩册")
    style(sheet, "A1:H1", TITLE, CENTRE, height=36)
    merge(sheet, "A1:H1", "晨光中学班级成绩册")
    labelled(sheet, 2, {"A": "班级", "C": "班主任", "E": "学期"})
    listing(sheet, 4, ["学号", "姓名", "科目", "平时", "期中", "期末", "总评", "等第"], 60)
    page(sheet, [14, 12, 10, 9, 9, 9, 9, 9])
    return book


def design(query, key_column, static, first_row=0, dynamic=()):
    """A parameter file. `static` are cells with their column of the report, `dynamic` columns with theirs."""
    targets, sources = ["0"] * 50, ["0"] * 28 + ["-1", "0"] * 11
    for pair, ((row, column), field) in enumerate(static):
        targets[2 * pair], targets[2 * pair + 1], sources[2 * pair + 1] = str(row), str(column), str(field)
    targets[28] = str(first_row)
    for place, (column, field) in enumerate(dynamic):
        targets[29 + 2 * place], sources[29 + 2 * place] = str(column), str(field)
    return ("*".join([query, *targets, *sources, str(key_column)]) + "\r\n").encode("gb18030")


DESIGNS = {
    # A transcript for each student number of class one.
    "automation.bin": design("一班", 2, [((3, 2), 2), ((3, 4), 3), ((3, 6), 4), ((4, 2), 5), ((4, 4), 6), ((4, 6), 14)],
                             7, [(1, 7), (2, 8), (3, 9), (4, 10), (5, 11), (6, 12), (7, 13)]),
    # A book of marks for each class.
    "automation2.bin": design(TERM, 4, [((2, 2), 4), ((2, 4), 6), ((2, 6), 14)],
                              5, [(1, 2), (2, 3), (3, 7), (4, 9), (5, 10), (6, 11), (7, 12), (8, 13)]),
    # What a transcript has besides the marks.
    "automation3.bin": design("一班", 2, [((18, 2), 5), ((18, 4), 6), ((18, 6), 7), ((19, 2), 8)]),
}


def main(folder):
    chance = random.Random(20240901)
    (folder / "3159.txt").write_bytes(report(MARKS_HEAD, mark_lines(chance)))
    add_report(folder / "3160.txt", report(ADDED_HEAD, added_lines(chance)))
    (folder / "designerA.xlsx").write_bytes(fixed_bytes(transcript()))
    (folder / "designerB.xlsx").write_bytes(fixed_bytes(class_book()))
    for name, line in DESIGNS.items():
        (folder / name).write_bytes(line)


if __name__ == "__main__":
    main(pathlib.Path(sys.argv[1]))
