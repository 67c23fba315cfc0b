"""What the program says of itself: the panel behind its menu, and the page behind its sidebar."""

import datetime
import re
import unittest

from desktop import DesktopTest
from screen_reader import ScreenReader
from tray_item import TrayItem
from waiting import wait_for

DASHBOARD = "Quillbrook"
PANEL = "关于 Quillbrook"
STATEMENT = "隐私政策"


class AboutTest(DesktopTest):
    def setUp(self):
        self.open_desktop(speed=1)
        self.reader = ScreenReader(self.desktop)
        TrayItem(self.desktop)  # beside which the window has its menu all the same
        self.recorder = self.desktop.start_recorder()
        self.wait_for_front(DASHBOARD)

    def test_the_panel_opens_from_the_menu(self):
        first = self.open_panel_with_the_mouse()
        self.assertTrue(self.reader.find("label", "墨川 · 墨川书影"))
        names = [element.name for element in self.reader.elements()]
        self.assertTrue([name for name in names if re.fullmatch(r"v\d+\.\d+\.\d+", name)], names)
        day = [name for name in names if name.startswith("构建于 ")][0].split()[1]
        self.assertLessEqual(datetime.date.fromisoformat(day), datetime.date.today())

        self.desktop.tool("wmctrl", "-a", DASHBOARD)
        self.wait_for_front(DASHBOARD)
        self.assertEqual(self.open_panel_with_the_mouse(), first)

        self.desktop.press("ctrl+w")
        wait_for(lambda: not self.desktop.windows(PANEL), "the end of the panel")
        self.wait_for_front(DASHBOARD)
        self.assertNotEqual(self.open_panel_with_the_mouse(), first)

        self.desktop.press("ctrl+q")
        self.assertEqual(self.recorder.wait(timeout=60), 0)

    def test_the_panel_opens_with_the_keys(self):
        self.desktop.press("Alt_L", "Down", "Return")
        self.wait_for_front(PANEL)
        self.desktop.press("Escape")
        wait_for(lambda: not self.desktop.windows(PANEL), "the end of the panel")
        self.wait_for_front(DASHBOARD)

    def test_the_page_is_true_of_this_system_and_leads_to_the_statement(self):
        self.desktop.click(self.reader.wait_for("push button", "关于").center)
        self.reader.wait_for("label", "墨川五蕴皆空")
        self.assertTrue(self.reader.find("label", "Linux 原生程序，只用发行版提供的开源库"))
        self.assertFalse(self.reader.find("label", "零第三方依赖，纯 macOS 原生"))

        def has_link_focus():
            self.desktop.press("Tab")
            return self.reader.find("push button", "隐私政策 →").has_focus
        wait_for(has_link_focus, "the focus on the link")
        self.desktop.press("space")
        self.wait_for_front(STATEMENT)
        self.assertTrue(self.reader.find("label", "怎样全部删除"))
        self.desktop.press("End", "Escape")
        wait_for(lambda: not self.desktop.windows(STATEMENT), "the end of the sheet")
        self.wait_for_front(DASHBOARD)

    def open_panel_with_the_mouse(self):
        self.desktop.click(self.reader.wait_for("menu item", "Quillbrook").center)
        self.desktop.click(self.reader.wait_for("menu item", PANEL).center)
        self.wait_for_front(PANEL)
        return self.desktop.windows(PANEL)[0]

    def wait_for_front(self, title):
        wait_for(lambda: self.desktop.active_window() in self.desktop.windows(title),
                 title + " in front")


if __name__ == "__main__":
    unittest.main()
