"""The program's windows as a screen reader finds them, through the accessibility bus."""

import dbus

from desktop import wait_for

A11Y_BUS = "org.a11y.Bus"
REGISTRY = "org.a11y.atspi.Registry"
ROOT = "/org/a11y/atspi/accessible/root"
ACCESSIBLE = "org.a11y.atspi.Accessible"
COMPONENT = "org.a11y.atspi.Component"
ACTION = "org.a11y.atspi.Action"
LAUNCHER = "/usr/libexec/at-spi-bus-launcher"

ON_SCREEN = 0
CHECKED = 1 << 4
FOCUSED = 1 << 12
SHOWING = 1 << 25


class Element:
    """One element of a window, as it was when it was read."""

    def __init__(self, bus, reference):
        self.node = node = bus.get_object(*reference, introspect=False)
        self.states = int(node.GetState(dbus_interface=ACCESSIBLE)[0])
        self.children = []
        if not self.is_showing:
            return
        self.role = str(node.GetRoleName(dbus_interface=ACCESSIBLE))
        self.name = self._text(node, "Name")
        self.value = self._text(node, "Description")
        self.rect = tuple(int(part) for part in node.GetExtents(
            dbus.UInt32(ON_SCREEN), dbus_interface=COMPONENT))
        self.children = [tuple(child) for child in node.GetChildren(dbus_interface=ACCESSIBLE)]

    def press(self):
        """Does what a click on it does, without a mouse."""
        self.node.DoAction(dbus.Int32(0), dbus_interface=ACTION)

    @staticmethod
    def _text(node, name):
        return str(node.Get(ACCESSIBLE, name, dbus_interface=dbus.PROPERTIES_IFACE))

    @property
    def is_showing(self):
        return bool(self.states & SHOWING)

    @property
    def is_checked(self):
        return bool(self.states & CHECKED)

    @property
    def has_focus(self):
        return bool(self.states & FOCUSED)

    @property
    def center(self):
        x, y, width, height = self.rect
        return x + width // 2, y + height // 2

    @property
    def top(self):
        """A place at its upper border, for what may reach beyond the window."""
        x, y, width, _height = self.rect
        return x + width // 2, y + 5


class ScreenReader:
    """Reads the windows of all programs, anew at each question."""

    def __init__(self, desktop):
        # The setting that somebody reads shall be kept without a service for settings.
        desktop.env["GSETTINGS_BACKEND"] = "memory"
        desktop.spawn([LAUNCHER, "--launch-immediately"])
        address = wait_for(lambda: self._enable(desktop.session_bus), "the accessibility bus")
        self.bus = dbus.bus.BusConnection(address)

    @staticmethod
    def _enable(session):
        """Tells programs that somebody reads; the bus's address, none while it isn't there."""
        try:
            launcher = session.get_object(A11Y_BUS, "/org/a11y/bus", introspect=False)
            launcher.Set("org.a11y.Status", "IsEnabled", dbus.Boolean(True, variant_level=1),
                         dbus_interface=dbus.PROPERTIES_IFACE)
            return str(launcher.GetAddress(dbus_interface=A11Y_BUS))
        except dbus.DBusException:
            return None

    def elements(self):
        """What is shown, in reading order; nothing when it changed while it was read."""
        try:
            return list(self._walk())
        except dbus.DBusException:
            return []

    def find(self, role, name):
        """The first element shown of that role and name, none when there is none."""
        try:
            return next((element for element in self._walk()
                         if (element.role, element.name) == (role, name)), None)
        except dbus.DBusException:
            return None

    def wait_for(self, role, name):
        return wait_for(lambda: self.find(role, name), "the %s %s" % (role, name))

    def _walk(self):
        waiting = list(reversed(self._windows()))
        while waiting:
            element = Element(self.bus, waiting.pop())
            if element.is_showing:
                yield element
                waiting += reversed(element.children)

    def _windows(self):
        registry = self.bus.get_object(REGISTRY, ROOT, introspect=False)
        windows = []
        for name, path in registry.GetChildren(dbus_interface=ACCESSIBLE):
            program = self.bus.get_object(name, path, introspect=False)
            windows += program.GetChildren(dbus_interface=ACCESSIBLE)
        return [tuple(window) for window in windows]
