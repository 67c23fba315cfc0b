"""The sheets in which applications get their categories, by keyboard, over the real program."""

import os
import subprocess
import time
import unittest

from desktop import DesktopTest
from screen_reader import ScreenReader
from waiting import wait_for

NOW = 1772609400  # 15:30 of a Wednesday in UTC+8
SHEET = "App 分类管理"
LAST_CATEGORY = "理财"
HELD_SEC = 10


class CategoriesTest(DesktopTest):
    def setUp(self):
        self.open_desktop(speed=1, now=NOW)
        subprocess.check_call([os.environ["QUILLBROOK_LAB"], "seed", "--data", self.desktop.data,
                               "--days", "2", "--now", str(NOW)])
        self.app, self.bundle_id = self.desktop.rows(
            "SELECT app_name, bundle_id FROM app_sessions WHERE app_name NOT LIKE '%login%' "
            "GROUP BY app_name ORDER BY SUM(duration_sec) DESC")[0]
        self.reader = ScreenReader(self.desktop)
        self.recorder = self.desktop.start_recorder()

    def test_a_category_is_chosen_kept_and_given_back(self):
        self.open_habit()
        before = wait_for(self.time_of_last_category, "the treemap")
        self.open_sheet()
        self.find_and_press_the_application()
        self.desktop.press("End", "Return")
        wait_for(lambda: self.choices() == [(self.bundle_id, LAST_CATEGORY)], "the row")
        self.wait_for_row("%s, %s, 自选" % (self.bundle_id, LAST_CATEGORY))
        self.close_sheet()
        wait_for(lambda: self.time_of_last_category() not in (None, before), "more time on the page")
        more = self.time_of_last_category()

        self.desktop.kill(self.recorder)
        self.recorder = self.desktop.start_recorder()
        self.open_habit()
        wait_for(lambda: self.time_of_last_category() == more, "the category that was kept")
        self.open_sheet()
        self.find_and_press_the_application()
        self.desktop.click(self.reader.wait_for("push button", "恢复系统默认").center)
        wait_for(lambda: self.choices() == [], "the end of the row")
        self.close_sheet()
        wait_for(lambda: self.time_of_last_category() == before, "the rules' category")

    def test_the_sheets_hold_the_dashboard_until_they_are_closed(self):
        self.open_habit()
        place = self.reader.wait_for("list item", "Today").center
        self.open_sheet()
        self.desktop.click(place)
        self.assertTrue(self.reader.find("list item", "Habit").is_checked)
        self.desktop.close_window(SHEET)
        self.desktop.click(place)
        wait_for(lambda: self.reader.find("list item", "Today").is_checked, "the page Today")

    def test_a_writer_that_holds_the_store_is_not_waited_for(self):
        self.open_habit()
        self.open_sheet()
        self.find_and_press_the_application()
        self.desktop.press("End", "Return")
        chosen = "%s, %s, 自选" % (self.bundle_id, LAST_CATEGORY)
        self.wait_for_row(chosen)
        kept = [(self.bundle_id, LAST_CATEGORY)]
        wait_for(lambda: self.choices() == kept, "the row")

        with self.desktop.held_store() as begin:
            # Neither the removal nor another choice reaches the store. What the list says until it
            # is read again follows the rules there, and the mark what was asked for.
            self.press_the_application()
            self.desktop.click(self.reader.wait_for("push button", "恢复系统默认").center)
            self.wait_for_row("%s, %s" % (self.bundle_id, LAST_CATEGORY))
            self.press_the_application()
            self.desktop.press("Home", "Return")
            self.wait_for_row(chosen)
            self.assertLess(time.monotonic() - begin, HELD_SEC)
            time.sleep(max(0, begin + HELD_SEC - time.monotonic()))
        self.assertEqual(self.choices(), kept)
        self.press_the_application()
        self.desktop.click(self.reader.wait_for("push button", "恢复系统默认").center)
        wait_for(lambda: self.choices() == [], "the end of the row")

    # The steps

    def open_habit(self):
        self.desktop.click(self.reader.wait_for("list item", "Habit").center)
        self.reader.wait_for("label", "Habits Shape Us")

    def open_sheet(self):
        self.desktop.click(self.reader.wait_for("push button", "管理App分类").center)
        self.wait_for_front(SHEET)
        wait_for(self.rows, "the applications")

    def find_and_press_the_application(self):
        self.desktop.type(self.app.upper())
        wait_for(lambda: [row.name for row in self.rows()] == [self.app], "what was found")
        self.desktop.press("Down")
        self.press_the_application()

    def press_the_application(self):
        """Presses the row that was found, which has the keys."""
        self.wait_for_front(SHEET)
        self.desktop.press("Return")
        self.wait_for_front("「%s」的分类" % self.app)

    def close_sheet(self):
        self.wait_for_front(SHEET)
        self.desktop.press("Escape")
        wait_for(lambda: not self.desktop.windows(SHEET), "the end of the sheet")

    # What is to be seen

    def rows(self):
        """The applications in sight, which have their identifier as value."""
        return [element for element in self.reader.elements()
                if element.role == "list item" and element.value]

    def time_of_last_category(self):
        """What the page's treemap tells of it; none while it isn't shown."""
        cell = self.reader.find("cell", LAST_CATEGORY)
        return cell.value if cell else None

    def wait_for_row(self, value):
        wait_for(lambda: value in [row.value for row in self.rows()], "the row " + value)

    def wait_for_front(self, title):
        wait_for(lambda: self.desktop.active_window() in self.desktop.windows(title),
                 title + " in front")

    def choices(self):
        return self.desktop.rows(
            "SELECT match_key, label FROM app_categories JOIN categories "
            "ON categories.id = category_id WHERE source = 'user'")


if __name__ == "__main__":
    unittest.main()
