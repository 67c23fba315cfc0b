"""What screen readers find on each page, and what they are told of when it changes."""

import unittest

import expectations as expected
from announcements import Announcements
from dashboard import NOW, TITLES, DashboardTest
from waiting import wait_for

TODAY = "今日"
YEAR = 2026
BIRTH_YEAR = 1988
NAMED_ROLES = ("push button", "page tab", "page tab list", "list", "list item", "combo box",
               "indicator", "cell", "table", "menu item")


class ReadingTest(DashboardTest):
    def setUp(self):
        self.seed()

    def test_the_pages_of_the_past_are_read(self):
        self.add_alerts_of_today()
        self.start()
        data = self.read_page("Today", (TODAY, "昨日"), expected.today_figures)
        self.assert_pictures(("时间线", expected.timeline(data)))
        data = self.read_page("Past", (TODAY, "昨日", "本周", "本月", "本年", "全部"),
                              expected.past_figures)
        self.assert_pictures(("应用的活跃时长", expected.app_cells(data)))
        data = self.read_page("Habit", (TODAY, "昨日", "本周", "本月"))
        self.assert_pictures(("分类", expected.category_cells(data)),
                             ("分类时长排序", expected.category_bars(data)),
                             ("分类时长趋势（近15天）", expected.category_trend(data)))
        data = self.read_page("Focus", (TODAY, "昨日", "本周", "本月", "全部"),
                              expected.focus_figures)
        self.assert_pictures(("活跃时长分布", expected.focus_hours(data)),
                             ("番茄钟分布", expected.focus_lengths(data)),
                             ("近7天日均番茄钟", expected.focus_days(data)))
        data = self.read_page("Tokens", ("今天", "本周", "本月"), expected.tokens_figures)
        self.assert_pictures(("分小时的击键次数", expected.key_bars(data)),
                             ("分输入法的击键次数", expected.method_sectors(data)),
                             ("应用的Token输入排名", expected.app_tokens(data)))
        data = self.read_page("Alerts", ("过去7天", "过去30天", "全部"))
        self.assert_alerts(data)

    def test_the_future_is_read(self):
        self.start()
        self.dashboard.open_page("Future")
        self.assertEqual(self.dashboard.figures(), expected.life_figures(NOW, BIRTH_YEAR))
        cells = expected.life_cells(YEAR, BIRTH_YEAR)
        self.assertEqual([name for name, _value in self.dashboard.marks("生命进度")], cells)
        self.assertEqual([name for name, _value in self.all_marks()], ["当年进度", *cells])
        self.assertEqual(self.reader.find("combo box", "选择出生年度").value, "1988 年")
        self.assertTrue(self.dashboard.text(r"\d\d:\d\d:\d\d"))
        self.assert_all_is_named()

    def test_the_tables_are_read_by_row_and_column(self):
        self.clear_the_edges()
        self.start_on_page("Sessions")
        self.reader.wait_for("label", "Session 明细")
        self.assertEqual(self.periods(), [("1小时", True), ("6小时", False), ("今日", False),
                                          ("昨日", False)])
        self.assert_table("Session 明细", ["日期", "应用", "开始", "结束", "时长", "关闭", "状态"],
                          expected.session_rows(self.record("Sessions", "1小时"), NOW), 1)

    def test_the_table_of_pauses_is_read_by_row_and_column(self):
        self.clear_the_edges()
        self.start_on_page("Idles")
        self.reader.wait_for("label", "Idle 明细")
        self.assertEqual(self.periods(), [("1小时", False), ("6小时", False), ("今日", True),
                                          ("昨日", False)])
        self.assert_table("Idle 明细", ["#", "日期", "开始", "结束", "时长", "来源", "状态"],
                          expected.idle_rows(self.record("Idles", "今日"), NOW), 0)

    def test_changes_are_announced(self):
        self.add_alerts_of_today()
        news = Announcements(self.reader)
        self.start()
        self.dashboard.open_page("Past")
        news.wait_for("StateChanged:selected", "list item", "Past", 1)
        today, yesterday = (expected.app_cells(self.record("Past", period))
                            for period in (TODAY, "昨日"))
        self.wait_for_marks("应用的活跃时长", today)

        news.forget()
        self.dashboard.pick("昨日")
        news.wait_for("StateChanged:selected", "page tab", "昨日", 1)
        for title, _value in expected.past_figures(self.record("Past", "昨日"))[:3]:
            news.wait_for("PropertyChange:accessible-description", "label", title)
        for (before, _value), (now, _other) in zip(today, yesterday):
            if before != now:
                news.wait_for("PropertyChange:accessible-name", "cell", now)

        self.dashboard.tab_to("panel", "应用的活跃时长")
        news.forget()
        self.desktop.press("Down")
        news.wait_for("StateChanged:focused", "cell", yesterday[0][0], 1)
        self.desktop.press("Down")
        news.wait_for("StateChanged:focused", "cell", yesterday[1][0], 1)

        self.dashboard.open_page("Alerts")
        day = expected.alert_days(self.record("Alerts", "过去7天"))[1][0]
        news.forget()
        self.dashboard.press("push button", day)
        news.wait_for("StateChanged:checked", "push button", day, 1)

        self.dashboard.open_page("Future")
        news.forget()
        self.dashboard.open_menu("combo box", "选择出生年度")
        self.desktop.press("Down")
        news.wait_for("StateChanged:focused", "menu item", "%d 年" % (BIRTH_YEAR + 1), 1)
        self.desktop.press("Return")
        news.wait_for("PropertyChange:accessible-description", "combo box", "选择出生年度")

    # What is found

    def read_page(self, page, periods, figures=None):
        """Reads what all pages have, and returns the record for the rest."""
        self.dashboard.open_page(page)
        data = self.record(page, periods[0])
        if figures:
            wait_for(lambda: self.dashboard.figures() == figures(data), "the figures of " + page)
        self.assertEqual(self.periods(), [(period, period == periods[0]) for period in periods])
        self.assertIsNotNone(self.dashboard.text(TITLES[page]))
        self.assert_all_is_named()
        return data

    def periods(self):
        """The choices of the picker, and whether they are the one chosen."""
        return [(element.name, element.is_checked)
                for element in self.reader.inside("page tab list", "时段", self.dashboard.page())]

    def assert_pictures(self, *pictures):
        """These are on the page, in this order, and no other marks are."""
        for picture, marks in pictures:
            self.wait_for_marks(picture, marks)
        wanted = [mark for _picture, marks in pictures for mark in marks]
        self.assertTrue(expected.agree(self.all_marks(), wanted))

    def assert_alerts(self, data):
        days = expected.alert_days(data)
        wait_for(lambda: [(element.name, element.value) for element in self.dashboard.elements()
                          if element.role == "push button"][1:] == days, "the days")
        today = days[0][0]
        self.assertTrue(expected.agree(sorted(self.dashboard.marks(today)),
                                       expected.alert_dots(data, today)))
        self.assertEqual(len(self.all_marks()), len(expected.alert_dots(data, today)))
        self.assertEqual([self.reader.find("push button", day).is_unfolded for day, _total in days],
                         [True] + [False] * (len(days) - 1))

    def all_marks(self):
        return [(element.name, element.value) for element in self.dashboard.elements()
                if element.role in ("indicator", "cell")]

    def assert_all_is_named(self):
        nameless = [(element.role, element.rect) for element in self.reader.elements()
                    if not element.name and (element.can_be_focused or element.role in NAMED_ROLES)]
        self.assertEqual(nameless, [])

    def assert_table(self, name, titles, rows, naming_column):
        self.wait_for_rows(rows)
        self.assertGreater(len(rows), 0)
        self.assertIsNotNone(self.reader.find("table", name))
        table, = self.dashboard.tables()
        self.assertEqual(table.titles(), titles)
        self.assertEqual([table.row_name(row) for row in range(len(rows))],
                         [row[naming_column] for row in rows])
        headers = [element.name for element in self.reader.inside("table", name)
                   if element.role == "column header"]
        self.assertEqual(headers, titles)
        cell = table.cell(len(rows) - 1, 2)
        self.assertEqual((cell.role, cell.name), ("cell", rows[-1][2]))


if __name__ == "__main__":
    unittest.main()
