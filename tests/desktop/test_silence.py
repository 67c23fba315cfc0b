"""The real program beside buses and services that take a call and never answer."""

import os
import signal
import socket
import unittest

from desktop import DesktopTest
from tray_item import TrayItem
from waiting import wait_for

# Without any wait of its own, the program is ready within this time even on a busy machine. Who waits
# for an answer on a bus does so for 25 seconds.
READY_SEC = 20


class SilenceTest(DesktopTest):
    def silent_socket(self, name):
        """The address of a socket that takes in whoever comes and never says a word."""
        path = os.path.join(self.desktop.home, name)
        listener = socket.socket(socket.AF_UNIX)
        self.addCleanup(listener.close)
        listener.bind(path)
        listener.listen(64)
        return "unix:path=" + path

    def silent_service(self, kind, name, path):
        """Lets a service of that name be there, which answers nothing. How long a call waits for it
        goes by the clocks: they must not run fast."""
        desktop = self.desktop
        service = desktop.spawn(["/usr/bin/python3", "-m", "dbusmock", "--" + kind, name, path, name])
        wait_for(lambda: desktop.session_bus.name_has_owner(name), name)
        os.kill(service.pid, signal.SIGSTOP)

    def expect_readiness(self):
        desktop = self.desktop
        desktop.start_recorder()
        wait_for(lambda: "✅ 就绪" in desktop.log() and desktop.windows("Quillbrook"),
                 "the recorder and its dashboard", timeout=READY_SEC)

    def expect_recording(self):
        desktop = self.desktop
        desktop.open_window("xterm")
        self.expect_readiness()
        desktop.close_dashboard()
        desktop.type("a")
        desktop.wait_for_session("XTerm")

    def test_buses_that_never_answer(self):
        self.open_desktop()
        desktop = self.desktop
        for variable in ("DBUS_SESSION_BUS_ADDRESS", "DBUS_SYSTEM_BUS_ADDRESS", "IBUS_ADDRESS",
                         "AT_SPI_BUS_ADDRESS"):
            desktop.env[variable] = self.silent_socket(variable)
        desktop.env["QT_IM_MODULE"] = "ibus"
        self.expect_recording()
        self.assertIn("没有会话总线", desktop.output())
        self.assertIn("没有系统总线", desktop.output())

    def test_an_input_method_whose_bus_never_answers(self):
        self.open_desktop()
        self.desktop.env["IBUS_ADDRESS"] = self.silent_socket("ibus")
        self.expect_recording()

    def test_a_session_manager_that_never_answers(self):
        self.open_desktop()
        self.desktop.env["SESSION_MANAGER"] = self.silent_socket("manager").replace(
            "unix:path=", "local/%s:" % socket.gethostname())
        self.expect_readiness()

    def test_a_tray_that_never_answers(self):
        self.open_desktop(speed=1)
        self.silent_service("session", "org.kde.StatusNotifierWatcher", "/StatusNotifierWatcher")
        self.expect_readiness()

    def test_a_global_menu_that_never_answers(self):
        self.open_desktop(speed=1)
        self.silent_service(
            "session", "com.canonical.AppMenu.Registrar", "/com/canonical/AppMenu/Registrar")
        self.expect_readiness()

    def test_an_input_method_portal_that_never_answers(self):
        self.open_desktop(speed=1)
        self.desktop.env.update(QT_IM_MODULE="ibus", IBUS_USE_PORTAL="1")
        self.silent_service("session", "org.freedesktop.portal.IBus", "/org/freedesktop/IBus")
        self.expect_readiness()

    def test_a_tray_that_answers_later(self):
        self.open_desktop(speed=1)
        item = TrayItem(self.desktop)
        os.kill(item.process.pid, signal.SIGSTOP)
        self.expect_readiness()
        self.assertEqual(self.desktop.start_recorder().wait(timeout=READY_SEC), 0,
                         "a second launch finds the first beside the silent tray")
        os.kill(item.process.pid, signal.SIGCONT)
        item.wait()
        self.assertIn("退出", item.titles())

    def test_a_session_bus_that_answers_later(self):
        self.open_desktop()
        desktop = self.desktop
        desktop.open_window("xterm")
        os.kill(desktop.session_bus_daemon.pid, signal.SIGSTOP)
        self.expect_readiness()
        desktop.close_dashboard()
        desktop.type("a")
        desktop.wait_for_session("XTerm")
        os.kill(desktop.session_bus_daemon.pid, signal.SIGCONT)
        wait_for(lambda: desktop.session_bus.name_has_owner("cn.tarnlow.quillbrook"), "our name")
        desktop.set_saver_active(True)
        desktop.wait_for_idle(3)
        desktop.set_saver_active(False)
        self.assertEqual(desktop.start_recorder().wait(timeout=READY_SEC), 0)
        wait_for(lambda: desktop.windows("Quillbrook"), "the dashboard, shown again")

    def test_screen_readers_that_never_answer(self):
        self.open_desktop(speed=1)
        self.silent_service("session", "org.a11y.Bus", "/org/a11y/bus")
        self.expect_readiness()

    def test_a_logind_that_never_answers(self):
        self.open_desktop(speed=1)
        os.kill(self.desktop.logind_process.pid, signal.SIGSTOP)
        self.expect_readiness()

    def test_buses_that_fall_silent_while_it_runs(self):
        self.open_desktop()
        desktop = self.desktop
        terminal = desktop.open_window("xterm")
        recorder = desktop.start_recorder_and_wait()
        desktop.type("a")
        desktop.wait_for_session("XTerm")
        daemons = (desktop.session_bus_daemon, desktop.system_bus_daemon)
        for daemon in daemons:
            os.kill(daemon.pid, signal.SIGSTOP)
        desktop.open_window("xcalc")
        desktop.wait_for_session("XCalc", 2)
        desktop.type("1")
        lines = desktop.log().count("💓")
        wait_for(lambda: desktop.log().count("💓") > lines, "the next minutes")
        desktop.kill(terminal)
        for daemon in daemons:
            os.kill(daemon.pid, signal.SIGCONT)
        desktop.set_locked(True)
        desktop.wait_for_idle(3)
        self.assertIsNone(recorder.poll())

    def test_the_end_does_not_wait_for_silent_buses(self):
        self.open_desktop()
        desktop = self.desktop
        desktop.open_window("xterm")
        recorder = desktop.start_recorder_and_wait()
        desktop.type("a")
        desktop.wait_for_session("XTerm")
        for daemon in (desktop.session_bus_daemon, desktop.system_bus_daemon):
            os.kill(daemon.pid, signal.SIGSTOP)
        desktop.kill(desktop.x_server)
        self.assertEqual(recorder.wait(timeout=READY_SEC), 1)
        self.assertEqual(desktop.sessions()[-1][4], 0, "the open session is finished")


if __name__ == "__main__":
    unittest.main(verbosity=2)
