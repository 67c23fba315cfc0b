"""The real program when the machine sleeps: the night is nobody's work, in whatever order and by
whomever the waking is told."""

import os
import signal
import time
import unittest

from desktop import DesktopTest
from waiting import wait_for

NIGHT_SEC = 60  # on the desktop's clocks


class SleepTest(DesktopTest):
    def setUp(self):
        # Slow enough for what happens between two of the recorder's looks, a second apart.
        self.open_desktop(speed=10)

    def start_working(self, **environment):
        desktop = self.desktop
        desktop.env.update(environment)
        desktop.open_window("xterm")
        recorder = desktop.start_recorder_and_wait()
        desktop.type("a")
        desktop.wait_for_session("XTerm")
        wait_for(desktop.inhibitors, "the inhibitor")
        return recorder

    def sleep(self, recorder):
        """Lets nothing of the program run for a night."""
        os.kill(recorder.pid, signal.SIGSTOP)
        time.sleep(NIGHT_SEC / self.desktop.speed)
        os.kill(recorder.pid, signal.SIGCONT)

    def expect_the_night_to_be_idle(self):
        desktop = self.desktop
        desktop.wait_for_session("XTerm", 2)
        self.assertLess(desktop.sessions()[0][3], desktop.rows(
            "SELECT (SELECT MAX(started_at) FROM app_sessions) - MIN(started_at) FROM app_sessions"
        )[0][0] - NIGHT_SEC + 10)
        self.assertEqual(desktop.idles()[0][0], 2)
        self.assertGreater(desktop.idles()[0][1], NIGHT_SEC - 10)

    def expect_lasting_work(self):
        """What only a look at the person brought back ends again within the next second."""
        desktop = self.desktop
        desktop.wait_for_session("XTerm", 2)
        desktop.let_minutes_pass(0.2)
        self.assertEqual(desktop.sessions()[1][4], 1, "the session goes on")

    def test_the_rows_are_finished_before_the_machine_may_sleep(self):
        desktop = self.desktop
        recorder = self.start_working()
        desktop.prepare_for_sleep(True)
        wait_for(lambda: not desktop.inhibitors(), "the leave to sleep")
        self.assertEqual(desktop.sessions()[0][4], 0, "the session is finished")
        self.assertEqual([row[0] for row in desktop.idles()], [2])
        self.sleep(recorder)
        desktop.prepare_for_sleep(False)
        self.expect_the_night_to_be_idle()
        self.assertEqual(desktop.sessions()[1][2], 2)
        wait_for(desktop.inhibitors, "the inhibitor for the next night")

    def test_a_machine_that_does_not_wait_for_the_rows(self):
        desktop = self.desktop
        recorder = self.start_working()
        desktop.prepare_for_sleep(True)
        wait_for(lambda: "💤 系统即将睡眠" in desktop.log(), "the announcement")
        os.kill(recorder.pid, signal.SIGSTOP)
        time.sleep(NIGHT_SEC / desktop.speed)
        desktop.prepare_for_sleep(False)
        os.kill(recorder.pid, signal.SIGCONT)
        self.expect_the_night_to_be_idle()

    def start_with_shifted_boot_time(self):
        self.shift = os.path.join(self.desktop.home, "shift")
        return self.start_working(LD_PRELOAD=os.environ["BOOT_TIME_SHIFT_LIBRARY"],
                                  BOOT_TIME_SHIFT=self.shift)

    def sleep_by_the_clocks(self, recorder):
        os.kill(recorder.pid, signal.SIGSTOP)
        time.sleep(NIGHT_SEC / self.desktop.speed)
        with open(self.shift, "w", encoding="ascii") as file:
            file.write(str(NIGHT_SEC))
        os.kill(recorder.pid, signal.SIGCONT)

    def test_a_waking_that_only_the_clocks_tell(self):
        desktop = self.desktop
        recorder = self.start_with_shifted_boot_time()
        desktop.prepare_for_sleep(True)
        wait_for(lambda: "💤 系统即将睡眠" in desktop.log(), "the announcement")
        self.sleep_by_the_clocks(recorder)
        self.expect_the_night_to_be_idle()
        self.assertEqual(desktop.log().count("☀️ 系统已唤醒"), 1)
        desktop.prepare_for_sleep(False)
        wait_for(desktop.inhibitors, "the inhibitor for the next night")
        self.assertEqual(desktop.log().count("☀️ 系统已唤醒"), 1, "it is told once")

    def test_a_sleep_that_only_the_clocks_tell(self):
        desktop = self.desktop
        desktop.kill(desktop.system_bus_daemon)
        desktop.env["DBUS_SYSTEM_BUS_ADDRESS"] = "unix:path=/nonexistent"
        desktop.inhibitors = lambda: ["nobody waits"]
        recorder = self.start_with_shifted_boot_time()
        self.sleep_by_the_clocks(recorder)
        self.expect_the_night_to_be_idle()

    def test_a_logind_that_starts_anew_during_a_sleep(self):
        desktop = self.desktop
        self.start_working()
        desktop.prepare_for_sleep(True)
        desktop.wait_for_idle(2)
        desktop.kill(desktop.logind_process)
        desktop.start_logind()
        self.expect_lasting_work()
        self.assertEqual(desktop.sessions()[1][2], 2)
        wait_for(desktop.inhibitors, "the inhibitor for the next night")

    def test_a_system_bus_that_starts_anew_during_a_sleep(self):
        desktop = self.desktop
        self.start_working()
        desktop.prepare_for_sleep(True)
        desktop.wait_for_idle(2)
        desktop.kill(desktop.system_bus_daemon)
        desktop.start_system_bus()
        self.expect_lasting_work()
        wait_for(desktop.inhibitors, "the inhibitor for the next night")


if __name__ == "__main__":
    unittest.main(verbosity=2)
