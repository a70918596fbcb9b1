"""What the benchmarks share: a process with its time and memory, the peers, and figures beside their goals."""

import collections
import json
import os
import pathlib
import subprocess
import sys
import time

SYSTEM_PYTHON = "/usr/bin/python3"  # the one that Debian's packages serve
HERE = pathlib.Path(__file__).parent

# Seconds by the clock, by the processor, of the clock's in flushing, of the processor's in the kernel; 0 where they are
# not known.
Spent = collections.namedtuple("Spent", "seconds cpu peak_mb flushing kernel", defaults=(0.0, 0.0, 0.0, 0.0))


def timed(words, text="", stdout=subprocess.DEVNULL, env=None):
    """Runs a process that reads the text. Its peak is never less than this process's own, so keep that small."""
    started = time.perf_counter()
    process = subprocess.Popen(words, stdin=subprocess.PIPE, stdout=stdout, env=env)
    process.stdin.write(text.encode())
    process.stdin.close()
    _, status, usage = os.wait4(process.pid, 0)
    seconds = time.perf_counter() - started
    process.returncode = os.waitstatus_to_exitcode(status)
    if process.returncode:
        sys.exit(f"failed: {' '.join(map(str, words))}")
    return Spent(seconds, usage.ru_utime + usage.ru_stime, usage.ru_maxrss / 1024, 0.0, usage.ru_stime)


def player_words(player, installation, drive=None):
    drives = [] if drive is None else ["--drive", f"d={drive}"]
    return [player, "--install", installation, *drives, "-"]


def played(player, installation, script, drive=None):
    """One run of the player from start to end of the process; drive d, where one is given, is made first."""
    if drive is not None:
        drive.mkdir(exist_ok=True)
    return timed(player_words(player, installation, drive), script)


def played_stretch(player, installation, before, action):
    """The last actions of a script alone, in a session that has come so far."""
    process = subprocess.Popen(player_words(player, installation), stdin=subprocess.PIPE, stdout=subprocess.PIPE)
    process.stdin.write(f'{before}\nsay "begin"\n{action}\nsay "end"\n'.encode())
    process.stdin.close()
    seen = {line: time.perf_counter() for line in process.stdout}
    if process.wait():
        sys.exit("the player failed")
    return Spent(seen[b"end\n"] - seen[b"begin\n"])


def best(spent):
    """The least times of several runs and their highest peak."""
    seconds, cpu, peaks, flushing, kernel = zip(*spent)
    return Spent(min(seconds), min(cpu), max(peaks), min(flushing), min(kernel))


def in_turn(repeats, *runs):
    """The best of each of some runs that take turns; each is told the turn's number."""
    return map(best, zip(*[[run(turn) for run in runs] for turn in range(repeats)]))


def peer(script, *arguments):
    """What a peer tells of its own work; the start of its interpreter is not held against it."""
    told = subprocess.run([SYSTEM_PYTHON, HERE / script, *map(str, arguments)], check=True, capture_output=True,
                          text=True).stdout
    seconds, flushing, cpu = map(float, told.split()[-3:])
    return Spent(seconds, cpu, 0.0, flushing)


def with_flushing(ours, folder, scratch):
    """Our time with what the flushing takes of it, of each file and of the folder that it is renamed in: the same
    files saved with and without."""
    contents = [path.read_bytes() for path in sorted(folder.rglob("*.*")) if path.is_file()]
    times = []
    scratch.mkdir()
    for flush in (False, True):
        started = time.perf_counter()
        for number, content in enumerate(contents):
            with open(scratch / "new", "wb") as file:
                file.write(content)
                if flush:
                    file.flush()
                    os.fsync(file.fileno())
            os.replace(scratch / "new", scratch / f"{flush}{number}")
            if flush:
                opened = os.open(scratch, os.O_RDONLY)
                os.fsync(opened)
                os.close(opened)
        times.append(time.perf_counter() - started)
    return ours._replace(flushing=max(0.0, times[1] - times[0]))


def record(**entry):
    """Keeps an entry for the report, where the surroundings ask for one."""
    if os.environ.get("TARVIK_FIGURES"):
        with open(os.environ["TARVIK_FIGURES"], "a", encoding="utf-8") as file:
            file.write(json.dumps(entry, ensure_ascii=False) + "\n")


def side(name, spent):
    flushing = f"{spent.flushing:9.2f} s of it flushing" if spent.flushing else ""
    print(f"    {name:14}{spent.seconds:9.3f} s{flushing}")


class Goals:
    """Prints figures beside their goals and remembers whether one was missed."""

    def __init__(self):
        self.missed = False

    def faster(self, what, ours, name, theirs, goal):
        """How many times as fast as a peer; by processor time too, which a busy machine blurs less."""
        ratio = theirs.seconds / ours.seconds
        by_cpu = theirs.cpu / ours.cpu if ours.cpu and theirs.cpu else None
        print(f"{what}: {ratio:.2f} times as fast as {name}"
              f"{'' if by_cpu is None else f', {by_cpu:.2f} by processor time'} (goal {goal:g}){self._held(ratio >= goal)}")
        side("ours", ours)
        side(name, theirs)
        record(kind="ratio", what=what, ours=ours.seconds, peer=name, theirs=theirs.seconds, ratio=ratio, cpu=by_cpu,
               goal=goal)

    def at_most(self, what, figure, goal, unit):
        print(f"{what}: {figure:.3g} {unit} (goal at most {goal:g}){self._held(figure <= goal)}", flush=True)
        record(kind="figure", what=what, figure=figure, goal=goal, unit=unit)

    def must(self, holds, otherwise):
        """What both sides made must be the same, or the figures say nothing."""
        if not holds:
            print(otherwise, flush=True)
            self.missed = True

    def status(self):
        return 1 if self.missed else 0

    def _held(self, met):
        self.missed = self.missed or not met
        return "" if met else "   goal missed"
