#!/usr/bin/python3
"""Makes the templates of the repair report, wtest1.doc, wtest2.doc, wtest3.doc and wtest5.doc: WordprocessingML
packages, each with one table of ten rows.

The program writes the cells (1,2), (1,6), (2,2), (2,6), (5,1) to (5,4), (6,1), (9,2), (9,4), (9,6), (10,1) and lays the
picture into (9,1); cells count along their row, whatever they span.
"""

import io
import pathlib
import sys
import zipfile
from xml.sax.saxutils import escape

SCHEMAS = "http://schemas.openxmlformats.org"
MAIN = f"{SCHEMAS}/wordprocessingml/2006/main"
DECLARATION = '<?xml version="1.0" encoding="UTF-8" standalone="yes"?>\r\n'
GREEN, PALE, GREY = "2E5E4E", "E9F0EC", "7F8C86"
# Where the cells of the rows end, in twentieths of a point: label and value in turn, the four facts of a device, and
# the row with the picture.
LABELLED = [0, 1500, 3400, 4700, 6200, 7600, 9500]
DEVICE = [0, 3000, 5000, 7600, 9500]
PICTURE = [0, 4200, 5600, 6400, 7500, 8200, 9500]
EDGES = sorted({*LABELLED, *DEVICE, *PICTURE})
TOTAL = EDGES[-1]


def run(text, size=21, bold=False, colour=None, font="宋体"):
    look = f'<w:rFonts w:ascii="Arial" w:hAnsi="Arial" w:eastAsia="{font}"/>'
    look += "<w:b/>" if bold else ""
    look += f'<w:color w:val="{colour}"/>' if colour else ""
    look += f'<w:sz w:val="{size}"/><w:szCs w:val="{size}"/>'
    return f'<w:r><w:rPr>{look}</w:rPr><w:t xml:space="preserve">{escape(text)}</w:t></w:r>'


def paragraph(content, align="left", after=0, before=0):
    return (f'<w:p><w:pPr><w:spacing w:before="{before}" w:after="{after}"/><w:jc w:val="{align}"/></w:pPr>'
            f"{content}</w:p>")


def cell(left, right, text, kind="value"):
    """A cell between two edges. Its first run gives the look to what is written into it."""
    columns = EDGES.index(right) - EDGES.index(left)
    properties = f'<w:tcW w:w="{right - left}" w:type="dxa"/>'
    properties += f'<w:gridSpan w:val="{columns}"/>' if columns > 1 else ""
    fill = {"label": PALE, "section": GREEN}.get(kind)
    properties += f'<w:shd w:val="clear" w:color="auto" w:fill="{fill}"/>' if fill else ""
    properties += f'<w:vAlign w:val="{"top" if kind == "long" else "center"}"/>'
    looks = {"label": (run(text, 20, colour=GREEN, font="微软雅黑"), "center"),
             "section": (run(text, 20, True, "FFFFFF", "微软雅黑"), "left"),
             "picture": (run(text, 18, colour=GREY), "center")}
    content, align = looks.get(kind, (run(text), "left"))
    return f"<w:tc><w:tcPr>{properties}</w:tcPr>{paragraph(content, align)}</w:tc>"


def row(cells, height, exact=False):
    rule = "exact" if exact else "atLeast"
    return (f'<w:tr><w:trPr><w:cantSplit/><w:trHeight w:val="{height}" w:hRule="{rule}"/></w:trPr>'
            f'{"".join(cells)}</w:tr>')


def cells(edges, texts, kinds):
    return [cell(*place) for place in zip(edges, edges[1:], texts, kinds)]


def table(report):
    alternating, whole = ["label", "value"] * 3, [0, TOTAL]
    rows = [
        row(cells(LABELLED, ("客户名称", "", "服务类别", "保外维修", "受理日期", ""), alternating), 560),
        row(cells(LABELLED, ("联系人", "", "紧急程度", "一般", "联系电话", ""), alternating), 480),
        row(cells(whole, ["送修设备"], ["section"]), 380),
        row(cells(DEVICE, ("产品名称", "产品型号", "设备序列号", "软件版本"), ["label"] * 4), 380),
        row(cells(DEVICE, [""] * 4, ["value"] * 4), 520),
        row(cells(whole, ["故障申报：设备经检测无法修复，详见下方检测结果。"], ["long"]), 1500),
        row(cells(whole, [report["steps_head"]], ["section"]), 380),
        row(cells(whole, [report["steps"]], ["long"]), 1000),
        row(cells(PICTURE, ("（附照片）", "", "工程师", "", "批次", ""),
                  ["picture", "value", "label", "value", "label", "value"]), 2600),
        row(cells(whole, ["检测结果（必要时附照片)"], ["long"]), 3600),
    ]
    edges = "".join(f'<w:{edge} w:val="single" w:sz="{size}" w:space="0" w:color="{colour}"/>' for edge, size, colour in
                    (("top", 12, GREEN), ("left", 6, GREY), ("bottom", 12, GREEN), ("right", 6, GREY),
                     ("insideH", 4, GREY), ("insideV", 4, GREY)))
    grid = "".join(f'<w:gridCol w:w="{right - left}"/>' for left, right in zip(EDGES, EDGES[1:]))
    return (f'<w:tbl><w:tblPr><w:tblW w:w="{TOTAL}" w:type="dxa"/><w:jc w:val="center"/><w:tblBorders>{edges}'
            '</w:tblBorders><w:tblLayout w:type="fixed"/><w:tblCellMar><w:top w:w="60" w:type="dxa"/><w:left w:w="90" w:type="dxa"/>'
            f'<w:bottom w:w="60" w:type="dxa"/><w:right w:w="90" w:type="dxa"/></w:tblCellMar></w:tblPr><w:tblGrid>{grid}</w:tblGrid>{"".join(rows)}</w:tbl>')


def body(report):
    signatures = "维修部（盖章）：______________　　客户签收：______________　　日期：______________"
    return (paragraph(run("网络设备维修部", 18, colour=GREY), "right")
            + paragraph(run(report["title"], 36, True, GREEN, "微软雅黑"), "center", 120)
            + paragraph(run(report["note"], 18, colour=GREY), "left", 100)
            + table(report)
            + paragraph(run(signatures, 20), "left", 0, 320)
            + '<w:sectPr><w:footerReference w:type="default" r:id="rId2"/><w:pgSz w:w="11906" w:h="16838"/>'
              '<w:pgMar w:top="1000" w:right="1100" w:bottom="1000" w:left="1100" w:header="500" w:footer="500" '
              'w:gutter="0"/></w:sectPr>')


def parts(report):
    names = f'xmlns:w="{MAIN}" xmlns:r="{SCHEMAS}/officeDocument/2006/relationships"'
    relation = f"{SCHEMAS}/officeDocument/2006/relationships"
    word_type = "application/vnd.openxmlformats-officedocument.wordprocessingml"
    page = ('<w:r><w:fldChar w:fldCharType="begin"/></w:r><w:r><w:instrText xml:space="preserve"> PAGE </w:instrText></w:r>'
            '<w:r><w:fldChar w:fldCharType="separate"/></w:r>' + run("1", 18, colour=GREY)
            + '<w:r><w:fldChar w:fldCharType="end"/></w:r>')
    return {
        "[Content_Types].xml": f'<Types xmlns="{SCHEMAS}/package/2006/content-types">'
            '<Default Extension="rels" ContentType="application/vnd.openxmlformats-package.relationships+xml"/>'
            '<Default Extension="xml" ContentType="application/xml"/>'
            f'<Override PartName="/word/document.xml" ContentType="{word_type}.document.main+xml"/>'
            f'<Override PartName="/word/styles.xml" ContentType="{word_type}.styles+xml"/>'
            f'<Override PartName="/word/footer1.xml" ContentType="{word_type}.footer+xml"/></Types>',
        "_rels/.rels": f'<Relationships xmlns="{SCHEMAS}/package/2006/relationships">'
            f'<Relationship Id="rId1" Type="{relation}/officeDocument" Target="word/document.xml"/></Relationships>',
        "word/document.xml": f"<w:document {names}><w:body>{body(report)}</w:body></w:document>",
        "word/_rels/document.xml.rels": f'<Relationships xmlns="{SCHEMAS}/package/2006/relationships">'
            f'<Relationship Id="rId1" Type="{relation}/styles" Target="styles.xml"/>'
            f'<Relationship Id="rId2" Type="{relation}/footer" Target="footer1.xml"/></Relationships>',
        "word/styles.xml": f'<w:styles {names}><w:docDefaults><w:rPrDefault><w:rPr><w:rFonts w:ascii="Arial" '
            'w:hAnsi="Arial" w:eastAsia="宋体"/><w:sz w:val="21"/><w:szCs w:val="21"/><w:lang w:val="en-US" '
            'w:eastAsia="zh-CN"/></w:rPr></w:rPrDefault></w:docDefaults><w:style w:type="paragraph" w:default="1" '
            'w:styleId="Normal"><w:name w:val="Normal"/></w:style></w:styles>',
        "word/footer1.xml": f'<w:ftr {names}>{paragraph(run("第 ", 18, colour=GREY) + page + run(" 页", 18, colour=GREY), "center")}'
            "</w:ftr>",
    }


REPORTS = {
    "wtest1.doc": {"title": "设备不可修复报告", "note": "本报告一式两份，客户与维修部各执一份。",
                   "steps_head": "检测步骤", "steps": "目检外观与线路板；上电检查；逐板替换；业务测试。"},
    "wtest2.doc": {"title": "设备检测报告", "note": "客户留存联。对结果有疑问的，请在收到后 15 日内与维修部联系。",
                   "steps_head": "检测步骤", "steps": "目检外观与线路板；上电检查；业务测试。"},
    "wtest3.doc": {"title": "设备退回报告", "note": "设备随本报告原样退回，请核对序列号后签收。",
                   "steps_head": "退回说明", "steps": "设备未更换任何器件，随机附件齐全。"},
    "wtest5.doc": {"title": "设备报废申请", "note": "经客户同意后由维修部统一处理，不再退回。",
                   "steps_head": "报废依据", "steps": "维修价值低于设备净值，或主要元件停产无法采购。"},
}


def package(report):
    """The bytes of the package, the same each time."""
    data = io.BytesIO()
    with zipfile.ZipFile(data, "w", zipfile.ZIP_DEFLATED) as target:
        for name, text in parts(report).items():
            entry = zipfile.ZipInfo(name, (2024, 3, 1, 8, 0, 0))
            entry.compress_type, entry.external_attr = zipfile.ZIP_DEFLATED, 0o644 << 16
            target.writestr(entry, DECLARATION + text, compresslevel=9)
    return data.getvalue()


def main(folder):
    for name, report in REPORTS.items():
        (folder / name).write_bytes(package(report))


if __name__ == "__main__":
    main(pathlib.Path(sys.argv[1]))
