"""A private desktop of KWin without a screen."""

import itertools
import json
import os
import shutil
import socket
import struct

import dbus

from waiting import wait_for
from wayland_desktop import CannotStart, OURS, WaylandDesktop, require

SOCKET = "wayland-kwin"


class WaylandClient:
    """The least that one has to know of Wayland's wire to use an interface or two."""

    def __init__(self, path):
        self.socket = socket.socket(socket.AF_UNIX)
        self.socket.connect(path)
        self.numbers = itertools.count(3)
        self.globals = {}
        self._request(1, 1, struct.pack("=I", 2))  # get_registry
        self._request(1, 0, struct.pack("=I", next(self.numbers)))  # sync
        self._read_globals()

    def _request(self, target, opcode, arguments=b""):
        self.socket.sendall(struct.pack(
            "=II", target, (8 + len(arguments)) << 16 | opcode) + arguments)

    @staticmethod
    def text(value):
        data = value.encode() + b"\0"
        return struct.pack("=I", len(data)) + data + b"\0" * (-len(data) % 4)

    def _read_globals(self):
        while True:
            target, head = struct.unpack("=II", self._receive(8))
            body = self._receive((head >> 16) - 8)
            if target == 3:  # all were told
                return
            if target == 2 and head & 0xFFFF == 0:
                name, length = struct.unpack_from("=II", body)
                self.globals[body[8:8 + length - 1].decode()] = name

    def _receive(self, count):
        data = b""
        while len(data) < count:
            data += self.socket.recv(count - len(data))
        return data

    def bind(self, interface):
        number = next(self.numbers)
        self._request(2, 0, struct.pack("=I", self.globals[interface]) + self.text(interface)
                      + struct.pack("=II", 1, number))
        return number

    def move_pointer(self):
        pointer = self.bind("org_kde_kwin_fake_input")
        self._request(pointer, 0, self.text("test") + self.text("test"))  # authenticate
        self._request(pointer, 1, struct.pack("=ii", 256, 256))


class KWinDesktop(WaylandDesktop):
    def start_compositor(self):
        require("kwin_wayland")
        # Its capability may be refused here: a copy has none.
        program = shutil.copy(shutil.which("kwin_wayland"), self.home + "/kwin_wayland")
        self.display_file = self.home + "/display"
        script = self.home + "/tell-display"
        with open(script, "w", encoding="ascii") as file:
            file.write("#!/bin/sh\necho $DISPLAY $XAUTHORITY > %s.new\nmv %s.new %s\n"
                       % ((self.display_file,) * 3))
        os.chmod(script, 0o755)
        self.compositor = self.spawn(
            [program, "--virtual", "--xwayland", "--no-lockscreen", "--socket", SOCKET, script],
            extra_env={"KWIN_COMPOSE": "Q", "KWIN_WAYLAND_NO_PERMISSION_CHECKS": "1"})
        display = wait_for(self._display, "KWin")
        self.env["WAYLAND_DISPLAY"] = SOCKET
        self.env["DISPLAY"] = display[0]
        if len(display) > 1:
            self.env["XAUTHORITY"] = display[1]
        self.questions = itertools.count()

    def _display(self):
        if self.compositor.poll() is not None:
            raise CannotStart("KWin ended: " + self.output()[-300:])
        if not os.path.exists(self.display_file):
            return None
        with open(self.display_file, encoding="ascii") as file:
            return file.read().split()

    def client(self):
        return WaylandClient("%s/run/%s" % (self.home, SOCKET))

    def ask(self, expression):
        """What an expression of KWin's scripts gives, in which `windows` are all, and `active` is
        the name by which a version knows the one in front."""
        name = "question%d" % next(self.questions)
        path = "%s/%s.js" % (self.home, name)
        with open(path, "w", encoding="utf-8") as file:
            file.write("var isLater = 'windowList' in workspace;\n"
                       "var windows = isLater ? workspace.windowList() : workspace.clientList();\n"
                       "var active = isLater ? 'activeWindow' : 'activeClient';\n"
                       "print('%s:' + JSON.stringify(%s) + ':end');\n" % (name, expression))
        scripting = dbus.Interface(
            self.session_bus.get_object("org.kde.KWin", "/Scripting", introspect=False),
            "org.kde.kwin.Scripting")
        scripting.loadScript(path, name)
        scripting.start()
        answer = wait_for(lambda: [line for line in self.output().split("\n")
                                   if name + ":" in line and line.endswith(":end")],
                          "KWin's answer")[0]
        scripting.unloadScript(name)
        return json.loads(answer.split(name + ":", 1)[1][:-len(":end")])

    def own_windows(self):
        return self.ask("windows.filter(w => w.resourceClass == '%s').map(w => w.caption)" % OURS)

    def close_own_windows(self):
        self.ask("windows.filter(w => w.resourceClass == '%s').map(w => w.closeWindow())" % OURS)

    def focus(self, name):
        """Brings the windows of an application id, or of a class, to the front."""
        self.ask("windows.filter(w => String(w.resourceClass).toLowerCase() == '%s').map("
                 "w => { workspace[active] = w; return 0; })" % name.lower())

    def minimise(self, name):
        self.ask("windows.filter(w => w.resourceClass == '%s').map("
                 "w => { w.minimized = true; return 0; })" % name)

    def restore(self, name):
        self.ask("windows.filter(w => w.resourceClass == '%s').map("
                 "w => { w.minimized = false; workspace[active] = w; return 0; })" % name)

    def focused(self):
        """The application id of the window in front; none when there is none."""
        return self.ask("workspace[active] ? workspace[active].resourceClass : null")

    def touch(self):
        self.client().move_pointer()
