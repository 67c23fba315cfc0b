"""A private desktop of GNOME Shell without a screen, with the program's extension."""

import glob
import json
import os
import re
import shutil
import sys
import time

import dbus

from screen_reader import ScreenReader
from waiting import wait_for
from wayland_desktop import CannotStart, OURS, WaylandDesktop, require

EXTENSION = "quillbrook@tarnlow.cn"
SHELL = "org.gnome.Shell"
DISPLAYS = "org.gnome.Mutter.DisplayConfig"
REMOTE = "org.gnome.Mutter.RemoteDesktop"
SESSION_MANAGER = "org.gnome.SessionManager"
KEEPS_FROM_RESTING = 8

SETTINGS = """[org/gnome/shell]
enabled-extensions=[{enabled}]
welcome-dialog-last-shown-version='99'
"""

WINDOWS = "global.get_window_actors().map(actor => actor.meta_window)"
ITEM = "Main.panel.statusArea['cn.tarnlow.quillbrook']"
KEY_A = 0x61

FRONT = re.compile(r'member=Front\n   string "(.*)"\n   string "(.*)"\n   uint32 (\d+)\n')

DESKTOP_WINDOW = """
import gi
gi.require_versions({"Gdk": "3.0", "Gtk": "3.0"})
from gi.repository import Gdk, Gtk
window = Gtk.Window()
window.set_type_hint(Gdk.WindowTypeHint.DESKTOP)
window.show()
Gtk.main()
"""

# Brings two windows to the front in turn, a thousand times in about a second; `_flood` tells the
# number of changes at the end, and the seconds that they took.
FLOOD = """(windows => {
            const {GLib} = imports.gi;
            const begin = GLib.get_monotonic_time();
            let changes = 0;
            let left = 1000;
            const id = global.display.connect('notify::focus-window', () => ++changes);
            GLib.timeout_add(GLib.PRIORITY_HIGH, 1, () => {
                windows[left %% 2].focus(global.display.get_current_time_roundtrip());
                if (--left > 0)
                    return GLib.SOURCE_CONTINUE;
                global.display.disconnect(id);
                global._flood = [changes, (GLib.get_monotonic_time() - begin) / 1e6];
                return GLib.SOURCE_REMOVE;
            });
        })(%s)"""

# A mouse of the shell's own, and what is done with it and an actor.
POINTER = """(actor => {
            const {Clutter, GLib} = imports.gi;
            const now = () => GLib.get_monotonic_time();
            global._pointer ??= Clutter.get_default_backend().get_default_seat()
                .create_virtual_device(Clutter.InputDeviceType.POINTER_DEVICE);
            const pointer = global._pointer;"""


class GnomeDesktop(WaylandDesktop):
    """GNOME Shell of this machine. What a person does there is asked of the shell itself."""

    def __init__(self, enabled=True, installed=True, **options):
        self.is_enabled = enabled
        self.is_installed = installed
        super().__init__(**options)

    def start_compositor(self):
        require("gnome-shell")
        self.env.update(GSETTINGS_BACKEND="keyfile", XDG_CURRENT_DESKTOP="GNOME",
                        XDG_SESSION_TYPE="wayland")
        settings = self.home + "/config/glib-2.0/settings"
        os.makedirs(settings)
        with open(settings + "/keyfile", "w", encoding="utf-8") as file:
            file.write(SETTINGS.format(enabled="'%s'" % EXTENSION if self.is_enabled else ""))
        if self.is_installed:
            self.install_extension()
        self.start_shell()

    def install_extension(self):
        shutil.copytree(os.environ["GNOME_EXTENSION"],
                        self.home + "/share/gnome-shell/extensions/" + EXTENSION)

    def start_shell(self):
        for path in glob.glob(self.home + "/run/gnome-shell-disable-extensions"):
            os.unlink(path)
        self.compositor = self.spawn(["gnome-shell", "--wayland", "--headless", "--unsafe-mode",
                                      "--virtual-monitor", "1280x800"])
        wait_for(self._has_started, "GNOME Shell", timeout=150)
        self.env["WAYLAND_DISPLAY"] = os.path.basename(
            glob.glob(self.home + "/run/wayland-?")[0])
        self.env["DISPLAY"] = self.js("imports.gi.GLib.getenv('DISPLAY')") or ""
        self.env["XAUTHORITY"] = next(iter(glob.glob(self.home + "/run/.mutter-Xwaylandauth*")), "")
        self.js("Main.overview.hide()")

    def _has_started(self):
        if self.compositor.poll() is not None:
            raise CannotStart("GNOME Shell ended: " + self.output()[-300:])
        try:
            return self.js("Main.layoutManager._startingUp === false")
        except dbus.DBusException:
            return False

    def js(self, code):
        """What the shell makes of a piece of JavaScript."""
        shell = self.session_bus.get_object(SHELL, "/org/gnome/Shell", introspect=False)
        is_done, result = shell.Eval(code, dbus_interface=SHELL)
        if not is_done:
            raise AssertionError(str(result))
        return json.loads(result) if result else None

    @staticmethod
    def text_of(form):
        """JavaScript that reads the extension of a form, by the variable that names its folder."""
        return ("new TextDecoder().decode(imports.gi.GLib.file_get_contents('%s/extension.js')[1])"
                % os.environ[form])

    # Windows

    def open_xterm(self):
        return self._open(["xterm", "-e", "sleep 1000"])

    def windows_where(self, condition):
        return self.js("%s.filter(window => %s).map(window => window.get_id())"
                       % (WINDOWS, condition))

    def own_windows(self):
        return self.windows_where("window.get_wm_class() === '%s'" % OURS)

    def answer_question(self, answer):
        """Presses a button of the box that stands before the dashboard."""
        reader = ScreenReader(self)
        wait_for(lambda: reader.find("push button", answer), "the question").press()
        wait_for(lambda: len(self.own_windows()) == 1, "the end of the question")

    def close_own_windows(self):
        self.js("%s.filter(window => window.get_wm_class() === '%s')"
                ".forEach(window => window.delete(global.get_current_time()))" % (WINDOWS, OURS))

    def focus(self, name):
        """Brings the window of an application id, or of a class, to the front."""
        is_it = "window.get_wm_class() === '%s'" % name
        wait_for(lambda: self.windows_where(is_it), "a window of " + name)
        self.js("Main.activateWindow(%s.find(window => %s))" % (WINDOWS, is_it))
        wait_for(lambda: self.focused() == name, name + " in front")

    def open_nameless(self, class_name):
        """A window of an X program without a desktop entry."""
        program = self.home + "/unknown"
        shutil.copy("/usr/bin/xterm", program)
        return self._open([program, "-class", class_name, "-e", "sleep 1000"])

    def minimize(self, name):
        self.js("%s.find(window => window.get_wm_class() === '%s').minimize()" % (WINDOWS, name))
        wait_for(lambda: self.focused() != name, name + " to be minimised")

    def focused(self):
        """The class of the window in front; none when there is none."""
        return self.js("global.display.focus_window?.get_wm_class() ?? null")

    def flood(self, first, last):
        """Brings two windows to the front in turn, very fast; returns the number of changes and the
        seconds that they took."""
        self.js(FLOOD % ("['%s', '%s'].map(name =>"
                         " %s.find(window => window.get_wm_class() === name))"
                         % (first, last, WINDOWS)))
        return wait_for(lambda: self.js("global._flood ?? null"), "the end of the flood")

    def focus_desktop(self):
        """Gives the keys to a window of an X program that has the desktop in it."""
        self._open([sys.executable, "-c", DESKTOP_WINDOW], GDK_BACKEND="x11")
        is_it = "window.get_window_type() === imports.gi.Meta.WindowType.DESKTOP"
        wait_for(lambda: self.windows_where(is_it), "the desktop")
        self.js("%s.find(window => %s).focus(global.display.get_current_time_roundtrip())"
                % (WINDOWS, is_it))

    def watch_fronts(self):
        """Writes down from now on what the extension tells of the front."""
        with open(self.home + "/fronts", "wb") as file:
            self.spawn(["dbus-monitor", "--session", "member='Front'"], stdout=file)
        wait_for(lambda: "NameAcquired" in self._told(), "the watch")

    def _told(self):
        with open(self.home + "/fronts", encoding="utf-8") as file:
            return file.read()

    def fronts(self):
        """What was told: application id, class and process each time."""
        return [(app, name, int(process)) for app, name, process in FRONT.findall(self._told())]

    # What a person does

    def touch(self):
        if not hasattr(self, "remote"):
            broker = self.session_bus.get_object(
                REMOTE, "/org/gnome/Mutter/RemoteDesktop", introspect=False)
            path = broker.CreateSession(dbus_interface=REMOTE)
            self.remote = self.session_bus.get_object(REMOTE, path, introspect=False)
            self.remote.Start(dbus_interface=REMOTE + ".Session")
        for is_down in (True, False):
            self.remote.NotifyKeyboardKeysym(dbus.UInt32(KEY_A), is_down,
                                             dbus_interface=REMOTE + ".Session")

    def keep_from_resting(self):
        """What a film wishes for: its session is in use for as long as it goes on."""
        path = "/org/gnome/SessionManager"
        self.spawn([sys.executable, "-m", "dbusmock", "--session", SESSION_MANAGER, path,
                    SESSION_MANAGER])
        wait_for(lambda: self.session_bus.name_has_owner(SESSION_MANAGER), "the session manager")
        manager = self.session_bus.get_object(SESSION_MANAGER, path, introspect=False)
        manager.AddProperty(SESSION_MANAGER, "InhibitedActions", dbus.UInt32(0, variant_level=1),
                            dbus_interface="org.freedesktop.DBus.Mock")
        manager.Set(SESSION_MANAGER, "InhibitedActions",
                    dbus.UInt32(KEEPS_FROM_RESTING, variant_level=1),
                    dbus_interface=dbus.PROPERTIES_IFACE)

    def set_screens(self, are_on):
        displays = self.session_bus.get_object(
            DISPLAYS, "/org/gnome/Mutter/DisplayConfig", introspect=False)
        displays.Set(DISPLAYS, "PowerSaveMode", dbus.Int32(0 if are_on else 3, variant_level=1),
                     dbus_interface=dbus.PROPERTIES_IFACE)

    def set_extension_enabled(self, is_on):
        shell = self.session_bus.get_object(SHELL, "/org/gnome/Shell", introspect=False)
        getattr(shell, "EnableExtension" if is_on else "DisableExtension")(
            EXTENSION, dbus_interface=SHELL + ".Extensions")

    # The panel

    def has_item(self):
        return self.js("%s?.visible ?? false" % ITEM)

    def label(self):
        return self.js("%s._label.text" % ITEM)

    def is_alert(self):
        return self.js("%s._icon.visible && %s._label.has_style_class_name('quillbrook-alert')"
                       % (ITEM, ITEM))

    def label_color(self):
        """Of the text on the screen, as (red, green, blue)."""
        return tuple(self.js("(() => { const color = %s._label.get_theme_node()"
                             ".get_foreground_color();"
                             "return [color.red, color.green, color.blue]; })()" % ITEM))

    def titles(self):
        return self.js("%s.menu._getMenuItems().map(item => item.label?.text || '-')" % ITEM)

    def open_menu(self):
        self.click_on(ITEM)
        wait_for(lambda: self.js("%s.menu.isOpen" % ITEM), "the menu")

    def choose(self, title):
        """Clicks on an entry of the open menu."""
        self.click_on("%s.menu._getMenuItems().find(item => item.label?.text === '%s')"
                      % (ITEM, title))

    def click_on(self, actor):
        """Clicks with the mouse on something that the shell shows."""
        wait_for(lambda: self.js(actor + ".mapped"), actor)
        time.sleep(0.5)  # menus fade in
        self.js(POINTER + """
            const [x, y] = actor.get_transformed_position();
            pointer.notify_absolute_motion(now(), x + actor.width / 2, y + actor.height / 2);
            pointer.notify_button(now(), 1, Clutter.ButtonState.PRESSED);
            pointer.notify_button(now(), 1, Clutter.ButtonState.RELEASED);
        })(%s)""" % actor)
