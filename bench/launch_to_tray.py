#!/usr/bin/python3
"""Measures the time from the launch to the tray on a store of one year, on a private desktop.

Usage: bench/launch_to_tray.py [BUILD_DIRECTORY [LAUNCHES]], by default build/release and 11.
Prints the smallest, the middle and the largest of the launches in milliseconds, of the clock and of
the main thread's processor time.
"""

import os
import signal
import sys
import time

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
BUILD = os.path.abspath(sys.argv[1] if len(sys.argv) > 1 else ROOT + "/build/release")
LAUNCHES = int(sys.argv[2]) if len(sys.argv) > 2 else 11
os.environ["QUILLBROOK"] = BUILD + "/src/shell/quillbrook"
sys.path.insert(0, ROOT + "/tests/desktop")

from desktop import Desktop  # noqa: E402
from waiting import wait_for  # noqa: E402

WATCHER = "org.kde.StatusNotifierWatcher"
ROWS = 365 * 500

FILL = """
WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < {rows})
INSERT INTO app_sessions (app_name, bundle_id, started_at, ended_at, duration_sec, close_type)
SELECT 'Application ' || (i * 7 % 30), 'org.example.application', t, t + 100.5, 100.5, 0
FROM (SELECT i, {now} - ({rows} + 10 - i) * 172.8 AS t FROM n);
""".format(rows=ROWS, now=time.time())


def item_count(desktop):
    watcher = desktop.session_bus.get_object(WATCHER, "/StatusNotifierWatcher", introspect=False)
    return len(watcher.Get(WATCHER, "RegisteredStatusNotifierItems",
                           dbus_interface="org.freedesktop.DBus.Properties"))


def launch(desktop):
    """Milliseconds until the tray has the program's item: by the clock, and of processor time."""
    before = item_count(desktop)
    begin = time.monotonic()
    recorder = desktop.start_recorder()
    while item_count(desktop) == before:
        time.sleep(0.002)
    taken = (time.monotonic() - begin) * 1000
    with open("/proc/%d/schedstat" % recorder.pid, encoding="ascii") as file:
        used = int(file.read().split()[0]) / 1e6
    desktop.kill(recorder, signal.SIGKILL)
    return taken, used


def main():
    desktop = Desktop(speed=1)
    try:
        desktop.kill(desktop.start_recorder_and_wait())
        desktop.write(FILL)
        desktop.spawn(["/usr/bin/python3", "-B", ROOT + "/tests/desktop/tray.py"])
        wait_for(lambda: desktop.session_bus.name_has_owner(WATCHER), "the tray")
        launches = [launch(desktop) for _ in range(LAUNCHES)]
    finally:
        desktop.close()
    for name, times in zip(("launch to tray", "processor time"), zip(*launches)):
        ordered = sorted(times)
        print("%s, ms: smallest %.0f, middle %.0f, largest %.0f"
              % (name, ordered[0], ordered[len(ordered) // 2], ordered[-1]))


if __name__ == "__main__":
    main()
