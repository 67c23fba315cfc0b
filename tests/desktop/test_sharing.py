"""The picture of the page, handed to other programs of the desktop and to files."""

import os
import stat
import struct
import subprocess
import unittest

from desktop import DesktopTest
from keyboard_grab import is_keyboard_grabbed
from screen_reader import ScreenReader
from waiting import wait_for

SIDEBAR = 220


def png_size(data):
    """Width and height out of a PNG's header."""
    if not data.startswith(b"\x89PNG\r\n\x1a\n"):
        return None
    return struct.unpack(">II", data[16:24])


class SharingTest(DesktopTest):
    def setUp(self):
        self.open_desktop(speed=1)
        self.recorder = self.desktop.start_recorder(cwd=self.desktop.home)
        self.reader = ScreenReader(self.desktop)
        self.button = self.reader.wait_for("push button", "分享")
        width, height = self.window_size()
        self.page_size = (width - SIDEBAR, height)

    def window_size(self):
        _x, _y, width, height = self.reader.wait_for("frame", "Quillbrook").rect
        return width, height

    def clipboard(self):
        """What another program gets when it asks for a PNG."""
        return subprocess.run(["xclip", "-selection", "clipboard", "-t", "image/png", "-o"],
                              env=self.desktop.env, capture_output=True, check=False,
                              timeout=60).stdout

    def open_menu(self):
        before = len(self.desktop.program_windows())
        self.desktop.click(self.button.center)
        wait_for(lambda: len(self.desktop.program_windows()) == before + 1, "the menu")
        wait_for(lambda: is_keyboard_grabbed(self.desktop.env["DISPLAY"]), "the menu's keys")

    def test_other_programs_get_the_copied_picture(self):
        self.open_menu()
        self.desktop.press("Down", "Return")
        wait_for(lambda: png_size(self.clipboard()) == self.page_size, "the picture")
        self.desktop.close_window("Quillbrook")
        self.assertEqual(png_size(self.clipboard()), self.page_size)

    def test_the_picture_is_saved_through_the_dialogue(self):
        self.open_menu()
        self.desktop.press("Down", "Down", "Return")
        wait_for(lambda: self.desktop.active_window() in self.desktop.windows("存储图片"),
                 "the dialogue")
        self.desktop.press("Return")
        path = self.desktop.home + "/Quillbrook.png"
        wait_for(lambda: os.path.exists(path), "the file")
        with open(path, "rb") as file:
            self.assertEqual(png_size(file.read()), self.page_size)
        # Unlike the program's own files: who chose the place may want others to see it there.
        os.umask(mask := os.umask(0))
        self.assertEqual(stat.S_IMODE(os.stat(path).st_mode), 0o666 & ~mask)

    def test_the_menu_closes_with_escape_and_gives_the_keys_back(self):
        before = len(self.desktop.program_windows())
        self.open_menu()
        self.desktop.press("Escape")
        wait_for(lambda: len(self.desktop.program_windows()) == before, "the end of the menu")
        self.assertEqual(png_size(self.clipboard()), None)
        wait_for(lambda: self.reader.find("push button", "分享").has_focus, "the focus")
        self.desktop.press("space")
        wait_for(lambda: len(self.desktop.program_windows()) == before + 1, "the menu again")


if __name__ == "__main__":
    unittest.main()
