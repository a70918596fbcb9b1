#!/usr/bin/env python3
"""Packs a folder into a zip archive whose bytes depend on nothing but the files and SOURCE_DATE_EPOCH: sorted entries,
one time for all. Names that are not ASCII are marked as UTF-8.
usage: make_archive.py folder archive.zip"""

import os
import pathlib
import sys
import time
import zipfile

folder = pathlib.Path(sys.argv[1])
packed_at = time.gmtime(int(os.environ["SOURCE_DATE_EPOCH"]))[:6]
with zipfile.ZipFile(sys.argv[2], "w") as archive:
    for file in sorted(file for file in folder.rglob("*") if file.is_file()):
        entry = zipfile.ZipInfo(str(file.relative_to(folder.parent)), packed_at)
        entry.compress_type = zipfile.ZIP_DEFLATED
        entry.external_attr = 0o644 << 16
        archive.writestr(entry, file.read_bytes(), compresslevel=9)
