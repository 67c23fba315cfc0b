"""The real program where something is wrong around it: a log line, no crash, no lost row."""

import os
import resource
import signal
import sqlite3
import stat
import subprocess
import time
import unittest

from desktop import DesktopTest
from waiting import wait_for

OLD_SCHEMA = """
CREATE TABLE app_sessions (id INTEGER PRIMARY KEY AUTOINCREMENT, app_name TEXT NOT NULL,
    bundle_id TEXT, started_at REAL NOT NULL, ended_at REAL, duration_sec REAL);
INSERT INTO app_sessions (app_name, bundle_id, started_at, ended_at, duration_sec)
    VALUES ('Old', 'org.example.old', 1000000000, 1000000060, 60);
CREATE TABLE idle_periods (id INTEGER PRIMARY KEY AUTOINCREMENT, started_at REAL NOT NULL,
    ended_at REAL, duration_sec REAL);
INSERT INTO idle_periods (started_at) VALUES (1000000060);
"""


def is_root():
    return os.getuid() == 0


class SurroundingsTest(DesktopTest):
    def setUp(self):
        # No minutes have to pass, and a minute is to be longer than the dashboard takes to open.
        self.open_desktop(speed=10)

    def make_store(self, sql):
        os.makedirs(self.desktop.data, mode=0o700)
        self.desktop.write(sql)

    def start_working(self, count=1):
        desktop = self.desktop
        desktop.open_window("xterm")
        recorder = desktop.start_recorder_and_wait()
        desktop.type("a")
        desktop.wait_for_session("XTerm", count)
        return recorder

    def test_a_directory_that_cannot_be_written(self):
        desktop = self.desktop
        os.makedirs(desktop.data, mode=0o500)
        if is_root():
            # Permissions don't hold root back; a file system that is read-only does.
            subprocess.check_call(["mount", "-t", "tmpfs", "-o", "ro", "none", desktop.data])
            self.addCleanup(subprocess.check_call, ["umount", desktop.data])
        recorder = desktop.start_recorder()
        wait_for(lambda: "❌ 无法打开数据库，监控引擎启动失败" in desktop.output(), "the refusal")
        self.assertIsNone(recorder.poll())

    def fill_disk_of(self, limit):
        """Gives options for a recorder whose disk is full, and what makes room again."""
        desktop = self.desktop
        os.makedirs(desktop.data, mode=0o700)
        if is_root():
            subprocess.check_call(["mount", "-t", "tmpfs", "-o", "mode=700,size=%d" % limit,
                                   "none", desktop.data])
            self.addCleanup(subprocess.check_call, ["umount", "--lazy", desktop.data])
            return {}

        def limit_files():
            # The kernel's own refusal for those who may not mount: no file grows beyond it.
            signal.signal(signal.SIGXFSZ, signal.SIG_IGN)
            resource.setrlimit(resource.RLIMIT_FSIZE, (limit, limit))
        return {"preexec_fn": limit_files}

    def test_a_disk_that_is_full(self):
        desktop = self.desktop
        options = self.fill_disk_of(1024 * 1024)
        desktop.open_window("xterm")
        recorder = desktop.start_recorder_and_wait(**options)
        desktop.type("a")
        desktop.wait_for_session("XTerm", 1)
        message = desktop.open_window("xmessage", "hello")
        desktop.wait_for_session("Xmessage", 2)
        self.fill(desktop.data + "/filler")
        desktop.kill(message)
        wait_for(lambda: "⚠️ SQL 错误" in desktop.output(), "a line about the failed statement")
        self.assertIsNone(recorder.poll())
        self.assertEqual(desktop.session_names(), ["XTerm", "Xmessage"], "no row is lost")
        desktop.kill(recorder)
        # With room again, recording goes on. The newest open session had no later row to end at.
        os.unlink(desktop.data + "/filler")
        desktop.start_recorder_and_wait()
        self.assertTrue(desktop.check_integrity())
        desktop.type("a")
        desktop.wait_for_session("XTerm", 3)
        self.assertEqual([row[4] for row in desktop.sessions()], [0, 1, 1])

    def fill(self, path):
        """Fills the disk, or brings the log and store to the limit of a file's size."""
        with open(path, "wb", buffering=0) as file:
            try:
                while is_root():
                    file.write(b"x" * 4096)
            except OSError:
                pass
        if not is_root():
            self.desktop.write("INSERT INTO alerts (timestamp, alert_type, severity, message) "
                               "VALUES " + ",".join(["(0,'x','x','%s')" % ("y" * 1000)] * 1000))

    def test_a_store_that_is_no_database(self):
        desktop = self.desktop
        os.makedirs(desktop.data, mode=0o700)
        text = b"this is not a database\n" * 1000
        with open(desktop.data + "/monitor.db", "wb") as file:
            file.write(text)
        recorder = desktop.start_recorder()
        wait_for(lambda: "⚠️ SQL 错误" in desktop.log(), "lines about the statements")
        self.assertIsNone(recorder.poll())
        with open(desktop.data + "/monitor.db", "rb") as file:
            self.assertEqual(file.read(), text, "nobody's file is overwritten")

    def test_a_store_that_another_program_holds(self):
        desktop = self.desktop
        self.start_working()
        with desktop.held_store():
            desktop.open_window("xmessage", "hello")
            wait_for(lambda: "database is locked" in desktop.log(), "a line about the lock")
            # Behind the one that waited nothing waits, and the menu bar's figures are read.
            desktop.open_window("xcalc")
            before = time.monotonic()
            wait_for(lambda: "→ XCalc" in desktop.log(), "the switch")
            self.assertLess(time.monotonic() - before, 4)
            self.assertEqual(desktop.session_names(), ["XTerm"])
        desktop.wait_for_session("XCalc", 3)
        self.assertEqual(desktop.session_names(), ["XTerm", "Xmessage", "XCalc"])
        starts_and_ends = desktop.rows("SELECT started_at, ended_at FROM app_sessions ORDER BY id")
        for (_, end), (start, _) in zip(starts_and_ends, starts_and_ends[1:]):
            self.assertLess(abs(start - end), 1)
        self.assertTrue(desktop.check_integrity())

    def test_a_store_that_is_deleted(self):
        desktop = self.desktop
        self.start_working()
        for suffix in ("", "-wal", "-shm"):
            os.unlink(desktop.data + "/monitor.db" + suffix)
        desktop.open_window("xcalc")
        wait_for(lambda: "→ XCalc" in desktop.log(), "the switch")
        self.assertEqual(desktop.log().count("⚠️ 数据库文件被删除或移走"), 1)
        self.assertEqual(desktop.session_names(), ["XTerm", "XCalc"])
        self.assertTrue(desktop.check_integrity())

    def test_a_store_that_is_damaged(self):
        desktop = self.desktop
        self.start_working()
        desktop.write("PRAGMA wal_checkpoint(TRUNCATE)")
        with open(desktop.data + "/monitor.db", "r+b") as file:
            size = os.fstat(file.fileno()).st_size
            file.seek(4096)
            file.write(b"\x55" * (size - 4096))
        desktop.open_window("xcalc")
        # The store is looked through beside the recording.
        wait_for(lambda: "⚠️ 数据库文件已损坏，保留为 monitor-damaged-" in desktop.log(), "the line")

        def is_anew():
            try:
                return desktop.session_names() == ["XTerm", "XCalc"]
            except sqlite3.OperationalError:  # its tables are not there yet
                return False
        wait_for(is_anew, "the new store")
        self.assertTrue(desktop.check_integrity())
        kept = [name for name in os.listdir(desktop.data)
                if name.startswith("monitor-damaged-") and name.endswith(".db")]
        self.assertEqual(len(kept), 1)
        self.assertEqual(os.path.getsize(os.path.join(desktop.data, kept[0])), size)
        self.assertEqual(desktop.log().count("⚠️ 数据库"), 1)

    def test_a_store_of_an_older_version(self):
        desktop = self.desktop
        self.make_store(OLD_SCHEMA)
        self.start_working(2)
        self.assertEqual(desktop.sessions()[0], ("Old", "org.example.old", 0, 60.0, 0))
        self.assertEqual(desktop.idles()[0][0], 4)
        self.assertNotIn("⚠️", desktop.log())

    def test_folders_in_the_place_of_files(self):
        desktop = self.desktop
        for name in ("monitor.log", "monitor.pid"):
            os.makedirs(os.path.join(desktop.data, name, "inside"))
        desktop.open_window("xterm")
        desktop.start_recorder()
        wait_for(lambda: "✅ 就绪" in desktop.output(), "the recorder")
        desktop.close_dashboard()
        desktop.type("a")
        desktop.wait_for_session("XTerm")

    def test_a_home_that_others_could_read(self):
        desktop = self.desktop
        os.makedirs(desktop.data, mode=0o755)
        os.chmod(desktop.data, 0o755)
        desktop.start_recorder_and_wait()
        self.assertEqual(stat.S_IMODE(os.stat(desktop.data).st_mode), 0o700)

    def test_desktop_entries_of_every_bad_kind(self):
        desktop = self.desktop
        folder = desktop.home + "/share/applications"
        os.makedirs(folder)
        os.symlink(folder, folder + "/circle")
        os.symlink(folder + "/self.desktop", folder + "/self.desktop")
        os.mkfifo(folder + "/pipe.desktop")
        with open(folder + "/huge.desktop", "wb") as file:
            file.write(b"[Desktop Entry]\nType=Application\nName=Huge\n" + b"X=" + b"x" * (1 << 25))
        with open(folder + "/binary.desktop", "wb") as file:
            file.write(os.urandom(1 << 16))
        with open(folder + "/good.desktop", "w", encoding="utf-8") as file:
            file.write("[Desktop Entry]\nType=Application\nName=Calc\nName[zh_CN]=计算器\n"
                       "StartupWMClass=XCalc\nExec=xcalc\n")
        desktop.env["LANG"] = "zh_CN.UTF-8"
        self.start_working()
        desktop.open_window("xcalc")
        desktop.wait_for_session("计算器", 2)
        self.assertEqual(desktop.sessions()[1][1], "good")


if __name__ == "__main__":
    unittest.main(verbosity=2)
