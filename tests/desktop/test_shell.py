"""The tray, the set-up window, the reopen and the quitting of the real program."""

import os
import unittest

import dbus

from desktop import DesktopTest, wait_for

WATCHER = "org.kde.StatusNotifierWatcher"
MENU = "com.canonical.dbusmenu"


class ShellTest(DesktopTest):
    def setUp(self):
        self.open_desktop(speed=1)
        self.bus = self.desktop.session_bus

    def start_with_tray(self):
        self.desktop.spawn(["/usr/bin/python3", "-B", "tray.py"])
        wait_for(lambda: self.bus.name_has_owner(WATCHER), "the tray")
        self.recorder = self.desktop.start_recorder()
        wait_for(self.items, "the tray's item")
        return self.recorder

    def items(self):
        watcher = self.bus.get_object(WATCHER, "/StatusNotifierWatcher", introspect=False)
        return watcher.Get(WATCHER, "RegisteredStatusNotifierItems",
                           dbus_interface=dbus.PROPERTIES_IFACE)

    def item(self, path):
        return self.bus.get_object(self.items()[0], path, introspect=False)

    def entries(self):
        """The menu's entries, as (id, properties), in order."""
        menu = dbus.Interface(self.item("/MenuBar"), MENU)
        _revision, layout = menu.GetLayout(0, -1, dbus.Array([], signature="s"))
        return [(int(child[0]), child[1]) for child in layout[2]
                if child[1].get("visible", True)]

    def titles(self):
        return [str(properties.get("label", "-")) for _id, properties in self.entries()]

    def click(self, title):
        number = next(number for number, properties in self.entries()
                      if properties.get("label") == title)
        menu = dbus.Interface(self.item("/MenuBar"), MENU)
        menu.Event(number, "clicked", dbus.String("", variant_level=1), dbus.UInt32(0),
                   ignore_reply=True)
        self.bus.flush()

    def autostart(self):
        return os.path.exists(
            self.desktop.home + "/config/autostart/cn.tarnlow.quillbrook.desktop")

    def crash_log(self):
        for name in os.listdir(self.desktop.data):
            if name.startswith("crash-"):
                with open(os.path.join(self.desktop.data, name), encoding="utf-8") as file:
                    return file.read()
        return ""

    def test_the_tray_shows_the_menu_with_its_shortcuts(self):
        self.start_with_tray()
        self.assertEqual(self.titles(), ["Alerts：0", "Hours：0h0m", "-", "刷新数据", "-",
                                         "开机自启：开", "退出"])
        shortcuts = {str(properties["label"]): [str(key) for key in properties["shortcut"][0]]
                     for _id, properties in self.entries() if "shortcut" in properties}
        self.assertEqual(shortcuts, {"刷新数据": ["Control", "R"], "退出": ["Control", "Q"]})
        properties = dbus.Interface(self.item("/StatusNotifierItem"), dbus.PROPERTIES_IFACE)
        tip = properties.Get("org.kde.StatusNotifierItem", "ToolTip")
        self.assertEqual(tip[2], "0h0m")
        pixmaps = properties.Get("org.kde.StatusNotifierItem", "IconPixmap")
        self.assertIn(22, [int(pixmap[0]) for pixmap in pixmaps])

    def test_refreshing_from_the_menu_reads_the_store(self):
        self.start_with_tray()
        self.desktop.write(
            "INSERT INTO alerts (timestamp, alert_type, severity, message) "
            "VALUES (strftime('%s', 'now'), 'cpu', 'warning', '');"
            "INSERT INTO keystrokes (timestamp, app_name, input_method, keystroke_count) "
            "VALUES (strftime('%s', 'now'), 'Editor', 'english', 2000)")
        self.click("刷新数据")
        wait_for(lambda: "Alerts：1" in self.titles(), "the alert in the menu")
        self.assertIn("Tokens：496", self.titles())

    def test_the_login_item_is_switched_from_the_menu(self):
        self.start_with_tray()
        self.assertTrue(self.autostart())
        self.click("开机自启：开")
        wait_for(lambda: not self.autostart(), "the end of the login item")

    def test_quitting_from_the_menu_ends_the_rows(self):
        self.start_with_tray()
        self.desktop.write("INSERT INTO idle_periods (started_at) VALUES (1767225600)")
        self.click("退出")
        self.assertEqual(self.recorder.wait(timeout=60), 0)
        self.assertEqual(self.desktop.rows(
            "SELECT (SELECT COUNT(*) FROM app_sessions WHERE ended_at IS NULL) + "
            "(SELECT COUNT(*) FROM idle_periods WHERE ended_at IS NULL)"), [(0,)])
        self.assertIn("🛑 监控引擎停止中", self.desktop.log())
        self.assertIn("正常退出", self.crash_log())
        self.assertFalse(os.path.exists(self.desktop.data + "/clean_exit"))

    def test_without_a_tray_one_line_tells_the_way_in(self):
        self.desktop.start_recorder_and_wait()
        wait_for(lambda: "no tray for the menu" in self.desktop.output(), "the line")
        self.assertEqual(self.desktop.output().count("no tray for the menu"), 1)

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

    def test_a_fault_leaves_a_block_in_the_crash_log(self):
        recorder = self.desktop.start_recorder_and_wait()
        os.kill(recorder.pid, 11)
        self.assertEqual(recorder.wait(timeout=60), -11)
        self.assertIn("💥 崩溃信号: SIGSEGV (段错误)", self.crash_log())
        self.assertIn("=== 崩溃日志结束 ===", self.crash_log())


if __name__ == "__main__":
    unittest.main()
