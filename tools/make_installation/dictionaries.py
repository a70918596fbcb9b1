#!/usr/bin/python3
"""Makes the dictionary files of installation/ from the texts in dictionaries/ and looks every head word up in them.

A lookup takes a word only near the end of the entry before, so each file opens with a title that counts as an entry.
"""

import dataclasses
import pathlib
import re
import string
import sys

SOURCES = pathlib.Path(__file__).parent / "dictionaries"
LINE_END = "\r\n"


@dataclasses.dataclass(frozen=True)
class Layout:
    """How a lookup reads one kind of file; the figures are characters."""

    end: str
    first_position: int  # counted from 1; a match before it isn't taken
    window: int
    start_offset: int
    trims_window: bool
    folds_case: bool


CHINESE = Layout("。" + LINE_END, 12, 10, 10, True, False)
LETTER = Layout("." + LINE_END, 36, 35, 32, True, True)
CHINESE_ENGLISH = Layout("." + LINE_END, 250, 249, 250, False, False)


def look_up(text, word, layout):
    """The entries that a lookup of the word gives, cut from the file's text."""
    found = []
    searched = text.lower() if layout.folds_case else text
    start = searched.find(word)
    while start >= 0:
        window = text[max(0, start - layout.window):start]
        if layout.trims_window:
            window = window.rstrip(" ")
        mark = window.find(layout.end) + 1
        taken = mark or "?" + LINE_END in window or "!" + LINE_END in window
        if start + 1 >= layout.first_position and taken:
            length = text[start:start + 10000].find(layout.end) + 1
            back = layout.start_offset - mark
            if length:
                found.append(text[start - back:start + length])
        start = searched.find(word, start + 1)
    return found


def source_rows(name, fields):
    for line in (SOURCES / name).read_text(encoding="utf-8").splitlines():
        if line and not line.startswith("#"):
            row = line.split("|")
            assert len(row) == fields and all(row), line
            yield row


def make_chinese():
    title = f"现代汉语小词典：输入词语，按“查寻”；同一个词再按一次，看下一条{CHINESE.end}"
    heads, entries = [], []
    for word, reading, meaning, example in source_rows("chinese.txt", 4):
        heads.append(word)
        entries.append(f"{word}　{reading}{LINE_END}{meaning}{LINE_END}　　例：{example}。{LINE_END}")
    return title + "".join(entries), heads, [LINE_END + entry[:-2] for entry in entries]


def make_letters():
    files = {}
    for word, kind, meaning, chinese, example in source_rows("english.txt", 5):
        title = f" {word[0].upper()}    English-Chinese word list for the desk of a repair department{LETTER.end}"
        text, heads, entries = files.setdefault(word[0].upper(), (title, [], []))
        # The shown entry begins with the second blank, so that its head is not at the very first place, which stays unmarked.
        entry = f"  {word}  {kind} {meaning}{LINE_END}   {chinese}{LINE_END}   {example}{LETTER.end}"
        heads.append(word)
        entries.append(entry[1:-2])
        files[word[0].upper()] = text + entry, heads, entries
    assert sorted(files) == list(string.ascii_uppercase)
    return files


def make_chinese_english():
    title = LINE_END.join([
        " 汉英小词典", " 说明：～代表词头；词头后面先列词性和英文释义，再列常用搭配，最后是例句",
        " 每个词条的前半部分都可以查到：输入一个汉字词，凡在这一部分出现它的词条都会依次显示",
        " Chinese-English word list for the desk of a repair department",
        " Each entry gives the reading, the parts of speech, common phrases and a few sentences in both languages",
        " Press the button once more for the next entry that holds the word" + CHINESE_ENGLISH.end])
    blocks = (SOURCES / "chinese_english.txt").read_text(encoding="utf-8").strip().split("\n\n")
    blocks = [block for block in blocks if not block.startswith("#")]
    heads = [re.match(r"\S+", block)[0] for block in blocks]
    entries = [block.replace("\n", LINE_END) + LINE_END for block in blocks]
    return title + "".join(entries), heads, ["." + LINE_END + entry[:-2] for entry in entries]


def check(name, text, heads, entries, layout):
    """Each head word gives its own entries, whole, once and in the order of the file.

    Beside them a lookup gives the entries whose longer head holds the word; in the Chinese-English file it also gives
    those that hold the word somewhere near their beginning.
    """
    trouble = []
    for word in dict.fromkeys(heads):
        own = [entry for head, entry in zip(heads, entries) if head == word]
        found = look_up(text, word, layout)
        longer = [entry for head, entry in zip(heads, entries) if head != word and word in head]
        strangers = [entry for entry in found if entry not in own and entry not in longer]
        if [entry for entry in found if entry in own] != own or (strangers and layout is not CHINESE_ENGLISH):
            trouble.append(f"{name}: {word}: {found}")
    return trouble


def main(folder):
    made = {"现代汉语词典.txt": (*make_chinese(), CHINESE), "牛津字典hY.TXT": (*make_chinese_english(), CHINESE_ENGLISH)}
    made |= {f"牛津字典{letter}.TXT": (*parts, LETTER) for letter, parts in make_letters().items()}
    trouble = [line for name, parts in made.items() for line in check(name, *parts)]
    if trouble:
        sys.exit("\n".join(trouble))
    for name, (text, *_) in made.items():
        (folder / name).write_bytes(text.encode("gb18030"))
    print(len(made), "files,", sum(len(parts[1]) for parts in made.values()), "entries")


if __name__ == "__main__":
    main(pathlib.Path(sys.argv[1]))
