"""The real program on a disk that takes nothing for a while."""

import mmap
import os
import struct
import unittest

from desktop import DesktopTest
from waiting import wait_for


class Faults:
    """The switch of the faults, and their count, that the program has before its libraries."""

    def __init__(self, path):
        with open(path, "w+b") as file:
            file.write(bytes(16))
            file.flush()
            self.memory = mmap.mmap(file.fileno(), 16)

    def fail(self, per_mille):
        self.memory[0:4] = struct.pack("=I", per_mille)

    def count(self):
        return struct.unpack("=I", self.memory[12:16])[0]


class DiskTest(DesktopTest):
    def work_until_recorded(self, name):
        """Types until the newest session is an open one of `name`."""
        def is_there():
            self.desktop.type("a")
            return [(row[0], row[4]) for row in self.desktop.sessions()[-1:]] == [(name, 1)]
        wait_for(is_there, "a session of " + name)

    def test_it_outlives_a_disk_that_takes_nothing(self):
        self.open_desktop()
        desktop = self.desktop
        control = desktop.home + "/faults"
        faults = Faults(control)
        desktop.open_window("xterm")
        recorder = desktop.start_recorder_and_wait(extra_env={
            "LD_PRELOAD": os.environ["DISK_FAULTS_LIBRARY"], "DISK_FAULTS": control,
            "DISK_FAULTS_FOLDER": desktop.data})
        self.work_until_recorded("XTerm")
        written = desktop.session_names()
        faults.fail(1000)
        message = desktop.open_window("xmessage", "hello")
        wait_for(lambda: "SQL 错误" in desktop.output(), "a line about the disk")
        desktop.kill(message)
        desktop.let_minutes_pass(2)
        self.assertIsNone(recorder.poll())
        self.assertGreater(faults.count(), 3)
        self.assertEqual(desktop.session_names()[:len(written)], written)
        faults.fail(0)
        desktop.open_window("xcalc")
        self.work_until_recorded("XCalc")
        self.assertEqual(desktop.session_names()[:len(written)], written)
        self.assertTrue(desktop.check_integrity())
        self.assertIsNone(recorder.poll())


if __name__ == "__main__":
    unittest.main(verbosity=2)
