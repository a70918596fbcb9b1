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

REPORTS, LIBREOFFICE_REPORTS, REPEATS = 200, 30, 3
PEER_GOAL, LIBREOFFICE_GOAL = 5.0, 20.0
SYSTEM_PYTHON = "/usr/bin/python3"  # the one that the package python3-docx serves
HERE = pathlib.Path(__file__).parent
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


def seconds(command, folder, count, *more):
    """What the program tells of its run."""
    words = [*command, folder, "template.doc", "picture.jpg", "cells.txt", str(count), *more]
    return [float(word) for word in subprocess.run(words, check=True, capture_output=True, text=True).stdout.split()]


def texts(report):
    told = subprocess.run([SYSTEM_PYTHON, HERE / "document_docx.py", "--texts", report], check=True, capture_output=True)
    return told.stdout


def has_libreoffice(program, folder):
    words = [program, folder, "template.doc", "picture.jpg", "cells.txt", "0", "libreoffice"]
    told = subprocess.run(words, capture_output=True, text=True)
    if told.returncode:
        print(f"libreoffice is left out: {told.stderr.strip()}")
    return told.returncode == 0


def line(name, spent, reports, note=""):
    print(f"{name:14}{spent:9.2f}{reports / spent:11.0f}{1000 * spent / reports:12.2f} ms{note}")


def main(built):
    program, peer_script = built.parent / "bin" / "document-fill", [SYSTEM_PYTHON, HERE / "document_docx.py"]
    with tempfile.TemporaryDirectory(prefix="document_bench", dir=built) as name:
        work = pathlib.Path(name)
        ours_folder, peer_folder = prepared(work / "ours", built), prepared(work / "peer", built)
        ours = peer = None
        for _ in range(REPEATS):
            ours = min(filter(None, (ours, seconds([program], ours_folder, REPORTS)[0])))
            peer = min(filter(None, (peer, seconds(peer_script, peer_folder, REPORTS))))
        same = texts(ours_folder / f"{REPORTS}.doc") == texts(peer_folder / f"{REPORTS}.doc")
        office_folder, office = prepared(work / "office", built), None
        if has_libreoffice(program, office_folder):
            office = seconds([program], office_folder, LIBREOFFICE_REPORTS, "libreoffice")[0] / LIBREOFFICE_REPORTS
    print(f"reports of {len(CELLS)} cells and a picture, every save flushed, best of {REPEATS}")
    print(f"{'':14}{'seconds':>9}{'reports/s':>11}{'a report':>12}")
    line("ours", ours, REPORTS)
    line("python-docx", peer[0], REPORTS, f"   {peer[1]:.2f} s of it flushing")
    if office:
        line("libreoffice", office * LIBREOFFICE_REPORTS, LIBREOFFICE_REPORTS)
    ratios = {"python-docx": (peer[0] / ours, PEER_GOAL)}
    if office:
        ratios["libreoffice"] = (office * REPORTS / ours, LIBREOFFICE_GOAL)
    print("   ".join(f"ratio to {name} {ratio:.1f} (goal {goal:g})" for name, (ratio, goal) in ratios.items()))
    if not same:
        print("the two sides made different reports")
    return 0 if same and all(ratio >= goal for ratio, goal in ratios.values()) else 1


if __name__ == "__main__":
    sys.exit(main(pathlib.Path(sys.argv[1]).resolve()))
