#!/usr/bin/env python3
"""Plays the golden scripts by the Windows player under wine, and holds what it says and writes against the transcripts
that the player of this system is held against. The other sample scripts are played by both players, and all that they
say and write is compared. What differs is evened out first: how paths are spelled.
usage: play_golden.py player.exe own-player"""

import difflib
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


def run(command, path_of, script, folder):
    """What a player says, with the paths of the folder that it works in evened out."""
    done = subprocess.run(
        command + ["--install", path_of(folder / "installation"), "--drive", "d=" + path_of(folder / "d"),
                   "--print-to", path_of(folder / "printed"), "--clock", "2024-03-01 09:05:07", path_of(script)],
        stdout=subprocess.PIPE, stderr=subprocess.PIPE, check=False)
    told = evened(done.stdout.decode(), folder)
    if done.stderr:
        told += "standard error:\n" + evened(done.stderr.decode(), folder)
    return told + f"status {done.returncode}\n"


def prepare(folder, installation):
    shutil.copytree(installation, folder / "installation")
    (folder / "d").mkdir()
    (folder / "printed").mkdir()


def needed(script):
    """The scripts whose files the script works on."""
    return [SHIPPED / "docket.play"] if script.name == "print.play" else []


def play(player, script, installation, tells_files):
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        prepare(folder, installation)
        for one in needed(script) + [script]:
            told = run([WINE, player], windows_path, one, folder)
        return told + (files_told(folder) if tells_files else "")


def played_alike(player, own_player, script):
    """What the two players do differently with a sample script; nothing where it is the same to the last byte."""
    with tempfile.TemporaryDirectory() as here, tempfile.TemporaryDirectory() as there:
        told = []
        players = (([own_player], str, pathlib.Path(here)), ([WINE, player], windows_path, pathlib.Path(there)))
        for command, path_of, folder in players:
            prepare(folder, SHIPPED)
            told.append("".join(evened(run(command, path_of, one, folder).replace(str(folder), "$"), folder)
                                for one in needed(script) + [script]))
        faults = list(difflib.unified_diff(told[0].splitlines(), told[1].splitlines(), "own", "under wine", lineterm=""))
        made = [files_below(pathlib.Path(folder)) for folder in (here, there)]
        faults += [f"only one of them makes {file}" for file in sorted(set(made[0]) ^ set(made[1]))]
        faults += [f"{file} differs" for file in made[0] if file in made[1] and
                   not filecmp.cmp(pathlib.Path(here) / file, pathlib.Path(there) / file, shallow=False)]
        if len(made[0]) <= len(files_below(SHIPPED)):
            faults.append("nothing is made")
        return "\n".join(faults)


def scripts():
    for script in sorted(GOLDEN.glob("*.play")):
        yield script, GOLDEN / "installation", script.with_suffix(".out"), False
    for transcript in sorted((GOLDEN / "samples").glob("*.out")):
        yield SHIPPED / (transcript.stem + ".play"), SHIPPED, transcript, True


def main():
    player, own_player = (pathlib.Path(word).resolve() for word in sys.argv[1:3])
    faults = played = 0
    for script, installation, transcript, tells_files in scripts():
        told = play(player, script, installation, tells_files)
        expected = transcript.read_bytes().decode()
        played += 1
        if told == expected:
            continue
        faults += 1
        shown = subprocess.run(["diff", "-u", "--label", str(transcript.name), "--label", "under wine", transcript, "-"],
                               input=told.encode(), stdout=subprocess.PIPE, check=False)
        print(shown.stdout.decode())
    for script in sorted(SHIPPED.glob("*.play")):
        if (GOLDEN / "samples" / (script.stem + ".out")).exists():
            continue
        played += 1
        difference = played_alike(player, own_player, script)
        if difference:
            faults += 1
            print(f"{script.name}:\n{difference}")
    print(f"golden and sample scripts under wine: {played} played, {faults} differ")
    return 1 if faults or not played else 0


if __name__ == "__main__":
    sys.exit(main())
