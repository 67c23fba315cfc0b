"""Asks the counter service to tell of keys: prints its answer, then a line for each time that it
tells, with the moment. With "own" claims the service's name instead; with "unsubscribe" takes it
back at once; with "twice" asks again."""

import sys
import time

import dbus
import dbus.mainloop.glib
from gi.repository import GLib

NAME = "cn.tarnlow.quillbrook.KeyCounter"
INTERFACE = NAME + "1"
PATH = "/" + NAME.replace(".", "/")


def tell(*words):
    print(*words, flush=True)


def on_message(_, message):
    if message.get_member() == "KeysPressed" and message.get_interface() == INTERFACE:
        tell("keys", *message.get_args_list(), time.monotonic(), message.get_destination(),
             message.get_signature())


def main():
    dbus.mainloop.glib.DBusGMainLoop(set_as_default=True)
    bus = dbus.SystemBus()
    bus.add_message_filter(on_message)
    try:
        if "own" in sys.argv:
            bus.request_name(NAME, dbus.bus.NAME_FLAG_DO_NOT_QUEUE)
        else:
            for _ in range(2 if "twice" in sys.argv else 1):
                bus.call_blocking(NAME, PATH, INTERFACE, "Subscribe", "", ())
            if "unsubscribe" in sys.argv:
                bus.call_blocking(NAME, PATH, INTERFACE, "Unsubscribe", "", ())
        tell("done")
    except dbus.DBusException as error:
        tell(error.get_dbus_name())
    GLib.MainLoop().run()


main()
