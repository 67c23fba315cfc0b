"""A private desktop of sway without a screen."""

import glob
import json
import os
import subprocess

from waiting import wait_for
from wayland_desktop import CannotStart, OURS, WaylandDesktop, as_other_user, require

CONFIG = """xwayland enable
default_border none
input * xkb_layout us,de
exec echo $DISPLAY > {0}.new && mv {0}.new {0}
"""


class SwayDesktop(WaylandDesktop):
    def start_compositor(self):
        require("sway")
        folder = self.home + "/run"
        config = self.home + "/sway.conf"
        with open(config, "w", encoding="utf-8") as file:
            file.write(CONFIG.format(folder + "/display"))
        os.chmod(self.home, 0o755)
        self.compositor = self.spawn(
            as_other_user(["sway", "--config", config], folder),
            extra_env={"WLR_BACKENDS": "headless", "WLR_RENDERER": "pixman",
                       "WLR_LIBINPUT_NO_DEVICES": "1", "HOME": folder})
        wait_for(self._has_started, "sway")
        self.env["WAYLAND_DISPLAY"] = os.path.basename(
            glob.glob(folder + "/wayland-?")[0])
        self.env["SWAYSOCK"] = glob.glob(folder + "/sway-ipc*.sock")[0]
        with open(folder + "/display", encoding="ascii") as file:
            self.env["DISPLAY"] = file.read().strip()

    def as_owner(self, arguments):
        return as_other_user(arguments)

    def _has_started(self):
        if self.compositor.poll() is not None:
            raise CannotStart("sway ended: " + self.output()[-300:])
        return os.path.exists(self.home + "/run/display")

    def sway(self, *command):
        subprocess.run(["swaymsg", "--", *command], env=self.env, check=False, timeout=60,
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    def containers(self):
        tree = json.loads(self.tool("swaymsg", "-t", "get_tree"))
        waiting, found = [tree], []
        while waiting:
            node = waiting.pop()
            found.append(node)
            waiting += node["nodes"] + node["floating_nodes"]
        return [node for node in found if node.get("pid")]

    def own_windows(self):
        return [node for node in self.containers() if node["app_id"] == OURS]

    def close_own_windows(self):
        self.sway('[app_id="%s"] kill' % OURS)

    def focus(self, name):
        """Brings the windows of an application id, or of a class, to the front."""
        self.sway('[app_id="%s"] focus' % name)
        self.sway('[class="%s"] focus' % name)

    def minimise(self, name):
        self.sway('[app_id="%s"] move scratchpad' % name)

    def restore(self, name):
        self.sway('[app_id="%s"] scratchpad show' % name)

    def focused(self):
        """The application id of the window in front; none when there is none."""
        return next((node["app_id"] for node in self.containers() if node["focused"]), None)

    def touch(self):
        self.tool("wtype", "a")

    def plug_in_keyboard(self):
        """Gives windows the keys for good. `wtype` alone takes its keyboard with it when it ends,
        and the keys of the window with that."""
        self.spawn(["wtype", "-s", "1000000"])

    def press(self, *keys):
        for key in keys:
            self.tool("wtype", "-k", key)

    def clipboard(self):
        """What another program gets when it asks for a PNG."""
        return subprocess.run(["wl-paste", "--type", "image/png"], env=self.env, check=False,
                              capture_output=True, timeout=60).stdout
