"""The real program in a real sway: what is done, and the rows that tell of it."""

import json
import unittest

from dashboard import Dashboard
from screen_reader import ScreenReader
from sway_desktop import SwayDesktop
from test_sharing import SIDEBAR, png_size
from tray_item import TrayItem
from waiting import wait_for
from wayland_desktop import GTK3, WaylandDesktopTest


class SwayTest(WaylandDesktopTest):
    def setUp(self):
        self.open_wayland(SwayDesktop)

    def test_each_front_is_a_session(self):
        self.check_each_front_is_a_session()

    def test_nothing_in_front_is_nobody(self):
        self.check_nothing_in_front_is_nobody()

    def test_an_empty_workspace_is_nobody(self):
        desktop = self.desktop
        self.start_working()
        desktop.sway("workspace 2")
        desktop.wait_for_idle(1)
        desktop.sway("workspace 1")
        desktop.touch()
        desktop.wait_for_session(GTK3[1], 2)
        self.assertNotIn("桌面", desktop.session_names())

    def test_a_minimised_window_is_not_in_front(self):
        self.check_a_minimised_window_is_not_in_front()

    def test_a_person_who_went_is_idle(self):
        self.check_a_person_who_went_is_idle()

    def test_a_person_at_work_is_not_idle(self):
        self.check_a_person_at_work_is_not_idle()

    def test_a_locked_session(self):
        self.check_a_locked_session()

    def test_a_second_launch_raises_the_dashboard(self):
        self.check_a_second_launch_raises_the_dashboard()

    def test_a_dead_compositor_blocks_nobody(self):
        self.check_a_dead_compositor_blocks_nobody()

    def test_other_programs_get_the_copied_picture(self):
        desktop = self.desktop
        desktop.start_recorder_and_show()
        desktop.plug_in_keyboard()
        reader = ScreenReader(desktop)
        wait_for(reader.focused, "the keys")
        Dashboard(desktop, reader).tab_to("push button", "分享")
        self.assertEqual(desktop.clipboard(), b"")
        desktop.press("space", "Down", "Return")  # the menu takes the keys at once
        width, height = reader.wait_for("frame", "Quillbrook").rect[2:]
        wait_for(lambda: png_size(desktop.clipboard()) == (width - SIDEBAR, height), "the picture")

    def test_a_bar_that_comes_later_shows_the_icon(self):
        desktop = self.desktop
        recorder = desktop.start_recorder_and_wait()
        config = desktop.home + "/bar.json"
        with open(config, "w", encoding="utf-8") as file:
            json.dump({"modules-right": ["tray"]}, file)
        item = TrayItem(desktop, ["waybar", "--config", config, "--style", "/dev/null"])
        item.wait()
        self.assertIn("刷新数据", item.titles())
        item.activate()
        ScreenReader(desktop).wait_for("list item", "Habit")  # of the dashboard
        item.click("退出")
        self.assertEqual(recorder.wait(timeout=60), 0)

    def test_without_sways_own_socket(self):
        desktop = self.desktop
        desktop.start_recorder_and_wait(extra_env={"SWAYSOCK": "/nowhere"})
        desktop.open_gtk3()
        desktop.touch()
        desktop.wait_for_session(GTK3[1], 1)
        desktop.open_xterm()
        desktop.wait_for_session("XTerm", 2)


if __name__ == "__main__":
    unittest.main()
