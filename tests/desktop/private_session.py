"""A private session for tests: session and system bus, logind stand-in, and the program in it.

The program's clocks may run many times faster, by libfaketime, so that minutes pass in seconds
without a constant of the program being touched.
"""

import contextlib
import os
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

from waiting import wait_for

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


class PrivateSession:
    """A session of its own, `speed` times as fast as the world outside; `now` is the time on its
    clocks when it begins, by default that outside. What shows windows in it is for others to
    say.

    Five minutes make a rest: at 20 a busy machine may stand still for 15 seconds before what a
    test does looks like one."""

    def __init__(self, speed=20, now=None):
        self.speed = speed
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
            self.start_display()
            self.start_session_bus()
            self.start_system_bus()
            self.start_window_manager()
        except BaseException:
            self.close()
            raise

    def start_display(self):
        """Starts what windows need before there is a bus."""

    def start_window_manager(self):
        """Starts what arranges windows."""
        raise NotImplementedError

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

    # Buses

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

    # What the machine does

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
    def last_page(self):
        """The page that the recorder noted last."""
        with open(self.data + "/heartbeat.txt", encoding="utf-8") as file:
            return file.read().strip().split("|")[-1]

    def log(self):
        try:
            with open(self.data + "/monitor.log", encoding="utf-8") as file:
                return file.read()
        except (FileNotFoundError, NotADirectoryError):
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


class SessionTest(unittest.TestCase):
    """A test on a desktop of its own, whose log and output stand beside a failure."""

    desktop = None

    def tearDown(self):
        failed = self._outcome.result.failures + self._outcome.result.errors
        if self.desktop and any(test is self for test, _ in failed):
            print(self.desktop.log(), self.desktop.output()[-4000:])
