"""The first day with the program, from the first start to the first quitting by keyboard."""

import os
import unittest

from desktop import DesktopTest
from screen_reader import ScreenReader
from waiting import wait_for

NOW = 1772609400  # 15:30 of a Wednesday in UTC+8
SETUP = "Quillbrook 初始设置"
DASHBOARD = "Quillbrook"
SHEET = "App 分类管理"
APPLICATION = "XCalc"
RULES_CATEGORY = "未分类"
OWN_CATEGORY = "理财"  # the last one of the list


class FirstDayTest(DesktopTest):
    def setUp(self):
        # Recording begins with the first full minute that finds somebody there.
        self.open_desktop(speed=20, now=NOW)
        os.remove(self.desktop.home + "/config/tarnlow.cn/quillbrook.conf")
        self.reader = ScreenReader(self.desktop)

    def test_a_person_begins_with_the_program(self):
        self.starts_it_for_the_first_time()
        self.goes_through_the_set_up()
        self.works_with_two_programs()
        self.looks_where_the_time_went()
        self.gives_a_program_another_category()
        self.restarts_it_and_finds_the_choice()
        self.gives_the_category_back()
        self.quits()

    # The steps

    def starts_it_for_the_first_time(self):
        self.recorder = self.desktop.start_recorder()
        self.wait_for_front(SETUP)
        self.reader.wait_for("label", "欢迎使用 Quillbrook")
        self.assertFalse(os.path.exists(self.desktop.data + "/monitor.db"))

    def goes_through_the_set_up(self):
        self.desktop.click(self.reader.wait_for("push button", "开始使用 Quillbrook").center)
        wait_for(lambda: not self.desktop.windows(SETUP), "the end of the set-up")
        wait_for(lambda: "✅ 就绪" in self.desktop.log(), "the recorder")
        self.wait_for_front(DASHBOARD)

    def works_with_two_programs(self):
        self.desktop.open_window("xterm")
        self.desktop.type("the first day")
        self.desktop.wait_for_session("XTerm")
        self.desktop.let_minutes_pass(1.5)
        self.desktop.open_window("xcalc")
        self.desktop.type("1+2=")
        self.desktop.wait_for_session(APPLICATION)
        self.desktop.let_minutes_pass(1)
        second = self.desktop.start_recorder()
        self.assertEqual(second.wait(timeout=60), 0)
        self.wait_for_front(DASHBOARD)
        wait_for(lambda: self.desktop.session_names()[-1] != APPLICATION or
                 self.desktop.sessions()[-1][4] == 0, "the end of the session")

    def looks_where_the_time_went(self):
        self.open_habit()
        self.wait_for_categories(with_one=RULES_CATEGORY, without=OWN_CATEGORY)
        self.bundle_id, seconds = self.desktop.rows(
            "SELECT bundle_id, SUM(duration_sec) FROM app_sessions WHERE app_name = '%s'"
            % APPLICATION)[0]
        self.assertGreaterEqual(seconds, 55)

    def gives_a_program_another_category(self):
        self.open_sheet_at_the_application()
        self.desktop.press("End", "Return")
        wait_for(lambda: self.choices() == [(self.bundle_id, OWN_CATEGORY)], "the row")
        self.wait_for_row("%s, %s, 自选" % (self.bundle_id, OWN_CATEGORY))
        self.close_sheet()
        self.wait_for_categories(with_one=OWN_CATEGORY, without=RULES_CATEGORY)

    def restarts_it_and_finds_the_choice(self):
        self.desktop.press("ctrl+q")
        self.assertEqual(self.recorder.wait(timeout=60), 0)
        self.recorder = self.desktop.start_recorder()
        self.wait_for_front(DASHBOARD)
        self.assertFalse(self.desktop.windows(SETUP))
        self.open_habit()
        self.wait_for_categories(with_one=OWN_CATEGORY, without=RULES_CATEGORY)

    def gives_the_category_back(self):
        self.open_sheet_at_the_application()
        self.desktop.click(self.reader.wait_for("push button", "恢复系统默认").center)
        wait_for(lambda: self.choices() == [], "the end of the row")
        self.wait_for_row("%s, %s" % (self.bundle_id, RULES_CATEGORY))
        self.close_sheet()
        self.wait_for_categories(with_one=RULES_CATEGORY, without=OWN_CATEGORY)

    def quits(self):
        self.desktop.press("ctrl+q")
        self.assertEqual(self.recorder.wait(timeout=60), 0)
        self.assertEqual(self.desktop.rows(
            "SELECT (SELECT COUNT(*) FROM app_sessions WHERE ended_at IS NULL) + "
            "(SELECT COUNT(*) FROM idle_periods WHERE ended_at IS NULL)"), [(0,)])
        self.assertFalse(os.path.exists(self.desktop.data + "/clean_exit"))
        self.assertTrue(self.desktop.check_integrity())

    # The ways

    def open_habit(self):
        self.desktop.click(self.reader.wait_for("list item", "Habit").center)
        self.reader.wait_for("label", "Habits Shape Us")

    def open_sheet_at_the_application(self):
        """Opens the list, finds the application by its name in capitals, and opens its choice."""
        self.desktop.click(self.reader.wait_for("push button", "管理App分类").center)
        self.wait_for_front(SHEET)
        wait_for(lambda: len(self.rows()) > 1, "the applications")
        self.desktop.type(APPLICATION.upper())
        wait_for(lambda: [row.name for row in self.rows()] == [APPLICATION], "what was found")
        self.desktop.press("Down", "Return")
        self.wait_for_front("「%s」的分类" % APPLICATION)

    def close_sheet(self):
        self.wait_for_front(SHEET)
        self.desktop.press("Escape")
        wait_for(lambda: not self.desktop.windows(SHEET), "the end of the sheet")
        self.wait_for_front(DASHBOARD)

    # What is to be seen

    def wait_for_front(self, title):
        wait_for(lambda: self.desktop.active_window() in self.desktop.windows(title),
                 title + " in front")

    def wait_for_categories(self, with_one, without):
        """Waits until the treemap and the ranking both tell of one category, and of another not."""
        def names(role):
            return [element.name for element in self.reader.elements() if element.role == role]
        wait_for(lambda: all(with_one in names(role) and without not in names(role)
                             for role in ("cell", "indicator")),
                 "%s, and no %s, among %s" % (with_one, without, names("cell")))

    def rows(self):
        """The applications in sight, which have their identifier as value."""
        return [element for element in self.reader.elements()
                if element.role == "list item" and element.value]

    def wait_for_row(self, value):
        wait_for(lambda: value in [row.value for row in self.rows()], "the row " + value)

    def choices(self):
        return self.desktop.rows(
            "SELECT match_key, label FROM app_categories JOIN categories "
            "ON categories.id = category_id WHERE source = 'user'")


if __name__ == "__main__":
    unittest.main()
