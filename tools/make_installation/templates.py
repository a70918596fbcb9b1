#!/usr/bin/python3
"""Makes the docket templates z2.xlsx, z3.xlsx, z5.xlsx and z6.xlsx of installation/.

The program empties rows 13 to 1000 of the columns 1 to 10 before each docket, so whatever has to stay (title, labels,
the count by formula) stands above row 13, and the signature lines stand in the page footer.
"""

import datetime
import io
import pathlib
import re
import sys
import zipfile

from openpyxl import Workbook
from openpyxl.drawing.image import Image
from openpyxl.formatting.rule import Rule
from openpyxl.styles import Alignment, Border, Font, PatternFill, Side
from openpyxl.styles.differential import DifferentialStyle
from openpyxl.workbook.defined_name import DefinedName
from openpyxl.worksheet.datavalidation import DataValidation
from openpyxl.worksheet.properties import PageSetupProperties

from logo import logo_png

MADE = datetime.datetime(2024, 3, 1, 8, 0, 0)
LAST_BLANKED_ROW = 1000
COLUMN_WIDTHS = {"A": 15, "B": 25, "C": 17, "D": 13, "E": 11, "F": 11, "G": 12}
COLUMNS = list(COLUMN_WIDTHS)
LIST_HEADS = ["返修单号", "产品型号", "序列号", "处理方式", "检测结果", "报价（元）", "备注"]
FOOTER = "经手人：__________　复核：__________", "第 &P 页，共 &N 页", "客户签收：__________　日期：__________"

GREEN, PALE, GREY = "2E5E4E", "E9F0EC", "7F8C86"
THIN, HAIR, THICK = Side("thin", GREY), Side("hair", GREY), Side("medium", GREEN)
BOX = Border(THIN, THIN, THIN, THIN)
LIST_BOX = Border(THIN, THIN, HAIR, HAIR)
TITLE = Font("微软雅黑", 20, bold=True, color=GREEN)
SMALL = Font("宋体", 9, color=GREY)
LABEL = Font("微软雅黑", 10, color=GREEN)
VALUE = Font("宋体", 11)
HEAD = Font("微软雅黑", 10, bold=True, color="FFFFFF")
ENTRY = Font("宋体", 10)
BAND = PatternFill("solid", PALE)
DARK = PatternFill("solid", GREEN)
LEFT = Alignment("left", "center", indent=1, shrink_to_fit=True)
CENTRE = Alignment("center", "center", shrink_to_fit=True)


class Logo(Image):
    """A picture that is placed without a picture library."""

    def __init__(self, anchor, points):
        self.format, self.anchor = "png", anchor
        self.width = self.height = points * 4 // 3

    def _data(self):
        return logo_png()


def style(sheet, area, font, alignment, fill=None, border=None, height=None):
    for row in sheet[area]:
        for cell in row:
            cell.font, cell.alignment = font, alignment
            if fill:
                cell.fill = fill
            if border:
                cell.border = border
        if height:
            sheet.row_dimensions[row[0].row].height = height


def merge(sheet, area, text=None):
    sheet.merge_cells(area)
    if text is not None:
        sheet[area.split(":")[0]] = text


def head(sheet, note):
    """Rows 1 to 5, the same for every docket: mark, title, what the paper is."""
    for row, height in zip(range(1, 7), (24, 20, 4, 15, 4, 20)):
        sheet.row_dimensions[row].height = height
    sheet.add_image(Logo("A1", 42))
    style(sheet, "A1:G2", TITLE, CENTRE)
    merge(sheet, "B1:F2", "网络设备返修单")
    style(sheet, "G1:G2", SMALL, Alignment("right", "center"))
    sheet["G1"], sheet["G2"] = "网络设备维修部", "客户联"
    for column in COLUMNS:
        sheet[f"{column}3"].border = Border(bottom=THICK)
    style(sheet, "A4:G4", SMALL, Alignment("left", "center"))
    merge(sheet, "A4:G4", note)


def count_row(sheet, row, first, wanted=None):
    """The list counted by formula; beside it, where the number wanted stands in a cell, whether the two agree."""
    style(sheet, f"A{row}:G{row}", LABEL, CENTRE, BAND, BOX, 20)
    sheet[f"A{row}"] = "清单台数"
    sheet[f"B{row}"] = "=COUNTA(清单)"
    style(sheet, f"B{row}:B{row}", VALUE, LEFT, BAND, BOX)
    sheet[f"B{row}"].number_format = '0" 台"'
    merge(sheet, f"C{row}:D{row}", "与保外台数核对" if wanted else "首台序列号")
    merge(sheet, f"E{row}:G{row}", f'=IF(COUNTA(清单)={wanted},"相符","不符，请查清单")' if wanted
          else f'=IF(C{first}="","无",C{first})')
    style(sheet, f"E{row}:G{row}", VALUE, LEFT, BAND, BOX)
    if wanted:
        warning = DifferentialStyle(Font(color="B3261E", bold=True))
        sheet.conditional_formatting.add(f"E{row}:G{row}", Rule("expression", dxf=warning,
                                                                formula=[f"COUNTA(清单)<>{wanted}"]))


def labelled_head(sheet):
    """Rows 6 to 10 of z5 and z6: a label left of every cell that is written."""
    count_row(sheet, 6, 12, "$G$10")
    style(sheet, "A7:G10", VALUE, LEFT, border=BOX, height=21)
    labels = {"A7": "客户名称", "A8": "联系人电话", "E8": "返修号", "A9": "收货凭证号", "E9": "维修承诺",
              "A10": "返修总台数", "C10": "其中：保修期内", "F10": "保修期外"}
    for cell, text in labels.items():
        sheet[cell] = text
        style(sheet, f"{cell}:{cell}", LABEL, CENTRE, BAND, BOX)
    for area in ("B7:G7", "B8:D8", "F8:G8", "B9:D9", "F9:G9", "C10:D10"):
        merge(sheet, area)
    style(sheet, "D10:D10", LABEL, CENTRE, BAND, BOX)
    sheet["F9"] = "报价确认后 15 个工作日"
    for cell in ("B10", "E10", "G10"):
        sheet[cell].number_format = '0" 台"'
        sheet[cell].alignment = LEFT


def plain_head(sheet):
    """Rows 7 to 11 of z2 and z3, whose texts bring their labels along."""
    count_row(sheet, 6, 13)
    style(sheet, "A7:G11", VALUE, LEFT, border=BOX, height=20)
    style(sheet, "A7:G7", LABEL, LEFT, BAND, BOX)
    merge(sheet, "A7:G7", "客户与收货")
    merge(sheet, "A9:D9")
    sheet["E9"] = "返修号"
    style(sheet, "E9:E9", LABEL, CENTRE, BAND, BOX)
    merge(sheet, "F9:G9")
    for row in (8, 10, 11):
        merge(sheet, f"A{row}:G{row}")


def list_area(sheet, head_row, rows, height):
    """The list's head and its prepared rows. Rows further down get their look by the conditional format."""
    first, last = head_row + 1, head_row + rows
    style(sheet, f"A{head_row}:G{head_row}", HEAD, CENTRE, DARK, BOX, 21)
    for column, text in zip(COLUMNS, LIST_HEADS):
        sheet[f"{column}{head_row}"] = text
    style(sheet, f"A{first}:G{last}", ENTRY, LEFT, border=LIST_BOX, height=height)
    for row in range(first, last + 1):
        sheet[f"F{row}"].number_format = "#,##0.00"
        sheet[f"F{row}"].alignment = Alignment("right", "center")
    for column in COLUMNS:
        sheet[f"{column}{last}"].border = Border(THIN, THIN, HAIR, THIN)
        sheet.column_dimensions[column].font = ENTRY
        sheet.column_dimensions[column].alignment = LEFT
    body = f"A{first}:G{LAST_BLANKED_ROW}"
    dressed = DifferentialStyle(border=LIST_BOX, fill=PatternFill(bgColor=PALE))
    plain = DifferentialStyle(border=LIST_BOX)
    for look, odd in ((dressed, 1), (plain, 0)):
        rule = Rule("expression", dxf=look, formula=[f'AND($B{first}<>"",MOD(ROW()-{first},2)={odd})'])
        sheet.conditional_formatting.add(body, rule)
    results = DataValidation("list", formula1='"可修复,不可修复,无故障,待检"', allow_blank=True, showErrorMessage=True,
                             errorTitle="检测结果", error="请从下拉列表中选取。")
    prices = DataValidation("decimal", "greaterThanOrEqual", "0", allow_blank=True, showErrorMessage=True,
                            errorTitle="报价", error="报价是不小于 0 的数。")
    for validation, column in ((results, "E"), (prices, "F")):
        validation.add(f"{column}{first}:{column}{LAST_BLANKED_ROW}")
        sheet.add_data_validation(validation)
    sheet.parent.defined_names.append(
        DefinedName("清单", attr_text=f"{sheet.title}!$B${first}:$B${LAST_BLANKED_ROW}"))


def page(sheet, head_row, one_page):
    sheet.sheet_view.showGridLines = False
    sheet.sheet_view.zoomScale = 100
    sheet.freeze_panes = f"A{head_row + 1}"
    sheet.page_setup.paperSize = sheet.PAPERSIZE_A4
    sheet.page_setup.orientation = "portrait"
    sheet.page_setup.fitToWidth, sheet.page_setup.fitToHeight = 1, 1 if one_page else 0
    sheet.sheet_properties.pageSetUpPr = PageSetupProperties(fitToPage=True)
    sheet.print_options.horizontalCentered = True
    sheet.print_title_rows = f"${head_row}:${head_row}"
    margins = sheet.page_margins
    margins.left = margins.right = 0.55
    margins.top, margins.bottom, margins.header, margins.footer = 0.55, 0.95, 0.3, 0.35
    parts = (sheet.oddFooter.left, sheet.oddFooter.center, sheet.oddFooter.right)
    for part, text in zip(parts, FOOTER):
        part.text, part.size = text, 9


def docket(old_layout, rows, height, one_page, note):
    book = Workbook()
    sheet = book.active
    sheet.title = "返修单"
    for column, width in COLUMN_WIDTHS.items():
        sheet.column_dimensions[column].width = width
    head(sheet, note)
    head_row = 12 if old_layout else 11
    (plain_head if old_layout else labelled_head)(sheet)
    list_area(sheet, head_row, rows, height)
    if old_layout:
        foot = head_row + rows + 1
        style(sheet, f"A{foot}:G{foot}", LABEL, LEFT, BAND, BOX, 20)
    page(sheet, head_row, one_page)
    book.properties.creator, book.properties.title = "网络设备维修部", "网络设备返修单"
    book.properties.created = MADE
    return book


def fixed_bytes(book):
    """The package with every date in it fixed, so that the same script gives the same bytes."""
    raw = io.BytesIO()
    book.save(raw)
    fixed = io.BytesIO()
    with zipfile.ZipFile(raw) as source, zipfile.ZipFile(fixed, "w", zipfile.ZIP_DEFLATED) as target:
        for name in source.namelist():
            data = source.read(name)
            if name == "docProps/core.xml":
                data = re.sub(rb"(<dcterms:modified[^>]*>)[^<]*", rb"\g<1>" + f"{MADE:%Y-%m-%dT%H:%M:%SZ}".encode(), data)
            entry = zipfile.ZipInfo(name, MADE.timetuple()[:6])
            entry.compress_type, entry.external_attr = zipfile.ZIP_DEFLATED, 0o644 << 16
            target.writestr(entry, data, compresslevel=9)
    return fixed.getvalue()


TEMPLATES = {
    # name: older layout, prepared rows, row height, all on one page, note
    "z2.xlsx": (True, 46, 17, True, "说明：本单所列均为保修期外的设备。报价经客户签收确认后开始维修。"),
    "z3.xlsx": (True, 68, 18, False, "说明：本单所列均为保修期外的设备。报价经客户签收确认后开始维修。清单较长，请逐页签收。"),
    "z5.xlsx": (False, 33, 22, True, "说明：本单所列均为保修期外的设备。报价经客户签收确认后开始维修。"),
    "z6.xlsx": (False, 80, 20, False, "说明：本单所列均为保修期外的设备。报价经客户签收确认后开始维修。清单较长，请逐页签收。"),
}


def main(folder):
    for name, arguments in TEMPLATES.items():
        (folder / name).write_bytes(fixed_bytes(docket(*arguments)))


if __name__ == "__main__":
    main(pathlib.Path(sys.argv[1]))
