"""The real counter service on a system bus with its own policy: who is told how many keys, and that
nothing else is told to anybody."""

import os
import signal
import subprocess
import time
import unittest
import xml.etree.ElementTree

import dbus

from counter_bus import (ANNA, BERT, EV_SYN, IS_ROOT, KEY_A, KEY_LEFTSHIFT, NAME, PATH, SERVICE,
                         STRANGER, CounterBusTest, event, press, typed, voluntary_switches)
from waiting import wait_for

needs_root = unittest.skipUnless(IS_ROOT, "only root can act as several users")

DENIED = "org.freedesktop.DBus.Error.AccessDenied"


class KeyCounterTest(CounterBusTest):
    def expect_nothing(self, *peers):
        """Proves that no number is under way to these."""
        time.sleep(1.2)  # what was counted before is told by now
        for peer in peers:
            self.assertFalse(peer.has_said_more())

    def test_keys_are_told_as_a_number(self):
        self.plug_in("event0")
        self.plug_in("event1")
        self.start_service()
        peer = self.subscribe()
        self.assertEqual(peer.answer, "done")
        self.write("event0", typed(KEY_A) * 3 + press(KEY_A) + press(KEY_A, 2) * 20)
        self.write("event1", press(KEY_LEFTSHIFT) + typed(KEY_A))
        self.assertEqual(sum(peer.keys(5)), 5)
        self.write("event0", press(KEY_A)[:30])
        self.write("event0", press(KEY_A)[30:])
        self.write("event0", event(EV_SYN, 3, 0) + typed(KEY_A) + typed(KEY_A))
        self.assertEqual(sum(peer.keys(2)), 2)
        self.expect_nothing(peer)

    def test_ten_thousand_keys_at_once(self):
        self.plug_in("event0")
        self.start_service()
        peer = self.subscribe()
        for _ in range(100):
            self.write("event0", b"")
            data = typed(KEY_A) * 100
            while data:
                try:
                    data = data[os.write(self.pipes["event0"], data):]
                except BlockingIOError:
                    time.sleep(0.01)
        self.assertEqual(sum(peer.keys(10_000)), 10_000)

    def test_a_message_tells_a_number_and_goes_to_one(self):
        self.plug_in("event0")
        self.start_service()
        peer, other = self.subscribe(), self.subscribe()
        self.write("event0", typed(KEY_A))
        lines = [peer.next_line(), other.next_line()]
        for line in lines:
            self.assertEqual(line[:2], ["keys", "1"])
            self.assertEqual(line[4], "u", "one number and nothing else")
        self.assertNotEqual(lines[0][3], lines[1][3], "each has its own")

    def test_the_moment_of_a_message_tells_no_more_than_its_second(self):
        self.plug_in("event0")
        self.start_service()
        peer = self.subscribe()
        self.write("event0", b"")
        for _ in range(3):
            before = time.monotonic()
            self.write("event0", typed(KEY_A))
            told_at = float(peer.next_line()[2])
            self.assertGreaterEqual(told_at, int(before) + 1)

    def test_keys_of_one_second_are_one_message(self):
        self.plug_in("event0")
        self.start_service()
        peer = self.subscribe()
        self.write("event0", b"")
        for _ in range(20):
            time.sleep(1.05 - time.monotonic() % 1)
            begin = time.monotonic()
            for _ in range(3):
                self.write("event0", typed(KEY_A))
                time.sleep(0.05)
            if int(begin) == int(time.monotonic()):
                break
            peer.keys(3)  # too slow a machine for this second
        self.assertEqual(peer.keys(3), [3])

    def test_nothing_runs_at_rest(self):
        self.plug_in("event0")
        service = self.start_service()
        peer = self.subscribe()
        self.write("event0", typed(KEY_A))
        peer.keys(1)
        time.sleep(1)
        before = voluntary_switches(service.pid), voluntary_switches(peer.process.pid)
        time.sleep(3)
        self.assertEqual(
            (voluntary_switches(service.pid), voluntary_switches(peer.process.pid)), before)

    def test_keyboards_are_open_only_for_subscribers(self):
        self.plug_in("event0")
        self.start_service()
        self.assertFalse(self.is_read("event0"))
        peer, other = self.subscribe(), self.subscribe()
        wait_for(lambda: self.is_read("event0"), "the reader")
        peer.end()
        self.write("event0", typed(KEY_A))
        self.assertEqual(other.keys(1), [1])
        other.process.send_signal(signal.SIGTERM)
        wait_for(lambda: not self.is_read("event0"), "the end of reading")
        self.subscribe(ANNA, "unsubscribe")
        wait_for(lambda: not self.is_read("event0"), "the end of reading")

    def test_keys_that_wait_go_with_the_last_subscriber(self):
        self.plug_in("event0")
        service = self.start_service()
        peer = self.subscribe()
        self.write("event0", typed(KEY_A) * 7)
        peer.end()
        later = self.subscribe()
        self.expect_nothing(later)
        self.assertIsNone(service.poll())

    def test_who_asks_twice_is_told_once(self):
        self.plug_in("event0")
        self.start_service()
        peer = self.subscribe(ANNA, "twice")
        self.write("event0", typed(KEY_A))
        self.assertEqual(peer.keys(1), [1])
        self.expect_nothing(peer)

    def test_one_user_may_not_take_all_places(self):
        self.start_service()
        self.set_seat(os.getuid())
        connections = [dbus.bus.BusConnection(self.address) for _ in range(17)]
        for connection in connections[:16]:
            connection.call_blocking(NAME, PATH, NAME + "1", "Subscribe", "", ())
        with self.assertRaisesRegex(dbus.DBusException, "LimitsExceeded"):
            connections[16].call_blocking(NAME, PATH, NAME + "1", "Subscribe", "", ())
        connections[0].close()

        def is_let_in():
            try:
                connections[16].call_blocking(NAME, PATH, NAME + "1", "Subscribe", "", ())
                return True
            except dbus.DBusException:
                return False
        wait_for(is_let_in, "a place that became free")
        for connection in connections[1:]:
            connection.close()

    def test_keyboards_come_and_go(self):
        self.start_service()
        peer = self.subscribe()
        self.plug_in("event3")
        self.write("event3", typed(KEY_A))
        peer.keys(1)
        self.write("event3", press(KEY_A)[:10])
        self.pull_out("event3")
        self.plug_in("event3")
        self.write("event3", typed(KEY_A) * 2)
        self.assertEqual(peer.keys(2), [2])
        self.plug_in("event90")
        self.plug_in("event4", is_readable=not IS_ROOT)
        if IS_ROOT:
            time.sleep(0.2)
            self.assertFalse(self.is_read("event4"))
            self.let_read("event4")
        self.write("event4", typed(KEY_A))
        peer.keys(1)
        self.assertFalse(self.is_read("event90"), "a mouse")

    @needs_root
    def test_only_the_user_of_the_active_session_is_told(self):
        self.plug_in("event0")
        self.start_service()
        self.set_seat(ANNA, BERT)
        anna, bert = self.subscribe(ANNA), self.subscribe(BERT)
        self.assertEqual((anna.answer, bert.answer), ("done", "done"))
        self.write("event0", typed(KEY_A) * 3)
        self.assertEqual(anna.keys(3), [3])
        self.set_seat(BERT, ANNA)
        self.write("event0", typed(KEY_A) * 2)
        self.assertEqual(bert.keys(2), [2])
        self.set_seat(None, ANNA, BERT)
        self.write("event0", typed(KEY_A) * 5)
        self.expect_nothing(anna, bert)

    @needs_root
    def test_who_leaves_the_seat_within_a_second_is_told_no_more(self):
        self.plug_in("event0")
        self.start_service()
        self.set_seat(ANNA, BERT)
        anna, bert = self.subscribe(ANNA), self.subscribe(BERT)
        self.write("event0", b"")
        for _ in range(20):
            time.sleep(1.05 - time.monotonic() % 1)
            begin = time.monotonic()
            self.write("event0", typed(KEY_A))
            time.sleep(0.1)
            self.set_seat(BERT, ANNA)
            if int(begin) == int(time.monotonic()):
                break
            time.sleep(1.2)  # too slow a machine for this second, whose number may have been told
            while anna.has_said_more():
                anna.next_line()
            self.set_seat(ANNA, BERT)
        self.expect_nothing(anna, bert)

    @needs_root
    def test_a_user_without_a_seat_is_refused(self):
        self.plug_in("event0")
        self.start_service()
        stranger = self.subscribe(BERT)
        self.assertEqual(stranger.answer, DENIED)
        anna = self.subscribe(ANNA)
        self.write("event0", typed(KEY_A))
        anna.keys(1)
        self.expect_nothing(stranger)

    @needs_root
    def test_the_name_is_for_those_who_may_read_keyboards(self):
        self.assertEqual(self.subscribe(ANNA, "own").answer, DENIED)
        self.start_service()
        owner = self.bus.get_name_owner(NAME)
        self.assertEqual(self.bus.get_unix_user(owner), SERVICE)

    @needs_root
    def test_properties_and_other_calls_are_closed(self):
        self.start_service()
        as_anna = subprocess.run(
            ["dbus-send", "--bus=" + self.address, "--print-reply", "--dest=" + NAME, PATH,
             "org.freedesktop.DBus.Properties.GetAll", "string:" + NAME + "1"],
            capture_output=True, text=True, check=False, env=self.env, **self.as_user(ANNA))
        self.assertIn("AccessDenied", as_anna.stderr)

    def test_a_call_starts_the_service(self):
        script = self.home + "/start"
        with open(script, "w", encoding="utf-8") as file:
            file.write("#!/bin/sh\nexport LD_PRELOAD=%s TEST_SEATS=%s\nexec %s %s\n" % (
                os.environ["EVDEV_ON_PIPES_LIBRARY"], self.home + "/seats",
                *self.service_arguments()))
        os.chmod(script, 0o755)
        with open(self.services + "/" + NAME + ".service", "w", encoding="utf-8") as file:
            file.write("[D-BUS Service]\nName=%s\nExec=%s\n" % (NAME, script))
        self.bus.get_object("org.freedesktop.DBus", "/org/freedesktop/DBus").ReloadConfig()
        self.plug_in("event0")
        peer = self.subscribe()
        self.assertEqual(peer.answer, "done")
        self.write("event0", typed(KEY_A))
        peer.keys(1)

    def test_the_service_ends_with_the_bus(self):
        service = self.start_service()
        self.bus_daemon.kill()
        self.assertEqual(service.wait(timeout=30), 1, "so that it is started again")

    def test_a_second_service_says_why_it_ends(self):
        self.start_service()
        second = subprocess.run(self.service_arguments(), env=self.service_env(), timeout=30,
                                capture_output=True, text=True, check=False)
        self.assertEqual(second.returncode, 1)
        self.assertEqual(second.stderr, "quillbrook-keycounter: File exists\n")

    def test_no_bus_at_all(self):
        env = {**self.service_env(), "DBUS_SYSTEM_BUS_ADDRESS": "unix:path=/nonexistent"}
        service = subprocess.run(self.service_arguments(), env=env, timeout=30,
                                 capture_output=True, text=True, check=False)
        self.assertEqual((service.returncode, service.stderr),
                         (1, "quillbrook-keycounter: No such file or directory\n"))

    def test_a_machine_without_input_devices(self):
        os.rmdir(self.devices)
        self.start_service()
        peer = self.subscribe()
        os.mkdir(self.devices, mode=0o755)
        self.plug_in("event0")
        self.write("event0", typed(KEY_A))
        self.assertEqual(peer.keys(1), [1])

    @needs_root
    def test_what_logind_writes_of_seats(self):
        """The library's own reading of logind's files, in a mount namespace of the service's."""
        files = self.home + "/systemd"
        for folder in ("seats", "users", "sessions"):
            os.makedirs(os.path.join(files, folder))

        def write(path, text):
            with open(os.path.join(files, path + ".new"), "w", encoding="utf-8") as file:
                file.write(text)
            os.rename(os.path.join(files, path + ".new"), os.path.join(files, path))

        def let_be_active(user):
            write("seats/seat0", "IS_SEAT0=1\nACTIVE=c1\nACTIVE_UID=%d\n" % user)
            for other in (ANNA, BERT):
                write("users/%d" % other, "NAME=x\nSEATS=seat0\nONLINE_SEATS=seat0\n"
                      "ACTIVE_SEATS=%s\n" % ("seat0" if other == user else ""))
        let_be_active(ANNA)
        probe = subprocess.run(["unshare", "--mount", "mount", "--bind", files, "/run/systemd"],
                               capture_output=True, check=False)
        if probe.returncode != 0:
            self.skipTest("no mount namespaces here: %r" % probe.stderr)
        env = self.service_env()
        del env["TEST_SEATS"]
        self.spawn(["unshare", "--mount", "sh", "-c",
                    'mount --bind "$0" /run/systemd && exec "$@"', files,
                    *self.service_arguments()], env)
        wait_for(lambda: self.bus.name_has_owner(NAME), "the service")
        self.plug_in("event0")
        anna, bert, stranger = self.subscribe(ANNA), self.subscribe(BERT), self.subscribe(STRANGER)
        self.assertEqual((anna.answer, bert.answer, stranger.answer), ("done", "done", DENIED))
        self.write("event0", typed(KEY_A) * 2)
        self.assertEqual(anna.keys(2), [2])
        let_be_active(BERT)
        self.write("event0", typed(KEY_A) * 4)
        self.assertEqual(bert.keys(4), [4])
        self.expect_nothing(anna, bert)


class KeyCounterFilesTest(unittest.TestCase):
    """What is installed for the service."""

    @classmethod
    def setUpClass(cls):
        cls.root = os.environ["KEYCOUNTER_INSTALLED"]
        subprocess.run(["cmake", "--install", os.environ["BUILD"], "--component", "keycounter",
                        "--prefix", "/usr"], env={**os.environ, "DESTDIR": cls.root}, check=True,
                       stdout=subprocess.DEVNULL)

    def read(self, path):
        with open(self.root + path, encoding="utf-8") as file:
            return file.read()

    def test_the_parts_name_each_other(self):
        unit = self.read("/usr/lib/systemd/system/quillbrook-keycounter.service")
        activation = self.read("/usr/share/dbus-1/system-services/%s.service" % NAME)
        policy = xml.etree.ElementTree.fromstring(
            self.read("/usr/share/dbus-1/system.d/%s.conf" % NAME))
        program = unit.split("ExecStart=")[1].splitlines()[0]
        self.assertTrue(os.access(self.root + program, os.X_OK), program)
        self.assertIn("BusName=%s\n" % NAME, unit)
        self.assertIn("Name=%s\n" % NAME, activation)
        self.assertIn("SystemdService=quillbrook-keycounter.service\n", activation)
        self.assertEqual({rule.get("own") or rule.get("send_destination")
                          for rule in policy.iter("allow")}, {NAME})

    def test_the_unit_is_sound_and_tight(self):
        unit = self.root + "/usr/lib/systemd/system/quillbrook-keycounter.service"
        with open(unit, encoding="utf-8") as file:
            text = file.read().replace("ExecStart=", "ExecStart=" + self.root)
        moved = self.root + "/quillbrook-keycounter.service"
        with open(moved, "w", encoding="utf-8") as file:
            file.write(text)
        verified = subprocess.run(["systemd-analyze", "verify", "--man=no", moved], capture_output=True,
                                  text=True, check=False)
        self.assertEqual((verified.returncode, verified.stderr), (0, ""))
        # In tenths of the scale's 10, where 100 is without any protection.
        subprocess.run(["systemd-analyze", "security", "--offline=yes", "--no-pager",
                        "--threshold=7", moved], check=True, stdout=subprocess.DEVNULL)


if __name__ == "__main__":
    unittest.main(verbosity=2)
