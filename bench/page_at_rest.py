#!/usr/bin/python3
"""Measures what a page costs while nobody touches it, on a private desktop with a store of a month.

Usage: bench/page_at_rest.py [BUILD_DIRECTORY [SECONDS]], by default build/release and 30.
Prints, in percent of one core, the processor time of the program with the page Future open, with it
covered by another page, minimised, and with the dashboard closed.
"""

import os
import subprocess
import sys
import time

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
BUILD = os.path.abspath(sys.argv[1] if len(sys.argv) > 1 else ROOT + "/build/release")
SECONDS = float(sys.argv[2]) if len(sys.argv) > 2 else 30
os.environ["QUILLBROOK"] = BUILD + "/src/shell/quillbrook"
sys.path.insert(0, ROOT + "/tests/desktop")

from desktop import Desktop  # noqa: E402
from waiting import wait_for  # noqa: E402

SETTLING_SEC = 3


def processor_seconds(recorder):
    with open("/proc/%d/stat" % recorder.pid, encoding="ascii") as file:
        fields = file.read().rsplit(")", 1)[1].split()
    return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")


def measure(what, recorder):
    time.sleep(SETTLING_SEC)
    before = processor_seconds(recorder)
    time.sleep(SECONDS)
    print("%-20s %.2f %%" % (what, (processor_seconds(recorder) - before) / SECONDS * 100))


def go_to(desktop, key, page):
    desktop.press(key)
    wait_for(lambda: desktop.last_page() == page, page)


def main():
    desktop = Desktop(speed=1)
    try:
        subprocess.check_call([BUILD + "/tools/lab/quillbrook-lab", "seed", "--data", desktop.data,
                               "--days", "30"])
        recorder = desktop.start_recorder()
        wait_for(lambda: desktop.active_window() in desktop.windows("Quillbrook"), "the focus")
        go_to(desktop, "Down", "Past")
        go_to(desktop, "Down", "Future")
        measure("Future", recorder)
        go_to(desktop, "Up", "Past")
        measure("covered by Past", recorder)
        go_to(desktop, "Down", "Future")
        window = desktop.active_window()
        desktop.tool("xdotool", "windowminimize", str(window))
        measure("minimised", recorder)
        desktop.start_recorder().wait(timeout=60)  # a second launch raises the window
        desktop.close_window("Quillbrook")
        measure("closed", recorder)
    finally:
        desktop.close()


if __name__ == "__main__":
    main()
