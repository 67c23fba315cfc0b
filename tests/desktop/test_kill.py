"""The real program killed at random moments of a busy day: what it has written stays.

`test_kill.py [COUNT [SEED]]` kills it so often; the seed is printed, so that a failure can be
repeated.
"""

import contextlib
import os
import random
import re
import subprocess
import sys
import threading
import time
import unittest

from desktop import DesktopTest
from waiting import wait_for

COUNT = 50
SEED = None  # one of its own each time
SPEED = 150
LONGEST_REST_SEC = 0.8  # of the world outside; two minutes of the program's
DOUBLE_SEC = 5  # rows of one application that began closer together count as one

SESSIONS = ("SELECT id, app_name, bundle_id, started_at, close_type, ended_at, duration_sec "
            "FROM app_sessions")
IDLES = "SELECT id, started_at, source_type, ended_at, duration_sec FROM idle_periods"
KEYS = "SELECT id, timestamp, app_name, input_method, keystroke_count FROM keystrokes"

SESSION_LINES = re.compile(
    r"\] (?:🟢 (.*)|🔄 恢复 \| (.*)|🔄 .*（[0-9hms-]+）→ (.*))$", re.MULTILINE)


class Hand(threading.Thread):
    """Does something on the desktop again and again: `act` gives the arguments for xdotool."""

    def __init__(self, desktop, act):
        super().__init__(daemon=True)
        self.desktop = desktop
        self.act = act
        self.is_done = threading.Event()
        self.count = 0

    def run(self):
        while not self.is_done.is_set():
            # The program's own window may come in between, and go before it has the keys.
            with contextlib.suppress(subprocess.TimeoutExpired):
                subprocess.run(["xdotool", *self.act()], env=self.desktop.env, check=False,
                               timeout=10, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
            self.count += 1

    def stop(self):
        self.is_done.set()
        self.join()


class KillTest(DesktopTest):
    def setUp(self):
        self.open_desktop(speed=SPEED)
        self.seed = SEED if SEED is not None else random.randrange(1 << 32)
        self.random = random.Random(self.seed)
        self.begun = time.monotonic()

    def test_what_is_written_survives_kills_at_random_moments(self):
        desktop = self.desktop
        windows = []
        for program in (["xterm"], ["xmessage", "hello"], ["xcalc"], ["xterm", "-name", "second"]):
            desktop.open_window(*program)
            windows.append(desktop.active_window())
        choice = random.Random(self.seed)
        switching = Hand(desktop, lambda: ["windowactivate", str(choice.choice(windows)),
                                           "sleep", "%.3f" % choice.uniform(0, 0.05)])
        # Fast clocks make short pauses long: only who types without end is at the keyboard.
        typing = Hand(desktop, lambda: ["type", "--delay", "8", "abc xyz " * 50])
        for hand in (switching, typing):
            hand.start()
            self.addCleanup(hand.stop)
        before = {"sessions": {}, "idles": {}, "keys": {}}
        for number in range(COUNT):
            try:
                before = self.live_and_die(before)
            except BaseException:
                print("seed %d, kill %d" % (self.seed, number))
                raise
        print("%d kills, seed %d: %d sessions, %d idle periods, %d minutes with keys, %d switches"
              % (COUNT, self.seed, *(len(before[table]) for table in before), switching.count))
        self.assertGreater(len(before["sessions"]), COUNT / 10, "something was recorded")

    def live_and_die(self, before):
        """One life of the program; gives what is in the store behind it."""
        desktop = self.desktop
        # Each life begins behind the one before on the fast clocks, too.
        desktop.offset_sec = int((time.monotonic() - self.begun) * (SPEED - 1))
        log_length = len(desktop.log())
        recorder = desktop.start_recorder()
        phase = self.random.random()
        if phase > 0.2:  # the others die at their start
            wait_for(lambda: "✅ 就绪" in desktop.log()[log_length:], "the recorder")
        patience_ends = time.monotonic() + 10
        while (phase > 0.5 and time.monotonic() < patience_ends
               and not SESSION_LINES.search(desktop.log()[log_length:])):
            time.sleep(0.02)
        end = time.monotonic() + self.random.uniform(0, LONGEST_REST_SEC)
        seen = {"sessions": {}, "idles": {}, "keys": {}}
        while time.monotonic() < end:
            self.remember(seen, before)
            time.sleep(self.random.uniform(0, 0.05))
        self.assertIsNone(recorder.poll(), "it lived until it was killed")
        desktop.kill(recorder)
        if not os.path.exists(desktop.data + "/monitor.db"):
            return before
        self.assertTrue(desktop.check_integrity())
        after = self.tables()
        lines = desktop.log()[log_length:]
        self.check_sessions(before["sessions"], after["sessions"], "✅ 就绪" in lines)
        self.check_idles(before["idles"], after["idles"], "✅ 就绪" in lines)
        self.check_new_rows(before, after, lines)
        self.assertLessEqual(before["keys"].items(), after["keys"].items())
        self.check_seen(seen, after)
        return after

    def tables(self):
        desktop = self.desktop
        tables = {"sessions": SESSIONS, "idles": IDLES, "keys": KEYS}
        if not desktop.rows("SELECT name FROM sqlite_master WHERE name = 'keystrokes'"):
            return {table: {} for table in tables}
        return {table: {row[0]: row[1:] for row in desktop.rows(sql)}
                for table, sql in tables.items()}

    def remember(self, seen, before):
        """Keeps what another program finds written in this life."""
        try:
            for table, rows in self.tables().items():
                seen[table].update({number: row for number, row in rows.items()
                                    if number > max(before[table], default=0)})
        except Exception as error:  # the store is not there yet, or being made
            self.assertRegex(str(error), "unable to open|locked|no such table|read-?only")

    def check_seen(self, seen, after):
        for table, rows in seen.items():
            for number, row in rows.items():
                present = after[table].get(number)
                self.assertIsNotNone(present, "a row that was there: %s" % (row,))
                if row[-2] is not None:
                    self.assertEqual(present, row, "a row that was finished")

    def check_sessions(self, before, after, is_repaired):
        starts = sorted(row[2] for row in before.values())
        for number, row in before.items():
            later = next((start for start in starts if start > row[2]), None)
            if number not in after:
                self.assertTrue(self.is_double(number, row, before), "a lost row: %s" % (row,))
            elif row[4] is not None or later is None:
                self.assertEqual(after[number], row)
            elif is_repaired or after[number] != row:
                self.assertEqual(after[number], row[:4] + (later, later - row[2]))

    @staticmethod
    def is_double(number, row, rows):
        return any(other < number and its[0] == row[0] and abs(its[2] - row[2]) < DOUBLE_SEC
                   for other, its in rows.items())

    def check_idles(self, before, after, is_repaired):
        for number, row in before.items():
            self.assertIn(number, after)
            if row[2] is not None or (after[number] == row and not is_repaired):
                self.assertEqual(after[number], row)
            else:
                started, cause, ended, duration = after[number]
                self.assertEqual((started, cause), (row[0], 4))
                self.assertEqual(duration, ended - started)
                self.assertGreater(duration, 0)

    def check_new_rows(self, before, after, lines):
        """Rows are written when they begin, and only the newest has no end."""
        new = {table: [row for number, row in sorted(after[table].items())
                       if number > max(before[table], default=0)] for table in after}
        open_rows = [row for table in ("sessions", "idles") for row in new[table]
                     if row[-2] is None]
        self.assertLessEqual(len(open_rows), 1, "open rows: %s" % open_rows)
        for row in new["sessions"][:-1] + new["idles"][:-1]:
            self.assertEqual(row[-1], row[-2] - row[2 if len(row) == 6 else 0])
        names = [row[0] for row in new["sessions"]]
        logged = [next(filter(None, found)) for found in SESSION_LINES.findall(lines)]
        # The line of a recovery stands before its row, every other line behind it.
        if len(logged) > len(names):
            self.assertIn("🔄 恢复", lines.splitlines()[-1])
            logged.pop()
        self.assertEqual(logged, names[:len(logged)], "what the log told is in the store")
        self.assertLessEqual(len(names) - len(logged), 1, "what is in the store was told")


if __name__ == "__main__":
    COUNT = int(sys.argv[1]) if len(sys.argv) > 1 else COUNT
    SEED = int(sys.argv[2]) if len(sys.argv) > 2 else SEED
    unittest.main(argv=sys.argv[:1], verbosity=2)
