#!/usr/bin/env python3
"""Writes the seeds that are better made than kept. usage: make_seeds.py FOLDER"""
import pathlib, struct, sys, zipfile, zlib

here, target = pathlib.Path(__file__).parent / "seeds", pathlib.Path(sys.argv[1])


def write(name, seed, data):
    folder = target / name
    folder.mkdir(parents=True, exist_ok=True)
    (folder / seed).write_bytes(data)


def listed(path):
    pieces = ("\n" + path.read_text(encoding="utf-8")).split("\n=== ")[1:]
    return [piece.split("\n", 1) for piece in pieces]


for folder in here.iterdir():
    (target / folder.name).mkdir(parents=True, exist_ok=True)

# Packages as they lie on the disk: the listings, deflated.
for kind in ("workbook", "document"):
    for listing in sorted((here / kind).glob("*.parts")):
        file = target / kind / (listing.stem + ".zip")
        with zipfile.ZipFile(file, "w", zipfile.ZIP_DEFLATED) as package:
            for name, contents in listed(listing):
                if name != "picture":
                    package.writestr(zipfile.ZipInfo(name, (2001, 9, 9, 1, 46, 40)), contents, zipfile.ZIP_DEFLATED)

# A picture of nine by nine points, and one that tells of a million by a million.
def chunk(kind, data):
    return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))


base = (here / "document" / "table.parts").read_bytes()
for name, points in (("picture", 9), ("lying_picture", 1_000_000)):
    rows = zlib.compress((b"\0" + b"\x80" * 9) * 9)
    header = struct.pack(">IIBBBBB", points, points, 8, 0, 0, 0, 0)
    png = b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", rows) + chunk(b"IEND", b"")
    write("document", name, base + b"\n=== picture\n" + png)

# Both kinds of dictionaries.
heads = [("apple", "a fruit"), ("测试", "词义"), ("3D", "<b>deep</b>")]
text, index = b"", b""
for head, body in heads:
    index += head.encode() + b"\0" + struct.pack(">II", len(text), len(body.encode()))
    text += body.encode()
for kind in "mhg":
    ifo = f"StarDict's dict ifo file\nversion=2.4.2\nbookname=x\nsametypesequence={kind}\n".encode()
    write("dictionary_import", "stardict_" + kind, b"=== d.ifo\n" + ifo + b"\n=== d.idx\n" + index +
          b"\n=== d.dict\n" + text + b"\n=== d.syn\nApfel\0\0\0\0\0")

# Texts in every encoding, and rows of choices.
for code in ("gb18030", "utf-8", "utf-8-sig", "utf-16", "utf-16-be"):
    write("text_decoding", code, "客户\t1月\r\nÄß€𠮷ＡＢ abcdefghijk\n".encode(code))
for number in range(12):
    row = bytes((i * (2 * number + 3) + number * 17) % 251 for i in range(400))
    for name in ("columns", "text_queries", "look_ups"):
        write(name, f"choices{number}", row)

# Matches side by side and apart, for the marks and for sentences.
for number, sentence in enumerate((0, 1)):
    write("text_queries", f"side_by_side{number}",
          bytes([0, 0, sentence, 1, 0, 14, 0, 0, 0, 2, 0, 1, 0, 0, 8, 0, 9, 0, 0, 0, 0]))

# The samples' scripts.
samples = here.parent.parent / "installation"
for script in sorted(samples.glob("*.play")):
    write("player", script.name, script.read_bytes())
for design in sorted(samples.glob("automation*.bin")):
    write("design", design.name, design.read_bytes())
