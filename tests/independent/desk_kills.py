#!/usr/bin/env python3
"""Keys answers into the desk under a virtual display, kills it at random moments, and looks into the
file of cases: what was keyed must be there, but for the keystroke under way.

    tests/independent/desk_kills.py build/release/apps/desk/tessalink-desk INSTRUMENTS
        [--kills 100] [--seed 1]

Needs Xvfb, openbox and xdotool. The desk starts again over the same file after every kill, so that
each start also goes on from what the kill before has left."""

import argparse
import os
import random
import signal
import sqlite3
import subprocess
import sys
import tempfile
import time
from pathlib import Path

DISPLAY = ":78"
CASE = "P-107"  # a case of the sample that has no answer yet
ITEMS = 50
PAUSE = 0.02  # between two keys, in seconds


def keys(*names):
    subprocess.run(["xdotool", "key", "--delay", "15", *names], check=True)


def wait_for(what, found, seconds=60):
    end = time.monotonic() + seconds
    while time.monotonic() < end:
        result = found()
        if result:
            return result
        time.sleep(0.05)
    sys.exit(f"desk_kills: {what} did not come")


def window(title):
    run = subprocess.run(["xdotool", "search", "--onlyvisible", "--name", title], text=True,
                         stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, check=False)
    return run.stdout.split()[:1]


def answers(path):
    """The answers of the case in the order of the items, and whether the file is sound."""
    with sqlite3.connect(path) as file:
        sound = file.execute("PRAGMA integrity_check").fetchone() == ("ok",)
        cases = file.execute("SELECT count(*) FROM cases").fetchone()[0]
        rows = file.execute("SELECT entries.id, value FROM entries JOIN cases ON case_number = number "
                            "WHERE label = ? AND kind = 'answer'", (CASE,)).fetchall()
    file.close()
    return dict(rows), sound and cases == 12


def key_and_kill(program, path, chance, expected):
    """One run; returns how many keys are missing behind the last one that is kept."""
    desk = subprocess.Popen([program, path, "--language", "en"], stderr=subprocess.DEVNULL)
    place = wait_for("the window", lambda: window("s.cases"))[0]
    subprocess.run(["xdotool", "windowactivate", "--sync", place], check=True,
                   stderr=subprocess.DEVNULL)
    keys(*["Down"] * 6, "Return")
    wait_for("the case", lambda: window(CASE))
    keys("F8")
    time.sleep(0.2)
    typed = chance.choices("12345", k=chance.randint(1, ITEMS))
    for answer in typed:
        subprocess.run(["xdotool", "key", answer], check=True)
        time.sleep(PAUSE)
    time.sleep(chance.choice((0, 0, 0.01, 0.05, 1.5)))  # also while it syncs to the disk
    desk.send_signal(signal.SIGKILL)
    desk.wait()
    kept, is_sound = answers(path)
    if not is_sound:
        sys.exit("desk_kills: the file is damaged, or a case is missing")
    for item, answer in enumerate(typed, 1):
        before = expected.get(f"I{item}")
        now = kept.get(f"I{item}")
        if now != answer:
            missing = len(typed) - item + 1
            if now != before:
                sys.exit(f"desk_kills: I{item} holds {now}, keyed was {answer}")
            for later in range(item, len(typed) + 1):
                if kept.get(f"I{later}") != expected.get(f"I{later}"):
                    sys.exit(f"desk_kills: I{later} is kept, I{item} before it is not")
            return missing, kept
    return 0, kept


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("program")
    parser.add_argument("instruments")
    parser.add_argument("--kills", type=int, default=100)
    parser.add_argument("--seed", type=int, default=1)
    options = parser.parse_args()
    chance = random.Random(options.seed)
    with tempfile.TemporaryDirectory() as folder:
        os.environ.update(DISPLAY=DISPLAY, HOME=folder, XDG_RUNTIME_DIR=folder)
        os.chmod(folder, 0o700)
        path = str(Path(folder) / "s.cases")
        subprocess.run([options.program, "--make-sample", path, "--instruments",
                        options.instruments], check=True, stderr=subprocess.DEVNULL)
        screen = subprocess.Popen(["Xvfb", DISPLAY, "-screen", "0", "1280x900x24"],
                                  stderr=subprocess.DEVNULL)
        time.sleep(1)
        manager = subprocess.Popen(["openbox"], stderr=subprocess.DEVNULL)
        time.sleep(1)
        try:
            expected, _ = answers(path)
            missing = []
            for _ in range(options.kills):
                lost, expected = key_and_kill(options.program, path, chance, expected)
                missing.append(lost)
        finally:
            manager.kill()
            screen.kill()
    print(f"{options.kills} kills: nothing missing after {missing.count(0)}, the last keystroke "
          f"after {missing.count(1)}, more after {len(missing) - missing.count(0) - missing.count(1)}")
    return 1 if max(missing) > 1 else 0


if __name__ == "__main__":
    sys.exit(main())
