"""The program's item in the tray, as a panel finds it on the session bus."""

import dbus

from waiting import wait_for

WATCHER = "org.kde.StatusNotifierWatcher"
ITEM = "org.kde.StatusNotifierItem"
MENU = "com.canonical.dbusmenu"


class TrayItem:
    """The only item of a tray, which it starts: a panel of the test's own, or a real one."""

    def __init__(self, desktop, panel=("/usr/bin/python3", "-B", "tray.py")):
        self.bus = desktop.session_bus
        self.process = desktop.spawn(list(panel))
        wait_for(lambda: self.bus.name_has_owner(WATCHER), "the tray")

    def wait(self):
        wait_for(self._owners, "the tray's item")

    def tooltip(self):
        return str(self.property("ToolTip")[2])

    def property(self, name):
        properties = dbus.Interface(self._object("/StatusNotifierItem"), dbus.PROPERTIES_IFACE)
        return properties.Get(ITEM, name)

    def entries(self):
        """The menu's entries, as (id, properties), in order."""
        _revision, layout = self._menu().GetLayout(0, -1, dbus.Array([], signature="s"))
        return [(int(child[0]), child[1]) for child in layout[2]
                if child[1].get("visible", True)]

    def titles(self):
        return [str(properties.get("label", "-")) for _id, properties in self.entries()]

    def click(self, title):
        number = next(number for number, properties in self.entries()
                      if properties.get("label") == title)
        self._menu().Event(number, "clicked", dbus.String("", variant_level=1), dbus.UInt32(0),
                           ignore_reply=True)
        self.bus.flush()

    def activate(self):
        """What a panel says when the icon is clicked."""
        self._object("/StatusNotifierItem").Activate(
            dbus.Int32(9), dbus.Int32(9), dbus_interface=ITEM)

    def _menu(self):
        return dbus.Interface(self._object("/MenuBar"), MENU)

    def _object(self, path):
        return self.bus.get_object(self._owners()[0], path, introspect=False)

    def _owners(self):
        watcher = self.bus.get_object(WATCHER, "/StatusNotifierWatcher", introspect=False)
        items = watcher.Get(WATCHER, "RegisteredStatusNotifierItems",
                            dbus_interface=dbus.PROPERTIES_IFACE)
        return [item.partition("/")[0] for item in items]
