#!/usr/bin/python3
"""Bills, lists, summaries, repair reports and designed dockets, ours and openpyxl's or python-docx's, on the same reports
and templates in one run, every save flushed.

    service_bench.py INSTALLATION        the folder of tarvik-play and its templates

Ends with status 1 when a goal is missed or when the two sides made different files.
"""

import pathlib
import shutil
import sys
import tempfile

import docx
from openpyxl import load_workbook

import service_generate
from measure import Goals, in_turn, peer, played

REPEATS, RATIO_GOAL = 2, 5.0
COMPARED = 3  # files whose cells are all compared
# Command: the report that is opened.
RUNS = {"testdocket": "3139.txt", "bendocket": "3138.txt", "dandocket": "3160.txt", "wodben": "3158.txt",
        "dockword": "3158.txt"}
TEMPLATES = ["z2.xlsx", "z3.xlsx", "z5.xlsx", "z6.xlsx", "z8.xlsx", "z80.xlsx", "z9.xlsx", "wtest1.doc"]
SCRIPT = r'''
file {report}
click Command1(0)
set Text1(1) "An {command}"
input "d:\\made{turn}\\"
reply ok
type Text1(1) "\r"
run
'''


def contents(path):
    """Every cell, empty ones aside, and the number of pictures."""
    if path.suffix == ".doc":
        document = docx.Document(str(path))
        cells = [text.text for text in document.element.body.iter() if text.tag.endswith("}t") and text.text]
        return cells, len(document.inline_shapes)
    sheet = load_workbook(path).worksheets[0]
    return {cell.coordinate: cell.value for row in sheet.iter_rows() for cell in row if cell.value not in (None, "")}


def same(ours, peer):
    files = sorted(path.relative_to(ours) for path in ours.rglob("*.*") if path.is_file())
    return bool(files) and files == sorted(path.relative_to(peer) for path in peer.rglob("*.*") if path.is_file()) and all(
        contents(ours / path) == contents(peer / path) for path in files[::max(1, len(files) // COMPARED)])


def prepared(folder, built, command):
    """An installation folder of its own for each side, since ours empties templates."""
    folder.mkdir()
    for template in TEMPLATES:
        shutil.copy(built / template, folder)
    (folder / "photo").mkdir()
    service_generate.generate(folder, command)
    if command == "dockword":
        picture = sorted((built / "photo").glob("*.jpg"))[0]
        for number in range(0, service_generate.REPORTS, 2):
            shutil.copy(picture, folder / "photo" / f"dev{number:05d}.jpg")
    return folder


def measure(goals, built, work, command):
    ours_installation = prepared(work / f"{command}-ours", built, command)
    peer_installation = prepared(work / f"{command}-peer", built, command)
    drive, made, peer_made = work / f"{command}-drive", work / f"{command}-drive" / "made0", work / f"{command}-made0"

    def script(turn):
        return SCRIPT.format(report=RUNS[command], command=command, turn=turn)

    # A folder of its own each turn, as the dockets' benchmark has it.
    ours, theirs = in_turn(REPEATS, lambda turn: played(built / "tarvik-play", ours_installation, script(turn), drive),
                           lambda turn: peer("service_peers.py", command, peer_installation, work / f"{command}-made{turn}"))
    count = sum(path.is_file() for path in made.rglob("*.*"))
    goals.must(same(made, peer_made), "the two sides made different files")
    goals.faster(f"An {command}, {count} {'file' if count == 1 else 'files'}", ours,
                 "python-docx" if command == "dockword" else "openpyxl", theirs, RATIO_GOAL)


def main(built):
    goals = Goals()
    with tempfile.TemporaryDirectory(prefix="service_bench", dir=built) as name:
        for command in RUNS:
            measure(goals, built, pathlib.Path(name), command)
    return goals.status()


if __name__ == "__main__":
    sys.exit(main(pathlib.Path(sys.argv[1]).resolve()))
