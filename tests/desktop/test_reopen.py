"""Starting the program again shows its dashboard, whatever the desktop was doing."""

import os
import unittest

from desktop import DesktopTest
from waiting import wait_for

WINDOW_MANAGER = os.environ["WINDOW_MANAGER"]


class ReopenTest(DesktopTest):
    """Each time a person has typed in a GTK program since, which lets many window managers only
    mark a window that comes up by itself."""

    def setUp(self):
        self.open_desktop(speed=1, window_manager=WINDOW_MANAGER)

    def start(self):
        self.desktop.start_recorder()
        self.window = wait_for(lambda: self.desktop.windows("Quillbrook"), "the dashboard")[0]
        wait_for(self.is_in_front, "the focus")

    def minimize(self):
        self.desktop.tool("xdotool", "windowminimize", str(self.window))
        wait_for(lambda: "HIDDEN" in self.state(), "the minimized window")

    def state(self):
        return self.desktop.tool("xprop", "-id", str(self.window), "_NET_WM_STATE")

    def is_in_front(self):
        return self.desktop.active_window() in self.desktop.windows("Quillbrook")

    def type_elsewhere(self):
        self.desktop.open_window("/usr/bin/python3", "-B", "editor.py")
        wait_for(lambda: self.desktop.windows("Editor"), "the editor")
        editor = self.desktop.windows("Editor")[0]
        wait_for(lambda: self.desktop.active_window() == editor, "the editor's focus")
        self.desktop.type("what one writes")

    def start_again(self, **options):
        self.assertEqual(self.desktop.start_recorder(**options).wait(timeout=60), 0)
        wait_for(self.is_in_front, "the dashboard in front", timeout=20)
        self.window = self.desktop.active_window()
        self.assertTrue(self.desktop.is_on_screen(self.window))
        self.assertNotIn("DEMANDS_ATTENTION", self.state())
        self.assertNotIn("HIDDEN", self.state())

    def test_from_below_another_window(self):
        self.start()
        self.type_elsewhere()
        self.start_again()

    def test_from_closed(self):
        self.start()
        self.desktop.close_window("Quillbrook")
        self.type_elsewhere()
        self.start_again()

    def test_from_minimized(self):
        self.start()
        self.minimize()
        self.type_elsewhere()
        self.start_again()

    def test_from_another_workspace(self):
        self.start()
        self.desktop.switch_workspace(1)
        self.type_elsewhere()
        self.start_again()
        self.assertEqual(self.desktop.workspace(), 1)

    def test_from_minimized_on_another_workspace(self):
        self.start()
        self.minimize()
        self.desktop.switch_workspace(1)
        self.type_elsewhere()
        self.start_again()
        self.assertEqual(self.desktop.workspace(), 1)

    def test_from_closed_with_an_icon_in_a_tray(self):
        self.desktop.start_tray()
        self.start()
        wait_for(lambda: len(self.desktop.program_windows()) == 2, "the icon")
        self.desktop.close_window("Quillbrook")
        self.type_elsewhere()
        self.start_again()

    def test_from_minimized_with_an_icon_in_a_tray(self):
        self.desktop.start_tray()
        self.start()
        wait_for(lambda: len(self.desktop.program_windows()) == 2, "the icon")
        self.minimize()
        self.type_elsewhere()
        self.start_again()

    def test_with_the_time_that_the_launcher_told(self):
        self.start()
        self.type_elsewhere()
        told = "panel-1-host_TIME%d" % self.desktop.server_time()
        self.start_again(extra_env={"DESKTOP_STARTUP_ID": told})

    def test_with_a_launchers_time_of_long_ago(self):
        self.start()
        self.type_elsewhere()
        self.start_again(extra_env={"DESKTOP_STARTUP_ID": "terminal-1-host_TIME1"})


if __name__ == "__main__":
    unittest.main()
