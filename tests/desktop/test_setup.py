"""The set-up window of the real program: its look, its states, and what its buttons reach."""

import getpass
import os
import unittest
import urllib.parse

import dbus
import dbusmock

from desktop import DesktopTest
from screen_reader import ScreenReader
from waiting import wait_for

TITLE = "Quillbrook 初始设置"
LIGHT = (0xEC, 0xEC, 0xEC)
DARK = (0x1E, 0x1E, 0x1E)
PYTHON = "/usr/bin/python3"
PORTAL = [PYTHON, "-B", os.path.join(os.path.dirname(os.path.abspath(__file__)), "portal.py")]

FILES = "org.freedesktop.FileManager1"
COUNTER = "cn.tarnlow.quillbrook.KeyCounter"
COUNTED_WITH = ["/dev/input/event0"] + [
    folder + "/dbus-1/system-services/" + COUNTER + ".service"
    for folder in ("/usr/share", "/usr/local/share", "/etc", "/lib")]


class SetupTest(DesktopTest):
    def setUp(self):
        self.open_desktop(speed=1)

    def settings(self, *lines):
        folder = self.desktop.home + "/config/tarnlow.cn"
        with open(folder + "/quillbrook.conf", "w", encoding="utf-8") as file:
            file.write("\n".join(("[General]",) + lines) + "\n")

    def start(self, **options):
        self.recorder = self.desktop.start_recorder(**options)
        self.window = wait_for(lambda: self.desktop.visible_window(TITLE), "the window")
        return self.window

    def first_look(self):
        """The colour that the window is painted in first; the server shows it in black before."""
        return wait_for(lambda: {self.desktop.commonest_color(self.window)} - {(0, 0, 0)},
                        "the first frame").pop()

    def start_for_the_first_time(self, **options):
        self.settings()
        return self.start(**options)

    def start_without_keys(self):
        for place in COUNTED_WITH:
            if os.access(place, os.R_OK):
                self.skipTest("keys can be counted with " + place)
        return self.start_for_the_first_time(
            extra_env={"LD_PRELOAD": os.environ["KEYLESS_DISPLAY_LIBRARY"]})

    def wait_for_focus(self):
        wait_for(lambda: self.desktop.active_window() == self.window, "the focus")

    def wait_for_recorder(self):
        wait_for(lambda: "✅ 就绪" in self.desktop.log(), "the recorder")
        wait_for(lambda: not self.desktop.visible_window(TITLE), "the end of the window")

    def start_file_manager(self):
        """A service that keeps its calls."""
        path = "/" + FILES.replace(".", "/")
        self.desktop.spawn([PYTHON, "-m", "dbusmock", "--session", FILES, path, FILES])
        bus = self.desktop.session_bus
        wait_for(lambda: bus.name_has_owner(FILES), "the file manager")
        service = dbus.Interface(bus.get_object(FILES, path), dbusmock.MOCK_IFACE)
        service.AddMethod(FILES, "ShowItems", "ass", "", "")
        return service

    @staticmethod
    def shown_items(service):
        return [list(call[1]) for call in service.GetMethodCalls("ShowItems")]

    def test_the_first_start_has_our_look_and_begins(self):
        reader = ScreenReader(self.desktop)
        self.start_for_the_first_time()
        self.assertEqual(self.first_look(), LIGHT)
        for text in ("欢迎使用 Quillbrook", "首次启动需要配置必要权限", "辅助功能", "必须", "已授权",
                     "所有击键数据仅存储在本地，绝不外传", "辅助功能权限已授权"):
            reader.wait_for("label", text)
        self.wait_for_focus()
        begin = wait_for(lambda: self.focused(reader, "开始使用 Quillbrook"), "the focus")
        self.assertEqual(begin.value, "辅助功能权限已授权")
        self.desktop.click(begin.center)
        self.wait_for_recorder()
        wait_for(lambda: self.desktop.windows("Quillbrook"), "the dashboard")

    @staticmethod
    def focused(reader, name):
        button = reader.find("push button", name)
        return button if button and button.has_focus else None

    def test_the_window_is_dark_at_once_where_the_desktop_is(self):
        portal = self.desktop.spawn(PORTAL + ["1", "0.1"])
        wait_for(lambda: self.desktop.session_bus.name_has_owner("org.freedesktop.portal.Desktop"),
                 "the portal")
        self.start_for_the_first_time()
        self.assertEqual(self.first_look(), DARK)
        self.assertIsNone(portal.poll())
        self.wait_for_focus()

    def test_a_portal_that_is_slow_is_not_waited_for(self):
        self.desktop.spawn(PORTAL + ["1", "3600"])
        wait_for(lambda: self.desktop.session_bus.name_has_owner("org.freedesktop.portal.Desktop"),
                 "the portal")
        self.start_for_the_first_time()
        self.assertEqual(self.first_look(), LIGHT)
        self.wait_for_focus()

    def test_an_update_is_told_reset_and_begins(self):
        self.settings("hasLaunchedBefore=true", "lastLaunchedVersion=0.0.1")
        reader = ScreenReader(self.desktop)
        self.start()
        reader.wait_for("label", "检测到应用已更新")
        self.assertIsNone(reader.find("push button", "开始使用 Quillbrook"))
        self.wait_for_focus()
        self.desktop.press("Return")
        reader.wait_for("push button", "开始使用 Quillbrook")
        self.desktop.press("Return")
        self.wait_for_recorder()

    def test_where_keys_cant_be_counted_the_program_is_shown_in_the_file_manager(self):
        files = self.start_file_manager()
        reader = ScreenReader(self.desktop)
        self.start_without_keys()
        reader.wait_for("label", "未授权")
        self.desktop.click(reader.wait_for("push button", "在文件管理器中显示程序位置").center)
        wait_for(lambda: self.shown_items(files), "the call")
        self.assertEqual(self.shown_items(files),
                         [[["file://" + urllib.parse.quote(self.desktop.program)], ""]])

    def test_where_keys_cant_be_counted_the_counter_is_started(self):
        os.makedirs(self.desktop.services)
        with open(self.desktop.services + "/counter.service", "w", encoding="utf-8") as file:
            file.write("[D-BUS Service]\nName=%s\nUser=%s\nExec=%s\n" % (
                COUNTER, getpass.getuser(), " ".join(
                    [PYTHON, "-m", "dbusmock", "--system", COUNTER, "/", COUNTER])))
        self.desktop.system_bus.call_blocking(
            "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
            "ReloadConfig", "", ())
        self.start_without_keys()
        self.wait_for_focus()
        # The program asks the service for keys by itself, which starts it too: what the button does
        # is a call of its own.
        self.desktop.spawn(["dbus-monitor", "--address", self.desktop.env["DBUS_SYSTEM_BUS_ADDRESS"],
                            "member='StartServiceByName'"])
        wait_for(lambda: "member=NameLost" in self.desktop.output(), "the monitor")
        self.assertNotIn("member=StartServiceByName", self.desktop.output())
        self.desktop.press("Return")
        wait_for(lambda: "member=StartServiceByName" in self.desktop.output(), "the call")
        wait_for(lambda: self.desktop.system_bus.name_has_owner(COUNTER), "the service")

    def test_without_the_services_the_buttons_do_no_harm_and_it_can_be_skipped(self):
        reader = ScreenReader(self.desktop)
        self.start_without_keys()
        for name in ("启用按键计数服务", "在文件管理器中显示程序位置"):
            self.desktop.click(reader.wait_for("push button", name).center)
        wait_for(lambda: self.desktop.output().count("was not provided by any .service files") == 2,
                 "the notices")
        self.wait_for_focus()
        self.desktop.press("Tab", "space")
        wait_for(lambda: "⚠️ 辅助功能权限未授权，跳过键盘监控" in self.desktop.log(),
                 "the recorder without keys")
        self.assertIsNone(self.recorder.poll())


if __name__ == "__main__":
    unittest.main()
