#!/usr/bin/python3
"""The peer of `An order`: the same sheets filled by the same rules with openpyxl, records found through a dict.

    repair_openpyxl.py RECORDS SHEETS OUTPUT RULES

Prints the number of sheets, the seconds that the run took, the start of the interpreter left out, how many of them went
into flushing, and the seconds of processor.
"""

import math
import pathlib
import re
import sys
import time

from openpyxl import load_workbook

from docket_openpyxl import save

FIRST_LINE, LAST_LINE = 12, 1000
QUOTED = re.compile(r'"([^"]*)"')


def read_rules(path):
    """Both chains as (model texts that must occur, text that must not, repair word, code, quantity, charges)."""
    groups, chains, line_rules = {"-": ([], [])}, {"更新": [], "首次": []}, []
    for line in path.read_text(encoding="utf-8").splitlines():
        kind, *fields = [field.strip() for field in line.split("|")]
        if kind == "组":
            groups[fields[0]] = (QUOTED.findall(fields[1]), QUOTED.findall(fields[2]))
        elif kind in ("更新", "首次", "收费"):
            chain = "更新" if kind == "更新" else "首次"
            wanted, _, barred = fields[1].partition("且无")
            texts = groups[fields[0]][chain == "首次"] + QUOTED.findall(wanted)
            word, code, quantity, charges = ("", "", 0, fields[2]) if kind == "收费" else (
                QUOTED.findall(fields[2])[0], fields[3], int(fields[4]), fields[5] if len(fields) > 5 else "")
            chains[chain].append((texts, "".join(QUOTED.findall(barred)), word, code, quantity, charges.split()))
        elif kind == "行":
            settings = re.findall(r'(\d+)=(?:"([^"]*)"|(\d+))', fields[2])
            line_rules.append((int(fields[0]), QUOTED.findall(fields[1]),
                               [(int(column), text or int(number)) for column, text, number in settings]))
    return chains, line_rules


def fired(chain, model, repairs):
    for texts, barred, word, code, quantity, charges in chain:
        if word in repairs and all(text in model for text in texts) and not (barred and barred in model):
            yield code, quantity, charges


def set_charges(line, charges, record):
    if not charges:
        return
    if charges[0] == "记录":
        line[9] = record[15]
    line[10], line[11] = int(charges[1]), int(charges[2])


def number(value):
    return float(value) if value else 0.0


def enter_record(line, record, chains):
    fault, repair = record[12], record[13]
    if line[5] or line[6]:
        line[5], line[6] = f"{line[5] or ''}|{fault}", f"{line[6] or ''}|{repair}"
        for code, quantity, charges in fired(chains["更新"], line[2], repair):
            line[7], line[8] = f"{line[7] or ''}|{code}", number(line[8]) + quantity
            set_charges(line, charges, record)
    else:
        line[5], line[6] = "|" + fault, "|" + repair
        for code, quantity, charges in fired(chains["首次"], line[2], line[6]):
            if code:
                line[7], line[8] = code, quantity
            set_charges(line, charges, record)
        line[7] = "|" + (line[7] or "")


def finish(line, line_rules):
    for column, texts, settings in line_rules:
        if any(text in (line[column] or "") for text in texts):
            for target, value in settings:
                line[target] = value
    charges = number(line[9]) + number(line[10]) + number(line[11])
    if charges > 0:
        line[8] = line[8] or 0
        total = math.floor(100 * charges * 1.404 + 0.5 + 1e-6) / 100
        line[12] = f"{total:.2f}".rstrip("0").rstrip(".")


def fill(sheet, records, chains, line_rules):
    found = False
    last = max((row for row in range(1, LAST_LINE + 1) if sheet.cell(row, 1).value is not None), default=1)
    for row in range(FIRST_LINE, last + 1):
        line = [None] + [sheet.cell(row, column).value for column in range(1, 13)]
        before = list(line)
        for record in records.get(float(line[1] or 0), ()):
            found = True
            if record[12] and record[13]:
                enter_record(line, record, chains)
        finish(line, line_rules)
        for column in range(5, 13):
            if line[column] != before[column]:
                sheet.cell(row, column).value = line[column]
    return found


def main(report, sheets, output, rules):
    output.mkdir(parents=True, exist_ok=True)
    start, start_cpu = time.perf_counter(), time.process_time()
    chains, line_rules = read_rules(rules)
    records = {}
    for line in report.read_bytes().decode("gb18030").lower().split("\r\n"):
        if "4900" in line:
            row = line.split("\t")
            records.setdefault(float(row[3]), []).append(row)
    flushing, names = 0.0, sorted(sheets.iterdir())
    for name in names:
        book = load_workbook(name)
        found = fill(book.worksheets[0], records, chains, line_rules)
        flushing += save(book, output / f"A{name.name}" if found else name, flush=True)
    print(len(names), f"{time.perf_counter() - start:.6f} {flushing:.6f} {time.process_time() - start_cpu:.6f}")


if __name__ == "__main__":
    main(*map(pathlib.Path, sys.argv[1:]))
