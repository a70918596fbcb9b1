#!/usr/bin/python3
"""The view of 300,000 rows copied in the window, and pasted by another program, on a screen of its own; and as many
rows, and a text of over 50 MB, of another program pasted into the window's boxes.

    copy_bench.py INSTALLATION        the folder of the window

Tells the seconds from the key until the clipboard is the window's, the seconds until another program has got the text,
the seconds until a box shows what was pasted, and the memory that the window takes at most, as a ratio to the bytes that
are handed over. What must stay within the goal is the work of the window, the X server and the other program together,
which is the time that passes where nothing else works on the machine; the time that did pass stands beside it. Ends with
status 1 when a goal is missed.
"""

import ctypes
import os
import pathlib
import random
import resource
import shutil
import subprocess
import sys
import tempfile
import time

ROWS = 300_000
COPY_GOAL, PASTE_GOAL = 1.0, 1.0  # seconds
MEMORY_GOAL = 2.0  # of a copy
LARGE_TEXT, LARGE_GOAL = 50_000_000, 3.0  # bytes, seconds
TURNS = 3  # of which the fastest counts
STEP, PATIENCE, QUIET_STEPS = 0.005, 60, 40  # seconds, seconds, steps


def wait_for(what, condition):
    """Waits for the effect of a step; gives what the condition gives."""
    end = time.monotonic() + PATIENCE
    while not (result := condition()):
        if time.monotonic() > end:
            sys.exit(f"in vain: {what}")
        time.sleep(STEP)
    return result


def write_rows(path):
    chance = random.Random(1)
    lines = ["序号\t物料\t机型\t日期\t备注\r\n"]
    for row in range(ROWS):
        date = f"2024-{chance.randrange(1, 13):02d}-{chance.randrange(1, 29):02d}"
        lines.append(f"{row}\tyq-{chance.randrange(10**6):06d}\t光模块{chance.randrange(99)}\t{date}\t已修复 ok\r\n")
    path.write_bytes("".join(lines).encode("gb18030"))


def xdotool(*words):
    return subprocess.run(["xdotool", *words], stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True).stdout.split()


class Clipboard:
    """Who holds the clipboard of the screen."""

    def __init__(self):
        self.x11 = ctypes.CDLL("libX11.so.6")
        self.x11.XOpenDisplay.restype = ctypes.c_void_p
        self.x11.XInternAtom.restype = self.x11.XGetSelectionOwner.restype = ctypes.c_ulong
        self.screen = ctypes.c_void_p(self.x11.XOpenDisplay(None))
        self.atom = ctypes.c_ulong(self.x11.XInternAtom(self.screen, b"CLIPBOARD", 0))

    def owner(self):
        return self.x11.XGetSelectionOwner(self.screen, self.atom)

    def empty(self):
        self.x11.XSetSelectionOwner(self.screen, self.atom, ctypes.c_ulong(0), ctypes.c_ulong(0))
        self.x11.XSync(self.screen, 0)


def processor_ticks(process):
    fields = pathlib.Path(f"/proc/{process.pid}/stat").read_text().rsplit(")", 1)[1].split()
    return int(fields[11]) + int(fields[12])


class Window:
    def __init__(self, program, folder, server):
        self.folder = folder
        self.server = server
        self.process = subprocess.Popen([program], cwd=folder)
        wait_for("the window", lambda: xdotool("search", "--onlyvisible", "--name", "^Tarvik"))
        self.settle()  # it has grown
        (self.main,) = xdotool("search", "--onlyvisible", "--name", "^Tarvik")
        xdotool("windowfocus", self.main)
        wait_for("the focus", self.has_focus)

    def has_focus(self):
        return xdotool("getwindowfocus") == [self.main]

    def keys(self, *keys):
        xdotool("key", *keys)

    def wait_for_end(self, name, text):
        """Waits until a scratch file ends in a line that holds the text."""
        path = self.folder / name
        wait_for(name, lambda: path.exists() and text in path.read_bytes()[-2000:])

    def memory(self, field):
        for line in pathlib.Path(f"/proc/{self.process.pid}/status").read_text().splitlines():
            if line.startswith(field):
                return int(line.split()[1]) * 1024
        raise LookupError(field)

    def settle(self):
        """Waits until the window has had nothing to do for a while; gives the time when it had last."""
        before, quiet, last = None, 0, time.perf_counter()
        while quiet < QUIET_STEPS:
            time.sleep(STEP)
            now = processor_ticks(self.process)
            if now != before:
                last = time.perf_counter()
            quiet = quiet + 1 if now == before else 0
            before = now
        return last

    def work_seconds(self):
        others = resource.getrusage(resource.RUSAGE_CHILDREN)  # those that have ended
        return ((processor_ticks(self.process) + processor_ticks(self.server)) / os.sysconf("SC_CLK_TCK") +
                others.ru_utime + others.ru_stime)

    def watch(self, work):
        """Gives the seconds of work and of time, both the fastest of several turns, and the bytes that the window took
        at most."""
        turns = []
        for _ in range(TURNS):
            self.settle()
            pathlib.Path(f"/proc/{self.process.pid}/clear_refs").write_text("5")  # the peak counts from here
            taken, worked, start = self.memory("VmRSS"), self.work_seconds(), time.perf_counter()
            end = work() or time.perf_counter()
            passed = end - start
            self.settle()
            turns.append((self.work_seconds() - worked, passed, self.memory("VmHWM") - taken))
        return min(turn[0] for turn in turns), min(turn[1] for turn in turns), max(turn[2] for turn in turns)


def show_rows(window):
    """Brings the window to the view of all rows, with the keys going to its pane and everything selected."""
    last = str(ROWS - 1).encode()
    xdotool("type", "ok")
    window.keys("Escape")
    window.wait_for_end("betweenp.txt", last + b"\t")
    wait_for("the message", lambda: not window.has_focus())
    window.keys("Return")
    wait_for("the message's end", window.has_focus)
    window.keys("q")
    window.wait_for_end("betweenpq.txt", b"suf(" + last + b",")
    window.keys("F6", "ctrl+a")


def paste_here(window, clipboard, give, path):
    """Another program's text, pasted over what stands in the box that has the keys, in the next, and in the pane."""
    clipboard.empty()
    giver = subprocess.Popen([give, path])
    wait_for("another program's copy", clipboard.owner)

    def paste():
        window.keys("ctrl+v")
        return window.settle()

    results = {}
    try:
        for where, keys in {"the query box": [], "the number box": ["Tab"], "the pane": ["F6", "F6"]}.items():
            for key in [*keys, "ctrl+a"]:
                window.keys(key)
            results[where] = window.watch(paste)
    finally:
        giver.terminate()
        giver.wait()
    window.keys("F6")
    return results


def run(installation, folder, server):
    shutil.copy(installation / "tarvik", folder)
    write_rows(folder / "coclus.txt")
    taken = ""
    window = Window(folder / "tarvik", folder, server)
    clipboard = Clipboard()

    def copy():
        clipboard.empty()
        window.keys("ctrl+c")
        wait_for("the copy", clipboard.owner)

    def paste():
        nonlocal taken
        taken = subprocess.run([installation.parent / "bin" / "clipboard-take"], check=True, stdout=subprocess.PIPE,
                               text=True).stdout

    try:
        show_rows(window)
        results = {"copied": (COPY_GOAL, *window.watch(copy)), "pasted elsewhere": (PASTE_GOAL, *window.watch(paste))}
        size = int(taken)
        window.keys("F6")
        text = pathlib.Path(folder / "coclus.txt").read_text("gb18030")
        pasted = {}
        rows = text.replace("\r\n", "\n").encode()
        large = rows * (LARGE_TEXT // len(rows) + 1)
        path = folder / "pasted.txt"
        for name, goal, content in ((f"{ROWS:,} rows", PASTE_GOAL, rows), ("a large text", LARGE_GOAL, large)):
            path.write_bytes(content)
            pasted[name, goal, len(content)] = paste_here(window, clipboard,
                                                          installation.parent / "bin" / "clipboard-give", path)
    finally:
        window.process.kill()
        window.process.wait()
    if size < ROWS * 50:
        sys.exit(f"copied only {size} bytes")
    print(f"{ROWS:,} rows, {size / 1e6:.1f} MB in UTF-8; the fastest of {TURNS}")
    print(f"{'':18}{'seconds of work':>16}{'goal':>6}{'passed':>8}{'memory':>10}{'ratio':>8}{'goal':>6}")
    missed = False
    for what, (goal, seconds, passed, memory) in results.items():
        missed = missed or seconds > goal or memory / size > MEMORY_GOAL
        print(f"{what:18}{seconds:>16.2f}{goal:>6.1f}{passed:>8.2f}{memory / 1e6:>7.1f} MB{memory / size:>8.2f}"
              f"{MEMORY_GOAL:>6.1f}")
    for (name, goal, size), boxes in pasted.items():
        print(f"{name}, {size / 1e6:.1f} MB in UTF-8, pasted from another program")
        for where, (seconds, passed, memory) in boxes.items():
            missed = missed or seconds > goal
            print(f"{where:18}{seconds:>16.2f}{goal:>6.1f}{passed:>8.2f}{memory / 1e6:>7.1f} MB"
                  f"{memory / size:>8.2f}")
    return 1 if missed else 0


def open_screen():
    """Starts an X server. Servers that start at the same time can take each other's number: such a one is started anew."""
    for _ in range(TURNS):
        reading, writing = os.pipe()
        server = subprocess.Popen(["Xvfb", "-displayfd", str(writing), "-screen", "0", "1280x720x24", "-nolisten", "tcp",
                                   "-noreset"], pass_fds=[writing], stderr=subprocess.DEVNULL)
        os.close(writing)
        with os.fdopen(reading) as number:  # to its line's end: the server dies where nobody reads that
            os.environ["DISPLAY"] = ":" + number.readline().strip()
        if xdotool("getmouselocation"):
            return server
        server.terminate()
        server.wait()
    sys.exit("no screen")


def main(arguments):
    installation = pathlib.Path(arguments[0]).resolve()
    if not (installation / "tarvik").exists():
        print("no window was built here")
        return 0
    with tempfile.TemporaryDirectory() as name:
        os.environ.update(HOME=name, QT_QPA_PLATFORM="xcb", XDG_RUNTIME_DIR=name)
        server = open_screen()
        try:
            return run(installation, pathlib.Path(name), server)
        finally:
            server.terminate()
            server.wait()


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
