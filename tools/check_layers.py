#!/usr/bin/env python3
"""Holds every #include between the project's own files against tools/layers.txt: none may run to a higher rank, and no
two files may need each other, directly or around a circle."""

import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
INCLUDE = re.compile(r'^\s*#\s*include\s+"([^"]+)"', re.MULTILINE)


def read_ranks():
    ranks = []
    for line in (ROOT / "tools/layers.txt").read_text().splitlines():
        words = line.split("#")[0].split()
        if words:
            ranks.append((words[0], words[1:]))
    return ranks


def rank_of(path, ranks):
    best = None
    for number, (name, places) in enumerate(ranks):
        for place in places:
            matches = path == place or path.startswith(place + "/") or path.startswith(place + ".")
            if matches and (best is None or len(place) > best[0]):
                best = (len(place), number, name)
    return best


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


def main():
    ranks = read_ranks()
    folders = {place.split("/")[0] for _, places in ranks for place in places}
    files = sorted(p for folder in folders for p in (ROOT / folder).rglob("*") if p.suffix in (".h", ".cpp"))
    includes, faults = {}, []
    for file in files:
        path = file.relative_to(ROOT).as_posix()
        own = rank_of(path, ranks)
        if own is None:
            faults.append(f"{path}: stands in no rank")
            continue
        includes[path] = [name for name in INCLUDE.findall(file.read_text()) if (ROOT / name).is_file()]
        for other in includes[path]:
            rank = rank_of(other, ranks)
            if rank is None:
                faults.append(f"{path} includes {other}, which stands in no rank")
            elif rank[1] > own[1]:
                faults.append(f"{path} ({own[2]}) includes {other} ({rank[2]}), which stands higher")
    circle = find_circle(includes)
    if circle:
        faults.append("circle: " + " -> ".join(circle))
    for fault in faults:
        print(fault)
    print(f"layers: {len(includes)} files, {len(faults)} faults")
    return 1 if faults or not includes else 0


if __name__ == "__main__":
    sys.exit(main())
