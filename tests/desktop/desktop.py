"""A private X11 desktop for tests: X server, window manager, and a session.

All clocks on it may run many times faster, in the program and in the X server alike.
"""

import os
import re
import signal
import subprocess
import time

from picture import picture_of
from private_session import PrivateSession, SessionTest
from waiting import wait_for


class Desktop(PrivateSession):
    """One private X11 desktop."""

    def __init__(self, speed=20, now=None, window_manager="openbox"):
        self.window_manager_name = window_manager
        self.x_server = None
        super().__init__(speed, now)

    def close(self):
        if self.x_server is not None:
            # Killed, it would leave its socket, and a computer has few for all.
            self.kill(self.x_server, signal.SIGTERM)
        super().close()

    # The parts of the desktop

    def start_display(self):
        self.env["DISPLAY"] = ":" + self._spawn_x_server("-nolisten")

    def move_to_network_display(self):
        """Puts a display that is reached through the network in the place of the one there was."""
        self.kill(self.x_server)
        self.env["DISPLAY"] = "127.0.0.1:" + self._spawn_x_server("-listen")
        self.start_window_manager()

    def _spawn_x_server(self, tcp):
        read_end, write_end = os.pipe()
        self.x_server = self.spawn(
            ["Xvfb", "-displayfd", str(write_end), "-screen", "0", "1280x800x24", tcp,
             "tcp", "-noreset"], fast=True, pass_fds=[write_end])
        os.close(write_end)
        with os.fdopen(read_end) as file:
            return file.readline().strip()

    def start_window_manager(self):
        if self.window_manager_name == "openbox":
            self._start_openbox()
        else:
            self._start_other_window_manager()

    def _start_other_window_manager(self):
        # Without a service that keeps them, the settings are those that it comes with.
        arguments = {"mutter": ["mutter", "--x11", "--sm-disable"],
                     "xfwm4": ["xfwm4", "--compositor=off"],
                     "marco": ["marco", "--no-composite"]}
        self.window_manager = self.spawn(
            arguments.get(self.window_manager_name, [self.window_manager_name]),
            extra_env={"GSETTINGS_BACKEND": "memory"})
        wait_for(lambda: "window id" in self.tool("xprop", "-root", "_NET_SUPPORTING_WM_CHECK"),
                 "the window manager")
        wait_for(self.workspace_count, "the workspaces")
        if self.workspace_count() < 2:
            self.tool("wmctrl", "-n", "2")
            wait_for(lambda: self.workspace_count() > 1, "a second workspace")

    def _start_openbox(self):
        # Windows that open before it has looked at those that are there get no focus.
        started = os.path.join(self.home, "window-manager-started")
        if os.path.exists(started):
            os.unlink(started)
        self.window_manager = self.spawn(["openbox", "--sm-disable", "--startup",
                                          "touch " + started])
        wait_for(lambda: os.path.exists(started), "the window manager")

    # What a person does

    def open_window(self, *arguments):
        """Starts a program and waits until its window has the keys."""
        before = self.active_window()
        process = self.spawn(list(arguments))
        wait_for(lambda: self.active_window() not in (0, before), "a window of " + str(arguments))
        return process

    def active_window(self):
        found = re.search(r"window id # 0x([0-9a-f]+)",
                          self.tool("xprop", "-root", "_NET_ACTIVE_WINDOW"))
        return int(found.group(1), 16) if found else 0

    def windows(self, title):
        """The numbers of the windows of that title that the window manager shows."""
        # An empty list of windows is a failure for this tool.
        listing = subprocess.run(["wmctrl", "-l"], env=self.env, capture_output=True, text=True,
                                 check=False, timeout=60).stdout
        return [int(line.split()[0], 16) for line in listing.splitlines()
                if line.split(None, 3)[3:] == [title]]

    def root_number(self, name):
        found = re.search(r"= (\d+)", self.tool("xprop", "-root", name))
        return int(found.group(1)) if found else 0

    def workspace(self):
        return self.root_number("_NET_CURRENT_DESKTOP")

    def workspace_count(self):
        return self.root_number("_NET_NUMBER_OF_DESKTOPS")

    def switch_workspace(self, number):
        self.tool("wmctrl", "-s", str(number))
        wait_for(lambda: self.workspace() == number, "the workspace")

    def is_on_screen(self, window):
        return "IsViewable" in self.tool("xwininfo", "-id", str(window))

    def start_tray(self):
        """Starts a panel that shows icons as windows of their programs."""
        self.spawn(["trayer", "--edge", "top", "--align", "left", "--height", "24"])

    @staticmethod
    def server_time():
        """The X server's clock in milliseconds, where time runs as outside."""
        return round(time.clock_gettime(time.CLOCK_MONOTONIC) * 1000) & 0xFFFFFFFF

    def place(self, window):
        """The middle of a window on the screen, (x, y)."""
        geometry = dict(line.split("=") for line in self.tool(
            "xdotool", "getwindowgeometry", "--shell", str(window)).splitlines())
        return (int(geometry["X"]) + int(geometry["WIDTH"]) // 2,
                int(geometry["Y"]) + int(geometry["HEIGHT"]) // 2)

    def colors(self, window):
        """The colours of a window's pixels, as (red, green, blue); none while it changes."""
        picture = picture_of(self.env, "-id", str(window))
        return picture.colors() if picture else set()

    def commonest_color(self, window):
        """The colour that most of a window's pixels have, by a sample; None while it changes."""
        picture = picture_of(self.env, "-id", str(window))
        return picture.commonest_color() if picture else None

    def color_at(self, place):
        """The colour at a place of the screen, (x, y); None while a window comes or goes."""
        picture = picture_of(self.env, "-root")
        return picture.color(*place) if picture else None

    def program_windows(self):
        """The program's windows on the screen, menus and the icon in a panel included."""
        listing = subprocess.run(["xdotool", "search", "--onlyvisible", "--class", "quillbrook"],
                                 env=self.env, capture_output=True, text=True, check=False,
                                 timeout=60).stdout
        return [int(line) for line in listing.splitlines()]

    def visible_window(self, pattern):
        """The window on the screen whose title fits, also without a window manager; 0 without."""
        try:
            return int(self.tool("xdotool", "search", "--onlyvisible", "--name", pattern))
        except subprocess.CalledProcessError:
            return 0

    def close_window(self, title):
        for window in self.windows(title):
            self.tool("wmctrl", "-i", "-c", hex(window))
        wait_for(lambda: not self.windows(title), "the end of " + title)

    def type(self, text):
        self.tool("xdotool", "type", "--delay", "5", text)

    def press(self, *keys):
        self.tool("xdotool", "key", "--delay", "5", *keys)

    def click(self, place, button=1, times=1):
        """Presses a button of the mouse at a place of the screen, (x, y)."""
        # Waiting for the pointer to arrive takes long where it is there already.
        self.tool("xdotool", "mousemove", str(place[0]), str(place[1]), "click",
                  "--repeat", str(times), "--delay", "5", str(button))

    def close_dashboard(self):
        """Closes the window that a launch opens by itself."""
        wait_for(lambda: self.windows("Quillbrook"), "the dashboard")
        self.close_window("Quillbrook")


class DesktopTest(SessionTest):
    """A test on an X11 desktop of its own."""

    def open_desktop(self, speed=20, now=None, **options):
        self.desktop = Desktop(speed, now, **options)
        self.addCleanup(self.desktop.close)
