#!/usr/bin/python3
"""Writes testdocket.play of installation/: a design is typed into the designer and saved, the dockets are made, and the
design that automation.bin held before is put back, since "An testsesame A" shares that file.
"""

import pathlib
import sys

BOXES = 50
QUERY, KEY_COLUMN = "4900", "3"
# Sheet row and column, and the row and column of the table, of single cells; then the list's first row, and the sheet's
# and the table's columns of the list.
ITEMS = [(7, 2, 0, 8), (9, 2, 0, 3), (8, 6, 0, 17)]
LIST_ROW = 12
LIST = [(1, 4), (2, 5), (3, 6), (4, 7)]

HEAD = '''# Dockets whose cells the report designer tells: the design is typed into its boxes and saved as automation.bin.
#     tarvik-play [--drive d=FOLDER] testdocket.play
# Without --drive the dockets go to "Atarvik output" in the home folder.

say "在报表设计器中填写设计参数，保存为 automation.bin"
'''
RUN = '''
say "打开收货报表 3139.txt"
file 3139.txt
click Command1(0)

say "输入 An testdocket，回车"
set Text1(1) "An testdocket"
input "d:\\\\Atarvik output\\\\"
type Text1(1) "\\r"
show Form4.Text3.Text Form4.Text4.Text keycount keylist(0)
expect keycount 30
expect Timer4.Enabled True

say "逐张出单"
run
show Form1.Caption
# Three of the thirty receipts have no device out of warranty.
say "三十张收货单，出单二十七张，所以标题以 ERROR ! 结尾"
expect Timer4.Enabled False

# "An testsesame A" works from the same file.
say "放回 An testsesame A 的设计参数"
'''


def design():
    """The boxes by their names."""
    boxes = {f"{name}({k})": "-1" for name in ("Text1", "Text2") for k in range(BOXES)}
    for place, (row, column, table_row, table_column) in enumerate(ITEMS):
        boxes[f"Text1({2 * place})"], boxes[f"Text1({2 * place + 1})"] = str(row), str(column)
        boxes[f"Text2({2 * place})"], boxes[f"Text2({2 * place + 1})"] = str(table_row), str(table_column)
    boxes["Text1(28)"] = str(LIST_ROW)
    for place, (column, source) in enumerate(LIST):
        boxes[f"Text1({29 + place})"], boxes[f"Text2({29 + place})"] = str(column), str(source)
    return {"Text3": QUERY, **boxes, "Text4": KEY_COLUMN}


def saved_design(path):
    fields = path.read_bytes().decode("gb18030").rstrip("\r\n").split("*")
    names = ["Text3", *(f"{name}({k})" for name in ("Text1", "Text2") for k in range(BOXES)), "Text4"]
    assert len(fields) == len(names)
    return dict(zip(names, fields))


def typed(boxes, before):
    lines = [f'set Form4.{name} "{text}"' for name, text in boxes.items() if before.get(name) != text]
    return "\n".join([*lines, "reply ok yes", "click Form4.Command1"]) + "\n"


def main(folder):
    """Needs automation.bin to be there."""
    start = {name: "-1" for name in design() if name not in ("Text3", "Text4")}
    script = HEAD + typed(design(), start) + RUN + typed(saved_design(folder / "automation.bin"), design())
    (folder / "testdocket.play").write_text(script, encoding="utf-8", newline="\n")


if __name__ == "__main__":
    main(pathlib.Path(sys.argv[1]))
