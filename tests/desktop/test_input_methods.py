"""The real program beside real input methods: each minute's keys stand under the one in use."""

import os
import subprocess
import unittest

from desktop import DesktopTest
from waiting import wait_for

FCITX_PROFILE = """[Groups/0]
Name=Default
Default Layout=us
DefaultIM=pinyin

[Groups/0/Items/0]
Name=keyboard-us

[Groups/0/Items/1]
Name=pinyin

[Groups/0/Items/2]
Name=shuangpin

[GroupOrder]
0=Default
"""

FCITX_SERVICE = """[D-BUS Service]
Name=org.fcitx.Fcitx5
Exec=/usr/bin/touch {}
"""


class InputMethodsTest(DesktopTest):
    def setUp(self):
        self.open_desktop()

    def start_recorder(self):
        recorder = self.desktop.start_recorder_and_wait()
        wait_for(lambda: "⌨️ OK" in self.desktop.log(), "the count")
        return recorder

    def newest(self):
        rows = self.desktop.rows("SELECT id, input_method FROM keystrokes ORDER BY id DESC LIMIT 1")
        return rows[0] if rows else (0, None)

    def type_and_expect(self, input_method):
        """Types a little in some minutes, until those keys stand under `input_method`. The minute
        of a change may have either, and the clocks run away from a method that is loading."""
        def is_there():
            before = self.newest()[0]
            self.desktop.press("a", "BackSpace")
            wait_for(lambda: self.newest()[0] > before, "the flush")
            return self.newest()[1] == input_method
        wait_for(is_there, "%s; was %s" % (input_method, self.newest()[1]))

    def answer(self, *arguments):
        """What a tool prints. It may fail while what it asks isn't there or is busy."""
        return subprocess.run(arguments, env=self.desktop.env, text=True, capture_output=True,
                              check=False, timeout=60).stdout.strip()

    # Fcitx 5

    def start_fcitx(self):
        desktop = self.desktop
        os.makedirs(desktop.home + "/config/fcitx5", exist_ok=True)
        with open(desktop.home + "/config/fcitx5/profile", "w", encoding="utf-8") as file:
            file.write(FCITX_PROFILE)
        # A terminal that looks for it before it serves terminals never asks again.
        serving = "Loaded addon xim"
        before = desktop.output().count(serving)
        fcitx = desktop.spawn(["fcitx5", "--disable", "wayland,waylandim,notificationitem"])
        wait_for(lambda: desktop.session_bus.name_has_owner("org.fcitx.Fcitx5")
                 and desktop.output().count(serving) > before, "Fcitx")
        return fcitx

    def switch_fcitx_to(self, method):
        """Switches as soon as a program with the focus talks to Fcitx."""
        def is_switched():
            self.answer("fcitx5-remote", "-s", method)
            return self.answer("fcitx5-remote", "-n") == method
        wait_for(is_switched, method)

    def open_terminal_for(self, im_module):
        self.desktop.env["XMODIFIERS"] = "@im=" + im_module
        return self.desktop.open_window("xterm")

    def test_fcitx_is_followed(self):
        self.start_fcitx()
        self.open_terminal_for("fcitx")
        self.switch_fcitx_to("keyboard-us")
        self.start_recorder()
        self.type_and_expect("english")
        self.switch_fcitx_to("pinyin")
        self.type_and_expect("quanpin")
        self.switch_fcitx_to("shuangpin")
        self.type_and_expect("shuangpin")
        self.switch_fcitx_to("keyboard-us")
        self.type_and_expect("english")

    def test_a_fcitx_that_dies_and_comes_back(self):
        fcitx = self.start_fcitx()
        self.open_terminal_for("fcitx")
        recorder = self.start_recorder()
        self.switch_fcitx_to("pinyin")
        self.type_and_expect("quanpin")
        self.desktop.kill(fcitx)
        # What is left is the keyboard's layout.
        self.type_and_expect("english")
        self.start_fcitx()
        self.open_terminal_for("fcitx")
        self.switch_fcitx_to("pinyin")
        self.type_and_expect("quanpin")
        self.assertIsNone(recorder.poll())

    def test_fcitx_is_never_started(self):
        desktop = self.desktop
        started = desktop.home + "/fcitx-was-started"
        os.makedirs(desktop.services)
        with open(desktop.services + "/org.fcitx.Fcitx5.service", "w", encoding="utf-8") as file:
            file.write(FCITX_SERVICE.format(started))
        desktop.session_bus.get_object("org.freedesktop.DBus", "/org/freedesktop/DBus").ReloadConfig(
            dbus_interface="org.freedesktop.DBus")
        desktop.open_window("xterm")
        self.start_recorder()
        self.type_and_expect("english")
        fcitx = self.start_fcitx()
        self.type_and_expect("english")
        desktop.kill(fcitx)
        self.type_and_expect("english")
        self.assertFalse(os.path.exists(started))
        # A call that asks for it does start it here.
        desktop.spawn(["dbus-send", "--session", "--dest=org.fcitx.Fcitx5", "/controller",
                       "org.fcitx.Fcitx.Controller1.CurrentInputMethod"])
        wait_for(lambda: os.path.exists(started), "the start")

    # IBus

    def start_ibus(self):
        # No panel, and settings in a file: both services would be started from elsewhere.
        self.desktop.env["GSETTINGS_BACKEND"] = "keyfile"
        ibus = self.desktop.spawn(["ibus-daemon", "--xim", "--panel", "disable"])
        self.switch_ibus_to("xkb:us::eng")
        return ibus

    def switch_ibus_to(self, engine):
        """Switches as soon as the daemon and its engines are there."""
        def is_switched():
            self.answer("ibus", "engine", engine)
            return self.answer("ibus", "engine") == engine
        wait_for(is_switched, engine)

    def test_ibus_is_followed(self):
        self.start_ibus()
        self.open_terminal_for("ibus")
        self.start_recorder()
        self.type_and_expect("english")
        self.switch_ibus_to("libpinyin")
        self.type_and_expect("quanpin")
        self.switch_ibus_to("xkb:us::eng")
        self.type_and_expect("english")

    def test_double_pinyin_of_ibus(self):
        self.start_ibus()
        self.open_terminal_for("ibus")
        self.desktop.tool("gsettings", "set", "com.github.libpinyin.ibus-libpinyin.libpinyin",
                          "double-pinyin", "true")
        self.switch_ibus_to("libpinyin")
        self.start_recorder()
        self.type_and_expect("shuangpin")

    def test_an_ibus_that_dies_and_comes_back(self):
        desktop = self.desktop
        ibus = self.start_ibus()
        self.open_terminal_for("ibus")
        recorder = self.start_recorder()
        self.switch_ibus_to("libpinyin")
        self.type_and_expect("quanpin")
        desktop.kill(ibus)
        self.type_and_expect("english")
        self.start_ibus()
        self.open_terminal_for("ibus")
        self.switch_ibus_to("libpinyin")
        self.type_and_expect("quanpin")
        self.assertIsNone(recorder.poll())

    def test_an_ibus_that_comes_after_the_recorder(self):
        self.desktop.open_window("xterm")
        self.start_recorder()
        self.type_and_expect("english")
        self.start_ibus()
        self.open_terminal_for("ibus")
        self.switch_ibus_to("libpinyin")
        self.type_and_expect("quanpin")

    def test_fcitx_comes_before_ibus(self):
        self.start_ibus()
        self.switch_ibus_to("libpinyin")
        self.desktop.open_window("xterm")
        self.start_recorder()
        self.type_and_expect("quanpin")
        # It takes over from IBus, and poses as it.
        self.start_fcitx()
        self.open_terminal_for("fcitx")
        self.switch_fcitx_to("keyboard-us")
        self.type_and_expect("english")
        self.switch_fcitx_to("shuangpin")
        self.type_and_expect("shuangpin")


if __name__ == "__main__":
    unittest.main(verbosity=2)
