#!/usr/bin/python3
"""The column engine beside gawk, mawk, DuckDB and sort on generated reports of 300,000 lines with 20 columns.

    columns_bench.py INSTALLATION        the folder of tarvik-play

Every figure is the best of a few runs; the two sides take turns. The first is whole processes from start to end, on our
side with all scratch files written. The sort and the comparison are told for themselves, from the press of the button
to the shown view, while their peers read the files too. Ends with status 1 when a goal is missed or when the two sides
counted differently. DuckDB is the node package that bench/run.sh puts beside INSTALLATION; it reads UTF-8 alone, so that iconv
goes ahead of it, and like the awks it counts and writes no view.
"""

import os
import pathlib
import subprocess
import sys
import tempfile

from measure import HERE, Goals, Spent, in_turn, played, played_stretch, timed

REPEATS, COLUMN, NEEDLE = 5, 5, "4900"
MEMORY_GOAL_MB = 200.0
AWK_GOAL, DUCKDB_GOAL = 1 / 0.6, 1 / 0.75  # times as fast
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


def plus(*spent):
    """One after the other."""
    return Spent(sum(each.seconds for each in spent), sum(each.cpu for each in spent), max(each.peak_mb for each in spent))


def same_counts(folder):
    """Of equal lines we keep the last and gawk the first, so that the values may come in another order."""
    ours = [line.split("\t") for line in (folder / "betweensum.txt").read_bytes().decode("gb18030").split("\r\n")]
    peer = (folder / "peer.txt").read_bytes().decode("gb18030").splitlines()
    return sorted(f"{fields[1]}\t{fields[4]}" for fields in ours if len(fields) > 4) == sorted(peer)


def main(built):
    player, goals = built / "tarvik-play", Goals()
    with tempfile.TemporaryDirectory(prefix="columns_bench", dir=built) as name:
        folder = pathlib.Path(name)
        first, second = folder / "report1.txt", folder / "report2.txt"
        for number in (1, 2):
            subprocess.run([sys.executable, HERE / "columns_generate.py", folder / f"report{number}.txt", str(number)], check=True)
        print(f"report: 300000 lines, 20 columns, {first.stat().st_size / 1e6:.0f} MB in GBK")

        def into(name, words):
            with open(folder / name, "wb") as file:
                return timed(words, stdout=file, env=C_LOCALE)

        def beside(what, ours, name, theirs, goal=1.0):
            ours_spent, theirs_spent = in_turn(REPEATS, lambda _: ours(), lambda _: theirs())
            goals.faster(what, ours_spent, name, theirs_spent, goal)
            return ours_spent

        def count():
            return played(player, folder, ONE_TABLE + "click Command9(2)\n")

        def peer_counts(peer, words):
            spent = beside(what, count, peer, words, DUCKDB_GOAL if peer == "iconv and DuckDB" else AWK_GOAL)
            if not same_counts(folder):
                sys.exit(f"ours and {peer} counted differently")
            return spent

        def duckdb():
            decoded = into("utf8.txt", ["iconv", "-f", "GB18030", "-t", "UTF-8", first])
            counted = into("peer_utf8.txt", ["node", HERE / "columns_duckdb.mjs", duckdb_folder, folder / "utf8.txt", NEEDLE,
                                             str(COLUMN)])
            (folder / "peer.txt").write_bytes((folder / "peer_utf8.txt").read_text(encoding="utf-8").encode("gb18030"))
            return plus(decoded, counted)

        what = "open, query, split, count a column, all views written"
        for awk in ("gawk", "mawk"):
            words = [awk, "-v", f"needle={NEEDLE}", "-v", f"column={COLUMN}", "-f", HERE / "columns_count.awk", first]
            counted = peer_counts(awk, lambda words=words: into("peer.txt", words))
        duckdb_folder = built.parent / "duckdb"
        if (duckdb_folder / "node_modules").exists():
            peer_counts("iconv and DuckDB", duckdb)
        else:
            print(f"DuckDB left out: npm has put nothing into {duckdb_folder}")
        written = sum(path.stat().st_size for path in folder.glob("between*.txt")) / 1e6
        print(f"    views written: {written:.0f} MB")
        goals.at_most("peak of that", counted.peak_mb, MEMORY_GOAL_MB, "MB")
        beside("sort by a column", lambda: played_stretch(player, folder, ONE_TABLE, "click Command9(1)"), "sort -n",
               lambda: into("peer.txt", ["sort", "-t", "\t", "-n", f"-k{COLUMN},{COLUMN}", first]))
        beside("compare two tables", lambda: played_stretch(player, folder, TWO_TABLES, "click Command9(5)"), "gawk",
               lambda: into("peer.txt", ["gawk", "-v", f"column={COLUMN}", "-f", HERE / "columns_join.awk", second, first]))
        return goals.status()


if __name__ == "__main__":
    sys.exit(main(pathlib.Path(sys.argv[1]).resolve()))
