#!/usr/bin/python3
"""Makes the reports of large runs of bills and repair reports in a folder, with everything that the commands need beside
their templates.

    service_generate.py FOLDER
"""

import pathlib
import sys

BILLS, DELIVERIES, DELIVERY_DEVICES, SUMMARY, REPORTS, RECEIPTS, RECEIPT_DEVICES = 200, 100, 25, 8000, 200, 150, 20
FIELDS = 37
# The cells of the designed docket: sheet row and column, and the field of the first record; the list's columns.
DESIGN_ITEMS = [(7, 2, 8), (9, 2, 3), (8, 6, 17)]
DESIGN_LIST_ROW = 12
DESIGN_LIST = [(1, 4), (2, 5), (3, 6), (4, 7)]


def fields(number, **given):
    """A line of FIELDS fields; `given` says which stand in field_N."""
    line = [f"{place}号字段 X{number:05d}" for place in range(1, FIELDS + 1)]
    line[3], line[15], line[17], line[19] = "13900001234/0755-8600123", f"21QAA-{9 + number % 9:02d}B{number:05d}", \
        "2024.04.03 15:54", "批次"
    for name, text in given.items():
        line[int(name.split("_")[1]) - 1] = text
    return line


def design():
    to, source = ["-1"] * 50, ["-1"] * 50
    for place, (row, column, field) in enumerate(DESIGN_ITEMS):
        to[2 * place], to[2 * place + 1], source[2 * place], source[2 * place + 1] = map(str, (row, column, 0, field))
    to[28] = str(DESIGN_LIST_ROW)
    for place, (column, field) in enumerate(DESIGN_LIST):
        to[29 + place], source[29 + place] = str(column), str(field)
    return "*".join(["4900", *to, *source, "3"])


def receipts(devices):
    return [fields(receipt * 100 + place, field_3=f"4900{receipt:06d}", field_16=f"SL{receipt:05d}",
                   field_17=f"HZ{receipt:05d}", field_24=f"2024.03 第{receipt // 30:02d}批")
            for receipt in range(RECEIPTS) for place in range(devices)]


def reports():
    """The lines of each report, and which run it belongs to."""
    bills = [fields(number, field_12="自制品", field_15=f"dev{number:05d}") for number in range(BILLS)]
    orders = [fields(number, field_15=f"fx{number:05d}", field_16=f"dev{number:05d}",
                     field_23=f"2024.03 第{number // 30:02d}批") for number in range(BILLS)]
    deliveries = [fields(number * 100 + place, field_12="自制品", field_15=f"sx{number:05d}")
                  for number in range(DELIVERIES) for place in range(DELIVERY_DEVICES)]
    return {
        "bendocket": {"3138.txt": bills, "3137.txt": orders},
        "dandocket": {"3160.txt": deliveries},
        "wodben": {"3158.txt": [fields(number, field_12="自制品") for number in range(SUMMARY)]},
        "dockword": {"3158.txt": [fields(number, field_34="不可修复", field_15=f"dev{number:05d}",
                                         field_14=f"fw2024.{number // 30:02d}") for number in range(REPORTS)]},
        "testdocket": {"3139.txt": receipts(RECEIPT_DEVICES + 4), "3138.txt": receipts(RECEIPT_DEVICES)},
    }


def generate(folder, command):
    for name, lines in reports()[command].items():
        text = "".join("\t".join(line) + "\r\n" for line in [["标题"] * FIELDS, *lines])
        (folder / name).write_bytes(text.encode("gb18030"))
    if command == "testdocket":
        (folder / "automation.bin").write_bytes((design() + "\r\n").encode("gb18030"))


if __name__ == "__main__":
    for run in reports():
        target = pathlib.Path(sys.argv[1]) / run
        target.mkdir(parents=True, exist_ok=True)
        generate(target, run)
