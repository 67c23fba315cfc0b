"""What the kernel refuses the program, tried by the program itself and watched from outside."""

import ctypes
import os
import re
import resource
import shutil
import signal
import sqlite3
import unittest

from dashboard import TITLES, Dashboard
from desktop import DesktopTest, wait_for
from keyboard_grab import is_keyboard_grabbed
from screen_reader import ScreenReader
from tray_item import TrayItem

NO_NETWORK = {"inet": "EAFNOSUPPORT", "inet6": "EAFNOSUPPORT", "netlink": "EAFNOSUPPORT"}
CREATE_RULESET, VERSION_ONLY = 444, 1
HAS_LANDLOCK = ctypes.CDLL(None).syscall(CREATE_RULESET, None, 0, VERSION_ONLY) > 0
NO_FILE = {"file": "EACCES" if HAS_LANDLOCK else "done"}
CONFINED = {**NO_NETWORK, **NO_FILE, "local": "done"}
# Families of sockets that lead out of the machine, or into the kernel's tables of how to.
FAR = re.compile(r"\b[AP]F_(?!UNIX|LOCAL)\w+")
REFUSED = re.compile(r'open(?:at)?\(.*?"([^"]+)".*= -1 EACCES')


class ConfinementTest(DesktopTest):
    def test_the_kernel_refuses_networks_and_foreign_files(self):
        self.open_desktop(speed=1)
        report = self.desktop.home + "/report"
        recorder = self.desktop.start_recorder_and_wait(extra_env={
            "LD_PRELOAD": os.environ["CONFINEMENT_PROBE_LIBRARY"],
            "CONFINEMENT_REPORT": report, "CONFINEMENT_FILE": self.desktop.home + "/foreign"})
        os.kill(recorder.pid, signal.SIGUSR1)
        wait_for(lambda: "old-thread file" in self.text_of(report), "the report")
        found = {}
        for line in self.text_of(report).splitlines():
            who, what, outcome = line.split()
            found.setdefault(who, {})[what] = outcome
        self.assertEqual(found, {
            "main-thread": CONFINED,
            "new-thread": CONFINED,
            "child": {**CONFINED, "ptrace": "EPERM"},
            "program": {**NO_NETWORK, **NO_FILE},
            # Rules about files don't bind the threads of before, of which the program has none.
            "old-thread": {**CONFINED, "file": "done"}})
        self.assertIn("✅ 就绪", self.desktop.log())

    @unittest.skipUnless(HAS_LANDLOCK, "the kernel has no Landlock")
    def test_an_application_is_told_by_its_program_all_the_same(self):
        self.open_desktop()
        folder = self.desktop.home + "/share/applications"
        os.makedirs(folder)
        with open(folder + "/org.example.paint.desktop", "w", encoding="utf-8") as file:
            file.write("[Desktop Entry]\nType=Application\nName=画图\nExec=quillpaint\n")
        program = shutil.copy(shutil.which("xterm"), self.desktop.home + "/quillpaint")
        self.desktop.start_recorder_and_wait()
        self.desktop.open_window(program, "-name", "anything", "-class", "Anything")
        self.work_until(lambda: self.newest_session() == ["画图"], "a session of its name")

    @unittest.skipUnless(HAS_LANDLOCK, "the kernel has no Landlock")
    def test_recording_goes_on_in_a_data_directory_that_takes_the_old_ones_place(self):
        self.open_desktop()
        recorder = self.desktop.start_recorder_and_wait()
        self.desktop.open_window("xterm")
        self.work_until(lambda: self.newest_session() == ["XTerm"], "the first session")
        shutil.rmtree(self.desktop.data)
        self.desktop.open_window("xcalc")
        self.work_until(lambda: self.newest_session() == ["XCalc"], "rows in a new store")
        self.assertIn("已新建数据库继续记录", self.desktop.output())
        self.assertEqual(os.stat(self.desktop.data).st_mode & 0o777, 0o700)
        self.desktop.prepare_for_shutdown()
        self.assertEqual(recorder.wait(timeout=60), 0)
        self.assertIn("🛑", self.desktop.log())
        self.assertTrue(self.desktop.check_integrity())
        self.assertEqual([row[4] for row in self.desktop.sessions()], [0] * 2)

    def test_a_walk_touches_no_network_and_misses_no_file(self):
        self.open_desktop(speed=1)
        trace = self.desktop.home + "/trace"
        tray = TrayItem(self.desktop)
        reader = ScreenReader(self.desktop)
        recorder = self.desktop.spawn(
            ["strace", "-f", "-qq", "-o", trace, "-e", "trace=network,open,openat",
             self.desktop.program], cwd=self.desktop.home)
        tray.wait()
        wait_for(lambda: self.desktop.windows("Quillbrook"), "the dashboard")
        dashboard = Dashboard(self.desktop, reader)
        for title in TITLES:
            dashboard.open_page(title)
        self.saves_the_picture(reader)
        self.desktop.close_window("Quillbrook")
        tray.click("退出")
        self.assertEqual(recorder.wait(timeout=60), 0)

        calls = self.text_of(trace)
        self.assertIn("socket(AF_UNIX", calls)
        self.assertEqual(FAR.findall(calls), [])
        refused = {path for path in REFUSED.findall(calls) if path.startswith(self.desktop.home)}
        # There, among what is no program's own, the toolkit notes how the dialogue looked last.
        self.assertLessEqual(refused, {self.desktop.home + "/config"})

    def test_a_display_that_is_reached_through_the_network_is_recorded(self):
        self.open_desktop()
        self.desktop.move_to_network_display()
        self.desktop.start_recorder_and_wait()
        self.assertEqual(self.desktop.output().count("未向内核申请断网"), 1)
        self.desktop.open_window("xterm")
        self.desktop.wait_for_session("XTerm")

    def test_no_core_is_left_of_a_crash(self):
        self.open_desktop(speed=1)
        _now, most = resource.getrlimit(resource.RLIMIT_CORE)
        resource.setrlimit(resource.RLIMIT_CORE, (most, most))
        folder = self.desktop.home + "/started-here"
        os.mkdir(folder)
        recorder = self.desktop.start_recorder_and_wait(cwd=folder)
        with open("/proc/%d/limits" % recorder.pid, encoding="ascii") as file:
            self.assertRegex(file.read(), r"Max core file size +1 +1 ")
        recorder.send_signal(signal.SIGSEGV)
        self.assertEqual(recorder.wait(timeout=60), -signal.SIGSEGV)
        self.assertEqual(os.listdir(folder), [])
        logs = [name for name in os.listdir(self.desktop.data) if name.startswith("crash-")]
        self.assertEqual(len(logs), 1)
        log = self.text_of(os.path.join(self.desktop.data, logs[0]))
        self.assertIn("💥 崩溃信号: SIGSEGV", log)
        self.assertIn("=== 崩溃日志结束 ===", log)

    # The steps

    def saves_the_picture(self, reader):
        before = len(self.desktop.program_windows())
        self.desktop.click(reader.wait_for("push button", "分享").center)
        wait_for(lambda: len(self.desktop.program_windows()) > before, "the menu")
        wait_for(lambda: is_keyboard_grabbed(self.desktop.env["DISPLAY"]), "the menu's keys")
        self.desktop.press("Down", "Down", "Return")
        wait_for(lambda: self.desktop.active_window() in self.desktop.windows("存储图片"),
                 "the dialogue")
        self.desktop.press("Return")
        wait_for(lambda: os.path.exists(self.desktop.home + "/Quillbrook.png"), "the picture")

    def work_until(self, condition, what):
        """Types meanwhile: on a busy computer the fast clocks may find the person idle before."""
        def work():
            self.desktop.type("a")
            return condition()
        wait_for(work, what)

    def newest_session(self):
        try:
            return self.desktop.session_names()[-1:]
        except sqlite3.OperationalError:  # there is no store yet, or nothing in it
            return []

    @staticmethod
    def text_of(path):
        try:
            with open(path, encoding="utf-8", errors="replace") as file:
                return file.read()
        except FileNotFoundError:
            return ""


if __name__ == "__main__":
    unittest.main()
