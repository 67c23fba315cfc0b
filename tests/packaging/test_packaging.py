"""What is installed beside the program, and how its Debian package treats it."""

import configparser
import os
import pathlib
import re
import struct
import subprocess
import tempfile
import unittest
import xml.etree.ElementTree

SOURCES = pathlib.Path(os.environ["SOURCES"])
ID = "cn.tarnlow.quillbrook"
EXTENSION = "quillbrook@tarnlow.cn"
ICON_SIZES = (16, 22, 24, 32, 48, 64, 128, 256, 512)

INSTALLED = {
    "bin/quillbrook",
    "libexec/quillbrook-keycounter",
    "lib/systemd/system/quillbrook-keycounter.service",
    f"share/applications/{ID}.desktop",
    f"share/dbus-1/system-services/{ID}.KeyCounter.service",
    f"share/dbus-1/system.d/{ID}.KeyCounter.conf",
    "share/doc/quillbrook/LICENSE",
    "share/doc/quillbrook/privacy_quillbrook.md",
    f"share/gnome-shell/extensions/{EXTENSION}/extension.js",
    f"share/gnome-shell/extensions/{EXTENSION}/metadata.json",
    f"share/gnome-shell/extensions/{EXTENSION}/stylesheet.css",
    f"share/icons/hicolor/scalable/apps/{ID}.svg",
    "share/man/man1/quillbrook.1",
    "share/man/man8/quillbrook-keycounter.8",
    f"share/metainfo/{ID}.metainfo.xml",
    *(f"share/icons/hicolor/{size}x{size}/apps/{ID}.png" for size in ICON_SIZES),
}


def install(folder, prefix):
    subprocess.run(["cmake", "--install", os.environ["BUILD"], "--prefix", prefix],
                   env={**os.environ, "DESTDIR": folder}, check=True, stdout=subprocess.DEVNULL)
    return pathlib.Path(folder + prefix)


def exchanged_names(path, *options):
    """The names that a program or library offers to others or asks of them."""
    listing = subprocess.run(["nm", "--dynamic", "--format=posix", *options, path], check=True,
                             capture_output=True, text=True).stdout
    return {line.split()[0].split("@")[0] for line in listing.splitlines()}


class InstalledTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        cls.prefix = install(folder.name, "/usr")

    def run_tool(self, *arguments):
        done = subprocess.run(arguments, capture_output=True, text=True, check=False)
        self.assertEqual(done.returncode, 0, done.stdout + done.stderr)
        return done.stdout + done.stderr

    def entry(self):
        parser = configparser.RawConfigParser(delimiters="=", strict=True)
        parser.optionxform = str
        parser.read(self.prefix / f"share/applications/{ID}.desktop", encoding="utf-8")
        return parser["Desktop Entry"]

    def test_the_program_and_nothing_of_its_tests_is_installed(self):
        found = {str(path.relative_to(self.prefix))
                 for path in self.prefix.rglob("*") if not path.is_dir()}
        self.assertEqual(found, INSTALLED)

    def test_another_prefix_is_heeded(self):
        with tempfile.TemporaryDirectory() as folder:
            prefix = install(folder, "/opt/quillbrook")
            unit = (prefix / "lib/systemd/system/quillbrook-keycounter.service").read_text()
            self.assertIn("\nExecStart=/opt/quillbrook/libexec/quillbrook-keycounter\n", unit)
            self.assertEqual([path.name for path in pathlib.Path(folder).iterdir()], ["opt"])

    def test_the_program_offers_its_own_functions_and_what_its_libraries_ask_for(self):
        # What it offers beside that would stand in for functions of later libraries.
        program = self.prefix / "bin/quillbrook"
        offered = exchanged_names(program, "--defined-only")
        own = {name for name in offered if re.match("main$|_ZNK?10quillbrook", name)}
        self.assertGreater(len(own), 1000, "names for the crash log")
        libraries = re.findall(r"=> (/\S+)", self.run_tool("ldd", program))
        asked_for = set().union(*(exchanged_names(library) for library in libraries))
        self.assertEqual(offered - own - asked_for, set())

    def test_the_menu_entry_is_valid_and_leads_to_the_program(self):
        path = str(self.prefix / f"share/applications/{ID}.desktop")
        self.assertEqual(self.run_tool("desktop-file-validate", path), "")
        entry = self.entry()
        self.assertTrue(os.access(self.prefix / "bin" / entry["Exec"], os.X_OK))
        self.assertEqual(entry["Icon"], ID)

    def test_the_software_centres_description_is_valid_and_of_this_program(self):
        path = str(self.prefix / f"share/metainfo/{ID}.metainfo.xml")
        self.run_tool("appstreamcli", "validate", "--no-net", path)
        component = xml.etree.ElementTree.parse(path)
        self.assertEqual(component.findtext("id"), ID)
        self.assertEqual(component.findtext("launchable"), ID + ".desktop")
        self.assertEqual(component.findtext("name"), self.entry()["Name"])
        self.assertTrue((self.prefix / "bin" / component.findtext("provides/binary")).exists())

    def test_each_icon_has_the_size_of_its_folder(self):
        icons = self.prefix / "share/icons/hicolor"
        for size in ICON_SIZES:
            data = (icons / f"{size}x{size}/apps/{ID}.png").read_bytes()
            self.assertEqual(data[:8], b"\x89PNG\r\n\x1a\n")
            self.assertEqual(struct.unpack(">II", data[16:24]), (size, size))
        drawing = xml.etree.ElementTree.parse(icons / f"scalable/apps/{ID}.svg").getroot()
        self.assertEqual(drawing.tag, "{http://www.w3.org/2000/svg}svg")


class DebianTest(unittest.TestCase):
    """The maintainer's scripts run on an empty tree, with a stand-in for the list of packages."""

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = pathlib.Path(folder.name)
        self.link = self.root / "usr/share/gnome-shell/extensions" / EXTENSION
        self.link.parent.mkdir(parents=True)
        for form in ("legacy", "modules"):
            (self.root / "usr/share/quillbrook/gnome-shell" / form / EXTENSION).mkdir(parents=True)

    def run_script(self, name, *arguments, shell=None):
        stand_in = self.root / "bin/dpkg-query"
        stand_in.parent.mkdir(exist_ok=True)
        stand_in.write_text("#!/bin/sh\n" + (f"echo {shell}" if shell else "exit 1") + "\n")
        stand_in.chmod(0o755)
        subprocess.run(["sh", SOURCES / "packaging/debian" / ("quillbrook." + name), *arguments],
                       env={"PATH": f"{stand_in.parent}:/usr/sbin:/usr/bin:/sbin:/bin",
                            "DPKG_ROOT": str(self.root)}, check=True)

    def linked_form(self):
        self.assertTrue(self.link.is_dir(), "a link that leads nowhere")
        return self.link.resolve().parent.name

    def test_the_extension_is_of_the_form_that_the_shell_loads(self):
        for shell, form in (("43.9-0+deb12u2", "legacy"), ("44.5-1", "legacy"),
                            ("45~alpha-1", "modules"), ("48.7-0+deb13u1", "modules")):
            self.run_script("postinst", "configure", "", shell=shell)
            self.assertEqual(self.linked_form(), form, shell)

    def test_without_a_shell_the_next_one_is_taken_for_new(self):
        self.run_script("postinst", "configure", "")
        self.assertEqual(self.linked_form(), "modules")

    def test_the_form_follows_the_shell(self):
        triggers = (SOURCES / "packaging/debian/quillbrook.triggers").read_text()
        self.assertIn("interest-noawait /usr/bin/gnome-shell\n", triggers)
        self.run_script("postinst", "configure", "", shell="43.9-0+deb12u2")
        self.run_script("postinst", "triggered", "/usr/bin/gnome-shell", shell="48.7-0+deb13u1")
        self.assertEqual(self.linked_form(), "modules")

    def test_the_link_goes_with_the_package_and_not_before(self):
        self.run_script("postinst", "configure", "")
        self.run_script("prerm", "upgrade", "9.9-1")
        self.assertTrue(self.link.is_symlink())
        self.run_script("prerm", "remove")
        self.assertFalse(self.link.is_symlink())

    def test_what_the_package_is_built_with_is_what_the_program_is_built_with(self):
        control = (SOURCES / "packaging/debian/control").read_text()
        named = re.search(r"\nBuild-Depends:\n((?: .*\n)+)", control).group(1)
        needed = {line.strip().rstrip(",").split()[0] for line in named.splitlines()}
        listed = set(subprocess.run(
            [SOURCES / "scripts/bootstrap", "--list", "package"], check=True, capture_output=True,
            text=True).stdout.split())
        self.assertEqual(needed - {"debhelper-compat"},
                         listed - {"build-essential", "debhelper", "git", "lintian"})


if __name__ == "__main__":
    unittest.main(verbosity=2)
