#!/usr/bin/python3
"""Measures the recorder at rest on a private desktop, beside a bare Qt program with one timer.

Usage: bench/recorder_at_rest.py [BUILD_DIRECTORY [SECONDS]], by default build/release and 120.
Both run at the same time; the clocks are the real ones.
"""

import os
import sys
import time

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
BUILD = os.path.abspath(sys.argv[1] if len(sys.argv) > 1 else ROOT + "/build/release")
SECONDS = int(sys.argv[2]) if len(sys.argv) > 2 else 120
os.environ["QUILLBROOK"] = BUILD + "/src/shell/quillbrook"
sys.path.insert(0, ROOT + "/tests/desktop")

from desktop import Desktop  # noqa: E402


def field(pid, name, key):
    with open("/proc/%d/%s" % (pid, name), encoding="ascii") as file:
        return next(int(line.split()[1]) for line in file if line.startswith(key))


def figures(pid):
    """CPU seconds, wake-ups and written bytes so far, and the memory now."""
    cpu = wakeups = 0
    for thread in os.listdir("/proc/%d/task" % pid):
        with open("/proc/%d/task/%s/schedstat" % (pid, thread), encoding="ascii") as file:
            cpu += int(file.read().split()[0]) / 1e9
        wakeups += field(pid, "task/%s/status" % thread, "voluntary_ctxt_switches")
    return cpu, wakeups, field(pid, "io", "wchar"), field(pid, "smaps_rollup", "Pss:") / 1024


def main():
    desktop = Desktop(speed=1)
    try:
        desktop.open_window("xterm")
        programs = {"recorder": desktop.start_recorder_and_wait(),
                    "bare timer": desktop.spawn([BUILD + "/bench/bare_timer"])}
        # A check at a full minute finds the person at work; no row is written after that.
        while not desktop.sessions():
            desktop.type("a")
            time.sleep(5)
        time.sleep(65)
        before = {name: figures(process.pid) for name, process in programs.items()}
        lines = len(desktop.log().splitlines())
        time.sleep(SECONDS)
        after = {name: figures(process.pid) for name, process in programs.items()}
        print("%-12s %14s %14s %16s %10s" % (
            "over %d s" % SECONDS, "CPU s/hour", "wake-ups/s", "bytes written", "PSS MB"))
        hourly = {}
        for name in programs:
            cpu, wakeups, written = (a - b for a, b in zip(after[name][:3], before[name][:3]))
            hourly[name] = cpu * 3600 / SECONDS
            print("%-12s %14.3f %14.2f %16d %10.1f" % (
                name, hourly[name], wakeups / SECONDS, written, after[name][3]))
        print("CPU ratio %.2f; log lines of the recorder meanwhile: %d" % (
            hourly["recorder"] / hourly["bare timer"], len(desktop.log().splitlines()) - lines))
    finally:
        desktop.close()


main()
