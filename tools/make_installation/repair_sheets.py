#!/usr/bin/python3
"""Makes installation/维修/: two reports of the repair shop, and the folders of sheets that they are brought into.

`An order` enters 维修记录.txt into 送修单/, `An prices` enters 报价记录.txt into 报价单/. Everything is invented.
"""

import pathlib
import sys

from openpyxl import Workbook

from templates import (BAND, BOX, CENTRE, DARK, ENTRY, HEAD, LABEL, LEFT, LIST_BOX, MADE, SMALL, TITLE, fixed_bytes,
                       merge, style)

WIDTHS = [14, 34, 15, 12, 22, 26, 20, 8, 10, 10, 10, 12, 12]
ORDER_HEADS = ["返修编号", "机型", "序列号", "送修日期", "故障现象", "维修内容", "备件编码", "数量", "维修费",
               "检测费", "工时费", "合计", "备注"]
PRICE_HEADS = ["返修编号", "机型", "序列号", "送修日期", "故障判定", "维修方案", "备件", "数量", "备件费",
               "工时费", "检测费", "报价", "备注"]
FIRST_LINE = 12
RECORD_HEAD = ["序号", "收货日期", "收货单号", "返修编号", "机型", "序列号", "客户", "联系人", "保修状态", "检测人",
               "检测日期", "维修人", "故障现象", "维修内容", "完成日期", "维修费"]
PRICE_HEAD = ["序号", "返修编号", "报价单号", "客户", "机型", "故障判定", "维修方案", "备件", "数量", "备件费", "工时费",
              "检测费", "报价"]

# Repair number, model, and what the shop did: fault, repair, charge. An empty list: the device is still in the shop.
SHEETS = {
    "临溪县人民医院": [
        ("0061030501", "电信级以太网交换机 YQ-16ME-PAF-AC", [("一只风扇停转", "换风扇", "120"),
                                                      ("上电后反复重启", "换电源，换CPU", "260")]),
        ("0061030502", "电信级以太网交换机 YQ-08ME-AC", [("风扇告警", "清洁后换风扇", "80")]),
        ("0061030503", "以太网交换机 YQ-S2024MF-B-220", [("无法上电", "换电源", "150")]),
        ("0061030504", "以太网交换机 YQ-S2226A-48", [("整排灯不亮", "换灯板，换主板", "310.5")]),
        ("0061030505", "以太网交换机 YQ-S2016M-A-220", [("雷击后端口不通", "换以太网转换芯片", "95")]),
        ("0061030506", "光纤收发器 YQ-22B-F2-220", [("无光", "换光模块", "45"), ("无法上电", "换电源", "40")]),
        ("0061030507", "光纤收发器 YQ-5B-OL-48", [("端口不通", "换以太网转换芯片", "60")]),
        ("0061030508", "路由器 YQ-R2640", [("端口不通", "已返厂", "0")]),
    ],
    "望海港务集团": [
        ("0061030521", "协议转换器 YQ-B2101-E1TX-220", [("指示灯全灭", "换电源，换保险", "70"),
                                                   ("网口不通", "换以太网转换芯片", "88.5")]),
        ("0061030522", "协议转换器 YQ-V35OM-48", [("误码率高", "硬件改版，换数据芯片", "66")]),
        ("0061030523", "百兆光口接口卡-FM-H1FE-S", [("收光无信号", "换光模块", "130")]),
        ("0061030524", "以太网交换机 YQ-S2008MF-B", [("超出保修期，受潮", "报废", "0")]),
        ("0061030525", "监控主机 YQ-J100", [("自动关机", "", "0")]),
        ("0061030526", "以太网交换机-S3 YQ-5300", [("主板烧毁", "原样返还客户", "0")]),
    ],
    "双河水务集团": [
        ("0061030541", "光纤收发器 YQ-OL-220", []),
        ("0061030542", "监控主机 YQ-J100", []),
        ("0061030543", "路由器 YQ-R2640", []),
    ],
}
# The same for prices: each record is the eight values of the report's fields 6 to 13.
PRICES = {
    "临溪县人民医院": [
        ("0061030501", "电信级以太网交换机 YQ-16ME-PAF-AC",
         [["电源损坏", "换电源", "30003409", "1", "180", "50", "20", "250"],
          ["风扇停转", "换风扇", "30007309", "4", "96", "50", "0", "146"]]),
        ("0061030503", "以太网交换机 YQ-S2024MF-B-220",
         [["主板故障", "换主板", "20000475", "1", "260", "45", "12", "317"]]),
        ("0061030506", "光纤收发器 YQ-22B-F2-220", []),
        ("0061030507", "光纤收发器 YQ-5B-OL-48",
         [["芯片击穿", "换以太网转换芯片", "30000905", "1", "35", "30", "7", "72"]]),
    ],
    "望海港务集团": [
        ("0061030521", "协议转换器 YQ-B2101-E1TX-220",
         [["保险熔断", "换保险", "30005129", "1", "6", "35", "10", "51"],
          ["电源损坏", "换电源", "30004639", "1", "58", "35", "0", "93"],
          ["芯片击穿", "换以太网转换芯片", "30000803", "1", "32", "35", "0", "67"]]),
        ("0061030523", "百兆光口接口卡-FM-H1FE-S",
         [["收光无信号", "换光模块", "30003358", "1", "140", "45", "12", "197"]]),
    ],
}


def sheet_book(title, customer, heads, lines):
    book = Workbook()
    sheet = book.active
    sheet.title = title
    for column, width in enumerate(WIDTHS, 1):
        sheet.column_dimensions[sheet.cell(1, column).column_letter].width = width
    style(sheet, "A1:M1", TITLE, CENTRE, height=34)
    merge(sheet, "A1:M1", f"网络设备{title}")
    style(sheet, "A3:M9", ENTRY, LEFT, border=BOX, height=18)
    labelled = [("客户", customer), ("送修台数", len(lines)), ("经办", "维修部"), ("日期", "2024-04-08"),
                ("地址", "云澜市青石路 18 号"), ("电话", "0755-0000 0000"), ("说明", "合计含税；报价经客户确认后开始维修。")]
    for row, (label, value) in enumerate(labelled, 3):
        sheet.cell(row, 1).value = label
        sheet.cell(row, 2).value = value
        merge(sheet, f"B{row}:M{row}")
        style(sheet, f"A{row}:A{row}", LABEL, CENTRE, BAND, BOX)
    style(sheet, "A11:M11", HEAD, CENTRE, DARK, BOX, 22)
    for column, text in enumerate(heads, 1):
        sheet.cell(11, column).value = text
    for row, (number, model, _) in enumerate(lines, FIRST_LINE):
        style(sheet, f"A{row}:M{row}", ENTRY, LEFT, border=LIST_BOX, height=18)
        for column, text in enumerate([number, model, f"SN{number[-4:]}{row:03d}", "2024-04-02"], 1):
            sheet.cell(row, column).value = text
        sheet.cell(row, 13).value = "加急" if row == FIRST_LINE else "—"
    sheet.freeze_panes = "A12"
    sheet["A10"].font = SMALL
    book.properties.creator, book.properties.created = "网络设备维修部", MADE
    return book


def records():
    """The report of finished repairs, in the order of the sheets; one is not complete."""
    rows = []
    for customer, lines in SHEETS.items():
        for number, model, repairs in lines:
            for fault, repair, charge in repairs:
                rows.append([str(len(rows) + 1), "2024-04-02", f"4900{320100 + len(rows)}", number.lstrip("0"), model,
                             f"SN{len(rows):04d}", customer, "白文静", "保外", "程晓", "2024-04-03", "施敏",
                             fault, repair, "2024-04-06", charge])
    return [RECORD_HEAD, *rows]


def prices():
    rows = []
    for customer, lines in PRICES.items():
        for number, model, values in lines:
            for value in values:
                rows.append([str(len(rows) + 1), number.lstrip("0"), f"BJ200{417 + len(rows)}", customer, model,
                             *value])
    return [PRICE_HEAD, *rows]


def write_report(path, rows, key):
    assert all((key in "\t".join(row)) == (row is not rows[0]) for row in rows)
    path.write_bytes("".join("\t".join(row) + "\r\n" for row in rows).encode("gbk"))


def main(folder):
    folder = folder / "维修"
    for title, heads, sheets in (("送修单", ORDER_HEADS, SHEETS), ("报价单", PRICE_HEADS, PRICES)):
        (folder / title).mkdir(parents=True, exist_ok=True)
        for customer, lines in sheets.items():
            book = sheet_book(title, customer, heads, lines)
            (folder / title / f"{customer}{title}.xlsx").write_bytes(fixed_bytes(book))
    write_report(folder / "维修记录.txt", records(), "4900")
    write_report(folder / "报价记录.txt", prices(), "200")


if __name__ == "__main__":
    main(pathlib.Path(sys.argv[1]))
