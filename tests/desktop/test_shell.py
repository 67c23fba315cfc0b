"""The tray, the set-up window, the reopen and the quitting of the real program."""

import os
import signal
import subprocess
import unittest

from desktop import DesktopTest
from screen_reader import ScreenReader
from tray_item import TrayItem
from waiting import wait_for

ICON_PLATE = (0x3A, 0x3A, 0x3C)


class ShellTest(DesktopTest):
    def setUp(self):
        self.open_desktop(speed=1)

    def start_with_tray(self):
        self.item = TrayItem(self.desktop)
        self.recorder = self.desktop.start_recorder()
        self.item.wait()

    def autostart(self):
        return os.path.exists(
            self.desktop.home + "/config/autostart/cn.tarnlow.quillbrook.desktop")

    def crash_log(self):
        for name in os.listdir(self.desktop.data):
            if name.startswith("crash-"):
                with open(os.path.join(self.desktop.data, name), encoding="utf-8") as file:
                    return file.read()
        return ""

    def test_no_session_manager_starts_it_again(self):
        desktop = self.desktop
        told = desktop.home + "/session-manager"
        with open(told, "wb") as file:
            desktop.spawn(["/usr/bin/python3", "-B", os.path.abspath("session_manager.py")],
                          stdout=file)

        def lines():
            with open(told, encoding="utf-8") as file:
                return file.read().splitlines()
        desktop.env["SESSION_MANAGER"] = wait_for(lines, "the session manager")[0]
        desktop.start_recorder()
        hints = wait_for(lambda: lines()[1:], "the restart hint")
        self.assertEqual(hints, ["restart hint 3"], "never, as the protocol has it")

    def test_the_tray_shows_the_menu_with_its_shortcuts(self):
        self.start_with_tray()
        self.assertEqual(self.item.titles(), ["Alerts：0", "Hours：0h0m", "-", "刷新数据", "-",
                                         "开机自启：开", "退出"])
        shortcuts = {str(properties["label"]): [str(key) for key in properties["shortcut"][0]]
                     for _id, properties in self.item.entries() if "shortcut" in properties}
        self.assertEqual(shortcuts, {"刷新数据": ["Control", "R"], "退出": ["Control", "Q"]})
        self.assertEqual(self.item.tooltip(), "Quillbrook · 今日 0h0m")
        pixmaps = self.item.property("IconPixmap")
        self.assertIn(22, [int(pixmap[0]) for pixmap in pixmaps])

    def test_refreshing_from_the_menu_reads_the_store(self):
        self.start_with_tray()
        self.desktop.write(
            "INSERT INTO alerts (timestamp, alert_type, severity, message) "
            "VALUES (strftime('%s', 'now'), 'cpu', 'warning', '');"
            "INSERT INTO keystrokes (timestamp, app_name, input_method, keystroke_count) "
            "VALUES (strftime('%s', 'now'), 'Editor', 'english', 2000)")
        self.item.click("刷新数据")
        wait_for(lambda: "Alerts：1" in self.item.titles(), "the alert in the menu")
        self.assertIn("Tokens：496", self.item.titles())

    def test_the_login_item_is_switched_from_the_menu(self):
        self.start_with_tray()
        self.assertTrue(self.autostart())
        self.item.click("开机自启：开")
        wait_for(lambda: not self.autostart(), "the end of the login item")

    def test_quitting_from_the_menu_ends_the_rows(self):
        self.start_with_tray()
        self.desktop.write("INSERT INTO idle_periods (started_at) VALUES (1767225600)")
        self.item.click("退出")
        self.assertEqual(self.recorder.wait(timeout=60), 0)
        self.assertEqual(self.desktop.rows(
            "SELECT (SELECT COUNT(*) FROM app_sessions WHERE ended_at IS NULL) + "
            "(SELECT COUNT(*) FROM idle_periods WHERE ended_at IS NULL)"), [(0,)])
        self.assertIn("🛑 监控引擎停止中", self.desktop.log())
        self.assertIn("正常退出", self.crash_log())
        self.assertFalse(os.path.exists(self.desktop.data + "/clean_exit"))

    def test_a_click_on_the_icon_in_a_panel_that_came_later_opens_the_menu(self):
        self.desktop.start_recorder_and_wait()
        wait_for(lambda: not self.desktop.program_windows(), "the end of the dashboard")
        self.desktop.start_tray()
        icon = wait_for(self.desktop.program_windows, "the icon")[0]
        wait_for(lambda: ICON_PLATE in self.desktop.colors(icon), "the drawn icon")
        self.desktop.click(self.desktop.place(icon))
        wait_for(lambda: len(self.desktop.program_windows()) == 2, "the menu")
        self.desktop.press("Down", "Return")
        wait_for(lambda: self.desktop.windows("Quillbrook"), "the dashboard")
        wait_for(lambda: self.desktop.last_page() == "Alerts", "the first entry's page")

    def test_the_shortcuts_work_while_the_dashboard_is_active(self):
        self.start_with_tray()
        self.front_dashboard()
        self.desktop.press("ctrl+w")
        wait_for(lambda: not self.desktop.windows("Quillbrook"), "the end of the window")
        self.assertEqual(self.desktop.start_recorder().wait(timeout=60), 0)
        self.front_dashboard()
        self.desktop.press("Tab", "Tab")
        self.desktop.write("INSERT INTO alerts (timestamp, alert_type, severity, message) "
                           "VALUES (strftime('%s', 'now'), 'cpu', 'warning', '')")
        self.desktop.press("ctrl+r")
        wait_for(lambda: "Alerts：1" in self.item.titles(), "the alert in the menu")
        self.desktop.press("ctrl+q")
        self.assertEqual(self.recorder.wait(timeout=60), 0)

    def front_dashboard(self):
        window = wait_for(lambda: self.desktop.windows("Quillbrook"), "the dashboard")[0]
        wait_for(lambda: self.desktop.active_window() == window, "the focus")
        return window

    def test_without_a_tray_the_menu_of_the_window_quits(self):
        reader = ScreenReader(self.desktop)
        recorder = self.desktop.start_recorder()
        self.front_dashboard()
        self.desktop.click(reader.wait_for("menu item", "Quillbrook").center)
        self.desktop.click(reader.wait_for("menu item", "退出").center)
        self.assertEqual(recorder.wait(timeout=60), 0)

    def test_the_windows_have_our_icon(self):
        self.desktop.start_recorder()
        self.assert_icon(self.front_dashboard())

    def assert_icon(self, window):
        sizes = self.desktop.tool("xprop", "-id", str(window), "-notype", "_NET_WM_ICON")
        for size in (16, 48, 128):
            self.assertIn("Icon (%d x %d)" % (size, size), sizes)

    def test_the_set_up_window_is_styled_like_all(self):
        os.remove(self.desktop.home + "/config/tarnlow.cn/quillbrook.conf")
        recorder = self.desktop.start_recorder()
        window = wait_for(lambda: self.desktop.visible_window("Quillbrook 初始设置"), "the window")
        wait_for(lambda: self.desktop.active_window() == window, "the focus")
        wait_for(lambda: self.desktop.commonest_color(window) == (0xEC, 0xEC, 0xEC), "our grey")
        self.assert_icon(window)
        self.desktop.press("ctrl+q")
        self.assertEqual(recorder.wait(timeout=60), 0)

    def test_without_a_tray_one_line_tells_the_way_in(self):
        self.desktop.start_recorder_and_wait()
        wait_for(lambda: "没有托盘，不显示图标" in self.desktop.output(), "the line")
        self.assertEqual(self.desktop.output().count("没有托盘，不显示图标"), 1)

    def test_the_first_launch_records_only_once_the_user_went_on(self):
        os.remove(self.desktop.home + "/config/tarnlow.cn/quillbrook.conf")
        recorder = self.desktop.start_recorder()
        wait_for(lambda: self.desktop.visible_window("Quillbrook 初始设置"), "the set-up window")
        self.assertFalse(os.path.exists(self.desktop.data + "/monitor.db"))
        wait_for(lambda: self.desktop.active_window() == self.desktop.visible_window("Quillbrook 初始设置"),
                 "the focus")
        self.desktop.press("Return")
        wait_for(lambda: "✅ 就绪" in self.desktop.log(), "the recorder")
        wait_for(lambda: not self.desktop.visible_window("Quillbrook 初始设置"), "the end of the window")
        self.assertIsNone(recorder.poll())

    def test_closing_the_set_up_neither_records_nor_ends_the_program(self):
        os.remove(self.desktop.home + "/config/tarnlow.cn/quillbrook.conf")
        recorder = self.desktop.start_recorder()
        wait_for(lambda: self.desktop.visible_window("Quillbrook 初始设置"), "the set-up window")
        wait_for(lambda: self.desktop.active_window() == self.desktop.visible_window("Quillbrook 初始设置"),
                 "the focus")
        self.desktop.press("alt+F4")
        wait_for(lambda: not self.desktop.visible_window("Quillbrook 初始设置"), "the end of the window")
        self.assertIsNone(recorder.poll())
        self.assertFalse(os.path.exists(self.desktop.data + "/monitor.db"))

    def test_a_second_launch_brings_the_open_window_to_the_front_and_ends(self):
        os.remove(self.desktop.home + "/config/tarnlow.cn/quillbrook.conf")
        recorder = self.desktop.start_recorder()
        window = wait_for(lambda: self.desktop.visible_window("Quillbrook 初始设置"), "the set-up window")
        wait_for(lambda: self.desktop.active_window() == window, "the focus")
        self.desktop.open_window("xterm")
        second = self.desktop.start_recorder()
        self.assertEqual(second.wait(timeout=60), 0)
        wait_for(lambda: self.desktop.active_window() == window, "the window in front again")
        self.assertIsNone(recorder.poll())

    def test_a_second_launch_brings_the_minimized_dashboard_back(self):
        self.desktop.start_recorder()
        window = wait_for(lambda: self.desktop.windows("Quillbrook"), "the dashboard")[0]
        wait_for(lambda: self.desktop.active_window() == window, "the focus")
        self.desktop.tool("xdotool", "windowminimize", str(window))
        wait_for(lambda: self.desktop.active_window() != window, "the focus elsewhere")
        self.assertEqual(self.desktop.start_recorder().wait(timeout=60), 0)
        wait_for(lambda: self.desktop.active_window() == window, "the dashboard in front again")

    def files(self):
        """The names and the times of all that the program keeps."""
        found = {}
        for folder in (self.desktop.data, self.desktop.home + "/config"):
            for place, _folders, names in os.walk(folder):
                for name in names:
                    path = os.path.join(place, name)
                    found[path] = os.stat(path).st_mtime_ns
        return found

    def test_a_second_launch_leaves_a_busy_first_one_alone(self):
        recorder = self.desktop.start_recorder_and_wait()
        os.kill(recorder.pid, signal.SIGSTOP)
        before = self.files()
        self.assertEqual(self.desktop.start_recorder().wait(timeout=60), 0)
        self.assertEqual(self.files(), before)
        os.kill(recorder.pid, signal.SIGCONT)
        wait_for(lambda: self.desktop.windows("Quillbrook"), "the dashboard that was asked for")
        self.assertIsNone(recorder.poll())

    def test_a_second_launch_takes_the_place_of_one_that_ends(self):
        recorder = self.desktop.start_recorder_and_wait()
        os.kill(recorder.pid, signal.SIGSTOP)
        lines = self.desktop.log().count("✅ 就绪")
        second = self.desktop.start_recorder()
        name = "cn.tarnlow.quillbrook"
        with self.assertRaises(subprocess.TimeoutExpired):
            second.wait(timeout=1)
        self.assertTrue(self.desktop.session_bus.name_has_owner(name))
        self.desktop.kill(recorder)
        wait_for(lambda: self.desktop.log().count("✅ 就绪") > lines, "the second recorder")
        self.assertIsNone(second.poll())

    def test_the_program_quits_while_a_dialogue_is_open(self):
        reader = ScreenReader(self.desktop)
        self.start_with_tray()
        reader.wait_for("label", "Today Is a Present")
        self.desktop.click(reader.wait_for("push button", "导出 CSV").center)
        wait_for(lambda: self.desktop.windows("导出时间线数据"), "the dialogue")
        self.item.click("退出")
        self.assertEqual(self.recorder.wait(timeout=60), 0)
        self.assertFalse(os.path.exists(self.desktop.data + "/clean_exit"))

    def test_a_fault_leaves_a_block_in_the_crash_log(self):
        recorder = self.desktop.start_recorder_and_wait()
        os.kill(recorder.pid, 11)
        self.assertEqual(recorder.wait(timeout=60), -11)
        self.assertRegex(self.crash_log(), r"quillbrook\(main\+0x")
        self.assertIn("💥 崩溃信号: SIGSEGV (段错误)", self.crash_log())
        self.assertIn("=== 崩溃日志结束 ===", self.crash_log())


if __name__ == "__main__":
    unittest.main()
