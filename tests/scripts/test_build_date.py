"""The date that a build puts into the program: that of the sources, never that of the building."""

import os
import pathlib
import subprocess
import tempfile
import unittest

WRITE = pathlib.Path(__file__).resolve().parents[2] / "cmake" / "WriteBuildDate.cmake"


class BuildDateTest(unittest.TestCase):
    def setUp(self):
        directory = tempfile.TemporaryDirectory()
        self.addCleanup(directory.cleanup)
        self.root = pathlib.Path(directory.name)
        self.sources = self.root / "sources"
        self.sources.mkdir()
        self.header = self.root / "build" / "BuildDate.h"
        # Neither this person's settings nor a repository around the directory have a part in it.
        self.environment = {"PATH": os.environ["PATH"], "HOME": str(self.root),
                            "GIT_CONFIG_NOSYSTEM": "1", "TZ": "Asia/Shanghai"}

    def commit_at(self, moment, folder=None):
        stamp = {"GIT_AUTHOR_DATE": "2001-01-01T00:00:00Z", "GIT_COMMITTER_DATE": moment}
        for arguments in (["init", "--quiet"],
                          ["-c", "user.name=a", "-c", "user.email=a@example.org", "commit",
                           "--quiet", "--allow-empty", "--message", "a"]):
            subprocess.run(["git", *arguments], cwd=folder or self.sources, check=True,
                           env={**self.environment, **stamp})

    def write(self, **variables):
        return subprocess.run(
            ["cmake", "-D", f"SOURCES={self.sources}", "-D", f"HEADER={self.header}", "-P", WRITE],
            env={**self.environment, **variables}, capture_output=True, text=True, check=False)

    def date(self, **variables):
        result = self.write(**variables)
        self.assertEqual(result.returncode, 0, result.stderr)
        return self.header.read_text().split('kBuildDate = "')[1].split('"')[0]

    def test_the_date_of_the_environment_is_first(self):
        self.commit_at("2024-05-06T12:00:00Z")
        self.assertEqual(self.date(SOURCE_DATE_EPOCH="1767225599"), "2025-12-31")
        self.assertEqual(self.date(SOURCE_DATE_EPOCH="1767225600"), "2026-01-01")
        self.assertEqual(self.date(SOURCE_DATE_EPOCH="0"), "1970-01-01")

    def test_a_date_that_is_none_stops_the_build(self):
        for wrong in ("today", "-1", "1.5"):
            result = self.write(SOURCE_DATE_EPOCH=wrong)
            self.assertNotEqual(result.returncode, 0)
            self.assertIn("SOURCE_DATE_EPOCH", result.stderr)
            self.assertFalse(self.header.exists())

    def test_else_it_is_that_of_the_last_commit_in_utc(self):
        self.commit_at("2024-05-06T23:30:00Z")
        self.assertEqual(self.date(), "2024-05-06")
        self.commit_at("2024-06-01T01:00:00+08:00")
        self.assertEqual(self.date(), "2024-05-31")
        self.assertEqual(self.date(SOURCE_DATE_EPOCH=""), "2024-05-31")

    def test_without_a_repository_there_is_none(self):
        self.assertEqual(self.date(), "")

    def test_a_repository_around_the_sources_is_another_programs(self):
        self.commit_at("2024-05-06T12:00:00Z", self.root)
        self.assertEqual(self.date(), "")

    def test_without_git_or_without_a_commit_there_is_none(self):
        subprocess.run(["git", "init", "--quiet"], cwd=self.sources, check=True,
                       env=self.environment)
        self.assertEqual(self.date(), "")
        self.commit_at("2024-05-06T12:00:00Z")
        cmake = subprocess.check_output(["sh", "-c", "command -v cmake"], text=True).strip()
        tools = self.root / "tools"
        tools.mkdir()
        (tools / "cmake").symlink_to(cmake)
        (tools / "git").write_text("#!/bin/sh\nexit 1\n")
        (tools / "git").chmod(0o755)
        self.assertEqual(self.date(PATH=str(tools) + ":" + os.environ["PATH"]), "")

    def test_a_date_that_stays_leaves_the_file_alone(self):
        self.date(SOURCE_DATE_EPOCH="1767225600")
        before = self.header.stat().st_mtime_ns
        os.utime(self.header, ns=(before - 10**9, before - 10**9))
        before = self.header.stat().st_mtime_ns
        self.date(SOURCE_DATE_EPOCH="1767225601")
        self.assertEqual(self.header.stat().st_mtime_ns, before)
        self.date(SOURCE_DATE_EPOCH="1767312000")
        self.assertNotEqual(self.header.stat().st_mtime_ns, before)


if __name__ == "__main__":
    unittest.main()
