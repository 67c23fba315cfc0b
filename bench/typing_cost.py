#!/usr/bin/python3
"""Measures what a minute of fast typing costs the recorder, beside a minute without a key.

Usage: bench/typing_cost.py [BUILD_DIRECTORY [KEYS [SECONDS]]], by default build/release, 1200 and
60. The same process is measured before and while keys come, on a private desktop with the real
clocks; each time a flush, and the work of a minute, is among what it does.
"""

import os
import sys
import time

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
BUILD = os.path.abspath(sys.argv[1] if len(sys.argv) > 1 else ROOT + "/build/release")
KEYS = int(sys.argv[2]) if len(sys.argv) > 2 else 1200
SECONDS = int(sys.argv[3]) if len(sys.argv) > 3 else 60
os.environ["QUILLBROOK"] = BUILD + "/src/shell/quillbrook"
sys.path.insert(0, ROOT + "/tests/desktop")

from desktop import Desktop  # noqa: E402
from waiting import wait_for  # noqa: E402


def cpu_ms(pid):
    spent = 0
    for thread in os.listdir("/proc/%d/task" % pid):
        with open("/proc/%d/task/%s/schedstat" % (pid, thread), encoding="ascii") as file:
            spent += int(file.read().split()[0])
    return spent / 1e6


def cost_of(pid, work):
    """Milliseconds of processor time in a minute that begins with `work`."""
    begin = time.monotonic()
    before = cpu_ms(pid)
    work()
    time.sleep(max(SECONDS - (time.monotonic() - begin), 0))
    return cpu_ms(pid) - before


def main():
    desktop = Desktop(speed=1)
    try:
        desktop.open_window("xterm", "-e", "cat")
        pid = desktop.start_recorder_and_wait().pid
        wait_for(lambda: "⌨️ OK" in desktop.log(), "the count")
        time.sleep(5)  # what the start set off
        idle = cost_of(pid, lambda: None)
        delay = str(SECONDS * 900 // KEYS)  # the tool needs some time of its own
        typing = cost_of(pid, lambda: [desktop.tool(
            "xdotool", "type", "--delay", delay, "abcdefghi " * 10) for _ in range(KEYS // 100)])
        wait_for(lambda: desktop.rows("SELECT SUM(keystroke_count) FROM keystrokes")[0][0] == KEYS,
                 "all keys", timeout=70)
        print("%d s without a key: %.1f ms; with %d keys: %.1f ms; more: %.1f ms" % (
            SECONDS, idle, KEYS, typing, typing - idle))
    finally:
        desktop.close()


main()
