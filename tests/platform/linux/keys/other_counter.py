"""Bears the counter service's name as another user, and tells of keys that nobody pressed."""

import os
import sys

import dbus
import dbus.mainloop.glib
import dbus.service
from gi.repository import GLib

INTERFACE = "cn.tarnlow.quillbrook.KeyCounter1"
PATH = "/cn/tarnlow/quillbrook/KeyCounter"
NOBODY = 65534

os.setgroups([])
os.setgid(NOBODY)
os.setuid(NOBODY)
dbus.mainloop.glib.DBusGMainLoop(set_as_default=True)
bus = dbus.bus.BusConnection(sys.argv[1])
name = dbus.service.BusName("cn.tarnlow.quillbrook.KeyCounter", bus)


class Counter(dbus.service.Object):
    @dbus.service.method(INTERFACE, sender_keyword="sender")
    def Subscribe(self, sender):
        GLib.timeout_add(50, self.tell, sender)

    def tell(self, sender):
        signal = dbus.lowlevel.SignalMessage(PATH, INTERFACE, "KeysPressed")
        signal.set_destination(sender)
        signal.append(dbus.UInt32(1000))
        bus.send_message(signal)
        print("told", flush=True)


Counter(bus, PATH)
print("there", flush=True)
GLib.MainLoop().run()
