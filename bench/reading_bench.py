#!/usr/bin/python3
"""Documents and dictionaries: opening with a query beside iconv, dictionary lookups, and a text made to be slow.

    reading_bench.py INSTALLATION        the folder of tarvik-play

Every figure is the best of a few runs; the two sides take turns. A lookup is told as what it adds to a run
of the player that has looked something up in the same file before. Ends with status 1 when a goal is missed.
"""

import pathlib
import random
import sys
import tempfile

from measure import Goals, in_turn, played, timed

REPEATS, PRESSES = 3, 20
PROSE_BYTES, DICTIONARY_BYTES = 50_000_000, 15_000_000
REPEATED, PARTS, LINEAR_GOAL = 10_000_000, 4, 1.5
HITS, NEEDLE = 1000, "金丝雀"
LOOKUP_GOAL_MS = 50.0
QUERY_GOAL = 1 / 0.8  # times as fast as iconv alone

OPEN = "file {}\nclick Command1(0)\n"
QUERY = 'set Text1(1) "{}"\nset Text1(2) "{}"\nreply yes\nclick Command1(1)\n'
EXPECT_HITS = "expect resultcount {}\n"
SENTENCES = 'click Option3\nset Text1(1) "{}"\nclick Command1(1)\n'
MARKING = f'set Text1(5) {2 * REPEATED}\nclick Command2(0)\nset Text1(1) "a"\nclick Command2(8)\n'
LOOKUP = 'set Text1(1) "{}"\nclick Command1(1)\n'


def write_prose(path, wanted=PROSE_BYTES):
    """Paragraphs of common characters, with the needle once in every so many of them."""
    chance = random.Random(1)
    common = [chr(code) for code in chance.sample(range(0x4E00, 0x9FA5), 3000) if chr(code) not in NEEDLE]
    common = [character for character in common if len(character.encode("gb18030")) == 2]
    paragraphs = []
    for _ in range(1000):
        words = "".join(chance.choices(common, k=chance.randrange(40, 200)))
        paragraphs.append("，".join(words[i : i + 11] for i in range(0, len(words), 11)) + "。\r\n")
    size, text = 0, []
    while size < wanted:
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
        self.goals = Goals()

    def ours(self, script):
        return played(self.player, self.folder, script)

    def beside_iconv(self, what, script, name):
        words = ["iconv", "-f", "GB18030", "-t", "UTF-32LE", self.folder / name]
        ours, iconv = in_turn(REPEATS, lambda _: self.ours(OPEN.format(self.folder / name) + script),
                              lambda _: timed(words))
        self.goals.faster(what, ours, "iconv", iconv, QUERY_GOAL)

    def beside_a_part(self, what, script, whole, part):
        """A text beside as many texts of a part of its size, each opened anew."""
        of_whole, of_part = in_turn(REPEATS, *(lambda _, file=file: self.ours(OPEN.format(file) + script)
                                               for file in (whole, part)))
        self.goals.at_most(f"one letter {REPEATED:,} times beside {PARTS} quarters of it, {what}",
                           of_whole.seconds / (PARTS * of_part.seconds), LINEAR_GOAL, "times as long")

    def each_press(self, what, loaded, presses):
        """What one of the presses adds."""
        all_pressed, none = in_turn(REPEATS, lambda _: self.ours(loaded + "".join(presses)), lambda _: self.ours(loaded))
        self.goals.at_most(what, 1000 * (all_pressed.seconds - none.seconds) / len(presses), LOOKUP_GOAL_MS, "ms")


def repeated_letter(bench, folder):
    whole, part, many = folder / "whole.txt", folder / "part.txt", "a" * 10_000
    whole.write_bytes(b"a" * REPEATED)
    part.write_bytes(b"a" * (REPEATED // PARTS))
    bench.beside_a_part("each a hit", QUERY.format("a", "数目"), whole, part)
    bench.beside_a_part("query of 10,000 letters", QUERY.format(many, "数目"), whole, part)
    bench.beside_a_part("separator of 10,000 letters", QUERY.format("a", many), whole, part)
    bench.beside_a_part("each a sentence hit", SENTENCES.format("a"), whole, part)
    bench.beside_a_part("marking on one page", MARKING, whole, part)


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


def main(built):
    with tempfile.TemporaryDirectory(prefix="reading_bench", dir=built) as name:
        folder = pathlib.Path(name)
        bench = Bench(built / "tarvik-play", folder)
        write_prose(folder / "prose.txt")
        bench.beside_iconv("opening 50 MB of prose", "", "prose.txt")
        bench.beside_iconv("opening and a query with 1,000 hits",
                           QUERY.format(NEEDLE, "。\\r\\n") + EXPECT_HITS.format(HITS), "prose.txt")
        bench.beside_iconv("opening and a sentence query with 1,000 hits",
                           SENTENCES.format(NEEDLE) + EXPECT_HITS.format(HITS), "prose.txt")
        repeated_letter(bench, folder)
        lookups(bench, folder)
    return bench.goals.status()


if __name__ == "__main__":
    sys.exit(main(pathlib.Path(sys.argv[1]).resolve()))
