#!/usr/bin/env python3
"""Plays the golden scripts by the Windows player under wine, and holds what it says and writes against the transcripts
that the player of this system is held against. What differs is evened out first: how paths are spelled.
usage: play_golden.py player.exe"""

import filecmp
import pathlib
import shutil
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parents[2]
GOLDEN = ROOT / "tests/playback/golden"
SHIPPED = ROOT / "installation"
WINE = ROOT / "tools/windows/wine.sh"
READERS = {".doc": "tests/engines/documents/read_document.py"}
READER = "tests/engines/spreadsheets/read_workbook.py"
# Debian's own interpreter is the one that has Debian's packages.
PYTHON = "/usr/bin/python3" if pathlib.Path("/usr/bin/python3").exists() else sys.executable


def windows_path(path):
    return "Z:" + str(path).replace("/", "\\")


def evened(text, folder):
    for own in (windows_path(folder), windows_path(folder).replace("\\", "\\\\")):
        text = text.replace(own, "$")
    for below in ("installation", "d"):
        text = text.replace("$\\\\" + below, "$/" + below).replace("$\\" + below, "$/" + below)
    return text


def files_below(folder):
    return sorted((p.relative_to(folder) for p in folder.rglob("*") if p.is_file()), key=lambda p: str(p).encode())


def files_told(folder):
    lines = ["written in the installation folder:"]
    for file in files_below(folder / "installation"):
        original = SHIPPED / file
        if not original.is_file() or not filecmp.cmp(folder / "installation" / file, original, shallow=False):
            lines.append(str(file))
    made = files_below(folder / "d")
    lines += ["files:"] + [str(file) for file in made]
    if not made:
        return "\n".join(lines) + "\n"
    reader = READERS.get(made[0].suffix, READER)
    told = subprocess.run([PYTHON, "-W", "ignore", ROOT / reader, folder / "d" / made[0]],
                          stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False).stdout.decode()
    return "\n".join(lines + ["the first of them:"]) + "\n" + told


def play(player, script, installation, tells_files):
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        shutil.copytree(installation, folder / "installation")
        (folder / "d").mkdir()
        done = subprocess.run(
            [WINE, player, "--install", windows_path(folder / "installation"),
             "--drive", "d=" + windows_path(folder / "d"), "--clock", "2024-03-01 09:05:07", windows_path(script)],
            stdout=subprocess.PIPE, stderr=subprocess.PIPE, check=False)
        told = evened(done.stdout.decode(), folder)
        if done.stderr:
            told += "standard error:\n" + evened(done.stderr.decode(), folder)
        told += f"status {done.returncode}\n"
        return told + (files_told(folder) if tells_files else "")


def scripts():
    for script in sorted(GOLDEN.glob("*.play")):
        yield script, GOLDEN / "installation", script.with_suffix(".out"), False
    for transcript in sorted((GOLDEN / "samples").glob("*.out")):
        yield SHIPPED / (transcript.stem + ".play"), SHIPPED, transcript, True


def main():
    faults = played = 0
    for script, installation, transcript, tells_files in scripts():
        told = play(pathlib.Path(sys.argv[1]).resolve(), script, installation, tells_files)
        expected = transcript.read_bytes().decode()
        played += 1
        if told == expected:
            continue
        faults += 1
        shown = subprocess.run(["diff", "-u", "--label", str(transcript.name), "--label", "under wine", transcript, "-"],
                               input=told.encode(), stdout=subprocess.PIPE, check=False)
        print(shown.stdout.decode())
    print(f"golden scripts under wine: {played} played, {faults} differ")
    return 1 if faults or not played else 0


if __name__ == "__main__":
    sys.exit(main())
