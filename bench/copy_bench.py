#!/usr/bin/python3
"""The view of 300,000 rows copied in the window, and pasted by another program, on a screen of its own.

    copy_bench.py INSTALLATION        the folder of the window

Tells the seconds until the window is idle again, and the memory that it takes at most, as a ratio to the bytes that the
other program gets. Ends with status 1 when a goal is missed.
"""

import os
import pathlib
import random
import shutil
import subprocess
import sys
import tempfile
import time

ROWS = 300_000
COPY_GOAL, PASTE_GOAL = 1.0, 1.0  # seconds
MEMORY_GOAL = 2.0
STEP, QUIET_STEPS = 0.02, 10  # of waiting


def write_rows(path):
    chance = random.Random(1)
    lines = ["序号\t物料\t机型\t日期\t备注\r\n"]
    for row in range(ROWS):
        date = f"2024-{chance.randrange(1, 13):02d}-{chance.randrange(1, 29):02d}"
        lines.append(f"{row}\tyq-{chance.randrange(10**6):06d}\t光模块{chance.randrange(99)}\t{date}\t已修复 ok\r\n")
    path.write_bytes("".join(lines).encode("gb18030"))


class Window:
    def __init__(self, program, folder):
        self.process = subprocess.Popen([program], cwd=folder)
        while subprocess.run(["xdotool", "search", "--onlyvisible", "--name", "^Tarvik"],
                             stdout=subprocess.DEVNULL).returncode:
            time.sleep(0.1)
        self.settle()

    def keys(self, *keys):
        subprocess.run(["xdotool", "key", *keys], check=True)

    def processor_seconds(self):
        fields = pathlib.Path(f"/proc/{self.process.pid}/stat").read_text().rsplit(")", 1)[1].split()
        return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")

    def memory(self, field):
        for line in pathlib.Path(f"/proc/{self.process.pid}/status").read_text().splitlines():
            if line.startswith(field):
                return int(line.split()[1]) * 1024
        raise LookupError(field)

    def settle(self):
        """Waits until the window has had nothing to do for a while; gives the moment when it began to rest."""
        before, quiet, rests = self.processor_seconds(), 0, time.perf_counter()
        while quiet < QUIET_STEPS:
            time.sleep(STEP)
            now = self.processor_seconds()
            quiet = quiet + 1 if now == before else 0
            if quiet == 0:
                rests = time.perf_counter()
            before = now
        return rests

    def watch(self, work):
        """Gives what `work` gives, the processor's seconds in the window, and the bytes that it took at most."""
        pathlib.Path(f"/proc/{self.process.pid}/clear_refs").write_text("5")  # the peak counts from here
        before, taken = self.processor_seconds(), self.memory("VmRSS")
        result = work()
        self.settle()
        return result, self.processor_seconds() - before, self.memory("VmHWM") - taken


def run(installation, folder):
    shutil.copy(installation / "tarvik", folder)
    write_rows(folder / "coclus.txt")
    window = Window(folder / "tarvik", folder)
    try:
        subprocess.run(["xdotool", "search", "--name", "^Tarvik", "windowfocus"], check=True)
        subprocess.run(["xdotool", "type", "ok"], check=True)
        for keys in (["Escape"], ["Return"], ["q"], ["F6"], ["ctrl+a"]):
            window.keys(*keys)
            window.settle()
        _, copy_seconds, copy_bytes = window.watch(lambda: window.keys("ctrl+c"))
        taken, paste_seconds, paste_bytes = window.watch(
            lambda: subprocess.run([installation.parent / "bin" / "clipboard-take"], check=True, capture_output=True, text=True).stdout)
    finally:
        window.process.kill()
        window.process.wait()
    size = int(taken.split()[0])
    if size < ROWS * 50:
        sys.exit(f"copied only {size} bytes")
    print(f"{ROWS:,} rows, {size / 1e6:.1f} MB in UTF-8, taken within {taken.split()[1]} s")
    print(f"{'':24}{'seconds':>10}{'goal':>8}{'memory':>10}{'ratio':>8}{'goal':>8}")
    missed = False
    for what, seconds, goal, taken_bytes in (("copied", copy_seconds, COPY_GOAL, copy_bytes),
                                             ("pasted elsewhere", paste_seconds, PASTE_GOAL, paste_bytes)):
        ratio = taken_bytes / size
        missed = missed or seconds > goal or ratio > MEMORY_GOAL
        print(f"{what:24}{seconds:>10.2f}{goal:>8.1f}{taken_bytes / 1e6:>7.1f} MB{ratio:>8.2f}{MEMORY_GOAL:>8.1f}")
    return 1 if missed else 0


def main(arguments):
    installation = pathlib.Path(arguments[0]).resolve()
    if not (installation / "tarvik").exists():
        print("no window was built here")
        return 0
    with tempfile.TemporaryDirectory() as name:
        reading, writing = os.pipe()
        server = subprocess.Popen(["Xvfb", "-displayfd", str(writing), "-screen", "0", "1280x720x24", "-nolisten", "tcp"],
                                  pass_fds=[writing], stderr=subprocess.DEVNULL)
        os.environ.update(DISPLAY=":" + os.read(reading, 20).decode().strip(), HOME=name, QT_QPA_PLATFORM="xcb",
                          XDG_RUNTIME_DIR=name)
        try:
            return run(installation, pathlib.Path(name))
        finally:
            server.terminate()
            server.wait()


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
