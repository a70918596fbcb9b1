#!/usr/bin/python3
"""Word reports of 14 cells and a picture, ours, LibreOffice's and python-docx's, from one template, every save flushed.

    document_bench.py INSTALLATION        the folder of tarvik-play; its pictures are used

Ends with status 1 when a goal is missed or when two sides made different reports. Without LibreOffice its line is left out,
and said to be.
"""

import pathlib
import shutil
import subprocess
import sys
import tempfile

from measure import HERE, SYSTEM_PYTHON, Goals, Spent, in_turn, peer

REPORTS, LIBREOFFICE_REPORTS, REPEATS = 200, 30, 3
PEER_GOAL, LIBREOFFICE_GOAL = 5.0, 20.0
CELLS = [
    (1, 2, "客户公司"), (1, 6, "2024-03-04"), (9, 6, "程晓"), (9, 4, "通电检测"), (9, 2, "维修服务部"),
    (2, 2, "RMA71000001"), (6, 1, "故障申报：此设备由于以下原因导致无法维修，建议报废。|        ：烧毁"),
    (10, 1, "检测结果（必要时附照片)|        主板烧毁，不可修复"), (2, 6, "138-0000-0001"), (5, 1, "路由器 YQ-R2640"),
    (5, 2, "RA0001X001K"), (5, 3, "RA0001X001"), (5, 4, "01"), (9, 1, "照片"),
]


def prepared(folder, built):
    """A folder with what a run needs."""
    folder.mkdir()
    subprocess.run([SYSTEM_PYTHON, HERE / "document_docx.py", "--template", folder / "template.doc"], check=True)
    shutil.copy(built / "123.jpg", folder / "picture.jpg")
    (folder / "cells.txt").write_text("".join(f"{row}\t{column}\t{text}\n" for row, column, text in CELLS), "utf-8")
    return folder


NAMES = ["template.doc", "picture.jpg", "cells.txt"]


def ours(program, folder, count, *engine):
    """What the program tells of its run."""
    told = subprocess.run([program, folder, *NAMES, str(count), *engine], check=True, capture_output=True, text=True).stdout
    return Spent(float(told))


def texts(report):
    told = subprocess.run([SYSTEM_PYTHON, HERE / "document_docx.py", "--texts", report], check=True, capture_output=True)
    return told.stdout


def has_libreoffice(program, folder):
    told = subprocess.run([program, folder, *NAMES, "0", "libreoffice"], capture_output=True, text=True)
    if told.returncode:
        print(f"libreoffice is left out: {told.stderr.strip()}")
    return told.returncode == 0


def main(built):
    program, goals = built.parent / "bin" / "document-fill", Goals()
    what = f"{REPORTS} Word reports of {len(CELLS)} cells and a picture"
    with tempfile.TemporaryDirectory(prefix="document_bench", dir=built) as name:
        work = pathlib.Path(name)
        ours_folder, peer_folder = prepared(work / "ours", built), prepared(work / "peer", built)
        spent, theirs = in_turn(REPEATS, lambda _: ours(program, ours_folder, REPORTS),
                                lambda _: peer("document_docx.py", peer_folder, *NAMES, REPORTS))
        same = texts(ours_folder / f"{REPORTS}.doc") == texts(peer_folder / f"{REPORTS}.doc")
        goals.must(same, "the two sides made different reports")
        goals.faster(what, spent, "python-docx", theirs, PEER_GOAL)
        office_folder = prepared(work / "office", built)
        if has_libreoffice(program, office_folder):
            few = ours(program, office_folder, LIBREOFFICE_REPORTS, "libreoffice")
            goals.faster(what, spent, "libreoffice", Spent(few.seconds * REPORTS / LIBREOFFICE_REPORTS), LIBREOFFICE_GOAL)
    return goals.status()


if __name__ == "__main__":
    sys.exit(main(pathlib.Path(sys.argv[1]).resolve()))
