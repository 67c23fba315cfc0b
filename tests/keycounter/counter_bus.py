"""A private system bus with the counter service's own policy, the service with pipes for keyboards,
and programs that subscribe, each as a user of its own where the tests run as root."""

import grp
import os
import pwd
import re
import select
import shutil
import struct
import subprocess
import sys
import tempfile
import unittest

import dbus

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, os.path.join(HERE, "../desktop"))

from waiting import wait_for  # noqa: E402

PACKAGING = os.path.join(HERE, "../../packaging/keycounter")
IS_ROOT = os.getuid() == 0
# Users that every system has, as a bus lets in none that it can't look up: for the service, for two
# persons and for a stranger.
SERVICE, ANNA, BERT, STRANGER = (
    pwd.getpwnam(name).pw_uid if IS_ROOT else os.getuid()
    for name in ("daemon", "news", "mail", "uucp"))

NAME = "cn.tarnlow.quillbrook.KeyCounter"
PATH = "/cn/tarnlow/quillbrook/KeyCounter"

KEY_A, KEY_LEFTSHIFT = 30, 42
EV_SYN, EV_KEY = 0, 1

# What the system's own configuration says of all users.
BUS_CONFIG = """<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>system</type>
  <listen>unix:path={socket}</listen>
  <servicedir>{services}</servicedir>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow user="*"/>
    <deny own="*"/>
    <deny send_type="method_call"/>
    <allow send_type="signal"/>
    <allow send_requested_reply="true" send_type="method_return"/>
    <allow send_requested_reply="true" send_type="error"/>
    <allow receive_type="method_call"/>
    <allow receive_type="method_return"/>
    <allow receive_type="error"/>
    <allow receive_type="signal"/>
    <allow send_destination="org.freedesktop.DBus"/>
  </policy>
  <include>{policy}</include>
</busconfig>
"""


def event(kind, code, value):
    return struct.pack("llHHi", 1767257400, 123456, kind, code, value)


def press(code, value=1):
    return event(EV_KEY, code, value) + event(EV_SYN, 0, 0)


def typed(code):
    return press(code) + press(code, 0)


def readers_group():
    """The group that the policy names, or one that stands for it where there is none."""
    try:
        return grp.getgrnam("input")
    except KeyError:
        return grp.getgrnam("games")


class Peer:
    """A program on the bus that has asked to be told."""

    def __init__(self, bus, user, *arguments):
        self.process = subprocess.Popen(
            [sys.executable, "-B", os.path.join(HERE, "peer.py"), *arguments], env=bus.env,
            stdout=subprocess.PIPE, bufsize=0, start_new_session=True, **bus.as_user(user))
        self.answer = " ".join(self.next_line())

    def next_line(self):
        return self.process.stdout.readline().decode().split()

    def has_said_more(self):
        return bool(select.select([self.process.stdout], [], [], 0)[0])

    def keys(self, total):
        """Waits until so many keys were told, and returns what was told each time."""
        told = []
        while sum(told) < total:
            line = self.next_line()
            if not line:
                raise AssertionError("the peer ended after %s" % told)
            told.append(int(line[1]))
        return told

    def end(self):
        self.process.kill()
        self.process.wait()
        self.process.stdout.close()


class CounterBusTest(unittest.TestCase):
    def setUp(self):
        self.home = tempfile.mkdtemp(prefix="quillbrook-counter-")
        self.addCleanup(shutil.rmtree, self.home, ignore_errors=True)
        os.chmod(self.home, 0o755)
        self.devices = self.home + "/input"
        self.services = self.home + "/services"
        for folder in (self.devices, self.services):
            os.mkdir(folder, mode=0o755)
        self.address = "unix:path=%s/bus" % self.home
        self.env = {key: value for key, value in os.environ.items()
                    if not key.startswith(("XDG_", "DBUS_"))}
        self.env.update(DBUS_SYSTEM_BUS_ADDRESS=self.address)
        self.set_seat(ANNA)
        self.pipes = {}
        self.start_bus()

    # The parts

    @staticmethod
    def as_user(user):
        return {"user": user, "group": user, "extra_groups": []} if IS_ROOT else {}

    def spawn(self, arguments, env=None, **options):
        process = subprocess.Popen(arguments, env=env or self.env, start_new_session=True, **options)

        def end():
            process.kill()
            process.wait()
        self.addCleanup(end)
        return process

    def policy(self):
        with open(PACKAGING + "/cn.tarnlow.quillbrook.KeyCounter.conf", encoding="utf-8") as file:
            policy = file.read()
        policy = policy.replace('group="input"', 'group="%s"' % readers_group().gr_name)
        if not IS_ROOT:
            policy = policy.replace('user="root"', 'user="%s"' % pwd.getpwuid(SERVICE).pw_name)
        return policy

    def start_bus(self):
        policy, config = self.home + "/policy.conf", self.home + "/bus.conf"
        with open(policy, "w", encoding="utf-8") as file:
            file.write(self.policy())
        with open(config, "w", encoding="utf-8") as file:
            file.write(BUS_CONFIG.format(socket=self.home + "/bus", policy=policy,
                                         services=self.services))
        self.bus_daemon = self.spawn(["dbus-daemon", "--nofork", "--config-file", config])
        wait_for(lambda: os.path.exists(self.home + "/bus"), "the bus")
        self.bus = wait_for(self._connected, "the bus")

    def _connected(self):
        try:
            return dbus.bus.BusConnection(self.address)
        except dbus.DBusException:
            return None

    def service_env(self):
        return {**self.env, "LD_PRELOAD": os.environ["EVDEV_ON_PIPES_LIBRARY"],
                "TEST_SEATS": self.home + "/seats"}

    def service_arguments(self):
        return [os.environ["KEYCOUNTER"], self.devices]

    def start_service(self):
        """Starts the service as a user who may read the keyboards."""
        options = {"user": SERVICE, "group": SERVICE,
                   "extra_groups": [readers_group().gr_gid]} if IS_ROOT else {}
        self.service = self.spawn(self.service_arguments(), self.service_env(), **options)
        wait_for(lambda: self.bus.name_has_owner(NAME), "the service")
        return self.service

    def subscribe(self, user=ANNA, *arguments):
        peer = Peer(self, user, *arguments)
        self.addCleanup(peer.end)
        return peer

    def set_seat(self, active, *others):
        """Lets the session of one user be active, or of nobody, and others have one, too."""
        with open(self.home + "/seats.new", "w", encoding="utf-8") as file:
            file.write("%s\n%s\n" % ("" if active is None else active,
                                     " ".join(str(user) for user in others)))
        os.rename(self.home + "/seats.new", self.home + "/seats")

    # Keyboards

    def plug_in(self, name, is_readable=True):
        path = os.path.join(self.devices, name)
        os.mkfifo(path, 0o600)
        if is_readable:
            self.let_read(name)

    def let_read(self, name):
        path = os.path.join(self.devices, name)
        if IS_ROOT:
            os.chown(path, 0, readers_group().gr_gid)
        os.chmod(path, 0o640)

    def pull_out(self, name):
        pipe = self.pipes.pop(name, None)
        if pipe is not None:
            os.close(pipe)
        os.unlink(os.path.join(self.devices, name))

    def write(self, name, data):
        """Lets a keyboard's reader have this; waits until there is one."""
        if name not in self.pipes:
            self.pipes[name] = wait_for(lambda: self._opened(name), "a reader of " + name)
            self.addCleanup(self._close, name)
        os.write(self.pipes[name], data)

    def _opened(self, name):
        try:
            return os.open(os.path.join(self.devices, name), os.O_WRONLY | os.O_NONBLOCK)
        except OSError:
            return None

    def is_read(self, name):
        """Whether the service has a keyboard open."""
        folder = "/proc/%d/fd" % self.service.pid
        for entry in os.listdir(folder):
            try:
                if os.readlink(os.path.join(folder, entry)) == os.path.join(self.devices, name):
                    return True
            except FileNotFoundError:
                continue  # closed meanwhile
        return False

    def _close(self, name):
        pipe = self.pipes.pop(name, None)
        if pipe is not None:
            os.close(pipe)


def voluntary_switches(pid):
    with open("/proc/%d/status" % pid, encoding="utf-8") as file:
        return int(re.search(r"^voluntary_ctxt_switches:\s+(\d+)", file.read(), re.M).group(1))
