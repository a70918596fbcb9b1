#!/usr/bin/env python3
"""clang-tidy over every program file that a build compiles. Stops when it finds something, and when it would look at
hardly any file.

Most of clang-tidy's time goes into the headers that each file includes. So files that are compiled alike are looked at
some at a time, one behind the other as one file. Where that finds something, or where names of theirs are in each
other's way, its halves are looked at, down to each file by itself, which alone counts.
"""

import collections
import concurrent.futures
import json
import os
import pathlib
import shlex
import subprocess
import sys

ROOT = pathlib.Path.cwd()
BUILD = ROOT / "build" / "tidy"
TOGETHER, FEWEST_FILES = 12, 100
TIDY = ["clang-tidy", "-quiet", "-extra-arg=-Wno-unknown-warning-option"]


def configure():
    # Only its compile commands are wanted; clang reads no headers that GCC has precompiled.
    subprocess.run(["cmake", "-G", "Ninja", "-B", BUILD, "-DCMAKE_BUILD_TYPE=Debug", "-DTARVIK_PRECOMPILE=OFF"], check=True,
                   stdout=subprocess.DEVNULL)
    targets = subprocess.run(["ninja", "-C", BUILD, "-t", "targets", "all"], check=True, capture_output=True, text=True).stdout
    if "\nlibreoffice_headers:" in targets:
        subprocess.run(["ninja", "-C", BUILD, "libreoffice_headers"], check=True, stdout=subprocess.DEVNULL)


def program_files():
    """The files, by the folder and the words that compile them."""
    alike = collections.defaultdict(list)
    for entry in json.loads((BUILD / "compile_commands.json").read_text()):
        file = pathlib.Path(entry["directory"], entry["file"]).resolve()
        if not file.is_relative_to(ROOT) or file.relative_to(ROOT).parts[0] in ("tests", "build"):
            continue
        words = [word for word in shlex.split(entry["command"]) if pathlib.Path(word).name != "ccache"]
        output = words.index("-o")
        del words[output:output + 2]
        alike[entry["directory"], tuple(word for word in words if word not in ("-c", entry["file"]))].append(file)
    return alike


def groups(alike):
    for (directory, words), files in alike.items():
        files = sorted(set(files))
        # Each of these has the same functions as the others.
        together = 1 if files[0].relative_to(ROOT).parts[0] in ("bench", "fuzz") else TOGETHER
        for first in range(0, len(files), together):
            yield directory, words, files[first:first + together]


def findings(name, group):
    """What clang-tidy prints of the files, or nothing."""
    directory, words, files = group
    if len(files) == 1:
        alone = subprocess.run([*TIDY, "-p", BUILD, *files], capture_output=True, text=True)
        return alone.stdout + alone.stderr if alone.returncode else ""
    folder = BUILD / "together" / name
    folder.mkdir(parents=True, exist_ok=True)
    together = folder / "together.cpp"
    together.write_text("".join(f"{file.read_text()}\n" for file in files))
    (folder / "compile_commands.json").write_text(json.dumps(
        [{"directory": directory, "file": str(together), "arguments": [*words, "-c", str(together)]}]))
    if subprocess.run([*TIDY, f"--config-file={ROOT / '.clang-tidy'}", "-p", folder, together],
                      capture_output=True).returncode == 0:
        return ""
    half = len(files) // 2
    return "".join(findings(f"{name}.{number}", (directory, words, part))
                   for number, part in enumerate((files[:half], files[half:])))


def main():
    configure()
    wanted = list(groups(program_files()))
    count = sum(len(files) for _, _, files in wanted)
    if count < FEWEST_FILES:
        sys.exit(f"clang-tidy: only {count} files to look at")
    print(f"clang-tidy: {count} files", flush=True)
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        found = "".join(pool.map(findings, map(str, range(len(wanted))), wanted))
    if found:
        sys.exit(found)


if __name__ == "__main__":
    main()
