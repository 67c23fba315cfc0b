#!/usr/bin/python3
"""Measures the recorder at rest on a private desktop, beside a bare Qt program with one timer.

Usage: bench/recorder_at_rest.py [--desktop x11|sway|kwin|gnome] [BUILD_DIRECTORY [SECONDS]], by
default x11, build/release and 120. Both run at the same time; the clocks are the real ones.
"""

import argparse
import os
import sys
import time

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
PARSER = argparse.ArgumentParser()
PARSER.add_argument("--desktop", choices=["x11", "sway", "kwin", "gnome"], default="x11")
PARSER.add_argument("build", nargs="?", default=ROOT + "/build/release")
PARSER.add_argument("seconds", nargs="?", type=int, default=120)
OPTIONS = PARSER.parse_args()
BUILD = os.path.abspath(OPTIONS.build)
SECONDS = OPTIONS.seconds
os.environ["QUILLBROOK"] = BUILD + "/src/shell/quillbrook"
sys.path.insert(0, ROOT + "/tests/desktop")

from desktop import Desktop  # noqa: E402
from gnome_desktop import GnomeDesktop  # noqa: E402
from kwin_desktop import KWinDesktop  # noqa: E402
from sway_desktop import SwayDesktop  # noqa: E402
from wayland_desktop import GTK3  # noqa: E402


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


def gnome_desktop():
    with open(BUILD + "/extension/form", encoding="ascii") as file:
        form = file.read()
    os.environ["GNOME_EXTENSION"] = "%s/extension/%s/quillbrook@tarnlow.cn" % (BUILD, form)
    return GnomeDesktop(speed=1)


def open_desktop():
    """A desktop, what opens a window there, and what shows that somebody is at work."""
    if OPTIONS.desktop == "x11":
        desktop = Desktop(speed=1)
        return desktop, lambda: desktop.open_window("xterm"), lambda: desktop.type("a")
    kinds = {"sway": SwayDesktop, "kwin": KWinDesktop}
    desktop = (gnome_desktop() if OPTIONS.desktop == "gnome"
               else kinds[OPTIONS.desktop](speed=1))
    desktop.env["QT_QPA_PLATFORM"] = "wayland"  # for the bare program, as the recorder chooses it

    def open_window():
        desktop.open_gtk3()
        if OPTIONS.desktop == "gnome":
            desktop.focus(GTK3[0])
    return desktop, open_window, desktop.touch


def main():
    desktop, open_window, touch = open_desktop()
    try:
        programs = {"recorder": desktop.start_recorder_and_wait(),
                    "bare timer": desktop.spawn([BUILD + "/bench/bare_timer"])}
        open_window()
        # A check at a full minute finds the person at work; no row is written after that.
        while not desktop.sessions():
            touch()
            time.sleep(6)  # longer than the rest that a compositor tells of
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
