"""What programs announce to screen readers while a test runs."""

import collections

import dbus
from dbus.mainloop.glib import DBusGMainLoop
from gi.repository import GLib

from screen_reader import REGISTRY, Element
from waiting import wait_for

REGISTRY_PATH = "/org/a11y/atspi/registry"
EVENT = "org.a11y.atspi.Event.Object"

# `what` with its detail, such as "StateChanged:focused", and the number that comes with it
Announcement = collections.namedtuple("Announcement", "what number reference")


class Announcements:
    """Listens from its making on, which has to be before the programs start."""

    def __init__(self, reader):
        self.reader = reader
        self.heard = []
        self.bus = dbus.bus.BusConnection(reader.address, mainloop=DBusGMainLoop())
        registry = self.bus.get_object(REGISTRY, REGISTRY_PATH, introspect=False)
        registry.RegisterEvent("object:", dbus_interface=REGISTRY)
        self.bus.add_signal_receiver(self._hear, dbus_interface=EVENT, sender_keyword="sender",
                                     path_keyword="path", member_keyword="member")

    def forget(self):
        self._listen()
        self.heard.clear()

    def wait_for(self, what, role, name, number=None):
        """Waits until it was announced of an element of that role and name."""
        wait_for(lambda: self._was_heard(what, role, name, number),
                 "the announcement %s of the %s %s" % (what, role, name))

    def _was_heard(self, what, role, name, number):
        self._listen()
        return any(announcement.what == what and number in (None, announcement.number)
                   and self._is(announcement.reference, role, name)
                   for announcement in self.heard)

    def _is(self, reference, role, name):
        try:
            element = Element(self.reader.bus, reference)
            return element.role == role and element.name == name
        except dbus.DBusException:
            return False  # gone since

    @staticmethod
    def _listen():
        context = GLib.MainContext.default()
        while context.iteration(False):
            pass

    def _hear(self, detail, number, *_rest, sender, path, member):
        what = "%s:%s" % (member, detail) if detail else str(member)
        self.heard.append(Announcement(what, int(number), (str(sender), str(path))))
