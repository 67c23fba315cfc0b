"""The program's windows as a screen reader finds them, through the accessibility bus."""

import functools

import dbus

from waiting import wait_for

A11Y_BUS = "org.a11y.Bus"
REGISTRY = "org.a11y.atspi.Registry"
ROOT = "/org/a11y/atspi/accessible/root"
ACCESSIBLE = "org.a11y.atspi.Accessible"
COMPONENT = "org.a11y.atspi.Component"
ACTION = "org.a11y.atspi.Action"
TABLE = "org.a11y.atspi.Table"
LAUNCHER = "/usr/libexec/at-spi-bus-launcher"

ON_SCREEN = 0
CHECKED = 1 << 4
EXPANDED = 1 << 10
FOCUSABLE = 1 << 11
FOCUSED = 1 << 12
SHOWING = 1 << 25

LEAVES = ("label", "indicator", "cell", "page tab")  # roles of what has nothing inside


class Element:
    """One element of a window, as it was when it was read."""

    def __init__(self, bus, reference):
        self.reference = reference
        self._node = bus.get_object(*reference, introspect=False)
        self.states = int(self._node.GetState(dbus_interface=ACCESSIBLE)[0])

    def read(self):
        """Asks for its texts, which may soon be others, and returns itself."""
        for part in (self.role, self.name, self.value):
            assert part is not None
        return self

    def press(self):
        """Does what a click on it does, without a mouse."""
        self._node.DoAction(dbus.Int32(0), dbus_interface=ACTION)

    @functools.cached_property
    def role(self):
        return str(self._node.GetRoleName(dbus_interface=ACCESSIBLE))

    @functools.cached_property
    def name(self):
        return self._text("Name")

    @functools.cached_property
    def value(self):
        return self._text("Description")

    @functools.cached_property
    def rect(self):
        return tuple(int(part) for part in self._node.GetExtents(
            dbus.UInt32(ON_SCREEN), dbus_interface=COMPONENT))

    @functools.cached_property
    def children(self):
        if self.role in LEAVES:
            return []
        return [tuple(child) for child in self._node.GetChildren(dbus_interface=ACCESSIBLE)]

    def _text(self, name):
        return str(self._node.Get(ACCESSIBLE, name, dbus_interface=dbus.PROPERTIES_IFACE))

    @property
    def is_showing(self):
        return bool(self.states & SHOWING)

    @property
    def is_checked(self):
        return bool(self.states & CHECKED)

    @property
    def is_unfolded(self):
        return bool(self.states & EXPANDED)

    @property
    def can_be_focused(self):
        return bool(self.states & FOCUSABLE)

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
        self.address = wait_for(lambda: self._enable(desktop.session_bus), "the accessibility bus")
        self.bus = dbus.bus.BusConnection(self.address)

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

    def elements(self, root=None):
        """What is shown, or shown inside of `root`, in reading order; nothing when it changed while
        it was read."""
        try:
            return [element.read() for element in self._walk(root)]
        except dbus.DBusException:
            return []

    def find(self, role, name, root=None):
        """The first element shown of that role and name, none when there is none."""
        try:
            return next((element.read() for element in self._walk(root)
                         if element.role == role and element.name == name), None)
        except dbus.DBusException:
            return None

    def inside(self, role, name, root=None):
        """What is shown in the first element of that role and name, in reading order."""
        outer = self.find(role, name, root)
        return self.elements(outer) if outer else []

    def focused(self):
        """The innermost element that has the keys, none while there is none."""
        try:
            outer = self._first_focused()
            inner = outer and self._first_focused(outer)
            return outer and (inner or outer).read()
        except dbus.DBusException:
            return None

    def _first_focused(self, root=None):
        return next((element for element in self._walk(root) if element.has_focus), None)

    def wait_for(self, role, name):
        return wait_for(lambda: self.find(role, name), "the %s %s" % (role, name))

    def _walk(self, root=None):
        waiting = list(reversed(root.children if root else self._windows()))
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


class Table:
    """A table as it is read by row and column, which count from 0."""

    def __init__(self, bus, element):
        self.bus = bus
        self.node = bus.get_object(*element.reference, introspect=False)

    def count(self, name):
        return int(self.node.Get(TABLE, name, dbus_interface=dbus.PROPERTIES_IFACE))

    def titles(self):
        return [str(self.node.GetColumnDescription(dbus.Int32(column), dbus_interface=TABLE))
                for column in range(self.count("NColumns"))]

    def row_name(self, row):
        return str(self.node.GetRowDescription(dbus.Int32(row), dbus_interface=TABLE))

    def cell(self, row, column):
        reference = self.node.GetAccessibleAt(dbus.Int32(row), dbus.Int32(column),
                                              dbus_interface=TABLE)
        return Element(self.bus, tuple(reference)).read()

    def rows(self):
        """The texts of all cells."""
        return [[self.cell(row, column).name for column in range(self.count("NColumns"))]
                for row in range(self.count("NRows"))]
