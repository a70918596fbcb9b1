#!/usr/bin/env python3
"""Holds every #include between the project's own files against tools/layers.txt: none may run to a higher rank or to
another folder of its own, and no two files may need each other, directly or around a circle. Every folder with program
files must stand in a rank. With --test it checks itself on made-up trees."""

import pathlib
import posixpath
import re
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parent.parent
INCLUDE = re.compile(r'^\s*#\s*include\s+"([^"]+)"', re.MULTILINE)


APART = ("tests/", "bench/", "fuzz/")  # they may use everything


def read_ranks(root):
    """The places in their order from the lowest rank: (place, rank's number, rank's name)."""
    places = []
    for number, line in enumerate((root / "tools/layers.txt").read_text().splitlines()):
        words = line.split("#")[0].split()
        places += [(place, number, words[0]) for place in words[1:]]
    return places


def place_of(path, places):
    """The longest place that holds the file: (place, number, name) or None."""
    fitting = [one for one in places if path == one[0] or path.startswith((one[0] + "/", one[0] + "."))]
    return max(fitting, key=lambda one: len(one[0]), default=None)


def find_circle(includes):
    state, trail = {}, []

    def visit(path):
        state[path] = "open"
        trail.append(path)
        for other in includes.get(path, []):
            if state.get(other) == "open":
                return trail[trail.index(other):] + [other]
            if other not in state:
                circle = visit(other)
                if circle:
                    return circle
        trail.pop()
        state[path] = "done"
        return None

    for path in includes:
        if path not in state:
            circle = visit(path)
            if circle:
                return circle
    return None


def faults_of(root, files):
    """`files`: the program's files, as paths from the root."""
    places = read_ranks(root)
    includes, faults = {}, []
    for path in files:
        own = place_of(path, places)
        if own is None:
            faults.append(f"{path}: stands in no rank")
            continue
        names = {posixpath.normpath(name) for name in INCLUDE.findall((root / path).read_text())}
        includes[path] = sorted(name for name in names if (root / name).is_file())
        for other in includes[path]:
            met = place_of(other, places)
            if met is None:
                faults.append(f"{path} includes {other}, which stands in no rank")
            elif met[1] > own[1]:
                faults.append(f"{path} ({own[2]}) includes {other} ({met[2]}), which stands higher")
            elif met[1] == own[1] and met[0] != own[0] and (root / met[0]).is_dir():
                faults.append(f"{path} includes {other}, another folder of its rank")
    circle = find_circle(includes)
    if circle:
        faults.append("circle: " + " -> ".join(circle))
    return faults


def check_itself():
    """Each tree is right but for one thing."""
    layers = "low low\nhigh high twin\n"
    right = {"low/a.h": "", "high/b.cpp": '#include "low/a.h"\n', "twin/c.h": ""}
    wrong = {
        "an include that runs up": {"low/a.h": '#include "high/d.h"', "high/d.h": ""},
        "one that hides behind dots": {"low/a.h": '#include "low/../high/d.h"', "high/d.h": ""},
        "one to a folder of the same rank": {"high/b.cpp": '#include "twin/c.h"'},
        "a circle": {"low/a.h": '#include "low/d.h"', "low/d.h": '#include "low/a.h"'},
        "a folder of no rank": {"other/e.cpp": ""},
    }
    for what, change in {"nothing": {}, **wrong}.items():
        with tempfile.TemporaryDirectory() as folder:
            root, tree = pathlib.Path(folder), {**right, **change, "tools/layers.txt": layers}
            for path, contents in tree.items():
                (root / path).parent.mkdir(exist_ok=True)
                (root / path).write_text(contents)
            found = faults_of(root, [path for path in tree if not path.startswith("tools/")])
            if bool(found) != bool(change):
                sys.exit(f"layers: {what} is wrong, and the check says {found}")


def main():
    if sys.argv[1:] == ["--test"]:
        return check_itself()
    listed = subprocess.run(["git", "-C", ROOT, "ls-files", "-z", "--cached", "--others", "--exclude-standard"],
                            check=True, capture_output=True).stdout.decode().split("\0")
    files = [path for path in sorted(set(listed)) if path.endswith((".h", ".cpp")) and not path.startswith(APART)
             and (ROOT / path).is_file()]
    faults = faults_of(ROOT, files)
    for fault in faults:
        print(fault)
    print(f"layers: {len(files)} files, {len(faults)} faults")
    return 1 if faults or not files else 0


if __name__ == "__main__":
    sys.exit(main())
