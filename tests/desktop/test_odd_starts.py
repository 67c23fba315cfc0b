"""The real program started where a display, a directory or what it may open is not as it should be:
one line that tells so, and no crash."""

import os
import resource
import struct
import subprocess
import unittest

from desktop import DesktopTest
from waiting import wait_for

NO_DISPLAY = "没有可用的显示，无法启动，什么都不记录: "


def limit_files(now, most):
    return lambda: resource.setrlimit(resource.RLIMIT_NOFILE, (now, most))


class OddStartsTest(DesktopTest):
    def setUp(self):
        self.open_desktop(speed=1)

    def launch(self, **changes):
        """Starts the program where some variables differ; None takes one away."""
        env = {**self.desktop.env, **changes}
        return subprocess.Popen(
            [self.desktop.program], cwd=self.desktop.home, stdin=subprocess.DEVNULL,
            stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
            env={name: value for name, value in env.items() if value is not None})

    def expect_refusal(self, process, reason):
        output, _ = process.communicate(timeout=60)
        lines = [line for line in output.splitlines() if line.startswith("quillbrook: ")]
        self.assertEqual(lines, ["quillbrook: " + NO_DISPLAY + reason])
        self.assertEqual(process.returncode, 1)
        self.assertFalse(os.path.exists(self.desktop.data), "no file is touched")
        return output.splitlines()

    def lines_about(self, word):
        return [line for line in self.desktop.output().splitlines()
                if line.startswith("quillbrook: ") and word in line]

    def ready(self, **options):
        recorder = self.desktop.start_recorder(**options)
        wait_for(lambda: "✅ 就绪" in self.desktop.output(), "the recorder")
        wait_for(lambda: self.desktop.windows("Quillbrook"), "the dashboard")
        self.assertIsNone(recorder.poll())

    def test_displays_that_are_not_there(self):
        cases = {
            "could not connect to display": {"DISPLAY": None},
            "could not connect to display ": {"DISPLAY": None, "WAYLAND_DISPLAY": "nowhere"},
            "could not connect to display :987": {"DISPLAY": ":987"},
            "could not connect to display what": {"DISPLAY": "what"},
            "Failed to create wl_display (No such file or directory)":
                {"WAYLAND_DISPLAY": "nowhere", "QT_QPA_PLATFORM": "wayland"},
            'Could not find the Qt platform plugin "what" in ""': {"QT_QPA_PLATFORM": "what"}}
        for reason, changes in cases.items():
            lines = self.expect_refusal(self.launch(**changes), reason.strip())
            self.assertEqual(len(lines), 1, lines)

    def test_a_display_that_lets_nobody_in(self):
        desktop = self.desktop
        keys = os.path.join(desktop.home, "keys")
        with open(keys, "wb") as file:
            file.write(struct.pack(">HHH", 0xFFFF, 0, 0) + b"\0\x12MIT-MAGIC-COOKIE-1"
                       + b"\0\x10" + b"k" * 16)
        read_end, write_end = os.pipe()
        desktop.spawn(["Xvfb", "-displayfd", str(write_end), "-auth", keys, "-nolisten", "tcp"],
                      pass_fds=[write_end])
        os.close(write_end)
        with os.fdopen(read_end) as file:
            display = ":" + file.readline().strip()
        lines = self.expect_refusal(
            self.launch(DISPLAY=display, XAUTHORITY="/dev/null"),
            "could not connect to display %s（Authorization required, but no authorization "
            "protocol specified）" % display)
        self.assertEqual(len(lines), 1, lines)

    def test_a_compositor_that_is_gone_beside_an_x_server(self):
        desktop = self.desktop
        desktop.env["WAYLAND_DISPLAY"] = "nowhere"
        self.ready()
        self.assertEqual(len(self.lines_about("Wayland")), 1)

    def test_only_twenty_descriptors(self):
        desktop = self.desktop
        recorder = desktop.start_recorder(preexec_fn=limit_files(20, 20))
        self.assertEqual(recorder.wait(timeout=60), 1)
        self.assertEqual(len(self.lines_about("只允许打开 20 个文件")), 1)
        self.assertFalse(os.path.exists(desktop.data))
        self.ready(preexec_fn=limit_files(20, 64))

    def test_directories_that_are_not_absolute(self):
        desktop = self.desktop
        for variable in ("XDG_DATA_HOME", "XDG_CONFIG_HOME"):
            desktop.env[variable] = "relative"
        desktop.data = desktop.home + "/.local/share/cn.tarnlow.quillbrook"
        os.makedirs(desktop.home + "/.config")
        os.rename(desktop.home + "/config/tarnlow.cn", desktop.home + "/.config/tarnlow.cn")
        self.ready(cwd=desktop.home)
        self.assertFalse(os.path.exists(desktop.home + "/relative"))
        self.assertIn("✅ 就绪", desktop.log())
        self.assertEqual(len(self.lines_about("不是绝对路径")), 2)

    def test_directories_that_take_no_file(self):
        desktop = self.desktop
        with open(desktop.data, "wb"):
            pass
        desktop.env["XDG_CONFIG_HOME"] = desktop.home + "/" + "/".join(["x" * 200] * 30)
        recorder = desktop.start_recorder()
        wait_for(lambda: self.lines_about("不能记录"), "a line about the records")
        wait_for(lambda: self.lines_about("不能保存设置"), "a line about the settings")
        wait_for(desktop.program_windows, "the set-up window")
        self.assertIn("Not a directory", self.lines_about("不能记录")[0])
        self.assertIn("File name too long", self.lines_about("不能保存设置")[0])
        self.assertIsNone(recorder.poll())

    def test_a_disk_that_is_full_from_the_start(self):
        desktop = self.desktop
        if os.getuid() != 0:
            self.skipTest("only root may make a disk of so little room")
        os.makedirs(desktop.data, mode=0o700)
        subprocess.check_call(["mount", "-t", "tmpfs", "-o", "mode=700,size=4096", "none",
                               desktop.data])
        self.addCleanup(subprocess.check_call, ["umount", "--lazy", desktop.data])
        with open(desktop.data + "/filler", "wb") as file:
            file.write(b"x" * 4096)
        recorder = desktop.start_recorder()
        wait_for(lambda: self.lines_about("不能记录"), "a line about the records")
        self.assertIn("No space left on device", self.lines_about("不能记录")[0])
        self.assertIsNone(recorder.poll())

    def test_no_home(self):
        self.desktop.env.pop("HOME")
        self.ready()
        self.assertEqual(len(self.lines_about("HOME")), 1)


if __name__ == "__main__":
    unittest.main(verbosity=2)
