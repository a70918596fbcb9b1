#!/usr/bin/python3
"""Makes the reports of a large docket run in a folder: 300 receipts with 20 devices out of warranty each.

    docket_generate.py FOLDER [RECEIPTS] [DEVICES]
    docket_generate.py --plain TEMPLATE...              plain templates: a heading and the list's heads, no styles
"""

import pathlib
import sys

WITHIN_WARRANTY = 4
HEAD = "序号\t日期\t收货单号\t返修单号\t产品型号\t序列号\t处理方式\t客户名称\t联系人\t联系电话\t故障现象"
ORDER_HEAD = "序号\t日期\t返修单\t客户名称\t产品线\t台数\t归档\t运输方式\t运单号\t承运\t经办人\t返修号"


def device(number, receipt, place):
    return "\t".join([str(number), "2024-03-04", f"4900{500000 + receipt}", f"RMA{71000000 + receipt}",
                      f"路由器 YQ-R{2640 + place % 7}", f"RA{receipt:04d}X{place:03d}K", "报价后维修",
                      f"客户{receipt:04d}", "白文静", f"138-0000-{receipt:04d}", "运行两小时后死机"])


def order(receipt):
    return "\t".join([str(receipt + 1), "2024-03-04", str(71000000 + receipt), f"客户{receipt:04d}", "数据通信", "24",
                      f"2024.03 第{receipt // 30:02d}批", "陆运", f"顺{receipt:06d}", "顺达", "程晓", f"81-{receipt:04d}"])


def generate(folder, receipts=300, devices=20):
    """Writes 3139.txt, 3138.txt and 3137.txt."""
    all_lines, outside = [HEAD], [HEAD]
    for receipt in range(receipts):
        for place in range(devices + WITHIN_WARRANTY):
            line = device(len(all_lines), receipt, place)
            all_lines.append(line)
            if place < devices:
                outside.append(line)
    orders = [ORDER_HEAD, *map(order, range(receipts))]
    for name, lines in (("3139.txt", all_lines), ("3138.txt", outside), ("3137.txt", orders)):
        (folder / name).write_bytes("".join(line + "\r\n" for line in lines).encode("gb18030"))


def plain_template(path):
    from openpyxl import Workbook  # which only this needs

    book = Workbook()
    book.active["A1"] = "维修收货单"
    for row, label in ((7, "客户"), (8, "联系人"), (9, "收货单号"), (10, "台数")):
        book.active.cell(row, 1).value = label
    for column, head in enumerate(HEAD.split("\t")[3:7], 1):
        book.active.cell(11, column).value = head
    for line in range(1, 161):
        book.active.cell(11 + line, 8).value = f"第{line}台"
    book.save(path)


if __name__ == "__main__":
    if sys.argv[1] == "--plain":
        for template in sys.argv[2:]:
            plain_template(template)
        sys.exit()
    target = pathlib.Path(sys.argv[1])
    target.mkdir(parents=True, exist_ok=True)
    generate(target, *map(int, sys.argv[2:4]))
