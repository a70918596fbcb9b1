#!/usr/bin/python3
"""Makes a report of repairs and a folder of sheets for it.

    repair_generate.py FOLDER [SHEETS] [RECORDS]

Each sheet has as many lines as are looked at: rows 12 to 1000.
"""

import pathlib
import random
import sys

from openpyxl import Workbook
from openpyxl.styles import Border, Font, Side

FIRST_LINE, LAST_LINE = 12, 1000
HEADS = ["返修编号", "机型", "序列号", "送修日期", "故障现象", "维修内容", "备件编码", "数量", "维修费", "检测费", "工时费", "合计"]
MODELS = ["电信级以太网交换机 YQ-16ME-PAF-AC", "电信级以太网交换机 YQ-08ME-AC", "以太网交换机 YQ-S2024MF-B-220",
          "以太网交换机 YQ-S2226A-48", "光纤收发器 YQ-22B-F2-220", "光纤收发器 YQ-5B-OL-48", "协议转换器 YQ-B2101-E1TX-220",
          "协议转换器 YQ-V35OM-48", "百兆光口接口卡-FM-H1FE-S", "监控主机 YQ-J100", "路由器 YQ-R2640"]
REPAIRS = ["换风扇", "换电源", "换电源，换主板", "换以太网转换芯片", "换光模块", "换灯板", "换cpu", "硬件改版，换数据芯片", "报废", "已清洁"]
FAULTS = ["上电后反复重启", "端口不通", "风扇告警", "收光无信号", "超出保修期，受潮"]
FIRST_NUMBER = 61000000


def record(number, chance, numbers):
    return [str(number), "2024-04-02", f"4900{500000 + number}", str(FIRST_NUMBER + chance.randrange(numbers)), "机型",
            f"SN{number:06d}", "客户", "白文静", "保外", "程晓", "2024-04-03", "施敏", chance.choice(FAULTS),
            chance.choice(REPAIRS), "2024-04-06", str(chance.randrange(4000) / 10)]


def sheet_book(chance, numbers):
    book = Workbook()
    sheet = book.active
    font, side = Font("宋体", 10), Side("thin")
    border = Border(side, side, side, side)
    for column, text in enumerate(HEADS, 1):
        sheet.cell(FIRST_LINE - 1, column).value = text
    for row in range(FIRST_LINE, LAST_LINE + 1):
        number = FIRST_NUMBER + chance.randrange(numbers)
        for column, value in enumerate([f"00{number}", chance.choice(MODELS), f"SN{row:05d}", "2024-04-02"], 1):
            sheet.cell(row, column).value = value
        for column in range(1, len(HEADS) + 1):
            cell = sheet.cell(row, column)
            cell.font, cell.border = font, border
    return book


def generate(folder, sheets=100, records=20000):
    """Writes records.txt and sheets/."""
    chance = random.Random(4900)
    numbers = records * 9 // 10  # some devices have several records, some none
    rows = [record(number, chance, numbers) for number in range(1, records + 1)]
    text = "".join("\t".join(row) + "\r\n" for row in rows)
    (folder / "records.txt").write_bytes(text.encode("gb18030"))
    (folder / "sheets").mkdir(parents=True)
    for number in range(sheets):
        sheet_book(chance, numbers).save(folder / "sheets" / f"sheet{number:03d}.xlsx")


if __name__ == "__main__":
    generate(pathlib.Path(sys.argv[1]), *map(int, sys.argv[2:4]))
