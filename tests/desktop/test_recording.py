"""The real program on a real desktop: what is done, and the rows that tell of it."""

import os
import signal
import time
import unittest

from desktop import DesktopTest
from endurance import Life
from waiting import wait_for

TERMINAL = ("XTerm", "com.apple.Terminal.xterm")


class RecordingTest(DesktopTest):
    def setUp(self):
        self.open_desktop()

    def start_working(self):
        """Starts the recorder with somebody at work in a terminal."""
        desktop = self.desktop
        desktop.open_window("xterm")
        recorder = desktop.start_recorder_and_wait()
        desktop.type("a")
        desktop.wait_for_session("XTerm")
        return recorder

    def recorded_pid(self):
        with open(self.desktop.data + "/monitor.pid", encoding="ascii") as file:
            return int(file.read())

    def test_every_switch_and_every_key_of_a_busy_person_is_recorded(self):
        life = Life(self.desktop)
        for _ in range(30):
            life.switch(keys=10)
        life.wait_for_keys()
        self.assertEqual(life.recorded_switches(), life.switched_to)
        self.assertEqual(life.recorded_keys(), 300)
        self.assertTrue(self.desktop.check_integrity())

    def test_each_front_is_a_session(self):
        desktop = self.desktop
        self.start_working()
        calculator = desktop.open_window("xcalc")
        desktop.wait_for_session("XCalc", 2)
        desktop.open_window("xmessage", "hello")
        desktop.wait_for_session("Xmessage", 3)
        desktop.tool("xdotool", "search", "--class", "XCalc", "windowactivate")
        desktop.wait_for_session("XCalc", 4)
        desktop.kill(calculator)
        wait_for(lambda: desktop.session_names()[-1] != "XCalc", "the end of the calculator")
        rows = desktop.sessions()
        self.assertEqual([row[0] for row in rows[:4]], ["XTerm", "XCalc", "Xmessage", "XCalc"])
        self.assertEqual(rows[0][1], TERMINAL[1])
        self.assertEqual([row[2] for row in rows[:5]], [1, 0, 0, 0, 0])
        # Each session ends where the next begins.
        gaps = desktop.rows("SELECT b.started_at - a.ended_at FROM app_sessions a "
                            "JOIN app_sessions b ON b.id = a.id + 1")
        for gap, in gaps:
            self.assertLess(abs(gap), 3.0)
        self.assertEqual(desktop.idles(), [])

    def test_durations_are_those_of_the_clock(self):
        desktop = self.desktop
        self.start_working()
        opened = time.monotonic()
        calculator = desktop.open_window("xcalc")
        desktop.wait_for_session("XCalc", 2)
        seen = time.monotonic()
        desktop.let_minutes_pass(3)
        closed = time.monotonic()
        desktop.kill(calculator)
        desktop.wait_for_session("XTerm", 3)
        gone = time.monotonic()
        # The session began and ended somewhere between what we did and what we saw.
        duration = desktop.sessions()[1][3]
        self.assertGreater(duration, (closed - seen) * desktop.speed - 3)
        self.assertLess(duration, (gone - opened) * desktop.speed + 3)

    def test_an_empty_desktop_is_the_desktop(self):
        desktop = self.desktop
        self.start_working()
        desktop.tool("xdotool", "getactivewindow", "windowminimize")
        desktop.wait_for_session("桌面", 2)
        self.assertEqual(desktop.sessions()[1][1], "com.apple.finder")
        desktop.tool("xdotool", "search", "--class", "XTerm", "windowactivate")
        desktop.wait_for_session("XTerm", 3)

    def test_a_person_who_went_is_idle(self):
        desktop = self.desktop
        self.start_working()
        # Input was seen within the hour, so that the silence is a row without length at first.
        wait_for(desktop.idles, "an idle period", timeout=60)
        self.assertEqual(desktop.idles()[0], (1, 0.0, 0))
        desktop.wait_for_session("XTerm", 2)
        self.assertEqual(desktop.sessions()[1][2], 1)
        # The silence begins a moment before the session's row at this speed of the clocks.
        self.assertGreater(desktop.sessions()[0][3], 300 - 5)

    def test_a_locked_session(self):
        desktop = self.desktop
        self.start_working()
        desktop.set_locked(True)
        desktop.wait_for_idle(3)
        desktop.let_minutes_pass(10)
        self.assertEqual(len(desktop.sessions()), 1, "nobody sees the window behind the lock")
        desktop.type("password")
        desktop.set_locked(False)
        desktop.wait_for_session("XTerm", 2)
        self.assertEqual(desktop.sessions()[1][2], 3)
        self.assertEqual(len(desktop.idles()), 1)
        self.assertGreater(desktop.idles()[0][1], 570)
        self.assertIn("🔒 屏幕已休眠", desktop.log())
        self.assertIn("🔓 屏幕已唤醒", desktop.log())

    def test_screen_savers_of_desktop_and_server(self):
        desktop = self.desktop
        self.start_working()
        desktop.set_saver_active(True)
        desktop.wait_for_idle(3)
        desktop.tool("xset", "s", "activate")
        # The two are heard of on different ways: the second must not overtake the first.
        desktop.let_minutes_pass(0.5)
        desktop.set_saver_active(False)
        desktop.let_minutes_pass(1)
        self.assertEqual(len(desktop.sessions()), 1, "the server's saver is still on")
        desktop.tool("xset", "s", "reset")
        desktop.wait_for_session("XTerm", 2)
        self.assertEqual(desktop.log().count("🔒"), 1)

    def test_sleep_and_wake(self):
        desktop = self.desktop
        self.start_working()
        wait_for(desktop.inhibitors, "the inhibitor")
        desktop.prepare_for_sleep(True)
        desktop.wait_for_idle(2)
        # The machine doesn't really sleep here: after two minutes a check would bring back.
        desktop.let_minutes_pass(1.5)
        desktop.prepare_for_sleep(False)
        desktop.wait_for_session("XTerm", 2)
        self.assertEqual(desktop.sessions()[1][2], 2)
        self.assertGreater(desktop.idles()[0][1], 85)
        self.assertIn("💤 系统即将睡眠", desktop.log())
        self.assertIn("☀️ 系统已唤醒", desktop.log())

    def test_a_session_that_is_locked_from_the_start(self):
        desktop = self.desktop
        desktop.set_locked(True)
        desktop.open_window("xterm")
        desktop.start_recorder_and_wait()
        wait_for(lambda: "🔒" in desktop.log(), "the lock")
        desktop.type("a")
        desktop.let_minutes_pass(4)
        self.assertEqual(desktop.sessions(), [])
        desktop.type("password")
        desktop.set_locked(False)
        desktop.wait_for_session("XTerm", 1)

    def test_the_display_goes_away(self):
        desktop = self.desktop
        recorder = self.start_working()
        desktop.kill(desktop.x_server)
        self.assertEqual(recorder.wait(timeout=60), 1)
        self.assertEqual(desktop.sessions()[-1][4], 0, "the open session is finished")
        self.assertTrue(desktop.log().endswith("🛑 监控引擎停止中...\n"))
        self.assertFalse(os.path.exists(desktop.data + "/monitor.pid"))

    def test_the_machine_goes_down(self):
        desktop = self.desktop
        recorder = self.start_working()
        wait_for(desktop.inhibitors, "the inhibitor")
        desktop.prepare_for_shutdown()
        self.assertEqual(recorder.wait(timeout=60), 0)
        self.assertEqual(desktop.sessions()[-1][4], 0)
        self.assertTrue(desktop.log().endswith("🛑 监控引擎停止中...\n"))

    def test_termination_is_no_orderly_stop(self):
        desktop = self.desktop
        for number in (signal.SIGTERM, signal.SIGINT):
            recorder = self.start_working()
            self.assertEqual(desktop.kill(recorder, number), -number)
            self.assertEqual(desktop.sessions()[-1][4], 1)
            self.assertNotIn("🛑", desktop.log())

    def test_kills_at_every_kind_of_moment(self):
        desktop = self.desktop

        def lock():
            desktop.set_locked(True)
            desktop.wait_for_idle(3)

        def sleep():
            desktop.prepare_for_sleep(True)
            desktop.wait_for_idle(2)

        desktop.open_window("xterm")
        sessions = 0
        for name, go_on in (("at the start", None), ("at work", lambda: None), ("locked", lock),
                            ("asleep", sleep)):
            with self.subTest(name):
                desktop.set_locked(False)
                recorder = desktop.start_recorder_and_wait()
                if go_on is not None:
                    sessions += 1
                    desktop.type("a")
                    desktop.wait_for_session("XTerm", sessions)
                    go_on()
                desktop.kill(recorder)
                self.assertTrue(desktop.check_integrity())
                self.assertEqual(len(desktop.sessions()), sessions)
        recorder = desktop.start_recorder_and_wait()
        desktop.type("a")
        desktop.wait_for_session("XTerm", sessions + 1)
        # All but the newest open session ended where the next began, or before.
        self.assertEqual([row[4] for row in desktop.sessions()], [0] * sessions + [1])
        self.assertEqual([row[2] for row in desktop.idles()], [0] * len(desktop.idles()))
        # Those that were open at a kill, beside the silences of the clocks' many minutes.
        self.assertEqual([row[0] for row in desktop.idles() if row[0] != 1], [4, 4])
        desktop.kill(recorder)
        self.assertTrue(desktop.check_integrity())

    def test_kills_at_random_moments(self):
        desktop = self.desktop
        desktop.open_window("xterm")
        for i in range(8):
            recorder = desktop.start_recorder()
            desktop.press("a")
            time.sleep(0.15 * i)  # no moment in particular
            desktop.kill(recorder)
            if os.path.exists(desktop.data + "/monitor.db"):
                self.assertTrue(desktop.check_integrity())
        desktop.start_recorder_and_wait()
        self.assertTrue(desktop.check_integrity())
        self.assertNotIn("⚠️ SQL", desktop.log())

    def test_a_second_launch_changes_nothing(self):
        desktop = self.desktop
        recorder = self.start_working()
        log = desktop.log()
        second = desktop.start_recorder()
        self.assertEqual(second.wait(timeout=60), 0)
        self.assertEqual(self.recorded_pid(), recorder.pid)
        self.assertTrue(desktop.log().startswith(log))
        self.assertNotIn("⚠️", desktop.log())
        self.assertIsNone(recorder.poll())

    def test_without_a_bus_a_second_instance_does_not_record(self):
        desktop = self.desktop
        del desktop.env["DBUS_SESSION_BUS_ADDRESS"]
        self.start_working()
        second = desktop.start_recorder()
        wait_for(lambda: "⚠️ MonitorEngine 已在运行中，退出启动" in desktop.output(),
                 "the second instance's line")
        self.assertIsNone(second.poll())
        self.assertEqual(desktop.log().count("🚀"), 1)
        self.assertEqual(len(desktop.sessions()), 1)

    def test_services_that_come_later_are_used(self):
        desktop = self.desktop
        desktop.kill(desktop.logind_process)
        desktop.kill(desktop.window_manager)
        recorder = desktop.start_recorder()
        wait_for(lambda: "没有窗口管理器" in desktop.output(), "a line about the window manager")
        wait_for(lambda: "logind 不可用" in desktop.output(), "a line about logind")
        wait_for(lambda: desktop.visible_window("^Quillbrook$"), "the dashboard")
        desktop.start_window_manager()
        desktop.start_logind()
        desktop.close_dashboard()
        wait_for(desktop.inhibitors, "the inhibitor")
        desktop.open_window("xterm")
        desktop.type("a")
        desktop.wait_for_session("XTerm")
        desktop.set_locked(True)
        desktop.wait_for_idle(3)
        self.assertIsNone(recorder.poll())

    def test_buses_that_die_and_come_back(self):
        desktop = self.desktop
        recorder = self.start_working()
        desktop.kill(desktop.system_bus_daemon)
        desktop.kill(desktop.session_bus_daemon)
        wait_for(lambda: "没有系统总线" in desktop.output() and "没有会话总线" in desktop.output(),
                 "lines about the buses")
        self.assertIsNone(recorder.poll())
        desktop.start_session_bus()
        desktop.start_system_bus()
        wait_for(desktop.inhibitors, "the inhibitor")
        desktop.set_locked(True)
        desktop.wait_for_idle(3)
        desktop.set_locked(False)
        desktop.wait_for_session("XTerm")
        desktop.set_saver_active(True)
        desktop.wait_for_idle(3)

    def test_a_locker_that_tells_nobody(self):
        desktop = self.desktop
        self.start_working()
        locker = desktop.spawn(["i3lock", "--nofork"])
        desktop.wait_for_idle(3)
        self.assertEqual(len(desktop.sessions()), 1)
        desktop.kill(locker)
        desktop.wait_for_session("XTerm", 2)
        self.assertEqual(desktop.sessions()[1][2], 3)

    def test_a_saver_that_dies_covers_nothing(self):
        desktop = self.desktop
        self.start_working()
        saver = desktop.spawn(["/usr/bin/python3", "-m", "dbusmock", "--session", "org.gnome.ScreenSaver",
                               "/org/gnome/ScreenSaver", "org.gnome.ScreenSaver"])
        wait_for(lambda: desktop.session_bus.name_has_owner("org.gnome.ScreenSaver"), "the saver")
        desktop.session_bus.get_object("org.gnome.ScreenSaver", "/org/gnome/ScreenSaver").EmitSignal(
            "org.gnome.ScreenSaver", "ActiveChanged", "b", [True],
            dbus_interface="org.freedesktop.DBus.Mock")
        desktop.wait_for_idle(3)
        desktop.kill(saver)
        desktop.wait_for_session("XTerm", 2)

    def test_a_saver_that_is_on_at_the_start(self):
        desktop = self.desktop
        desktop.spawn(["/usr/bin/python3", "-m", "dbusmock", "--session", "org.gnome.ScreenSaver",
                       "/org/gnome/ScreenSaver", "org.gnome.ScreenSaver"])
        wait_for(lambda: desktop.session_bus.name_has_owner("org.gnome.ScreenSaver"), "the saver")
        desktop.session_bus.get_object("org.gnome.ScreenSaver", "/org/gnome/ScreenSaver").AddMethod(
            "org.gnome.ScreenSaver", "GetActive", "", "b", "ret = True",
            dbus_interface="org.freedesktop.DBus.Mock")
        desktop.start_recorder_and_wait()
        wait_for(lambda: "🔒" in desktop.log(), "the lock")

    def test_a_logind_that_dies_knows_no_lock(self):
        desktop = self.desktop
        self.start_working()
        desktop.set_locked(True)
        desktop.wait_for_idle(3)
        desktop.kill(desktop.logind_process)
        desktop.wait_for_session("XTerm", 2)

    def test_odd_application_names(self):
        desktop = self.desktop
        desktop.open_window("xcalc")
        odd_window = str(desktop.active_window())
        self.start_working()
        count = 1
        for given, recorded in (("O'Neil \"Q\" 📝; DROP TABLE app_sessions;--",) * 2,
                                ("n" * 4096, "n" * 200),
                                ("a\n[2026-01-01T00:00:00Z] ✅ 就绪",
                                 "a [2026-01-01T00:00:00Z] ✅ 就绪"),
                                (b"bad\xff\xfebytes", "bad\ufffd\ufffdbytes")):
            desktop.tool("xprop", "-id", odd_window, "-f", "WM_CLASS", "8s",
                         "-set", "WM_CLASS", given)
            desktop.tool("xdotool", "windowactivate", odd_window)
            count += 1
            desktop.wait_for_session(recorded, count)
            self.assertEqual(desktop.sessions()[-1][1], recorded)
            desktop.tool("xdotool", "search", "--class", "XTerm", "windowactivate")
            count += 1
            desktop.wait_for_session("XTerm", count)
        self.assertNotIn("⚠️ SQL", desktop.log())
        self.assertNotIn("\n[2026-01-01T00:00:00Z]", desktop.log())

    def test_without_a_window_manager_the_focus_tells(self):
        desktop = self.desktop
        desktop.kill(desktop.window_manager)
        desktop.start_recorder()
        wait_for(lambda: desktop.visible_window("^Quillbrook$"), "the dashboard")
        for _ in range(20):
            desktop.press("a")
            desktop.let_minutes_pass(0.2)
        self.assertEqual(desktop.sessions(), [], "nobody knows of an application in front")
        desktop.spawn(["xcalc"])
        window = wait_for(lambda: desktop.visible_window("^Calculator$"), "the calculator")
        desktop.tool("xdotool", "windowfocus", "--sync", str(window))
        desktop.press("1")
        desktop.wait_for_session("XCalc", 1)

    def test_output_that_nobody_reads(self):
        desktop = self.desktop
        desktop.open_window("xterm")
        read_end, write_end = os.pipe()
        os.close(read_end)
        recorder = desktop.start_recorder_and_wait(stdout=write_end)
        os.close(write_end)
        desktop.type("a")
        desktop.wait_for_session("XTerm")
        self.assertIsNone(recorder.poll())

    def test_the_data_directory_is_private(self):
        self.start_working()
        self.assertEqual(os.stat(self.desktop.data).st_mode & 0o777, 0o700)
        self.assertEqual(os.path.realpath(self.desktop.program),
                         os.readlink("/proc/%d/exe" % self.recorded_pid()))


if __name__ == "__main__":
    unittest.main(verbosity=2)
