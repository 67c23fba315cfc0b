"""A private Wayland desktop for tests: a real compositor without a screen, buses, logind stand-in."""

import os
import pwd
import shutil
import subprocess
import sys
import time

from private_session import PrivateSession, SessionTest
from screen_reader import ScreenReader
from waiting import wait_for

ENTRY = """[Desktop Entry]
Type=Application
Name={name}
Exec=/opt/none
"""

# Application ids of the windows, and the names of their desktop entries.
GTK3 = ("org.example.Three", "窗口三")
GTK4 = ("org.example.Four", "窗口四")
QT = ("org.example.Qt", "窗口 Qt")
XTERM = ("XTerm", "com.apple.Terminal.xterm")
OURS = "cn.tarnlow.quillbrook"

REST_SEC = 7  # the compositor's, after which it has told that nobody is there

WINDOW_SCRIPT = os.path.join(os.path.dirname(os.path.abspath(__file__)), "gtk_window.py")


class WaylandDesktop(PrivateSession):
    """What every compositor's desktop has. The clocks of the recorder alone run fast: an idle
    notice, five seconds of the compositor's, is late by the other clocks."""

    def __init__(self, speed=20):
        super().__init__(speed)

    def start_display(self):
        for name in ("DISPLAY", "WAYLAND_DISPLAY", "SWAYSOCK"):
            self.env.pop(name, None)
        self.env["GSETTINGS_BACKEND"] = "memory"
        self.env["PYTHONPYCACHEPREFIX"] = self.home + "/pycache"

    def start_window_manager(self):
        self._write_entries()
        self.start_compositor()

    def start_compositor(self):
        raise NotImplementedError

    def _write_entries(self):
        folder = self.home + "/share/applications"
        os.makedirs(folder)
        for app_id, name in (GTK3, GTK4, QT):
            with open("%s/%s.desktop" % (folder, app_id), "w", encoding="utf-8") as file:
                file.write(ENTRY.format(name=name))

    # The recorder

    def start_recorder_and_wait(self, **options):
        """Starts it and closes its dashboard: what is in front then is what was before."""
        recorder = self.start_recorder_and_show(**options)
        self.close_dashboard()
        return recorder

    def start_recorder_and_show(self, **options):
        """Starts it, answers its set-up and waits for its dashboard."""
        reader = ScreenReader(self)
        recorder = self.start_recorder(**options)

        def is_ready():
            skip = next((element for element in reader.elements()
                         if element.name == "跳过（键盘监控不可用）"), None)
            if skip is not None:
                skip.press()
            return "✅ 就绪" in self.log()
        wait_for(is_ready, "the recorder")
        # The set-up may still be there.
        wait_for(lambda: reader.find("frame", "Quillbrook"), "the dashboard")
        wait_for(self.own_windows, "its window")
        return recorder

    def close_dashboard(self):
        self.close_own_windows()
        wait_for(lambda: not self.own_windows(), "the end of the dashboard")

    # What a person does

    def touch(self):
        raise NotImplementedError

    def touch_until(self, condition, what):
        """Touches it until `condition` holds: a touch within the first rest tells nobody's coming,
        but puts off the news that nobody is there."""
        next_at = 0

        def holds():
            nonlocal next_at
            if time.monotonic() >= next_at:
                self.touch()
                next_at = time.monotonic() + REST_SEC
            return condition()
        wait_for(holds, what)

    def open_gtk3(self):
        return self._open([sys.executable, WINDOW_SCRIPT, "3.0", GTK3[0]], GDK_BACKEND="wayland")

    def open_gtk4(self):
        # The renderer that it would choose starts slowly where there is no graphics card.
        return self._open([sys.executable, WINDOW_SCRIPT, "4.0", GTK4[0]], GDK_BACKEND="wayland",
                          GSK_RENDERER="cairo")

    def open_qt(self):
        return self._open([os.environ["QT_WINDOW"], QT[0]], QT_QPA_PLATFORM="wayland")

    def open_xterm(self):
        return self._open(self.as_owner(["xterm", "-e", "sleep 1000"]), WAYLAND_DISPLAY="none",
                          HOME=self.home + "/run")

    def as_owner(self, arguments):
        """The arguments that run a program as whoever runs the compositor: the server of X
        programs lets in nobody else."""
        return arguments

    def _open(self, arguments, **extra_env):
        return self.spawn(arguments, extra_env=extra_env)


class CannotStart(Exception):
    """A compositor is missing, or refuses this machine."""


def require(program):
    if shutil.which(program) is None:
        raise CannotStart(program + " is not installed")


def as_other_user(arguments, folder=None):
    """The arguments that run a program as an ordinary user when this is root. That one gets the
    folder."""
    if os.getuid() != 0:
        return arguments
    nobody = pwd.getpwnam("nobody")
    if folder is not None:
        subprocess.check_call(["chown", "-R", "%d:%d" % (nobody.pw_uid, nobody.pw_gid), folder])
    return ["setpriv", "--reuid", str(nobody.pw_uid), "--regid", str(nobody.pw_gid),
            "--clear-groups"] + arguments


class WaylandDesktopTest(SessionTest):
    """What has to hold on every Wayland desktop. A compositor that can't start here is skipped."""

    def open_wayland(self, kind, **options):
        try:
            self.desktop = kind(**options)
        except CannotStart as reason:
            self.skipTest(str(reason))
        self.addCleanup(self.desktop.close)

    def start_working(self):
        """Starts the recorder with somebody at work in a window of GTK 3."""
        desktop = self.desktop
        recorder = desktop.start_recorder_and_wait()
        window = desktop.open_gtk3()
        desktop.touch_until(lambda: desktop.session_names()[-1:] == [GTK3[1]], "a session")
        return recorder, window

    def check_each_front_is_a_session(self):
        desktop = self.desktop
        self.start_working()
        desktop.open_gtk4()
        desktop.wait_for_session(GTK4[1], 2)
        desktop.touch()
        desktop.open_qt()
        desktop.wait_for_session(QT[1], 3)
        desktop.touch()
        terminal = desktop.open_xterm()
        desktop.wait_for_session(XTERM[0], 4)
        desktop.touch()
        desktop.focus(GTK4[0])
        desktop.wait_for_session(GTK4[1], 5)
        desktop.focus("XTerm")
        desktop.wait_for_session(XTERM[0], 6)
        desktop.kill(terminal)
        wait_for(lambda: desktop.session_names()[-1] != XTERM[0], "the end of the terminal")
        self.assertEqual([row[:3] for row in desktop.sessions()[:6]], [
            (GTK3[1], GTK3[0], 1), (GTK4[1], GTK4[0], 0), (QT[1], QT[0], 0),
            XTERM + (0,), (GTK4[1], GTK4[0], 0), XTERM + (0,)])
        self.assertEqual(desktop.idles(), [])

    def check_nothing_in_front_is_nobody(self):
        desktop = self.desktop
        desktop.speed = 30
        _, window = self.start_working()
        desktop.kill(window)
        desktop.wait_for_idle(1)
        desktop.let_minutes_pass(3)
        self.assertEqual(len(desktop.sessions()), 1, "nothing is in front")
        desktop.open_gtk4()
        desktop.touch()
        desktop.wait_for_session(GTK4[1], 2)

    def check_a_minimised_window_is_not_in_front(self):
        desktop = self.desktop
        self.start_working()
        desktop.minimise(GTK3[0])
        desktop.wait_for_idle(1)
        desktop.restore(GTK3[0])
        desktop.touch()
        desktop.wait_for_session(GTK3[1], 2)

    def check_a_person_who_went_is_idle(self):
        desktop = self.desktop
        desktop.speed = 300  # hours pass
        self.start_working()
        # Input was seen within the hour, so that each silence is a row without length at first.
        wait_for(lambda: len(desktop.sessions()) > 1, "the second session")
        self.assertEqual(desktop.idles()[0], (1, 0.0, 0))
        # The silence begins a moment before the session's row at this speed of the clocks.
        self.assertGreater(desktop.sessions()[0][3], 300 - 5)

        # An hour after the last input nobody is taken for present any more, until one touches it.
        known = len(desktop.log())
        wait_for(lambda: "💓 [I]" in desktop.log()[known:], "a silence without a session")
        count = len(desktop.sessions())
        desktop.let_minutes_pass(15)
        self.assertEqual(len(desktop.sessions()), count, "nobody is there")
        self.assertEqual(desktop.idles()[-1][2], 1, "the idle period is open")
        desktop.touch_until(lambda: len(desktop.sessions()) > count, "the next session")

    def check_a_person_at_work_is_not_idle(self):
        desktop = self.desktop
        desktop.speed = 30  # a minute is less than the compositor's five seconds
        self.start_working()
        for _ in range(10):
            desktop.touch()
            desktop.let_minutes_pass(1)
        self.assertEqual(desktop.idles(), [])
        self.assertEqual(len(desktop.sessions()), 1)

    def check_a_locked_session(self):
        desktop = self.desktop
        desktop.speed = 30
        self.start_working()
        desktop.set_locked(True)
        desktop.wait_for_idle(3)
        desktop.touch()
        desktop.let_minutes_pass(5)
        self.assertEqual(len(desktop.sessions()), 1, "nobody sees the window behind the lock")
        desktop.set_locked(False)
        desktop.wait_for_session(GTK3[1], 2)
        self.assertEqual(desktop.sessions()[1][2], 3)

    def check_a_second_launch_raises_the_dashboard(self):
        desktop = self.desktop
        recorder = desktop.start_recorder_and_show()
        desktop.open_gtk3()
        wait_for(lambda: desktop.focused() == GTK3[0], "the window in front")
        self.assertEqual(desktop.start_recorder().wait(timeout=60), 0)
        wait_for(lambda: desktop.focused() == OURS, "the dashboard in front", timeout=20)
        desktop.close_own_windows()
        wait_for(lambda: not desktop.own_windows(), "the end of the dashboard")
        self.assertEqual(desktop.start_recorder().wait(timeout=60), 0)
        wait_for(lambda: desktop.focused() == OURS, "the dashboard once more", timeout=20)
        self.assertIsNone(recorder.poll())

    def check_a_dead_compositor_blocks_nobody(self):
        desktop = self.desktop
        recorder, _ = self.start_working()
        desktop.kill(desktop.compositor)
        # Its windows are gone with it: the program ends, as the toolkit wants it.
        recorder.wait(timeout=30)
        self.assertEqual(desktop.session_names(), [GTK3[1]])
        self.assertTrue(desktop.check_integrity())
