#!/usr/bin/python3
"""Makes everything in installation/ that isn't written by hand, into that folder or the one that is named.

    /usr/bin/python3 tools/make_installation/make.py [FOLDER]

Needs python3-openpyxl for the templates and ImageMagick for the pictures. The same sources give the same files, so a
change shows in version control as what it is.
"""

import pathlib
import sys

import background
import dictionaries
import labels
import photos
import repair_sheets
import reports
import service_reports
import service_templates
import templates
import test_docket_script
import transcripts
import word_templates

HERE = pathlib.Path(__file__).parent


def main(folder):
    text = (HERE / "opening_screen.txt").read_text(encoding="utf-8")
    (folder / "coclus.txt").write_bytes(text.replace("\n", "\r\n").encode("gb18030"))
    for part in (reports, service_reports, dictionaries, templates, service_templates, labels, word_templates,
                 repair_sheets, transcripts, test_docket_script, photos, background):
        part.main(folder)


if __name__ == "__main__":
    main(pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else HERE.parents[1] / "installation")
