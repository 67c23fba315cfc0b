"""The scripts of the README, with stand-ins for all that would change the machine."""

import os
import pathlib
import shutil
import subprocess
import tempfile
import unittest

SCRIPTS = pathlib.Path(__file__).resolve().parents[2] / "scripts"


class ScriptsTest(unittest.TestCase):
    """A copy of the scripts in a directory of its own. What a stand-in is called with is a line of
    its file `calls`."""

    def setUp(self):
        directory = tempfile.TemporaryDirectory()
        self.addCleanup(directory.cleanup)
        self.root = pathlib.Path(directory.name)
        self.bin = self.root / "bin"
        self.bin.mkdir()
        shutil.copytree(SCRIPTS, self.root / "scripts")
        self.environment = {"PATH": f"{self.bin}:/usr/bin:/bin", "HOME": str(self.root)}

    def stand_in(self, path, then="exit 0"):
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(f'#!/bin/bash\necho "{path.name} $*" >> {self.root}/calls\n{then}\n')
        path.chmod(0o755)

    def calls(self):
        path = self.root / "calls"
        return path.read_text().splitlines() if path.exists() else []

    def run_script(self, *arguments):
        return subprocess.run(
            [str(self.root / "scripts" / arguments[0]), *arguments[1:]],
            env=self.environment, capture_output=True, text=True, check=False)

    def listed(self, purpose):
        return self.run_script("bootstrap", "--list", purpose).stdout.split()

    def test_what_only_tests_need_is_no_part_of_trying_the_program(self):
        tried = set(self.listed("run")) | set(self.listed("desktop"))
        self.assertIn("qt6-base-dev", tried)
        for package in ("at-spi2-core", "dunst", "fcitx5", "ibus", "trayer", "libgtest-dev"):
            self.assertIn(package, self.listed("test"))
            self.assertNotIn(package, tried)

    def test_a_desktop_is_no_part_of_running_on_one(self):
        run = self.listed("run")
        for package in ("dbus", "openbox", "xvfb", "xterm"):
            self.assertIn(package, self.listed("desktop"))
            self.assertNotIn(package, run)

    def test_the_tests_need_what_the_program_needs(self):
        self.assertLess(set(self.listed("run")) | set(self.listed("desktop")),
                        set(self.listed("test")))

    def test_only_what_is_missing_is_installed(self):
        self.stand_in(self.bin / "dpkg-query", '[ "${*: -1}" = cmake ] || echo -n installed')
        self.stand_in(self.bin / "apt-get")
        self.stand_in(self.bin / "id", "echo 0")
        self.assertEqual(self.run_script("bootstrap", "run").returncode, 0)
        self.assertEqual([call for call in self.calls() if call.startswith("apt-get")],
                         ["apt-get update", "apt-get install --yes --no-install-recommends cmake"])

    def test_nothing_is_done_when_nothing_is_missing(self):
        self.stand_in(self.bin / "dpkg-query", "echo -n installed")
        self.stand_in(self.bin / "apt-get")
        for purpose in ("run", "desktop", "test", "nightly", "lint", "package"):
            done = self.run_script("bootstrap", purpose)
            self.assertEqual((done.returncode, done.stdout, done.stderr), (0, "", ""))
        self.assertFalse([call for call in self.calls() if call.startswith("apt-get")])

    def test_an_unknown_purpose_is_turned_down(self):
        for arguments in ((), ("all",), ("--list",)):
            self.assertEqual(self.run_script("bootstrap", *arguments).returncode, 2)

    def tools(self):
        """A directory of what the scripts call, as this machine may have more."""
        tools = self.root / "tools"
        tools.mkdir()
        for name in ("bash", "cat", "cp", "dirname", "mkdir"):
            (tools / name).symlink_to(shutil.which(name))
        return tools

    def prepare_run(self):
        for name in ("bootstrap", "private-desktop"):
            self.stand_in(self.root / "scripts" / name)
        self.stand_in(self.bin / "cmake")
        self.stand_in(self.root / "build/program/src/shell/quillbrook")
        self.environment["PATH"] = f"{self.bin}:{self.tools()}"

    def test_on_a_desktop_the_program_starts_without_another(self):
        self.prepare_run()
        self.environment["DISPLAY"] = ":7"
        self.stand_in(self.bin / "xprop")
        self.assertEqual(self.run_script("run").returncode, 0)
        self.assertEqual(self.calls()[0], "bootstrap run")
        self.assertNotIn("bootstrap desktop", self.calls())
        self.assertEqual(self.calls()[-1].strip(), "quillbrook")

    def test_under_gnome_the_extension_is_installed_for_the_user(self):
        self.prepare_run()
        self.environment["WAYLAND_DISPLAY"] = "wayland-0"
        self.stand_in(self.bin / "gnome-shell")
        extension = self.root / "build/program/extension"
        built = extension / "legacy/quillbrook@tarnlow.cn"
        built.mkdir(parents=True)
        (built / "extension.js").write_text("new")
        (extension / "form").write_text("legacy")
        installed = self.root / ".local/share/gnome-shell/extensions/quillbrook@tarnlow.cn"
        installed.mkdir(parents=True)
        (installed / "extension.js").write_text("old")
        done = self.run_script("run")
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertEqual((installed / "extension.js").read_text(), "new")
        self.assertEqual(self.calls()[-1].strip(), "quillbrook")

    def test_without_a_display_one_is_made(self):
        self.prepare_run()
        self.environment["DISPLAY"] = ":7"
        self.stand_in(self.bin / "xprop", "exit 1")
        self.assertEqual(self.run_script("run").returncode, 0)
        self.assertEqual(self.calls()[0], "bootstrap run")
        self.assertEqual(self.calls()[-2], "bootstrap desktop")
        self.assertEqual(os.path.basename(self.calls()[-1].split()[-1]), "quillbrook")
        self.assertTrue(self.calls()[-1].startswith("private-desktop "))


if __name__ == "__main__":
    unittest.main()
