#!/usr/bin/python3
"""The peers of the bills and repair reports: openpyxl and python-docx fill the same cells and save, sheet by sheet.

    service_peers.py COMMAND INSTALLATION OUTPUT

Prints the number of sheets, the seconds that the run took, the start of the interpreter left out, how many of them went
into flushing, and the seconds of processor.
"""

import os
import pathlib
import sys
import time

import docx
from docx.shared import Inches
from openpyxl import load_workbook

from docket_openpyxl import read_rows, save
from service_generate import DESIGN_ITEMS, DESIGN_LIST, DESIGN_LIST_ROW

DELIVERY_CODES = {"交包发": "B/0", "批次": "P/0", "交物流": "W/0"}


def groups(rows, key):
    """The rows by their key field, keys in their first order."""
    found = {}
    for row in rows:
        found.setdefault(row[key - 1], []).append(row)
    return found


def telephone(text):
    first, slash, second = text.partition("/")
    return second if slash and text.startswith("0") else first


def target(output, text, rest):
    text = text.replace(".", "")
    (output / text).mkdir(exist_ok=True)
    return output / text / (text + rest)


def bills(installation, output):
    orders = {row[15]: row for row in read_rows(installation / "3137.txt")}
    spent = 0.0
    rows = [row for row in read_rows(installation / "3138.txt") if "自制品" in row]
    for row in rows:
        field = [None, *row]
        book = load_workbook(installation / "z8.xlsx")
        sheet = book.worksheets[0]
        for cell in "B4 E2 B5 D5 F5 B6 D6 F6 B8 D8 F9 F24 B24 B23".split():
            sheet[cell] = None
        device = field[15].upper()
        order = [None, *orders[field[15]]]
        day = "".join(c for c in field[18].partition(" ")[0] if c not in "./\\")
        values = {"E2": f"*{device}*", "B5": field[5], "D5": field[3], "F5": telephone(field[4]), "B6": field[19],
                  "D6": DELIVERY_CODES.get(field[20]), "F6": day, "B8": field[10], "D8": field[9], "F9": device,
                  "B4": field[14].upper(), "B13": field[16], "B18": field[30], "F24": field[22], "B24": field[28],
                  "B23": field[32], "B11": order[37].upper(), "B12": order[35].upper()}
        for cell, value in values.items():
            sheet[cell] = value
        spent += save(book, target(output, order[23], f"-{field[5]}-{order[15]}-{field[20]}.xlsx"), True)
    return len(rows), spent


def deliveries(installation, output):
    spent = 0.0
    found = groups([row for row in read_rows(installation / "3160.txt") if "自制品" in row], 15)
    for key, rows in found.items():
        book = load_workbook(installation / "z80.xlsx")
        sheet = book.worksheets[0]
        inside = 0
        for offset, row in enumerate(rows):
            field = [None, *row]
            year = field[16][6:8]
            inside += int(year) > 13
            values = [field[11], field[16], "质保期内" if int(year) > 13 else year, field[30], field[31] or field[33],
                      field[32]]
            for place, value in enumerate(values):
                sheet.cell(12 + offset, 2 + place).value = value.upper()
            if field[32]:
                sheet.cell(12 + offset, 5).value, sheet.cell(12 + offset, 8).value = "器件问题", 1
        field = [None, *rows[0]]
        sheet["B7"], sheet["B8"], sheet["B9"] = field[6], field[4] + "     " + field[5], key
        sheet["B10"], sheet["E10"], sheet["G10"] = len(rows), inside, len(rows) - inside
        spent += save(book, target(output, key, f"-{field[6]}-{field[16]}.xlsx"), True)
    return len(found), spent


def summary(installation, output):
    rows = [row for row in read_rows(installation / "3158.txt") if "自制品" in row]
    book = load_workbook(installation / "z9.xlsx")
    sheet = book.worksheets[0]
    for offset, row in enumerate(rows):
        field = [None, *(text.upper() for text in row)]
        values = [offset + 1, *map(telephone, field[2:9]), field[10], field[32], field[15]]
        values[4] += " " + field[18]
        values[6] += " " + field[20]
        for place, value in enumerate(values):
            sheet.cell(2 + offset, 1 + place).value = value
    return 1, save(book, target(output, rows[0][21], "_汇总.xlsx"), True)


def put(cell, text):
    """Into the first run, whose look stays; a line break for each line end."""
    run = cell.paragraphs[0].runs[0]
    run.text = text


def repair_reports(installation, output):
    spent = 0.0
    rows = [row for row in read_rows(installation / "3158.txt") if "不可修复" in row]
    for row in rows:
        field = [None, *row]
        document = docx.Document(str(installation / "wtest1.doc"))
        table = document.tables[0]
        cells = [[docx.table._Cell(tc, table) for tc in tr.tc_lst] for tr in table._tbl.tr_lst]
        texts = {(1, 2): field[5], (1, 6): field[18].partition(" ")[0], (9, 6): field[22], (9, 4): field[29],
                 (9, 2): "维修服务部", (2, 2): field[3], (10, 1): "检测结果（必要时附照片)\n        " + field[33],
                 (2, 6): telephone(field[4]), (5, 1): field[9].upper(), (5, 2): field[10].upper(),
                 (5, 3): field[15].upper(), (5, 4): field[35].upper()}
        for (line, column), text in texts.items():
            put(cells[line - 1][column - 1], text)
        picture = installation / "photo" / f"{field[15]}.jpg"
        if picture.exists():
            cells[8][0].add_paragraph().add_run().add_picture(str(picture), width=Inches(2.7))
        spent += save(document, target(output, field[14], f"-{field[15]}.doc"), True)
    return len(rows), spent


def designed_dockets(installation, output):
    received = {key: len(rows) for key, rows in groups(read_rows(installation / "3139.txt"), 3).items()}
    spent = 0.0
    found = {key: rows for key, rows in groups(read_rows(installation / "3138.txt"), 3).items() if "4900" in key}
    for key, rows in found.items():
        book = load_workbook(installation / "z5.xlsx")
        sheet = book.worksheets[0]
        for offset, row in enumerate(rows):
            for column, field in DESIGN_LIST:
                sheet.cell(DESIGN_LIST_ROW + offset, column).value = row[field - 1]
        for line, column, field in DESIGN_ITEMS:
            sheet.cell(line, column).value = rows[0][field - 1]
        sheet["B10"], sheet["E10"], sheet["G10"] = received[key], received[key] - len(rows), len(rows)
        field = [None, *rows[0]]
        sheet["B8"] = field[19] + "     " + field[20]
        spent += save(book, target(output, field[24], f"-{field[16]}-{field[17]}.xlsx"), True)
    return len(found), spent


RUNS = {"bendocket": bills, "dandocket": deliveries, "wodben": summary, "dockword": repair_reports,
        "testdocket": designed_dockets}


def main(command, installation, output):
    os.makedirs(output, exist_ok=True)
    start, start_cpu = time.perf_counter(), time.process_time()
    sheets, flushing = RUNS[command](pathlib.Path(installation), pathlib.Path(output))
    print(sheets, f"{time.perf_counter() - start:.6f} {flushing:.6f} {time.process_time() - start_cpu:.6f}")


if __name__ == "__main__":
    main(*sys.argv[1:])
