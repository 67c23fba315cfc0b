"""A private desktop for tests: X server, window manager, session and system bus, logind stand-in.

All clocks on it may run many times faster, by libfaketime, in the program and in the X server
alike, so that minutes pass in seconds without a constant of the program being touched.
"""

import contextlib
import os
import re
import shutil
import signal
import socket
import sqlite3
import subprocess
import tempfile
import time
import unittest

import dbus
import dbusmock

from picture import picture_of

FAKETIME = "/usr/lib/{}/faketime/libfaketime.so.1".format(
    subprocess.check_output(["gcc", "-print-multiarch"], text=True).strip())

BUS_CONFIG = """<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>{type}</type>
  <keep_umask/>
  <listen>unix:path={socket}</listen>
  <servicedir>{services}</servicedir>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
"""


def wait_for(condition, what, timeout=60.0):
    """Waits until `condition` gives something true, and returns it."""
    end = time.monotonic() + timeout
    while True:
        result = condition()
        if result:
            return result
        if time.monotonic() > end:
            raise AssertionError("waited in vain for " + what)
        time.sleep(0.02)


class Desktop:
    """One private desktop, `speed` times as fast as the world outside; `now` is the time on its
    clocks when it begins, by default that outside."""

    def __init__(self, speed=60, now=None, window_manager="openbox"):
        self.speed = speed
        self.window_manager_name = window_manager
        self.offset_sec = 0 if now is None else round(now - time.time())
        self.home = tempfile.mkdtemp(prefix="quillbrook-desktop-")
        self.processes = []
        self.env = {key: value for key, value in os.environ.items()
                    if not key.startswith(("XDG_", "DBUS_", "QT_", "LC_", "IBUS"))}
        self.env.update(
            HOME=self.home, LANG="C.UTF-8", XDG_CONFIG_HOME=self.home + "/config",
            XDG_DATA_HOME=self.home + "/share", XDG_RUNTIME_DIR=self.home + "/run",
            XDG_SESSION_ID="c1", NO_AT_BRIDGE="1")
        for folder in ("config", "share", "run"):
            os.makedirs(os.path.join(self.home, folder), mode=0o700)
        self.services = self.home + "/services"  # that the buses would start; none at first
        self.data = self.home + "/share/cn.tarnlow.quillbrook"
        self.set_launched_before()
        # Instances are told by their program's path: each desktop has a program of its own.
        self.program = shutil.copy(os.environ["QUILLBROOK"], self.home)
        try:
            self._start_x_server()
            self.start_session_bus()
            self.start_system_bus()
            self.start_window_manager()
        except BaseException:
            self.close()
            raise

    def close(self):
        for process in reversed(self.processes):
            self.kill(process)
        shutil.rmtree(self.home, ignore_errors=True)

    # Processes

    def spawn(self, arguments, fast=False, extra_env=(), **options):
        env = {**self.env, **dict(extra_env)}
        if fast and (self.speed, self.offset_sec) != (1, 0):
            libraries = [library for library in (env.get("LD_PRELOAD"), FAKETIME) if library]
            env.update(LD_PRELOAD=":".join(libraries),
                       FAKETIME="%+d x%d" % (self.offset_sec, self.speed))
        log = open(os.path.join(self.home, "output"), "ab")
        process = subprocess.Popen(arguments, env=env, start_new_session=True,
                                   stdin=subprocess.DEVNULL,
                                   **{"stdout": log, "stderr": log, **options})
        log.close()
        self.processes.append(process)
        return process

    def kill(self, process, number=signal.SIGKILL):
        """Ends a process with all that it started, and returns its exit status."""
        if process.poll() is None:
            try:
                os.killpg(process.pid, number)
            except ProcessLookupError:
                pass
        return process.wait(timeout=60)

    def tool(self, *arguments):
        return subprocess.check_output(arguments, env=self.env, text=True, timeout=60,
                                       stderr=subprocess.STDOUT)

    def output(self):
        with open(os.path.join(self.home, "output"), encoding="utf-8", errors="replace") as file:
            return file.read()

    # The parts of the desktop

    def _start_x_server(self):
        read_end, write_end = os.pipe()
        self.x_server = self.spawn(
            ["Xvfb", "-displayfd", str(write_end), "-screen", "0", "1280x800x24", "-nolisten",
             "tcp", "-noreset"], fast=True, pass_fds=[write_end])
        os.close(write_end)
        with os.fdopen(read_end) as file:
            self.env["DISPLAY"] = ":" + file.readline().strip()

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

    @staticmethod
    def _listens(path):
        with socket.socket(socket.AF_UNIX) as client:
            return client.connect_ex(path) == 0

    def _start_bus(self, kind):
        socket_path = os.path.join(self.home, kind + "-bus")
        config = os.path.join(self.home, kind + "-bus.conf")
        with open(config, "w", encoding="utf-8") as file:
            file.write(BUS_CONFIG.format(type=kind, socket=socket_path,
                                         services=self.services))
        if os.path.exists(socket_path):
            os.unlink(socket_path)
        process = self.spawn(["dbus-daemon", "--nofork", "--config-file", config])
        wait_for(lambda: self._listens(socket_path), "the %s bus" % kind)
        return process, "unix:path=" + socket_path

    def start_session_bus(self):
        self.session_bus_daemon, address = self._start_bus("session")
        self.env["DBUS_SESSION_BUS_ADDRESS"] = address
        self.session_bus = dbus.bus.BusConnection(address)

    def start_system_bus(self):
        self.system_bus_daemon, address = self._start_bus("system")
        self.env["DBUS_SYSTEM_BUS_ADDRESS"] = address
        self.system_bus = dbus.bus.BusConnection(address)
        self.start_logind()

    def start_logind(self):
        self.logind_process = self.spawn(
            ["/usr/bin/python3", "-m", "dbusmock", "--system", "--template", "logind"])
        wait_for(lambda: self.system_bus.name_has_owner("org.freedesktop.login1"), "logind")
        self.manager = dbus.Interface(
            self.system_bus.get_object("org.freedesktop.login1", "/org/freedesktop/login1"),
            dbusmock.MOCK_IFACE)
        self.session_path = self.manager.AddSession(
            "c1", "seat0", dbus.UInt32(os.getuid()), "user", True)

    # What the person and the machine do

    def prepare_for_sleep(self, is_beginning):
        self.manager.EmitSignal("org.freedesktop.login1.Manager", "PrepareForSleep", "b",
                                [is_beginning])

    def prepare_for_shutdown(self):
        self.manager.EmitSignal("org.freedesktop.login1.Manager", "PrepareForShutdown", "b",
                                [True])

    def inhibitors(self):
        manager = dbus.Interface(
            self.system_bus.get_object("org.freedesktop.login1", "/org/freedesktop/login1"),
            "org.freedesktop.login1.Manager")
        return [str(row[1]) for row in manager.ListInhibitors()]

    def set_locked(self, is_locked):
        session = self.system_bus.get_object("org.freedesktop.login1", self.session_path)
        session.UpdateProperties("org.freedesktop.login1.Session",
                                 {"LockedHint": dbus.Boolean(is_locked)},
                                 dbus_interface=dbusmock.MOCK_IFACE)

    def set_saver_active(self, is_active):
        message = dbus.lowlevel.SignalMessage(
            "/org/freedesktop/ScreenSaver", "org.freedesktop.ScreenSaver", "ActiveChanged")
        message.append(is_active)
        self.session_bus.send_message(message)
        self.session_bus.flush()

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

    # The recorder

    def set_launched_before(self):
        """Lets the next launch record at once, as after a finished set-up."""
        folder = self.home + "/config/tarnlow.cn"
        os.makedirs(folder, exist_ok=True)
        with open(folder + "/quillbrook.conf", "w", encoding="utf-8") as file:
            file.write("[General]\nhasLaunchedBefore=true\n")

    def start_recorder(self, **options):
        recorder = self.spawn([self.program], fast=True, **options)
        return recorder

    def start_recorder_and_wait(self, **options):
        """Starts it and closes its dashboard: what is in front then is what was before."""
        lines = self.log().count("✅ 就绪")
        recorder = self.start_recorder(**options)
        wait_for(lambda: self.log().count("✅ 就绪") > lines, "the recorder")
        self.close_dashboard()
        return recorder

    def close_dashboard(self):
        """Closes the window that a launch opens by itself."""
        wait_for(lambda: self.windows("Quillbrook"), "the dashboard")
        self.close_window("Quillbrook")

    def last_page(self):
        """The page that the recorder noted last."""
        with open(self.data + "/heartbeat.txt", encoding="utf-8") as file:
            return file.read().strip().split("|")[-1]

    def log(self):
        try:
            with open(self.data + "/monitor.log", encoding="utf-8") as file:
                return file.read()
        except FileNotFoundError:
            return ""

    def rows(self, sql):
        connection = sqlite3.connect("file:%s/monitor.db?mode=ro" % self.data, uri=True)
        try:
            return connection.execute(sql).fetchall()
        finally:
            connection.close()

    def write(self, sql):
        connection = sqlite3.connect(self.data + "/monitor.db")
        try:
            connection.executescript(sql)
        finally:
            connection.close()

    @contextlib.contextmanager
    def held_store(self):
        """Holds the store as a writer does; gives the moment at which that begins."""
        connection = sqlite3.connect(self.data + "/monitor.db", isolation_level=None)
        try:
            connection.execute("BEGIN IMMEDIATE")
            yield time.monotonic()
        finally:
            connection.close()

    def sessions(self):
        return self.rows("SELECT app_name, bundle_id, close_type, duration_sec, ended_at IS NULL "
                         "FROM app_sessions ORDER BY id")

    def session_names(self):
        return [row[0] for row in self.sessions()]

    def idles(self):
        return self.rows("SELECT source_type, duration_sec, ended_at IS NULL FROM idle_periods "
                         "ORDER BY id")

    def wait_for_session(self, name, count=None):
        """Waits until the newest session is an open one of `name`, the `count`th of all."""
        def is_there():
            rows = self.sessions()
            return rows and rows[-1][0] == name and rows[-1][4] == 1 and (
                count is None or len(rows) == count)
        wait_for(is_there, "a session of %s among %s" % (name, self.sessions()))

    def wait_for_idle(self, source_type):
        def is_there():
            rows = self.idles()
            return rows and rows[-1][0] == source_type and rows[-1][2] == 1
        wait_for(is_there, "an idle period of source %d among %s" % (source_type, self.idles()))

    def check_integrity(self):
        return self.rows("PRAGMA integrity_check") == [("ok",)]

    def let_minutes_pass(self, minutes):
        """Lets so many minutes of the fast clocks pass."""
        time.sleep(60.0 * minutes / self.speed)


class DesktopTest(unittest.TestCase):
    """A test on a desktop of its own, whose log and output stand beside a failure."""

    def open_desktop(self, speed=60, now=None, **options):
        self.desktop = Desktop(speed, now, **options)
        self.addCleanup(self.desktop.close)

    def tearDown(self):
        failed = self._outcome.result.failures + self._outcome.result.errors
        if any(test is self for test, _ in failed):
            print(self.desktop.log(), self.desktop.output()[-4000:])
