#!/usr/bin/python3
"""Lets the recorder live through a day at sixty-fold speed on a private desktop: a person changes
between programs and types all day.

Usage: bench/endurance.py [BUILD_DIRECTORY [SWITCHES [KEYS]]], by default build/release, 5000 and
50000, in 24 minutes. Prints what the recorder took of the machine hour by hour, whether the second
half of the day took more than the first, and how its rows compare with what was done. Ends with
status 1 where they differ.
"""

import os
import sys
import time

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
BUILD = os.path.abspath(sys.argv[1] if len(sys.argv) > 1 else ROOT + "/build/release")
SWITCHES = int(sys.argv[2]) if len(sys.argv) > 2 else 5000
KEYS = int(sys.argv[3]) if len(sys.argv) > 3 else 50000
os.environ["QUILLBROOK"] = BUILD + "/src/shell/quillbrook"
sys.path.insert(0, ROOT + "/tests/desktop")

from desktop import Desktop  # noqa: E402
from endurance import Life  # noqa: E402

SPEED = 60
PACE_SEC = 24 * 3600 / SPEED / 5000  # of each switch, whatever their number
SAMPLES = 24
COLUMNS = ("PSS kB", "own kB", "descriptors", "threads", "wake-ups/s", "CPU s/h", "store kB", "log kB")


def size_kb(desktop, name):
    path = os.path.join(desktop.data, name)
    return os.path.getsize(path) // 1024 if os.path.exists(path) else 0


class Samples:
    """The figures of one stretch of the day after the other, by the fast clocks."""

    def __init__(self, life):
        self.life = life
        self.rows = []
        self.begin = self.last = time.monotonic()
        self.before = life.use()
        print("%7s " % "hour" + " ".join("%12s" % name for name in COLUMNS), flush=True)

    def take(self):
        now, use, desktop = time.monotonic(), self.life.use(), self.life.desktop
        seconds = (now - self.last) * SPEED
        row = (use["PSS kB"], use["own kB"], use["descriptors"], use["threads"],
               (use["wake-ups"] - self.before["wake-ups"]) / seconds,
               (use["CPU s"] - self.before["CPU s"]) * 3600 / seconds,
               size_kb(desktop, "monitor.db") + size_kb(desktop, "monitor.db-wal"),
               size_kb(desktop, "monitor.log"))
        self.last, self.before = now, use
        self.rows.append(row)
        print("%7.1f " % ((now - self.begin) * SPEED / 3600)
              + " ".join("%12.2f" % value if isinstance(value, float) else "%12d" % value
                         for value in row), flush=True)

    def print_trend(self):
        half = len(self.rows) // 2
        for column in range(6):
            first = sum(row[column] for row in self.rows[:half]) / half
            second = sum(row[column] for row in self.rows[half:]) / (len(self.rows) - half)
            print("%-12s first half %10.2f, second half %10.2f" % (COLUMNS[column], first, second))


def is_as_done(life):
    """Compares what was recorded with what was done, and prints both."""
    desktop = life.desktop
    names, keys = life.recorded_switches(), life.recorded_keys()
    print("switches done %d, recorded %d, in the same order: %s; waited in vain for %d" % (
        len(life.switched_to), len(names), names == life.switched_to, life.missed))
    print("keys pressed %d, counted %d" % (life.keys, keys))
    print("rows %d, idle periods %d; store is sound: %s" % (
        len(desktop.sessions()), len(desktop.idles()), desktop.check_integrity()))
    complaints = [line for line in desktop.log().splitlines() if "SQL" in line or "❌" in line]
    print("lines of failures in the log: %d" % len(complaints), *complaints[:5], sep="\n  ")
    return names == life.switched_to and keys == life.keys and not complaints


def main():
    desktop = Desktop(speed=SPEED)
    try:
        life = Life(desktop)
        samples = Samples(life)
        for number in range(SWITCHES):
            life.switch(KEYS * (number + 1) // SWITCHES - KEYS * number // SWITCHES)
            if number * SAMPLES // SWITCHES > len(samples.rows):
                samples.take()
            time.sleep(max(0.0, samples.begin + number * PACE_SEC - time.monotonic()))
        life.wait_for_keys()
        samples.take()
        samples.print_trend()
        if not is_as_done(life):
            sys.exit(1)
    finally:
        desktop.close()


main()
