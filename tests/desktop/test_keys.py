"""The real program counts keys on a real X server: how many, under whose name, and nothing else."""

import os
import re
import signal
import sys
import unittest

from desktop import DesktopTest
from waiting import wait_for

HOLD_THE_KEYBOARD = """
import ctypes, time
x11 = ctypes.CDLL("libX11.so.6")
x11.XOpenDisplay.restype = ctypes.c_void_p
x11.XDefaultRootWindow.argtypes = [ctypes.c_void_p]
x11.XDefaultRootWindow.restype = ctypes.c_ulong
x11.XGrabKeyboard.argtypes = [ctypes.c_void_p, ctypes.c_ulong] + [ctypes.c_int] * 3 + [ctypes.c_ulong]
display = x11.XOpenDisplay(None)
result = x11.XGrabKeyboard(display, x11.XDefaultRootWindow(display), 0, 1, 1, 0)
print(result, flush=True)
time.sleep(1000)
"""

KEEP_KEY_CODES = """
import sys, time
codes = bytes.fromhex(sys.argv[1])
records = bytearray(36 * len(codes))
records[::36] = codes
del codes
print("kept", flush=True)
time.sleep(1000)
"""


AS_TEXT = (1, 2, 4)  # bytes a letter
AS_RECORDS = range(1, 65)  # bytes a key
AS_BLOCKS = range(48, 129, 16)  # bytes a key, where each has memory of its own


EMPTY_PAGE = bytes(4096)


def pages_of(memory):
    return [memory[at:at + len(EMPTY_PAGE)] for at in range(0, len(memory), len(EMPTY_PAGE))]


def memory_of(pid, is_wanted, known=frozenset((EMPTY_PAGE,))):
    """The process's memory in all maps that can be read and whose line is wanted, but for pages
    that are known."""
    found = []
    with open("/proc/%d/maps" % pid, encoding="utf-8") as maps, \
            open("/proc/%d/mem" % pid, "rb", buffering=0) as memory:
        for line in maps:
            begin, end = (int(part, 16) for part in line.split()[0].split("-"))
            if line.split()[1].startswith("r") and is_wanted(line):
                try:
                    memory.seek(begin)
                    found.append(b"".join(page for page in pages_of(memory.read(end - begin))
                                          if page not in known))
                except (OSError, OverflowError, ValueError):
                    continue  # the kernel's own pages
    return found


def pages_in(pid):
    """All that the pages of a process hold, to tell those that change later."""
    return {page for part in memory_of(pid, lambda line: True) for page in pages_of(part)} | {
        EMPTY_PAGE}


def holds(memory, pieces, strides):
    """Whether one of `pieces` stands in the memory, its bytes each so many bytes from the next."""
    for part in memory:
        for stride in strides:
            for offset in range(stride):
                column = part[offset::stride]
                if any(piece in column for piece in pieces):
                    return True
    return False


def pieces_of(sequences):
    """Six at a time, so that whoever holds a longer part is found, too."""
    return [sequence[at:at + 6] for sequence in sequences for at in range(0, len(sequence), 6)]


def is_writable(line):
    """Whether a map's line is that of memory in which a program keeps what it learns."""
    return line.split()[1].startswith("rw")


def is_asleep(pid):
    with open("/proc/%d/stat" % pid, encoding="utf-8") as file:
        return file.read().rpartition(")")[2].split()[0] == "S"


class KeysTest(DesktopTest):
    def start(self, speed=20):
        """Starts the recorder over a terminal, and waits until keys count."""
        self.open_desktop(speed)
        desktop = self.desktop
        desktop.open_window("xterm")
        recorder = desktop.start_recorder_and_wait()
        wait_for(lambda: "⌨️ OK" in desktop.log(), "the count")
        return recorder

    def counts(self):
        return self.desktop.rows("SELECT app_name, keystroke_count FROM keystrokes ORDER BY id")

    def total(self):
        return sum(count for _, count in self.counts())

    def wait_for_total(self, total):
        """Waits until so many keys are stored, and proves that the next flushes add none."""
        wait_for(lambda: self.total() >= total, "%d keys" % total)
        self.desktop.let_minutes_pass(2)
        self.assertEqual(self.total(), total)

    def test_each_key_down_is_counted_once(self):
        self.start()
        self.desktop.type("hello world 12345")
        self.wait_for_total(17)
        self.desktop.press("Return", "BackSpace", "F5", "Left", "Escape", "Tab", "KP_7")
        self.wait_for_total(24)
        self.desktop.type("x" * 500)
        self.wait_for_total(524)

    def test_a_minute_without_keys_has_no_row(self):
        self.start()
        self.desktop.let_minutes_pass(3)
        self.assertEqual(self.counts(), [])
        self.desktop.press("a")
        self.wait_for_total(1)
        self.assertEqual(self.counts(), [("XTerm", 1)])

    def test_modifiers_are_not_counted(self):
        self.start()
        self.desktop.press("Shift_L", "Shift_R", "Control_L", "Control_R", "Alt_L", "Super_L",
                           "Caps_Lock", "Caps_Lock", "Num_Lock", "Num_Lock")
        self.desktop.type("ABC")
        self.desktop.press("ctrl+u", "ctrl+shift+Right")
        self.wait_for_total(5)

    def test_all_keys_of_a_minute_go_to_the_front_at_its_end(self):
        # A minute takes four seconds here: after a flush there is time for what follows.
        self.start(speed=15)
        desktop = self.desktop
        desktop.open_window("xcalc")
        desktop.tool("xdotool", "search", "--class", "XTerm", "windowactivate", "--sync")
        desktop.press("a")
        wait_for(lambda: self.total() == 1, "the first flush")
        desktop.press("b", "c", "d")
        desktop.tool("xdotool", "search", "--class", "XCalc", "windowactivate", "--sync")
        desktop.press("4", "2")
        wait_for(lambda: self.total() == 6, "the second flush")
        desktop.press("1")
        wait_for(lambda: self.total() == 7, "the third flush")
        self.assertEqual(self.counts(), [("XTerm", 1), ("XCalc", 5), ("XCalc", 1)])

    def test_keys_for_a_program_that_holds_the_keyboard_are_counted(self):
        self.start()
        holder = self.desktop.spawn([sys.executable, "-c", HOLD_THE_KEYBOARD], stdout=-1)
        self.addCleanup(holder.stdout.close)
        self.assertEqual(holder.stdout.readline(), b"0\n", "the keyboard is held")
        self.desktop.press("1", "2", "3", "4", "5", "A")
        self.wait_for_total(6)
        self.desktop.kill(holder)
        self.desktop.press("a")
        self.wait_for_total(7)

    def test_keys_behind_a_lock_and_in_its_password_are_only_a_number(self):
        self.start()
        self.desktop.set_locked(True)
        self.desktop.press("s", "e", "c", "r", "e", "t")
        self.wait_for_total(6)

    def key_codes_of(self, text):
        """The codes of the keys that type `text`, which has letters and digits only."""
        codes = {}
        for line in self.desktop.tool("xmodmap", "-pke").splitlines():
            found = re.match(r"keycode +(\d+) = (\w+)", line)
            if found:
                codes.setdefault(found.group(2), int(found.group(1)))
        return bytes(codes[letter] for letter in text)

    def test_what_was_typed_is_nowhere(self):
        recorder = self.start()
        desktop = self.desktop
        reader = desktop.open_window("xterm", "-class", "Reader", "-e", "cat")
        # No letter twice in a row, and nothing that any text would hold.
        secrets = ["qzjxvk7wpm3hd9xgzb", "wq8gzxk2jvbn4fpqmz", "mzkq1xjw5yvt6hgkxw"]
        texts = pieces_of([secret.encode() for secret in secrets])
        codes = pieces_of([self.key_codes_of(secret) for secret in secrets])
        known = self.pages_before(recorder.pid)
        known_of_reader = pages_in(reader.pid)
        for secret in secrets:
            desktop.type(secret)
            desktop.press("Return")
        typed = sum(len(secret) + 1 for secret in secrets)
        # At once, before other events could cover remains, and again after the flush.
        self.expect_nothing_in_memory(recorder.pid, known, texts, codes)
        wait_for(lambda: self.total() >= typed, "the flush")
        self.assertEqual(self.total(), typed, "all keys came to us")
        self.expect_nothing_in_memory(recorder.pid, known, texts, codes)

        files = [os.path.join(folder, name) for folder, _, names in os.walk(desktop.data)
                 for name in names] + [desktop.home + "/output"]
        self.assertIn(desktop.data + "/monitor.db", files)
        for path in files:
            with open(path, "rb") as file:
                self.assertFalse(holds([file.read()], texts + codes, range(1, 9)), path)

        # The same search finds both where they are.
        self.assertTrue(holds(memory_of(reader.pid, is_writable, known_of_reader), texts, AS_TEXT))
        keeper = desktop.spawn(
            [sys.executable, "-c", KEEP_KEY_CODES, self.key_codes_of(secrets[0]).hex()], stdout=-1)
        self.addCleanup(keeper.stdout.close)
        self.assertEqual(keeper.stdout.readline(), b"kept\n")
        self.assertTrue(holds(memory_of(keeper.pid, is_writable, known), codes, AS_RECORDS))

    def test_keys_that_came_in_one_go_leave_nothing_behind(self):
        # Memory is given out and freed for each of them, in their order or against it.
        recorder = self.start()
        secret = "qzjxvk7wpm3hd9xgzbwq8gzxk2jvbn4fpqmzmzkq1xjw5yvt6hgkxw" * 2
        codes = pieces_of([self.key_codes_of(secret[:54])])
        codes += [piece[::-1] for piece in codes]
        memories = []
        known = self.pages_before(recorder.pid)
        for _ in range(3):
            os.kill(recorder.pid, signal.SIGSTOP)
            self.desktop.tool("xdotool", "type", "--delay", "0", secret)
            os.kill(recorder.pid, signal.SIGCONT)
            wait_for(lambda: is_asleep(recorder.pid), "the end of the work on these keys")
            # Looked at more than once, as other work soon covers what lies there.
            memories += [memory_of(recorder.pid, is_writable, known) for _ in range(3)]
        self.wait_for_total(3 * len(secret))
        for memory in memories:
            self.assertFalse(holds(memory, codes, AS_BLOCKS))

    def pages_before(self, pid):
        """What a process's pages hold before keys that can't be in any of them."""
        known = pages_in(pid)
        self.assertGreater(len(known) * len(EMPTY_PAGE), 5_000_000)
        return known

    def expect_nothing_in_memory(self, pid, known, texts, codes):
        memory = memory_of(pid, lambda line: True, known)
        self.assertTrue(any(memory), "the rest of the program's memory changes")
        self.assertFalse(holds(memory, texts, AS_TEXT), "typed text")
        self.assertFalse(holds(memory_of(pid, is_writable, known), codes, AS_RECORDS), "key codes")


if __name__ == "__main__":
    unittest.main(verbosity=2)
