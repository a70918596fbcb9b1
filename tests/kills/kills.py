#!/usr/bin/env python3
"""Kills the player while it writes and looks at what is left.

After each kill every file that a save had begun on holds what it held before or what a save put in its place, whole;
nothing else in the folders has changed, scratch files aside; and the same script played again leaves what it leaves
when nothing disturbs it, byte for byte, with no leftover of the killed run. What has come out of the printer stays out
of this: a sheet that a kill has spoiled is printed again.

usage: kills.py PLAYER SHIM INSTALLATION SCRIPTS [--every] [--random N] [--some N] [--seed N]
  --every     kill right before and right after every flush and every rename of every script
  --some N    kill at N of these moments, spread over the scripts
  --random N  kill at N moments of time, spread over the scripts
"""

import argparse
import os
import pathlib
import random
import shutil
import subprocess
import sys
import tempfile
import time

RUNS = ["docket", "bendocket", "dockword", "testsesameA", "order", "prices", "save", "print"]
BEFORE = {"print": "docket"}  # a script that works on the files of another
APART = {"print"}  # a script whose folders are file systems of their own
PRINTED = "printed"
CLOCK = "2024-03-01 09:05:07"


def is_leftover(name):
    base = os.path.basename(name)
    return base.startswith(".tarvik-") and base.endswith(".tmp") or name.startswith("tmp/")


def snapshot(root):
    return {
        str(path.relative_to(root)): path.read_bytes()
        for path in sorted(root.rglob("*"))
        if path.is_file() and not path.is_symlink() and not path.is_relative_to(root / PRINTED)
    }


class Run:
    """One script, with what it does when nothing disturbs it."""

    def __init__(self, options, script, work):
        self.options, self.script, self.work = options, script, work
        self.before = work / "before"
        for folder in ("d", "tmp", PRINTED):
            (self.before / folder).mkdir(parents=True)
        shutil.copytree(options.installation, self.before / "installation", ignore=shutil.ignore_patterns("tarvik*"))
        log = work / "log"
        log.mkdir()
        if script.stem in BEFORE:
            self.play_undisturbed(self.before, options.scripts / f"{BEFORE[script.stem]}.play")
        root = self.fresh()
        started = time.monotonic()
        self.play_undisturbed(root, script, log)
        self.seconds = time.monotonic() - started
        if script.stem in BEFORE and not any((root / PRINTED).iterdir()):
            sys.exit(f"{script.name}: nothing came out of the printer")
        self.old, self.new = snapshot(self.before), snapshot(root)
        self.moments = int((log / "moments").read_text()) if (log / "moments").exists() else 0
        if self.moments == 0:
            sys.exit(f"{script.name}: it flushed and renamed nothing; the shim is not loaded")
        self.versions = {}
        for number, target in enumerate((log / "targets").read_text().splitlines(), 1):
            name = os.path.relpath(target, root)
            self.versions.setdefault(name, set()).add((log / str(number)).read_bytes())
        # What is written in place is a text of the installation folder: notes that a report gets at its end, and scratch
        # files, which only the program reads.
        in_place = {name for name, data in self.new.items() if self.old.get(name) != data and name not in self.versions}
        self.noted = {name for name in in_place if name in self.old and self.new[name].startswith(self.old[name])}
        self.scratch = in_place - self.noted
        for name in self.scratch:
            folder, _, shipped = name.partition("/")
            if folder != "installation" or not name.lower().endswith(".txt") or (options.installation / shipped).exists():
                sys.exit(f"{script.name}: {name} is no scratch file, yet it is written in place")

    def fresh(self):
        root = self.work / "root"
        shutil.rmtree(root, ignore_errors=True)
        shutil.copytree(self.before, root)
        return root

    def start(self, root, environment, script=None):
        command = [self.options.player, "--install", root / "installation", "--drive", f"d={root}/d", "--clock", CLOCK,
                   "--print-to", root / PRINTED, script or self.script]
        return subprocess.Popen(command, env=dict(os.environ, TMPDIR=str(root / "tmp"), **environment),
                                stdout=subprocess.PIPE, stderr=subprocess.STDOUT)

    def play_undisturbed(self, root, script, log=None):
        status, told = self.play(root, script=script, log=log)
        if status != 0:
            sys.exit(f"{script.name}: undisturbed it ends with {status}\n{told}")

    def play(self, root, script=None, kill_at=0, log=None):
        environment = {"LD_PRELOAD": str(self.options.shim), "TARVIK_KILL_AT": str(kill_at)}
        if self.script.stem in APART:
            environment["TARVIK_KILL_APART"] = "1"
        # The sanitizers' library wants to be the first one.
        environment["ASAN_OPTIONS"] = os.environ.get("ASAN_OPTIONS", "") + ":verify_asan_link_order=0"
        if log:
            environment["TARVIK_KILL_LOG"] = str(log)
        process = self.start(root, environment, script)
        told, _ = process.communicate(timeout=300)
        return process.returncode, told.decode(errors="replace")

    def kill_at_moment(self, moment):
        root = self.fresh()
        status, _ = self.play(root, kill_at=moment)
        return [] if status == -9 else [f"was not killed but ended with {status}"], root

    def kill_after(self, seconds):
        root = self.fresh()
        process = self.start(root, {})
        time.sleep(seconds)
        process.kill()
        process.communicate()
        return [], root

    def is_noted(self, name, data):
        """Whether a text holds what it held and the same notes, once for each run."""
        if name not in self.noted or not data.startswith(self.old[name]):
            return False
        notes, added = self.new[name][len(self.old[name]):], data[len(self.old[name]):]
        return set(added.splitlines()) <= set(notes.splitlines())

    def check(self, faults, root):
        """What is wrong after a kill, and after the next run."""
        left = snapshot(root)
        for name, data in left.items():
            if name in self.scratch or is_leftover(name) or self.old.get(name) == data or self.is_noted(name, data):
                continue
            if data not in self.versions.get(name, ()):
                faults.append(f"{name} is neither an old nor a new file ({len(data)} bytes)")
        faults += [f"{name} is gone" for name, data in self.old.items()
                   if name not in left and (name in self.new or data not in left.values())]
        for path in [root / name for name in left if is_leftover(name)] + list(root.glob("tmp/*")):
            os.utime(path, (time.time() - 120,) * 2)  # as if the next run came later
        status, told = self.play(root)
        if status != 0:
            faults.append(f"the next run ends with {status}: {told[-400:]}")
        again = snapshot(root)
        for name in sorted(again.keys() | self.new.keys()):
            if again.get(name) != self.new.get(name) and not self.is_noted(name, again.get(name, b"")):
                faults.append(f"after the next run {name} is another than undisturbed")
        return faults


def choose(options, runs):
    """The kills: (run, how it is told, the kill itself)."""
    chance = random.Random(options.seed)
    moments = [(run, moment) for run in runs for moment in range(1, run.moments + 1)]
    if options.some:
        moments = [(run, chance.randint(1, run.moments)) for run in (runs * options.some)[:options.some]]
    elif not options.every:
        moments = []
    kills = [(run, f"moment {moment} of {run.moments}", lambda run=run, moment=moment: run.kill_at_moment(moment))
             for run, moment in moments]
    for run in (runs * options.random)[:options.random]:
        seconds = chance.uniform(0, run.seconds)
        kills.append((run, f"after {seconds:.3f} s", lambda run=run, seconds=seconds: run.kill_after(seconds)))
    return kills


def start_anew(options, folder):
    """A first start, which fills the user's own folder, under the shim, which breaks it off when a file gets its name
    before it is flushed."""
    programs, files = folder / "bin", folder / "share/tarvik/installation"
    programs.mkdir(parents=True)
    player = shutil.copy(options.player, programs)
    shutil.copytree(options.installation, files, ignore=shutil.ignore_patterns("tarvik*"))
    script = folder / "nothing.play"
    script.write_text("")
    environment = dict(os.environ, LD_PRELOAD=str(options.shim), XDG_DATA_HOME=str(folder / "own"))
    environment["ASAN_OPTIONS"] = os.environ.get("ASAN_OPTIONS", "") + ":verify_asan_link_order=0"
    done = subprocess.run([player, script], env=environment, capture_output=True, timeout=300)
    filled = sum(1 for path in (folder / "own").rglob("*") if path.is_file())
    if done.returncode != 0 or filled < sum(1 for path in files.rglob("*") if path.is_file()):
        sys.exit(f"first start: status {done.returncode}, {filled} files\n{done.stderr.decode(errors='replace')}")


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    for name in ("player", "shim", "installation", "scripts"):
        parser.add_argument(name, type=lambda text: pathlib.Path(text).resolve())
    parser.add_argument("--every", action="store_true")
    for name, value in (("random", 0), ("some", 0), ("seed", 1)):
        parser.add_argument(f"--{name}", type=int, default=value)
    options = parser.parse_args()
    own = pathlib.Path(__file__).resolve().parent

    with tempfile.TemporaryDirectory(prefix="tarvik-kills-") as folder:
        start_anew(options, pathlib.Path(folder) / "first")
        runs = []
        for name in RUNS:
            script = next(path for path in (own / f"{name}.play", options.scripts / f"{name}.play") if path.exists())
            runs.append(Run(options, script, pathlib.Path(folder) / name))
        failed = 0
        kills = choose(options, runs)
        for run, told, kill in kills:
            faults = run.check(*kill())
            for fault in faults:
                print(f"{run.script.name}, killed at {told}: {fault}")
            failed += bool(faults)
        for run in runs:
            print(f"{run.script.name}: {run.moments} moments, {run.seconds:.2f} s undisturbed")
        print(f"{len(kills)} kills, {failed} of them with a fault")
    return 1 if failed or not kills else 0


sys.exit(main())
