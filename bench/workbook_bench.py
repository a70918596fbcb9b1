#!/usr/bin/python3
"""Binary workbooks with 300 cells written through LibreOffice, from a docket template, every save flushed.

    workbook_bench.py INSTALLATION        the folder of tarvik-play and its templates

Ends with status 1 when the goal is missed. Without LibreOffice there is nothing to measure, and that is said.
"""

import pathlib
import shutil
import subprocess
import sys
import tempfile

from measure import Goals

COUNT, REPEATS, GOAL_MS = 40, 3, 50.0


def main(built):
    program = built.parent / "bin" / "workbook-fill"
    with tempfile.TemporaryDirectory(prefix="workbook_bench", dir=built) as folder:
        shutil.copy(built / "z2.xlsx", folder)
        spent = []
        for _ in range(REPEATS):
            told = subprocess.run([program, folder, "z2.xlsx", str(COUNT)], capture_output=True, text=True)
            if told.returncode:
                print(f"left out: {told.stderr.strip()}")
                return 0
            spent.append(1000 * float(told.stdout) / COUNT)
    goals = Goals()
    goals.at_most(".xls through LibreOffice, 300 cells a workbook", min(spent), GOAL_MS, "ms")
    return goals.status()


if __name__ == "__main__":
    sys.exit(main(pathlib.Path(sys.argv[1]).resolve()))
