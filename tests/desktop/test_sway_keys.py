"""The real program in a real sway with the real counter service, which takes pipes for keyboards:
the keys in the rows."""

import os
import subprocess
import sys
import unittest

from sway_desktop import SwayDesktop
from waiting import wait_for
from wayland_desktop import GTK3, WaylandDesktopTest

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "../keycounter"))
from counter_bus import KEY_A, KEY_LEFTSHIFT, NAME, press, typed  # noqa: E402

# Shows the program a folder of ours where the bus would look for services.
WITH_SERVICES = 'mount --bind "$0" /etc/dbus-1 && exec "$1"'


class SwayKeysDesktop(SwayDesktop):
    def __init__(self):
        super().__init__()
        self.keyboard = self.home + "/input/event0"
        os.mkdir(self.home + "/input")
        os.makedirs(self.home + "/bus-files/system-services")
        os.mkfifo(self.keyboard)
        self.pipe = None

    def install_service(self):
        with open("%s/bus-files/system-services/%s.service" % (self.home, NAME), "w",
                  encoding="utf-8") as file:
            file.write("[D-BUS Service]\nName=%s\nExec=/bin/false\n" % NAME)

    def let_sit(self, user):
        with open(self.home + "/seats.new", "w", encoding="utf-8") as file:
            file.write("%d\n%d\n" % (user, os.getuid()))
        os.rename(self.home + "/seats.new", self.home + "/seats")

    def start_service(self):
        self.pipe = None
        service = self.spawn(
            [os.environ["KEYCOUNTER"], self.home + "/input"],
            extra_env={"LD_PRELOAD": os.environ["EVDEV_ON_PIPES_LIBRARY"],
                       "TEST_SEATS": self.home + "/seats"})
        wait_for(lambda: self.system_bus.name_has_owner(NAME), "the service")
        return service

    def start_recorder(self, **options):
        return self.spawn(["unshare", "--mount", "sh", "-c", WITH_SERVICES,
                           self.home + "/bus-files", self.program], fast=True, **options)

    def write(self, data):
        if self.pipe is None:
            self.pipe = wait_for(self._opened, "the service's reading")
        os.write(self.pipe, data)

    def _opened(self):
        try:
            return os.open(self.keyboard, os.O_WRONLY | os.O_NONBLOCK)
        except OSError:
            return None

    def counts(self):
        return self.rows("SELECT app_name, keystroke_count FROM keystrokes ORDER BY id")

    def total(self):
        return sum(count for _, count in self.counts())


class SwayKeysTest(WaylandDesktopTest):
    def setUp(self):
        probe = subprocess.run(["unshare", "--mount", "true"], capture_output=True, check=False)
        if os.getuid() != 0 or probe.returncode != 0:
            self.skipTest("no mount namespaces for this user")
        self.open_wayland(SwayKeysDesktop)
        self.desktop.let_sit(os.getuid())

    def start_with_service(self):
        desktop = self.desktop
        desktop.install_service()
        service = desktop.start_service()
        recorder, _ = self.start_working()
        wait_for(lambda: "⌨️ OK" in desktop.log(), "the count")
        return service, recorder

    def wait_for_total(self, total):
        desktop = self.desktop
        wait_for(lambda: desktop.total() >= total, "%d keys" % total)
        desktop.let_minutes_pass(2)
        self.assertEqual(desktop.total(), total)

    def test_keys_are_counted_through_the_service(self):
        desktop = self.desktop
        self.start_with_service()
        desktop.write(typed(KEY_A) * 17 + press(KEY_A) + press(KEY_A, 2) * 9
                      + typed(KEY_LEFTSHIFT))
        self.wait_for_total(18)
        self.assertEqual({name for name, _ in desktop.counts()}, {GTK3[1]})

    def test_keys_of_another_users_session_are_not_ours(self):
        desktop = self.desktop
        self.start_with_service()
        desktop.write(typed(KEY_A))
        self.wait_for_total(1)
        desktop.let_sit(os.getuid() + 1)
        desktop.write(typed(KEY_A) * 50)
        desktop.let_minutes_pass(3)
        desktop.let_sit(os.getuid())
        desktop.write(typed(KEY_A) * 2)
        self.wait_for_total(3)

    def test_a_service_that_starts_anew(self):
        desktop = self.desktop
        service, recorder = self.start_with_service()
        desktop.write(typed(KEY_A))
        self.wait_for_total(1)
        desktop.kill(service)
        desktop.start_service()
        desktop.write(typed(KEY_A) * 4)
        self.wait_for_total(5)
        self.assertIsNone(recorder.poll())

    def test_without_service_nothing_is_counted_and_the_rest_is_recorded(self):
        desktop = self.desktop
        self.start_working()
        self.assertIn("⚠️ 辅助功能权限未授权，跳过键盘监控", desktop.log())
        desktop.touch()
        desktop.let_minutes_pass(2)
        self.assertEqual(desktop.counts(), [])
        self.assertIn(GTK3[1], desktop.session_names())


if __name__ == "__main__":
    unittest.main(verbosity=2)
