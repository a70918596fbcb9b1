#!/usr/bin/python3
"""Documents and dictionaries: opening with a query beside iconv, dictionary lookups, and a text made to be slow.

    reading_bench.py INSTALLATION        the folder of tarvik-play

Every figure is the best of a few runs; the two sides of a row take turns. A lookup is told as what it adds to a run
of the player that has looked something up in the same file before. Ends with status 1 when a goal is missed.
"""

import os
import pathlib
import random
import subprocess
import sys
import tempfile
import time

REPEATS, PRESSES = 3, 20
PROSE_BYTES, DICTIONARY_BYTES = 50_000_000, 15_000_000
REPEATED, PARTS, LINEAR_GOAL = 10_000_000, 4, 1.5
HITS, NEEDLE = 1000, "金丝雀"
LOOKUP_GOAL = 0.050
QUERY_GOAL = 2.0

OPEN = "file {}\nclick Command1(0)\n"
QUERY = 'set Text1(1) "{}"\nset Text1(2) "{}"\nreply yes\nclick Command1(1)\n'
EXPECT_HITS = "expect resultcount {}\n"
SENTENCES = 'click Option3\nset Text1(1) "{}"\nclick Command1(1)\n'
MARKING = f'set Text1(5) {2 * REPEATED}\nclick Command2(0)\nset Text1(1) "a"\nclick Command2(8)\n'
LOOKUP = 'set Text1(1) "{}"\nclick Command1(1)\n'


def write_prose(path):
    """Paragraphs of common characters, with the needle once in every so many of them."""
    chance = random.Random(1)
    common = [chr(code) for code in chance.sample(range(0x4E00, 0x9FA5), 3000) if chr(code) not in NEEDLE]
    common = [character for character in common if len(character.encode("gb18030")) == 2]
    paragraphs = []
    for _ in range(1000):
        words = "".join(chance.choices(common, k=chance.randrange(40, 200)))
        paragraphs.append("，".join(words[i : i + 11] for i in range(0, len(words), 11)) + "。\r\n")
    size, text = 0, []
    while size < PROSE_BYTES:
        text.append(chance.choice(paragraphs))
        size += 2 * len(text[-1]) - 2
    for hit in range(HITS):
        place = hit * len(text) // HITS
        text[place] = NEEDLE + text[place]
    path.write_bytes("".join(text).encode("gb18030"))


def write_dictionary(path, first, letters, body):
    """Entries of made-up words; gives some of the words."""
    chance = random.Random(2)
    words, entries, size = [], [" " * 250 + body + ".\r\n"], 0
    while size < DICTIONARY_BYTES:
        words.append(first + "".join(chance.choices(letters, k=chance.randrange(2, 9))))
        explained = " ".join(chance.choices(body.split(), k=chance.randrange(20, 60)))
        entries.append(f"  {words[-1]} {explained}.\r\n")
        size += len(entries[-1].encode("gb18030"))
    path.write_bytes("".join(entries).encode("gb18030"))
    return chance.sample(words, PRESSES)


class Bench:
    def __init__(self, player, folder):
        self.player, self.folder = player, folder
        self.missed = False

    def timed(self, command, script=""):
        started = time.perf_counter()
        done = subprocess.run(command, input=script.encode(), stdout=subprocess.DEVNULL)
        seconds = time.perf_counter() - started
        if done.returncode:
            sys.exit(f"failed: {command[0]}")
        return seconds

    def ours(self, script):
        return self.timed([self.player, "--install", self.folder, "-"], script)

    def iconv(self, name):
        return self.timed(["iconv", "-f", "GB18030", "-t", "UTF-32LE", self.folder / name])

    def row(self, what, ours, peer, goal):
        ratio = ours / peer
        self.missed = self.missed or ratio > goal
        print(f"{what:52}{ours:10.4f} s{peer:10.4f} s{ratio:8.2f}" + ("" if ratio <= goal else "   goal missed"))

    def beside_iconv(self, what, script, name, goal):
        turns = [(self.ours(OPEN.format(self.folder / name) + script), self.iconv(name)) for _ in range(REPEATS)]
        self.row(what, min(turn[0] for turn in turns), min(turn[1] for turn in turns), goal)

    def beside_a_part(self, what, script, whole, part):
        """A text beside as many texts of a part of its size, each opened anew."""
        scripts = [OPEN.format(file) + script for file in (whole, part)]
        turns = [[self.ours(each) for each in scripts] for _ in range(REPEATS)]
        self.row(what, min(turn[0] for turn in turns), PARTS * min(turn[1] for turn in turns), LINEAR_GOAL)

    def each_press(self, what, loaded, presses):
        """Seconds that one of the presses adds, beside the goal."""
        turns = [(self.ours(loaded + "".join(presses)), self.ours(loaded)) for _ in range(REPEATS)]
        added = min(turn[0] for turn in turns) - min(turn[1] for turn in turns)
        self.row(what, added / len(presses), LOOKUP_GOAL, 1.0)


def repeated_letter(bench, folder):
    whole, part, many = folder / "whole.txt", folder / "part.txt", "a" * 10_000
    whole.write_bytes(b"a" * REPEATED)
    part.write_bytes(b"a" * (REPEATED // PARTS))
    print(f"one letter {REPEATED:,} times beside {PARTS} x {REPEATED // PARTS:,}")
    bench.beside_a_part("  each a hit", QUERY.format("a", "数目"), whole, part)
    bench.beside_a_part("  query of 10,000 letters", QUERY.format(many, "数目"), whole, part)
    bench.beside_a_part("  separator of 10,000 letters", QUERY.format("a", many), whole, part)
    bench.beside_a_part("  each a sentence hit", SENTENCES.format("a"), whole, part)
    bench.beside_a_part("  marking on one page", MARKING, whole, part)


def lookups(bench, folder):
    english = "the a of which is used in or from with and by to kind made small large old plant animal one who"
    letters = "abcdefghijklmnopqrstuvwxyz"
    words = write_dictionary(folder / "牛津字典A.TXT", "a", letters, english)
    loaded = "click Option2\n" + LOOKUP.format("again")
    bench.each_press("English lookup, first press of a word", loaded, [LOOKUP.format(word) for word in words])
    walk = ["click Command1(2)\n"] * PRESSES
    bench.each_press("English lookup, the next entry by \"→\"", loaded + LOOKUP.format("a"), walk)

    common = "的一是在不了有和人这中大为上个国我以要他时来用们生到作地于出就分对成会可主发年动"
    explained = " ".join(common[i : i + 3] for i in range(0, 36, 3))
    words = write_dictionary(folder / "牛津字典hY.TXT", "中", common, explained)
    loaded = "click Option2\n" + LOOKUP.format("中")
    bench.each_press("Chinese word in the English dictionary", loaded, [LOOKUP.format(word) for word in words])
    bench.each_press("Chinese character that stands everywhere", loaded, [LOOKUP.format("的"), LOOKUP.format("一")] * 10)


def main(arguments):
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        bench = Bench(pathlib.Path(arguments[0]).resolve() / "tarvik-play", folder)
        write_prose(folder / "prose.txt")
        print(f"{'what':52}{'ours':>12}{'peer':>12}{'ratio':>8}")
        bench.beside_iconv("opening 50 MB of prose", "", "prose.txt", QUERY_GOAL)
        bench.beside_iconv("opening and a query with 1,000 hits",
                           QUERY.format(NEEDLE, "。\\r\\n") + EXPECT_HITS.format(HITS), "prose.txt", QUERY_GOAL)
        bench.beside_iconv("opening and a sentence query with 1,000 hits",
                           SENTENCES.format(NEEDLE) + EXPECT_HITS.format(HITS), "prose.txt", QUERY_GOAL)
        repeated_letter(bench, folder)
        lookups(bench, folder)
    return 1 if bench.missed else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
