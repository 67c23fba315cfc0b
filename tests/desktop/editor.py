"""A text window of GTK, which takes part in the time-keeping of what a person did last."""

import gi

gi.require_version("Gtk", "3.0")
from gi.repository import Gtk  # noqa: E402

if __name__ == "__main__":
    window = Gtk.Window(title="Editor")
    window.set_default_size(500, 300)
    window.add(Gtk.TextView())
    window.connect("destroy", Gtk.main_quit)
    window.show_all()
    Gtk.main()
