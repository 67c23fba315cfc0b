"""What other users of the computer, and other programs of the session, see of the program: nothing."""

import os
import stat
import unittest
from xml.etree import ElementTree

import dbus

from desktop import DesktopTest
from waiting import wait_for

NAME = "cn.tarnlow.quillbrook"
PATH = "/cn/tarnlow/quillbrook"
INTROSPECTION = "org.freedesktop.DBus.Introspectable"
LISTENING = 0x10000  # the flag of a socket that takes connections, in /proc/net/unix


def mode_of(path):
    return stat.S_IMODE(os.lstat(path).st_mode)


class PrivateTest(DesktopTest):
    def setUp(self):
        self.open_desktop()

    def all_below(self, folder):
        return [os.path.join(where, name) for where, folders, files in os.walk(folder)
                for name in folders + files]

    def assert_private(self, folder):
        self.assertEqual(mode_of(folder), 0o700, folder)
        for path in self.all_below(folder):
            self.assertEqual(mode_of(path), 0o700 if os.path.isdir(path) else 0o600, path)

    def start_under(self, mask):
        return self.desktop.start_recorder_and_wait(preexec_fn=lambda: os.umask(mask))

    def test_all_that_it_writes_is_its_owners_alone(self):
        desktop = self.desktop
        desktop.open_window("xterm")
        self.start_under(0)
        desktop.type("a")
        desktop.wait_for_session("XTerm")
        names = {os.path.basename(path) for path in self.all_below(desktop.data)}
        self.assertLessEqual({"monitor.db", "monitor.db-wal", "monitor.db-shm", "monitor.log",
                              "monitor.pid", "heartbeat.txt", "clean_exit"}, names)
        self.assert_private(desktop.data)
        self.assert_private(desktop.home + "/config/tarnlow.cn")

    def test_what_others_could_read_before_is_taken_from_them(self):
        desktop = self.desktop
        outside = desktop.home + "/outside"
        os.makedirs(desktop.data + "/kept")
        os.chmod(desktop.data, 0o777)
        os.chmod(desktop.data + "/kept", 0o755)
        desktop.write("CREATE TABLE older(x)")
        for path in (outside, desktop.data + "/monitor.log", desktop.data + "/crash-20200101.log",
                     desktop.data + "/kept/monitor.db"):
            with open(path, "w", encoding="utf-8"):
                os.chmod(path, 0o666)
        os.chmod(desktop.data + "/monitor.db", 0o644)
        os.chmod(desktop.home + "/config/tarnlow.cn", 0o755)
        os.chmod(desktop.home + "/config/tarnlow.cn/quillbrook.conf", 0o644)
        os.symlink(outside, desktop.data + "/link")
        self.start_under(0o022)
        self.assertEqual(mode_of(outside), 0o666, "no link is followed")
        os.unlink(desktop.data + "/link")
        self.assert_private(desktop.data)
        self.assert_private(desktop.home + "/config/tarnlow.cn")

    def test_nobody_can_connect_to_it(self):
        recorder = self.start_under(0o022)
        folder = "/proc/%d/" % recorder.pid
        sockets = {os.readlink(folder + "fd/" + name)[8:-1] for name in os.listdir(folder + "fd")
                   if os.readlink(folder + "fd/" + name).startswith("socket:")}
        self.assertTrue(sockets)
        with open(folder + "net/unix", encoding="utf-8") as file:
            local = [line.split() for line in file.readlines()[1:]]
        self.assertFalse([line for line in local
                          if line[6] in sockets and int(line[3], 16) & LISTENING])
        for kind in ("tcp", "tcp6", "udp", "udp6", "raw", "raw6"):
            with open(folder + "net/" + kind, encoding="utf-8") as file:
                inodes = {line.split()[9] for line in file.readlines()[1:]}
            self.assertFalse(inodes & sockets, kind)

    def test_on_the_bus_it_can_only_be_asked_to_show_itself(self):
        desktop = self.desktop
        self.start_under(0o022)
        bus = desktop.session_bus
        self.assertEqual(self.methods(bus.get_object(NAME, PATH)), {"Activate"})
        program = bus.get_object(NAME, PATH)
        panel = bus.get_object(NAME, PATH + "/Panel", introspect=False)
        for method, arguments in (("Hello", ()), ("MenuOpens", ()), ("Chooses", (dbus.UInt32(1),)),
                                  ("Front", ("a", "b", dbus.UInt32(1)))):
            with self.assertRaises(dbus.DBusException):
                panel.get_dbus_method(method, NAME + ".Panel")(*arguments)
        program.Activate({"desktop-startup-id": "x" * 100000, "activation-token": dbus.Int32(7),
                          "other": dbus.Array([1], "i")},
                         dbus_interface="org.freedesktop.Application")
        wait_for(lambda: desktop.windows("Quillbrook"), "the dashboard")

    @staticmethod
    def methods(thing):
        """The names of all that an object offers beside what every object does."""
        root = ElementTree.fromstring(str(thing.Introspect(dbus_interface=INTROSPECTION)))
        return {child.get("name") for interface in root.findall("interface")
                if not interface.get("name").startswith("org.freedesktop.DBus.")
                for child in interface}


if __name__ == "__main__":
    unittest.main(verbosity=2)
