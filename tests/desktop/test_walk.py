"""A person's way through the whole program, with mouse and keyboard, on a store of some weeks."""

import collections
import csv
import os
import subprocess
import time
import unittest

from dashboard import NOW, TITLES, Dashboard
from desktop import DesktopTest
from screen_reader import ScreenReader
from tray_item import TrayItem
from waiting import wait_for

TODAY = NOW - (NOW + 28800) % 86400
YESTERDAY = TODAY - 86400
DASHBOARD_DELAY_SEC = 1.2
MOST_CELLS = 20
TERMINAL = "XTerm"


class WalkTest(DesktopTest):
    def setUp(self):
        # Recording begins with the first full minute that finds somebody there.
        self.open_desktop(speed=6, now=NOW)
        subprocess.check_call([os.environ["QUILLBROOK_LAB"], "seed", "--data", self.desktop.data,
                               "--days", "20", "--now", str(NOW)])
        self.history = self.desktop.rows(
            "SELECT app_name, started_at, started_at + duration_sec FROM app_sessions "
            "WHERE duration_sec IS NOT NULL AND app_name NOT LIKE '%login%'")
        self.reader = ScreenReader(self.desktop)
        self.dashboard = Dashboard(self.desktop, self.reader)
        self.tray = TrayItem(self.desktop)

    def test_a_person_walks_through_the_whole_program(self):
        self.starts_the_program()
        self.reads_today()
        self.reads_yesterday()
        self.exports_yesterday()
        self.looks_at_the_treemap()
        self.moves_an_application_to_another_category()
        self.goes_through_the_sidebar_with_the_keys()
        self.goes_through_the_sidebar_with_the_mouse()
        self.closes_the_window()
        self.works_elsewhere_and_comes_back()
        self.quits()

    # The steps

    def starts_the_program(self):
        begin = time.monotonic()
        # The folder that the dialogue for the export begins in.
        self.recorder = self.desktop.start_recorder(cwd=self.desktop.home)
        self.tray.wait()
        active_sec = int(sum(end - start for _name, start, end in self.history
                             if start >= TODAY))
        self.assertEqual(self.tray.tooltip(),
                         "⚠ Quillbrook · 今日 %dh%dm" % (active_sec // 3600, active_sec % 3600 // 60))
        self.wait_for_front("Quillbrook")
        self.assertGreaterEqual((time.monotonic() - begin) * self.desktop.speed,
                                DASHBOARD_DELAY_SEC)

    def reads_today(self):
        self.reader.wait_for("label", "Today Is a Present")
        self.assertTrue(self.reader.wait_for("page tab", "今日").is_checked)
        self.wait_for_timeline(TODAY)

    def reads_yesterday(self):
        self.desktop.click(self.reader.wait_for("page tab", "昨日").center)
        self.wait_for_timeline(YESTERDAY)

    def exports_yesterday(self):
        path = self.desktop.home + "/Quillbrook-timeline.csv"
        self.desktop.click(self.reader.wait_for("push button", "导出 CSV").center)
        self.wait_for_front("导出时间线数据")
        self.desktop.press("Return")
        wait_for(lambda: os.path.exists(path), "the file")
        self.wait_for_front("Quillbrook")
        with open(path, encoding="utf-8", newline="") as file:
            lines = list(csv.DictReader(file))
        written = {(int(line["Hour"]), line["App"]): int(line["Seconds"]) for line in lines}
        expected = self.timeline_of(YESTERDAY)
        self.assertEqual(set(written), set(expected))
        for place, seconds in written.items():
            self.assertAlmostEqual(seconds, expected[place], delta=1.001)

    def looks_at_the_treemap(self):
        self.desktop.click(self.reader.wait_for("list item", "Past").center)
        self.reader.wait_for("label", "活跃应用")
        self.desktop.click(self.reader.wait_for("page tab", "昨日").center)
        seconds = collections.Counter()
        for name, start, end in self.history:
            if YESTERDAY <= start < TODAY:
                seconds[name] += end - start
        expected = [name for name, _seconds in seconds.most_common(MOST_CELLS)]
        wait_for(lambda: [cell.name for cell in self.cells()] == expected,
                 "the cells %s, not %s" % (expected, [cell.name for cell in self.cells()]))
        self.assertTrue(all(cell.value for cell in self.cells()))

    def moves_an_application_to_another_category(self):
        cell = self.cells()[0]
        bundle_id = self.desktop.rows("SELECT bundle_id FROM app_sessions WHERE app_name = '%s' "
                                      "ORDER BY id DESC" % cell.name)[0][0]
        self.desktop.click(cell.top, 3)
        wait_for(lambda: len(self.desktop.program_windows()) == 2, "the menu")
        self.desktop.press("Up", "Right")  # the last entry leads to the categories
        wait_for(lambda: len(self.desktop.program_windows()) == 3, "the menu of categories")
        self.desktop.press("Down", "Return")
        wait_for(lambda: self.user_categories() == [(bundle_id, "浏览器")], "the row")
        wait_for(lambda: any(element.value == cell.name + " — 浏览器"
                             for element in self.reader.elements()), "the category in the list")

    # Two refreshes that run at a time may publish in either order, and the page then lacks its
    # data: where the keys go on at once, only the page itself is looked at.

    def goes_through_the_sidebar_with_the_keys(self):
        self.desktop.click(self.reader.wait_for("list item", "Past").center)
        wait_for(lambda: self.reader.find("list item", "Past").has_focus, "the focus on Past")
        for page in ("Future", "Habit", "Focus", "Tokens", "Alerts"):
            self.desktop.press("Down")
            self.wait_for_page(page)
        self.desktop.press(*["Up"] * 6)
        self.wait_for_page("Today")

    def goes_through_the_sidebar_with_the_mouse(self):
        for page, picture in (("Tokens", "应用的Token输入排名"), ("Focus", "活跃时长分布"),
                              ("Habit", "分类"), ("Future", "生命进度"), ("Past", "应用的活跃时长")):
            self.desktop.click(self.reader.wait_for("list item", page).center)
            self.wait_for_page(page)
            wait_for(lambda: self.dashboard.marks(picture), "the data of " + page)

    def closes_the_window(self):
        self.desktop.press("alt+F4")
        wait_for(lambda: not self.desktop.windows("Quillbrook"), "the end of the window")
        self.assertIsNone(self.recorder.poll())
        self.assertIn("退出", self.tray.titles())

    def works_elsewhere_and_comes_back(self):
        self.desktop.open_window("xterm")
        wait_for(lambda: self.desktop.session_names()[-1] == TERMINAL, "the session")
        self.desktop.type("a day's work")
        self.desktop.let_minutes_pass(0.2)
        second = self.desktop.start_recorder()
        self.assertEqual(second.wait(timeout=60), 0)
        self.wait_for_front("Quillbrook")
        self.assertTrue(self.reader.wait_for("list item", "Past").is_checked)
        wait_for(lambda: self.desktop.sessions()[-1][4] == 0, "the session's end")
        self.desktop.click(self.reader.wait_for("list item", "Today").center)
        self.wait_for_timeline(YESTERDAY)
        self.desktop.click(self.reader.wait_for("page tab", "今日").center)
        self.reader.wait_for("indicator", TERMINAL)

    def quits(self):
        self.tray.click("退出")
        self.assertEqual(self.recorder.wait(timeout=60), 0)
        self.assertEqual(self.desktop.rows(
            "SELECT (SELECT COUNT(*) FROM app_sessions WHERE ended_at IS NULL) + "
            "(SELECT COUNT(*) FROM idle_periods WHERE ended_at IS NULL)"), [(0,)])
        self.assertFalse(os.path.exists(self.desktop.data + "/clean_exit"))
        self.assertTrue(self.desktop.check_integrity())

    # What the person sees

    def wait_for_front(self, title):
        wait_for(lambda: self.desktop.active_window() in self.desktop.windows(title),
                 title + " in front")

    def wait_for_page(self, page):
        wait_for(lambda: self.dashboard.is_checked("list item", page), "the mark on " + page)
        wait_for(lambda: self.desktop.last_page() == page, "the last page on disk")
        self.reader.wait_for("label", TITLES[page])

    def cells(self):
        return [element for element in self.reader.elements() if element.role == "cell"]

    def user_categories(self):
        return self.desktop.rows(
            "SELECT match_key, label FROM app_categories JOIN categories "
            "ON categories.id = category_id WHERE source = 'user'")

    def wait_for_timeline(self, day):
        expected = self.timeline_of(day)
        names = {name for name, _start, _end in self.history}

        def is_shown():
            shown = {place: seconds for place, seconds in self.shown_timeline().items()
                     if place[1] in names}
            return shown.keys() == expected.keys() and all(
                abs(shown[place] - seconds) < 1.001 for place, seconds in expected.items())
        wait_for(is_shown, "the timeline of the day")

    def shown_timeline(self):
        """Seconds by hour and application, from the marks behind each hour's label."""
        hour, shown = None, {}
        for element in self.reader.elements():
            if element.role == "label" and element.name.endswith(":00"):
                hour = int(element.name[:-3])
            elif element.role == "indicator":
                shown[hour, element.name] = float(element.value)
        return shown

    def timeline_of(self, day):
        """Seconds by hour and application, from the sessions that began on the day."""
        seconds = collections.Counter()
        for name, start, end in self.history:
            if not day <= start < day + 86400:
                continue
            for hour in range(24):
                begin = day + hour * 3600
                share = min(end, begin + 3600) - max(start, begin)
                if share > 0:
                    seconds[hour, name] += share
        return seconds


if __name__ == "__main__":
    unittest.main()
