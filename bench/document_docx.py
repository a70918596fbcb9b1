#!/usr/bin/python3
"""The peer of the document run: opens the template, fills the same cells and saves, report by report, with python-docx.

    document_docx.py FOLDER TEMPLATE PICTURE CELLS COUNT      see document_fill.cpp
    document_docx.py --template PATH                          makes the template
    document_docx.py --texts PATH                             prints what stands in the cells of a report

Prints the seconds that the reports took, the start of the interpreter left out, how many of them went into flushing, and
the seconds of processor.
"""

import os
import pathlib
import sys
import time

from docx import Document
from docx.oxml.ns import qn
from docx.shared import Pt
from docx.table import _Cell


def make_template(path):
    """A repair report: labels beside empty cells, one cell across for the fault and one for the findings."""
    document = Document()
    document.add_heading("维修报告", 1)
    table = document.add_table(10, 6)
    table.style = "Table Grid"
    for row in (5, 9):
        table.cell(row, 0).merge(table.cell(row, 5))
    for number, element in enumerate(table._tbl.iter_tcs()):
        run = element.p_lst[0].add_r()
        run.text = f"栏目{number}"
        fonts = run.get_or_add_rPr()._add_rFonts()
        fonts.set(qn("w:eastAsia"), "仿宋")
        run.rPr.sz_val = Pt(10.5)
    document.save(path)


def cell_at(table, row, column):
    """Without the grid that python-docx lays out for the whole table each time that it is asked for a cell."""
    return _Cell(table._tbl.tr_lst[row - 1].tc_lst[column - 1], table)


def fill(template, picture, cells):
    document = Document(template)
    table = document.tables[0]
    for row, column, text in cells:
        cell = cell_at(table, row, column)
        runs = cell.paragraphs[0].runs
        for run in runs[1:]:
            run._element.getparent().remove(run._element)
        runs[0].text = text
    row, column, _ = cells[-1]
    cell = cell_at(table, row, column)
    cell.add_paragraph().add_run().add_picture(picture, width=cell.width)
    return document


def save(document, path):
    """Saves whole or not at all; gives the seconds that the flush took."""
    beside = path.with_name(path.name + ".new")
    with open(beside, "wb") as file:
        document.save(file)
        file.flush()
        started = time.perf_counter()
        os.fsync(file.fileno())
        flushed = time.perf_counter()
    os.replace(beside, path)
    return flushed - started


def main(arguments):
    if arguments[0] == "--template":
        return make_template(arguments[1])
    if arguments[0] == "--texts":
        table = Document(arguments[1]).tables[0]
        for row in table._tbl.tr_lst:
            print([_Cell(element, table).text for element in row.tc_lst])
        return None
    folder, count = pathlib.Path(arguments[0]), int(arguments[4])
    template, picture = str(folder / arguments[1]), str(folder / arguments[2])
    lines = (folder / arguments[3]).read_text("utf-8").splitlines()
    cells = [(int(row), int(column), text.replace("|", "\n")) for row, column, text in (line.split("\t") for line in lines)]
    save(fill(template, picture, cells), folder / "0.doc")
    start, start_cpu, flushing = time.perf_counter(), time.process_time(), 0.0
    for number in range(1, count + 1):
        flushing += save(fill(template, picture, cells), folder / f"{number}.doc")
    print(f"{time.perf_counter() - start:.6f} {flushing:.6f} {time.process_time() - start_cpu:.6f}")
    return None


if __name__ == "__main__":
    main(sys.argv[1:])
