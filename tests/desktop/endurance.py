"""A person who changes between programs and types, without end, and the recorder's use of the
machine meanwhile."""

import os
import shutil
import sqlite3
import time

from waiting import wait_for

PROGRAMS = ("Alpha", "Bravo", "Charlie", "Delta")
KEYS = ("a", "s", "d", "f", "g", "h", "j", "k", "l", "space")


def _field(path, key):
    with open(path, encoding="ascii") as file:
        return next(int(line.split()[1]) for line in file if line.startswith(key))


def use_of_machine(pid):
    """What the process takes: memory, that which is its own alone, descriptors and threads now,
    wake-ups and processor seconds so far."""
    wakeups = cpu = 0
    threads = os.listdir("/proc/%d/task" % pid)
    for thread in threads:
        try:
            folder = "/proc/%d/task/%s/" % (pid, thread)
            wakeups += _field(folder + "status", "voluntary_ctxt_switches")
            with open(folder + "schedstat", encoding="ascii") as file:
                cpu += int(file.read().split()[0]) / 1e9
        except (FileNotFoundError, ProcessLookupError):
            continue  # it has ended since it was listed
    memory = "/proc/%d/smaps_rollup" % pid
    return {"PSS kB": _field(memory, "Pss:"), "own kB": _field(memory, "Anonymous:"),
            "descriptors": len(os.listdir("/proc/%d/fd" % pid)), "threads": len(threads),
            "wake-ups": wakeups, "CPU s": cpu}


class Life:
    """Windows of four programs on a desktop, and a recorder whose rows are compared with what is
    done in them."""

    def __init__(self, desktop):
        self.desktop = desktop
        self.windows = []
        for name in PROGRAMS:
            # A program of its own: the desktop entry of the original would name them all.
            program = shutil.copy(shutil.which("xterm"), os.path.join(desktop.home, name))
            desktop.open_window(program, "-class", name, "-e", "cat > /dev/null")
            self.windows.append(desktop.active_window())
        self.recorder = desktop.start_recorder_and_wait()
        self.switched_to = []
        self.keys = 0
        self.missed = 0

    def switch(self, keys):
        """Goes to the next program, types there, and waits for its row. The first is the one that
        is in front already."""
        number = (len(self.switched_to) - 1) % len(PROGRAMS)
        pressed = [KEYS[at % len(KEYS)] for at in range(keys)]
        self.desktop.tool("xdotool", "windowactivate", "--sync", str(self.windows[number]),
                          "key", "--delay", "2", *pressed)
        self.switched_to.append(PROGRAMS[number])
        self.keys += keys
        try:
            wait_for(lambda: self._is_newest(PROGRAMS[number]), "a row", timeout=10)
        except AssertionError:
            self.missed += 1

    def _is_newest(self, name):
        connection = sqlite3.connect("file:%s/monitor.db?mode=ro" % self.desktop.data, uri=True)
        try:
            newest = connection.execute(
                "SELECT app_name FROM app_sessions ORDER BY id DESC LIMIT 1").fetchone()
            return newest == (name,)
        except sqlite3.OperationalError:
            return False
        finally:
            connection.close()

    def use(self):
        return use_of_machine(self.recorder.pid)

    def recorded_keys(self):
        return self.desktop.rows("SELECT coalesce(sum(keystroke_count), 0) FROM keystrokes")[0][0]

    def recorded_switches(self):
        """The names of the programs in the order in which they were gone to. At this speed a
        machine that stands still for a few seconds looks like a rest, and the window manager's
        moment without a window like the bare desktop: who is in the same program after that went
        nowhere."""
        names = []
        for name in self.desktop.session_names():
            if name in PROGRAMS and names[-1:] != [name]:
                names.append(name)
        return names

    def wait_for_keys(self):
        """Waits for the row of the last minute's keys, as long as they may take."""
        end = time.monotonic() + 30
        while self.recorded_keys() < self.keys and time.monotonic() < end:
            time.sleep(0.1)
