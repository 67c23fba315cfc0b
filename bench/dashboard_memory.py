#!/usr/bin/python3
"""Measures the program's memory around its dashboard, on a store of one year and a private desktop.

Usage: bench/dashboard_memory.py [BUILD_DIRECTORY [OPENINGS]], by default build/release and 3.
Prints the proportional share (PSS) in MB before the first window, on each page, and after each
closing, at once and when the threads that read the store have ended.
"""

import os
import subprocess
import sys
import time

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
BUILD = os.path.abspath(sys.argv[1] if len(sys.argv) > 1 else ROOT + "/build/release")
OPENINGS = int(sys.argv[2]) if len(sys.argv) > 2 else 3
os.environ["QUILLBROOK"] = BUILD + "/src/shell/quillbrook"
sys.path.insert(0, ROOT + "/tests/desktop")

from desktop import Desktop  # noqa: E402
from waiting import wait_for  # noqa: E402

PAGES = ["Today", "Past", "Future", "Habit", "Focus", "Tokens", "Alerts", "关于"]
SETTLING_SEC = 2
THREADS_END_SEC = 40  # the thread pool keeps an idle thread for thirty


def memory(recorder):
    with open("/proc/%d/smaps_rollup" % recorder.pid, encoding="ascii") as file:
        return next(int(line.split()[1]) for line in file if line.startswith("Pss:")) / 1024


def before_the_window(desktop, recorder):
    """In the 1.2 seconds between the engine's start and the window that opens by itself."""
    wait_for(lambda: "✅ 就绪" in desktop.log(), "the recorder")
    time.sleep(0.5)
    return memory(recorder)


def walk_through_the_pages(desktop, recorder):
    """Goes down the sidebar from its first row, where the keys are at first."""
    for page in PAGES:
        if page != PAGES[0]:
            desktop.press("Down")
            wait_for(lambda: desktop.last_page() == page, page)
        time.sleep(SETTLING_SEC)
        print("  on %-8s %.1f" % (page, memory(recorder)))
    desktop.press(*["Up"] * (len(PAGES) - 1))
    wait_for(lambda: desktop.last_page() == PAGES[0], PAGES[0])


def main():
    desktop = Desktop(speed=1)
    try:
        subprocess.check_call([BUILD + "/tools/lab/quillbrook-lab", "seed", "--data", desktop.data,
                               "--days", "365", "--sessions-per-day", "500"])
        recorder = desktop.start_recorder()
        print("PSS in MB\nbefore the first window %.1f" % before_the_window(desktop, recorder))
        for opening in range(1, OPENINGS + 1):
            wait_for(lambda: desktop.active_window() in desktop.windows("Quillbrook"), "the focus")
            print("opening %d" % opening)
            walk_through_the_pages(desktop, recorder)
            desktop.close_window("Quillbrook")
            time.sleep(SETTLING_SEC)
            closed = memory(recorder)
            time.sleep(THREADS_END_SEC)
            print("  closed %.1f, later %.1f" % (closed, memory(recorder)))
            desktop.start_recorder().wait(timeout=60)
    finally:
        desktop.close()


if __name__ == "__main__":
    main()
