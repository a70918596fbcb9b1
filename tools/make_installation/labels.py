#!/usr/bin/python3
"""Makes what "An label" works on: the label list z1.xlsx and its two reports.

    z1型号.txt              the report that the clerk opens: devices of warehouse z1
    z1z6型号综合统计.txt    the one that is read behind it: devices of warehouse z6

Everything in them is invented, and the same files come out of every run.
"""

import pathlib
import random
import sys

from openpyxl import Workbook
from openpyxl.styles import Alignment, Border, Font, PatternFill, Side

from templates import BAND, CENTRE, DARK, HEAD, MADE, SMALL, TITLE, fixed_bytes, merge, style

REPORT_HEAD = ["序号", "入库日期", "入库单", "仓位", "供货方", "批次", "检验", "经手人", "部件号", "单位", "数量",
               "状态", "保管", "箱号", "型号", "备注"]
MODELS = [("YQ-S2326", ["21020326", "21020327"]), ("YQ-S5348", ["21025348"]), ("YQ-R2640", ["21032640", "21032641"]),
          ("YQ-MPU8B", ["21048800"]), ("YQ-PW350A", ["21050350"]), ("YQ-SFP10KM", ["21061010"]),
          ("YQ-AP6210", ["21076210"]), ("YQ-F1080", ["21081080"])]
WAREHOUSES = {"z1型号.txt": ("Z1", MODELS[:6], 60), "z1z6型号综合统计.txt": ("Z6", MODELS[2:], 45)}


def report(name):
    warehouse, models, lines = WAREHOUSES[name]
    chance = random.Random(name)
    rows = [REPORT_HEAD]
    for number in range(1, lines + 1):
        model, parts = chance.choice(models)
        rows.append([str(number), f"2024-02-{chance.randint(1, 28):02d}", f"RK{chance.randrange(10**6):06d}",
                     f"{warehouse}-{chance.randint(1, 20):02d}", chance.choice(["顺联电子", "北辰通信", "江岭器材"]),
                     f"P{chance.randint(100, 999)}", "合格", chance.choice(["程晓", "池春", "施敏"]),
                     chance.choice(parts), "台", "1", "在库", "周转", f"X{chance.randint(10, 99)}", model, "无"])
    assert all(("z1" in "\t".join(row).lower()) == (warehouse == "Z1") for row in rows[1:])
    return rows


def label_list(path):
    book = Workbook()
    sheet = book.active
    sheet.title = "标签清单"
    for column, width in zip("ABCDE", (22, 26, 14, 14, 22)):
        sheet.column_dimensions[column].width = width
    style(sheet, "A1:E1", TITLE, CENTRE, height=34)
    merge(sheet, "A1:E1", "型号标签清单")
    style(sheet, "A2:E2", SMALL, Alignment("left", "center"))
    merge(sheet, "A2:E2", "甲列部件号，乙列型号；Z1 与 Z6 两库的台数并列。")
    style(sheet, "A4:E4", HEAD, CENTRE, DARK, height=22)
    for column, text in zip("ABCDE", ("部件号", "型号", "Z1 台数", "Z6 台数", "标签备注")):
        sheet[f"{column}4"] = text
    hair = Side("hair", "7F8C86")
    for row in range(5, 61):
        style(sheet, f"A{row}:E{row}", Font("宋体", 11), CENTRE, BAND if row % 2 else PatternFill(),
              Border(hair, hair, hair, hair))
    sheet.freeze_panes = "A5"
    sheet.print_title_rows = "1:4"
    sheet.page_setup.orientation = "portrait"
    sheet.page_setup.fitToHeight = 0
    sheet.sheet_properties.pageSetUpPr.fitToPage = True
    book.properties.creator, book.properties.title, book.properties.created = "网络设备维修部", "型号标签清单", MADE
    path.write_bytes(fixed_bytes(book))


def main(folder):
    for name in WAREHOUSES:
        text = "".join("\t".join(row) + "\r\n" for row in report(name))
        (folder / name).write_bytes(text.encode("gbk"))
    label_list(folder / "z1.xlsx")


if __name__ == "__main__":
    main(pathlib.Path(sys.argv[1]))
