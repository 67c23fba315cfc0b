"""The real program in the light and the dark of desktops, through their changes."""

import os
import signal
import subprocess
import unittest

from desktop import DesktopTest
from waiting import wait_for

LIGHT = (0xEC, 0xEC, 0xEC)
DARK = (0x1E, 0x1E, 0x1E)
PYTHON = "/usr/bin/python3"
PORTAL = [PYTHON, "-B", os.path.join(os.path.dirname(os.path.abspath(__file__)), "portal.py")]


class AppearanceTest(DesktopTest):
    def setUp(self):
        self.open_desktop(speed=1)

    def start(self, **options):
        self.desktop.start_recorder(**options)
        self.window = wait_for(lambda: self.desktop.windows("Quillbrook"), "the dashboard")[0]

    def wait_for_background(self, color):
        # The one that a picture of the window is full of.
        wait_for(lambda: self.desktop.commonest_color(self.window) == color, "the background")

    def write_replacing(self, path, text):
        with open(path + ".new", "w", encoding="utf-8") as file:
            file.write(text)
        os.rename(path + ".new", path)

    def test_a_portal_that_comes_later_is_asked(self):
        self.start()
        self.wait_for_background(LIGHT)
        portal = self.desktop.spawn(PORTAL + ["1"])
        self.wait_for_background(DARK)
        self.desktop.kill(portal)
        self.desktop.spawn(PORTAL + ["2"])
        self.wait_for_background(LIGHT)

    def test_a_portal_that_the_bus_has_to_start_is_started(self):
        os.makedirs(self.desktop.services)
        with open(self.desktop.services + "/portal.service", "w", encoding="utf-8") as file:
            file.write("[D-BUS Service]\nName=org.freedesktop.portal.Desktop\nExec=%s\n"
                       % " ".join(PORTAL + ["1"]))
        self.desktop.session_bus.call_blocking(
            "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
            "ReloadConfig", "", ())
        self.start()
        self.wait_for_background(DARK)

    def shared_settings(self):
        """Nothing while nobody shares any."""
        return subprocess.run(["dump_xsettings"], env=self.desktop.env, capture_output=True,
                              text=True, check=False).stdout

    def test_the_theme_that_a_desktop_shares_is_followed(self):
        config = self.desktop.home + "/xsettings"
        self.write_replacing(config, 'Net/DoubleClickTime 250\nNet/ThemeName "Greybird"\n')
        self.start()
        self.wait_for_background(LIGHT)
        daemon = self.desktop.spawn(["xsettingsd", "--config", config])
        wait_for(lambda: "Greybird" in self.shared_settings(), "the settings")
        self.write_replacing(config, 'Net/DoubleClickTime 250\nNet/ThemeName "Greybird-dark"\n')
        daemon.send_signal(signal.SIGHUP)
        self.wait_for_background(DARK)
        self.write_replacing(config, 'Net/ThemeName "Arc-Darker"\n')
        daemon.send_signal(signal.SIGHUP)
        self.wait_for_background(LIGHT)
        self.desktop.kill(daemon)
        self.write_replacing(config, 'Net/ThemeName "Adwaita-dark"\n')
        self.desktop.spawn(["xsettingsd", "--config", config])
        self.wait_for_background(DARK)

    def test_the_colours_of_kde_are_followed_without_a_portal(self):
        path = self.desktop.home + "/config/kdeglobals"
        self.start(extra_env={"XDG_CURRENT_DESKTOP": "KDE"})
        self.wait_for_background(LIGHT)
        self.write_replacing(path, "[Colors:Window]\nBackgroundNormal=42,46,50\n")
        self.wait_for_background(DARK)
        self.write_replacing(path, "[Colors:Window]\nBackgroundNormal=239,240,241\n")
        self.wait_for_background(LIGHT)
        with open(path, "w", encoding="utf-8") as file:
            file.write("[Colors:Window]\nBackgroundNormal=42,46,50\n")
        self.wait_for_background(DARK)


if __name__ == "__main__":
    unittest.main()
