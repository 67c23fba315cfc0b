"""A window of GTK with a given application id: gtk_window.py VERSION ID."""

import sys

import gi

gi.require_version("Gtk", sys.argv[1])
from gi.repository import GLib, Gtk  # noqa: E402


def show(application):
    window = Gtk.ApplicationWindow(application=application, title=sys.argv[2])
    window.set_default_size(400, 300)
    text = Gtk.TextView()
    if sys.argv[1] == "3.0":
        window.add(text)
        window.show_all()
    else:
        window.set_child(text)
        window.present()


if __name__ == "__main__":
    GLib.set_prgname(sys.argv[2])
    program = Gtk.Application(application_id=sys.argv[2])
    program.connect("activate", show)
    program.run([])
