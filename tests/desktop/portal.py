"""A settings portal that wishes for what its argument says: 1 for dark windows, 2 for light ones.

A second argument is the time in seconds that it takes for an answer.
"""

import sys
import time

import dbus
import dbus.service
from dbus.mainloop.glib import DBusGMainLoop
from gi.repository import GLib

NAME = "org.freedesktop.portal.Desktop"
SETTINGS = "org.freedesktop.portal.Settings"


class Portal(dbus.service.Object):
    def __init__(self, bus, scheme, answer_sec):
        super().__init__(dbus.service.BusName(NAME, bus), "/org/freedesktop/portal/desktop")
        self.scheme = scheme
        self.answer_sec = answer_sec

    @dbus.service.method(SETTINGS, in_signature="ss", out_signature="v")
    def Read(self, space, key):
        time.sleep(self.answer_sec)
        if (space, key) != ("org.freedesktop.appearance", "color-scheme"):
            raise dbus.DBusException("no such setting", name=NAME + ".Error.NotFound")
        return dbus.UInt32(self.scheme, variant_level=1)


if __name__ == "__main__":
    DBusGMainLoop(set_as_default=True)
    portal = Portal(dbus.SessionBus(), int(sys.argv[1]), float((sys.argv + ["0"])[2]))
    GLib.MainLoop().run()
