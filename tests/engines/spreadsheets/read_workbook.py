"""Prints what another reader finds in a workbook: a line for each cell with a value, as JSON."""

import json
import sys

import openpyxl

workbook = openpyxl.load_workbook(sys.argv[1])
for sheet in workbook.worksheets:
    for row in sheet.iter_rows():
        for cell in row:
            if cell.value is not None:
                told = [sheet.title, cell.coordinate, cell.data_type, cell.value, cell.number_format]
                print(json.dumps(told, ensure_ascii=False))
    merged = [str(one) for one in sheet.merged_cells.ranges]
    print(json.dumps([sheet.title, sheet.dimensions, merged], ensure_ascii=False))
