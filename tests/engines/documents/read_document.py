"""Prints what another reader finds in a document: a line for each cell of its first table and each picture, as JSON."""

import json
import sys

import docx
from docx.oxml.ns import qn

document = docx.Document(sys.argv[1])
for row, cells in enumerate(document.tables[0]._tbl.tr_lst, 1):
    for column, element in enumerate(cells.tc_lst, 1):
        cell = docx.table._Cell(element, document.tables[0])
        fonts = [font.get(qn("w:eastAsia")) for font in element.iter(qn("w:rFonts"))]
        print(json.dumps([row, column, cell.text, fonts], ensure_ascii=False))
for shape in document.inline_shapes:
    identity = shape._inline.graphic.graphicData.pic.blipFill.blip.embed
    part = document.part.related_parts[identity]
    told = [shape.width, shape.height, str(part.partname), part.content_type, len(part.blob)]
    print(json.dumps(told, ensure_ascii=False))
