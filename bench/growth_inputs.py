"""What the growth curves run on: for each curve its sizes, and what makes the files and the script of a point."""

import dataclasses
import itertools
import pathlib
import shutil
from typing import Callable

NEEDLE, COLUMN = "4900", 5
BOOKS_MADE = 3  # workbooks that differ; a larger folder holds copies of them
MOST_ROWS = 1_000_000


@dataclasses.dataclass
class Curve:
    name: str
    unit: str
    sizes: list
    make: Callable  # (folder, installation, size): fills the folder, script.play among its files
    ends: str = ""  # what keeps the program from more
    makes_files: bool = False  # as many as the size


def script(folder, *lines):
    (folder / "script.play").write_text("\n".join(lines) + "\n", "utf-8")


def opened(report, needle=NEEDLE):
    return [f"file {report}", "click Command1(0)", f'set Text1(1) "{needle}"']


def command(report, text, *files):
    """Opens the report and types the command, whose sheets come to drive d."""
    return [*opened(report, text), 'input "d:\\\\made\\\\"', "reply ok", *(f'file "{file}"' for file in files),
            'type Text1(1) "\\r"']


def templates(folder, installation, *names):
    for name in names:
        shutil.copy(installation / name, folder)


def report(folder, seed, rows):
    """The first lines of a large report, which all curves share."""
    import columns_generate

    whole = pathlib.Path(folder.parent) / f"whole{seed}.txt"
    if not whole.exists():
        columns_generate.write(whole, seed, MOST_ROWS if seed == 1 else max(ROWS))
    path = folder / f"report{seed}.txt"
    with open(whole, "rb") as lines, open(path, "wb") as file:
        file.writelines(itertools.islice(lines, rows))
    return path.name


def table(folder, rows, *actions, tables=1):
    """Reports of 20 columns, split; then the actions. The first table must have the most rows to be compared."""
    lines = []
    for number in range(1, tables + 1):
        lines += ["click Command9(3)"] * (number > 1)
        lines += [*opened(report(folder, number, rows if number == 1 else rows * 9 // 10)), "reply yes", 'type Text1(1) "\\e"', "click Command8(0)"]
        lines += [f'set Form3.Text1({box}) "{COLUMN}"' for box in (3, 4, 5)] * (number == 1)
    script(folder, *lines, *actions)


def counted(folder, _, rows):
    table(folder, rows, "click Command9(2)")


def sorted_rows(folder, _, rows):
    table(folder, rows, "click Command9(1)")


def compared(folder, _, rows):
    table(folder, rows, "click Command9(5)", tables=2)


def queried_rows(folder, _, rows):
    script(folder, *opened(report(folder, 1, rows)), 'set Text1(2) "\\r\\n"', "reply yes", "click Command1(1)")


def prose(folder, megabytes):
    import reading_bench

    reading_bench.write_prose(folder / "prose.txt", megabytes * 1_000_000)


def queried_text(folder, _, megabytes):
    import reading_bench

    prose(folder, megabytes)
    script(folder, *opened("prose.txt", reading_bench.NEEDLE), 'set Text1(2) "。\\r\\n"', "reply yes", "click Command1(1)")


def listed_characters(folder, _, megabytes):
    prose(folder, megabytes)
    script(folder, *opened("prose.txt", "An statistic"), 'type Text1(1) "\\r"')


def keyed_scans(folder, _, keys):
    import keyed_scans_bench

    keyed_scans_bench.write_reports(folder, keys)
    script(folder, *command("keys.txt", "An docket"), f"run {10 * keys}")


def dockets(folder, installation, receipts):
    import docket_generate

    templates(folder, installation, "z2.xlsx", "z3.xlsx", "z5.xlsx", "z6.xlsx")
    docket_generate.generate(folder, receipts)
    script(folder, *command("3139.txt", "An docket"), "run")


def service(folder, installation, name, template, count):
    """A command of bills or reports; its constant in the generator says how many there are."""
    import service_generate

    templates(folder, installation, template)
    (folder / "photo").mkdir()
    service_generate.SUMMARY = service_generate.REPORTS = service_generate.BILLS = count
    service_generate.generate(folder, name)
    script(folder, *command("3138.txt" if name == "bendocket" else "3158.txt", f"An {name}"), "run")


def bills(folder, installation, count):
    service(folder, installation, "bendocket", "z8.xlsx", count)


def repair_reports(folder, installation, count):
    service(folder, installation, "dockword", "wtest1.doc", count)


def summary(folder, installation, rows):
    service(folder, installation, "wodben", "z9.xlsx", rows)


def designed(folder, installation, students):
    import designed_generate

    templates(folder, installation, "designerA.xlsx")
    designed_generate.marks(folder, students)
    script(folder, *command("3159.txt", "An testsesame A"), "run")


def copies(folder, count):
    """Makes the workbooks more by copying; their names stay in order."""
    made = sorted(folder.iterdir())
    for number in range(len(made), count):
        shutil.copy(made[number % len(made)], folder / f"more{number:04d}.xlsx")
    for path in made[count:]:
        path.unlink()
    return sorted(folder.iterdir())[0]


def compared_books(folder, books, rows):
    import designed_bench
    import designed_generate

    designed_generate.books(folder, BOOKS_MADE, rows)
    first = copies(folder / "books", books)
    boxes = designed_bench.BOOK_BOXES.splitlines()
    script(folder, *boxes, *command(folder / "list.txt", "An Excelfile", first), "run")


def books_growing(folder, _, books):
    compared_books(folder, books, 10_000)


def rows_growing(folder, _, rows):
    compared_books(folder, 30, rows)


def repaired_sheets(folder, sheets, records):
    import repair_generate

    repair_generate.generate(folder, min(sheets, BOOKS_MADE), records)
    first = copies(folder / "sheets", sheets)
    script(folder, *command(folder / "records.txt", "An order", first), f"expect filecount {sheets}")


def sheets_growing(folder, _, sheets):
    repaired_sheets(folder, sheets, 10_000)


def records_growing(folder, _, records):
    repaired_sheets(folder, 10, records)


ROWS = [10_000, 30_000, 100_000, 300_000]
MANY = [10, 30, 100, 300, 1000]
MEGABYTES = [1, 5, 20, 50, 200]
FULL, RESULTS, KEYS = "a table holds no more rows", "a query keeps no more results", "a run takes no more keys"
CURVES = [
    Curve("open, query, split, count a column", "rows", ROWS, counted, FULL),
    Curve("open, query, split, sort", "rows", ROWS, sorted_rows, FULL),
    Curve("two tables compared", "rows", ROWS, compared, FULL),
    Curve("open and query a report", "rows", [*ROWS, MOST_ROWS], queried_rows, RESULTS),
    Curve("open and query prose", "MB", MEGABYTES, queried_text),
    Curve("list the characters of prose", "MB", MEGABYTES, listed_characters),
    Curve("keys looked for in 66 MB", "keys", [10, 100, 1000, 10_000], keyed_scans, KEYS),
    Curve("dockets", "workbooks", MANY, dockets, makes_files=True),
    Curve("bills", "workbooks", MANY, bills, makes_files=True),
    Curve("Word repair reports", "documents", MANY, repair_reports, makes_files=True),
    Curve("summary in one workbook", "rows", [1000, 3000, 10_000, 30_000, 100_000], summary),
    Curve("designed reports", "workbooks", MANY, designed, makes_files=True),
    Curve("comparison with 10,000 rows", "workbooks", MANY, books_growing, makes_files=True),
    Curve("comparison of 30 workbooks", "rows", [1000, *ROWS], rows_growing),
    Curve("repair rules, 10,000 records", "workbooks", MANY, sheets_growing, makes_files=True),
    Curve("repair rules, 10 workbooks", "records", [1000, *ROWS], records_growing),
]
