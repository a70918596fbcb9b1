#!/usr/bin/python3
"""Bills, lists, summaries, repair reports and designed dockets, ours and openpyxl's or python-docx's, on the same reports
and templates in one run, every save flushed.

    service_bench.py INSTALLATION        the folder of tarvik-play and its templates

Ends with status 1 when a goal is missed or when the two sides made different files.
"""

import pathlib
import shutil
import subprocess
import sys
import tempfile
import time

import docx
from openpyxl import load_workbook

import service_generate

REPEATS, RATIO_GOAL = 2, 5.0
COMPARED = 3  # files whose cells are all compared
SYSTEM_PYTHON = "/usr/bin/python3"  # the one that Debian's packages serve
HERE = pathlib.Path(__file__).parent
# Command: the report that is opened.
RUNS = {"testdocket": "3139.txt", "bendocket": "3138.txt", "dandocket": "3160.txt", "wodben": "3158.txt",
        "dockword": "3158.txt"}
TEMPLATES = ["z2.xlsx", "z3.xlsx", "z5.xlsx", "z6.xlsx", "z8.xlsx", "z80.xlsx", "z9.xlsx", "wtest1.doc"]
SCRIPT = r'''
file {report}
click Command1(0)
set Text1(1) "An {command}"
input "d:\\made\\"
reply ok
type Text1(1) "\r"
run
'''


def our_seconds(player, installation, drive, command):
    """One run from start to end of the process; its files lie in drive/made."""
    drive.mkdir()
    script = SCRIPT.format(report=RUNS[command], command=command)
    started = time.perf_counter()
    subprocess.run([player, "--install", installation, "--drive", f"d={drive}", "-"], input=script.encode(), check=True,
                   stdout=subprocess.DEVNULL)
    return time.perf_counter() - started


def peer_seconds(installation, output, command):
    """The peer's own count of its work and of the flushing in it; its interpreter's start is not held against it."""
    told = subprocess.run([SYSTEM_PYTHON, HERE / "service_peers.py", command, installation, output], check=True,
                          capture_output=True, text=True).stdout
    return tuple(map(float, told.split()[1:]))


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


def measure(built, work, command):
    """Seconds of both sides, the best of several, and of the peer's flushing; whether both made the same."""
    ours_installation = prepared(work / f"{command}-ours", built, command)
    peer_installation = prepared(work / f"{command}-peer", built, command)
    ours, peers = [], []
    for repeat in range(REPEATS):
        drive, output = work / f"{command}-made{repeat}", work / f"{command}-peer-made{repeat}"
        ours.append(our_seconds(built / "tarvik-play", ours_installation, drive, command))
        peers.append(peer_seconds(peer_installation, output, command))
    count = sum(path.is_file() for path in (drive / "made").rglob("*.*"))
    return min(ours), *min(peers), count, same(drive / "made", output)


def main(built):
    held = True
    print(f"best of {REPEATS}, every save flushed, goal: {RATIO_GOAL:g} times the peer")
    print(f"{'':12}{'files':>7}{'ours s':>9}{'peer s':>9}{'of it flushing':>16}{'ratio':>8}")
    with tempfile.TemporaryDirectory(prefix="service_bench", dir=built) as name:
        for command in RUNS:
            ours, peer, flushing, count, equal = measure(built, pathlib.Path(name), command)
            print(f"{command:12}{count:7}{ours:9.2f}{peer:9.2f}{flushing:14.2f} s{peer / ours:8.1f}"
                  + ("" if equal else "   the two sides made different files"), flush=True)
            held = held and equal and peer / ours >= RATIO_GOAL
    return 0 if held else 1


if __name__ == "__main__":
    sys.exit(main(pathlib.Path(sys.argv[1]).resolve()))
