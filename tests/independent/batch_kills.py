#!/usr/bin/env python3
"""Kills `tessalink batch` at random moments, lets it go on and compares all files, byte by byte, with
those of a run that nobody disturbed.

    tests/independent/batch_kills.py build/release/apps/tessalink/tessalink FOLDER RESPONSES \\
        [--kills 50] [--seed 1] [-- OPTION...]

OPTIONs are those of the command, for instance --no-reports. Half of the kills are SIGKILL, the others
SIGINT or SIGTERM, whose exit codes are checked."""

import argparse
import filecmp
import os
import random
import signal
import subprocess
import sys
import tempfile
import time
from pathlib import Path

SIGNALS = [signal.SIGKILL, signal.SIGKILL, signal.SIGINT, signal.SIGTERM]


def run(arguments, folder, options):
    command = [arguments.program, "batch", arguments.folder, arguments.responses, "-o", folder,
               "--resume", "--checkpoint", "0", *options]
    return subprocess.Popen(command, stderr=subprocess.PIPE, text=True)


def undisturbed(arguments, folder):
    started = time.monotonic()
    process = run(arguments, folder, arguments.options)
    errors = process.communicate()[1]
    if process.returncode not in (0, 1):
        sys.exit(f"the undisturbed run failed:\n{errors}")
    return process.returncode, time.monotonic() - started


def wait(process, seconds):
    """Whether the process has come to its end by then."""
    try:
        process.wait(seconds)
        return True
    except subprocess.TimeoutExpired:
        return False


def killed_run(arguments, folder, duration, chance):
    """Runs to the end, or to a signal; returns the exit code, and the signal that ended it."""
    options = [*arguments.options, "--jobs", str(chance.choice([1, 2, 3]))]
    process = run(arguments, folder, options)
    sent = None
    if not wait(process, chance.uniform(0, duration * 1.1)):
        sent = chance.choice(SIGNALS)
        process.send_signal(sent)
    errors = process.communicate()[1]
    if process.returncode in (0, 1):
        return process.returncode, None
    expected = -signal.SIGKILL if sent == signal.SIGKILL else 128 + (sent or 0)
    # A signal that comes before it is waited for ends the program as usual.
    if sent is None or process.returncode not in (expected, -sent):
        sys.exit(f"exit code {process.returncode} after signal {sent}:\n{errors}")
    return process.returncode, sent


def differences(first, second):
    names = [sorted(os.listdir(folder)) for folder in (first, second)]
    if names[0] != names[1]:
        return sorted(set(names[0]) ^ set(names[1]))
    return [name for name in names[0]
            if not filecmp.cmp(Path(first, name), Path(second, name), shallow=False)]


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("program")
    parser.add_argument("folder")
    parser.add_argument("responses")
    parser.add_argument("--kills", type=int, default=50)
    parser.add_argument("--seed", type=int, default=1)
    own, _, options = " ".join(sys.argv[1:]).partition(" -- ")
    arguments = parser.parse_args(own.split())
    arguments.options = options.split()
    chance = random.Random(arguments.seed)
    kills = {number: 0 for number in SIGNALS}
    runs = 0
    with tempfile.TemporaryDirectory(prefix="tessalink-") as base:
        expected, duration = undisturbed(arguments, f"{base}/whole")
        while sum(kills.values()) < arguments.kills:
            folder = f"{base}/{runs}"
            code, sent = killed_run(arguments, folder, duration, chance)
            while sent is not None:
                kills[sent] += 1
                code, sent = killed_run(arguments, folder, duration, chance)
            runs += 1
            wrong = differences(f"{base}/whole", folder)
            if code != expected or wrong:
                sys.exit(f"run {runs}: exit code {code} for {expected}; other files: {wrong[:10]}")
            subprocess.run(["rm", "-rf", folder], check=True)
    counts = ", ".join(f"{count} by {number.name}" for number, count in kills.items())
    print(f"{runs} runs of {duration:.1f} s, ended {sum(kills.values())} times ({counts}), "
          "then continued: all files the same")


if __name__ == "__main__":
    main()
