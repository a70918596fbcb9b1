#!/usr/bin/python3
"""The column engine beside gawk and sort on generated reports of 300,000 lines with 20 columns.

    columns_bench.py INSTALLATION        the folder of tarvik-play

Every figure is the best of a few runs; the two sides of a row take turns. The first row is whole processes from start
to end, on our side with all scratch files written. The sort and the comparison are told for themselves, from the press
of the button to the shown view, while their peers read the files too. Ends with status 1 when a goal is missed or when the two sides counted
differently.
"""

import os
import pathlib
import subprocess
import sys
import tempfile
import time

HERE = pathlib.Path(__file__).parent
REPEATS, COLUMN, NEEDLE = 5, 5, "4900"
MEMORY_GOAL_MB = 600.0
C_LOCALE = dict(os.environ, LC_ALL="C")

TABLE = f"""file report{{}}.txt
click Command1(0)
set Text1(1) "{NEEDLE}"
type Text1(1) "\\e"
click Command8(0)
"""
COLUMNS = f"""set Form3.Text1(5) "{COLUMN}"
set Form3.Text1(3) "{COLUMN}"
set Form3.Text1(4) "{COLUMN}"
"""
ONE_TABLE = TABLE.format(1) + COLUMNS
TWO_TABLES = ONE_TABLE + "click Command9(3)\n" + TABLE.format(2) + "reply yes\n"


def timed(command, script=b"", **options):
    """Seconds and peak megabytes of a process that reads the script."""
    started = time.perf_counter()
    process = subprocess.Popen(command, stdin=subprocess.PIPE, **options)
    process.stdin.write(script)
    process.stdin.close()
    _, status, usage = os.wait4(process.pid, 0)
    seconds = time.perf_counter() - started
    process.returncode = os.waitstatus_to_exitcode(status)
    if process.returncode:
        sys.exit(f"failed: {command[0]}")
    return seconds, usage.ru_maxrss / 1024


class Bench:
    def __init__(self, player, folder):
        self.player, self.folder = player, folder
        self.missed = False

    def ours(self, script):
        return timed([self.player, "--install", self.folder, "-"], script.encode(), stdout=subprocess.DEVNULL)

    def ours_of(self, before, action):
        """Seconds of one action in a session that has come so far."""
        script = f'{before}say "begin"\n{action}\nsay "end"\n'
        process = subprocess.Popen([self.player, "--install", self.folder, "-"], stdin=subprocess.PIPE,
                                   stdout=subprocess.PIPE)
        process.stdin.write(script.encode())
        process.stdin.close()
        seen = {line: time.perf_counter() for line in process.stdout}
        if process.wait():
            sys.exit("the player failed")
        return seen[b"end\n"] - seen[b"begin\n"], 0.0

    def peer(self, *command, output="peer.txt"):
        with open(self.folder / output, "wb") as file:
            return timed([*command], stdout=file, env=C_LOCALE)

    def row(self, what, ours, peer, goal=1.0):
        ratio = ours / peer
        self.missed = self.missed or ratio > goal
        print(f"{what:44}{ours:10.3f} s{peer:10.3f} s{ratio:8.2f}" + ("" if ratio <= goal else "   goal missed"))


def best(*runs):
    """The best seconds of each of some runs that take turns, and the highest peak of the first."""
    results = [[run() for run in runs] for _ in range(REPEATS)]
    return [min(turn[i][0] for turn in results) for i in range(len(runs))], max(turn[0][1] for turn in results)


def same_counts(folder):
    """Of equal lines we keep the last and gawk the first, so that the values may come in another order."""
    ours = [line.split("\t") for line in (folder / "betweensum.txt").read_bytes().decode("gb18030").split("\r\n")]
    peer = (folder / "peer.txt").read_bytes().decode("gb18030").splitlines()
    return sorted(f"{fields[1]}\t{fields[4]}" for fields in ours if len(fields) > 4) == sorted(peer)


def main(arguments):
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        bench = Bench(pathlib.Path(arguments[0]).resolve() / "tarvik-play", folder)
        for number in (1, 2):
            subprocess.run([sys.executable, HERE / "columns_generate.py", folder / f"report{number}.txt", str(number)], check=True)
        size = (folder / "report1.txt").stat().st_size / 1e6
        print(f"report: 300000 lines, 20 columns, {size:.0f} MB in GBK")
        print(f"{'what':44}{'ours':>12}{'peer':>12}{'ratio':>8}")

        count = ["gawk", "-v", f"needle={NEEDLE}", "-v", f"column={COLUMN}", "-f", HERE / "columns_count.awk"]
        (ours, peer), peak = best(lambda: bench.ours(ONE_TABLE + "click Command9(2)\n"),
                                  lambda: bench.peer(*count, folder / "report1.txt"))
        bench.row("open, Esc, q, / | gawk", ours, peer)
        if not same_counts(folder):
            sys.exit("ours and gawk counted differently")
        written = sum(path.stat().st_size for path in folder.glob("between*.txt")) / 1e6
        print(f"    scratch files written: {written:.0f} MB; peak of the player: {peak:.0f} MB"
              f" (goal {MEMORY_GOAL_MB:.0f})")

        sort = ["sort", "-t", "\t", "-n", f"-k{COLUMN},{COLUMN}", folder / "report1.txt"]
        (ours, peer), _ = best(lambda: bench.ours_of(ONE_TABLE, "click Command9(1)"), lambda: bench.peer(*sort))
        bench.row("z | sort -n", ours, peer)

        join = ["gawk", "-v", f"column={COLUMN}", "-f", HERE / "columns_join.awk", folder / "report2.txt",
                folder / "report1.txt"]
        (ours, peer), _ = best(lambda: bench.ours_of(TWO_TABLES, "click Command9(5)"), lambda: bench.peer(*join))
        bench.row("p, cross comparison | gawk", ours, peer)
        return 1 if bench.missed or peak > MEMORY_GOAL_MB else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
