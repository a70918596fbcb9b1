#!/usr/bin/python3
"""Makes the templates of the service bills: z8.xlsx for one device, z80.xlsx for a delivery, z9.xlsx for the summary.

Nothing empties z80 and z9 before a run but the rows that an earlier list left, so their signature lines stand in the
page footer.
"""

import pathlib
import sys

from openpyxl import Workbook
from openpyxl.formatting.rule import Rule
from openpyxl.styles import Alignment, Border, Font, PatternFill
from openpyxl.styles.differential import DifferentialStyle

from templates import (BAND, BOX, CENTRE, DARK, ENTRY, HEAD, LABEL, LEFT, LIST_BOX, MADE, PALE, SMALL, THICK,
                       TITLE, VALUE, Logo, fixed_bytes, merge, page, style)

WRAPPED = Alignment("left", "center", indent=1, wrap_text=True)
CODE = Font("Consolas", 13, bold=True)
DENSE = Font("宋体", 9)  # three lines of it fit into a row of the summary


def labels(sheet, texts):
    for cell, text in texts.items():
        sheet[cell] = text
        style(sheet, f"{cell}:{cell}", LABEL, CENTRE, BAND, BOX)


def section(sheet, row, last, text):
    style(sheet, f"A{row}:{last}{row}", HEAD, LEFT, DARK, BOX, 24)
    merge(sheet, f"A{row}:{last}{row}", text)


def title(sheet, last, text, note, mark):
    """Rows 1 to 3: mark, title, what the paper is."""
    for row, height in zip(range(1, 4), (26, 22, 6)):
        sheet.row_dimensions[row].height = height
    sheet.add_image(Logo("A1", 42))
    middle = chr(ord(last) - 1)
    style(sheet, f"A1:{last}1", TITLE, CENTRE)
    merge(sheet, f"B1:{middle}1", text)
    style(sheet, f"{last}1:{last}1", SMALL, Alignment("right", "center"))
    sheet[f"{last}1"] = mark
    style(sheet, f"A2:{last}2", SMALL, Alignment("left", "center"))
    sheet["B2"] = note
    for column in range(ord("A"), ord(last) + 1):
        sheet[f"{chr(column)}3"].border = Border(bottom=THICK)


def book_of(name, widths):
    book = Workbook()
    sheet = book.active
    sheet.title = name
    for column, width in zip("ABCDEFGHIJK", widths):
        sheet.column_dimensions[column].width = width
    book.properties.creator, book.properties.title, book.properties.created = "网络设备维修部", name, MADE
    return book, sheet


def prepared_rows(sheet, columns, first, last, height, alignment, centred, font=ENTRY):
    """The rows of a list. Lines are drawn where a row is filled, so that a short list prints on one page."""
    style(sheet, f"A{first}:{columns[-1]}{last}", font, alignment)
    sheet.sheet_format.defaultRowHeight, sheet.sheet_format.customHeight = height, True
    for column in columns:
        sheet.column_dimensions[column].font = font
        sheet.column_dimensions[column].alignment = CENTRE if column in centred else alignment
        for row in range(first, last + 1) if column in centred else ():
            sheet[f"{column}{row}"].alignment = CENTRE
    for odd, look in ((1, DifferentialStyle(border=LIST_BOX, fill=PatternFill(bgColor=PALE))),
                      (0, DifferentialStyle(border=LIST_BOX))):
        rule = Rule("expression", dxf=look, formula=[f'AND($C{first}<>"",MOD(ROW(),2)={odd})'])
        sheet.conditional_formatting.add(f"A{first}:{columns[-1]}2000", rule)


def bill():
    book, sheet = book_of("维修服务结算单", (15, 24, 12, 22, 13, 21))
    title(sheet, "F", "维修服务结算单", "自制产品保外维修", "财务联")
    style(sheet, "E2:F2", CODE, CENTRE)
    merge(sheet, "E2:F2")
    for first, last in ((4, 6), (8, 9), (11, 13), (15, 18), (23, 24)):
        style(sheet, f"A{first}:F{last}", VALUE, LEFT, border=BOX, height=30)
    labels(sheet, {"A4": "服务单号", "A5": "客户名称", "C5": "联系人", "E5": "联系电话", "A6": "受理人", "C6": "发运代码",
                   "E6": "受理日期", "A8": "产品型号", "C8": "产品名称", "A9": "产品来源", "E9": "设备序列号", "A11": "收入条码",
                   "A12": "发出条码", "A13": "产品条码", "A15": "外观检查", "A16": "上电检查", "A17": "业务测试", "A18": "故障现象",
                   "A23": "维修结论", "A24": "检测人", "E24": "归档批次"})
    for area in ("B4:F4", "D8:F8", "B9:D9", "B11:F11", "B12:F12", "B13:F13", "B15:F15", "B16:F16", "B17:F17", "B18:F18",
                 "B23:F23", "B24:D24"):
        merge(sheet, area)
    sheet["B9"] = "自制品"
    for row in (15, 16, 17):
        sheet[f"B{row}"] = "□ 正常　　□ 异常：________________________________"
    sheet.row_dimensions[18].height = 52
    for cell in ("B18", "B23"):
        sheet[cell].alignment = WRAPPED
    section(sheet, 7, "F", "送修设备")
    section(sheet, 10, "F", "条码核对")
    section(sheet, 14, "F", "检测")
    section(sheet, 19, "F", "维修与费用（由财务填写）")
    style(sheet, "A20:F22", VALUE, LEFT, border=BOX, height=30)
    labels(sheet, {"A20": "维修费（元）", "C20": "材料费（元）", "E20": "合计（元）"})
    sheet["F20"] = "=B20+D20"
    for cell in ("B20", "D20", "F20"):
        sheet[cell].number_format = "#,##0.00"
    labels(sheet, {"A21": "更换器件", "A22": "备注"})
    merge(sheet, "B21:F21")
    merge(sheet, "B22:F22")
    page(sheet, 3, True)
    sheet.freeze_panes = None
    return book


def delivery_list(rows=60):
    book, sheet = book_of("送修结算清单", (7, 17, 20, 12, 25, 27, 15, 8))
    title(sheet, "H", "送修设备结算清单", "按送修批号结算；更换器件的设备另计材料费", "财务联")
    sheet.row_dimensions[4].height = 15
    style(sheet, "A4:H4", SMALL, Alignment("left", "center"))
    merge(sheet, "A4:H4", "说明：产品条码第 7、8 位为出厂年份，14 及以后出厂的设备在质保期内。")
    style(sheet, "A6:H6", LABEL, CENTRE, BAND, BOX, 20)
    merge(sheet, "A6:D6", "更换器件的设备")
    merge(sheet, "E6:H6", "=COUNTA(H12:H1000)")
    sheet["E6"].number_format = '0" 台"'
    style(sheet, "A7:H10", VALUE, LEFT, border=BOX, height=21)
    labels(sheet, {"A7": "客户", "A8": "联系人", "A9": "批号", "A10": "总台数", "D10": "质保期内", "F10": "质保期外"})
    for area in ("B7:H7", "B8:H8", "B9:H9", "B10:C10", "G10:H10"):
        merge(sheet, area)
    sheet["F10"].alignment = Alignment("right", "center", indent=1)
    for cell in ("B10", "E10", "G10"):
        sheet[cell].number_format = '0" 台"'
    style(sheet, "A11:H11", HEAD, CENTRE, DARK, BOX, 21)
    for column, text in zip("ABCDEFGH", ("核对", "产品型号", "产品条码", "质保", "故障现象", "检测结果", "更换器件", "数量")):
        sheet[f"{column}11"] = text
    first, last = 12, 11 + rows
    prepared_rows(sheet, "ABCDEFGH", first, last, 21, LEFT, centred="ADH")
    page(sheet, 11, False)
    sheet.page_setup.orientation = "landscape"
    return book


def summary(rows=100):
    book, sheet = book_of("汇总", (6, 11, 9, 15, 28, 8, 32, 10, 14, 20, 15))
    heads = ("序号", "报修日期", "联系人", "联系电话", "客户名称及受理时间", "区域", "收货地址及发运方式", "服务类别", "产品型号", "维修结论",
             "设备序列号")
    style(sheet, "A1:K1", HEAD, CENTRE, DARK, BOX, 24)
    for column, text in zip("ABCDEFGHIJK", heads):
        sheet[f"{column}1"] = text
    prepared_rows(sheet, "ABCDEFGHIJK", 2, rows + 1, 37, WRAPPED, centred="A", font=DENSE)
    page(sheet, 1, False)
    sheet.page_setup.orientation = "landscape"
    sheet.oddHeader.center.text, sheet.oddHeader.center.size = "自制产品保外维修汇总", 14
    sheet.page_margins.top, sheet.page_margins.header = 0.75, 0.3
    sheet.auto_filter.ref = "A1:K1"
    return book


TEMPLATES = {"z8.xlsx": bill, "z80.xlsx": delivery_list, "z9.xlsx": summary}


def main(folder):
    for name, make in TEMPLATES.items():
        (folder / name).write_bytes(fixed_bytes(make()))


if __name__ == "__main__":
    main(pathlib.Path(sys.argv[1]))
