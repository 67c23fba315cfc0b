"""The pages without a mouse: what the Tab key reaches, what keys open, close and choose."""

import unittest

import expectations as expected
from dashboard import NOW, DashboardTest
from waiting import wait_for

BIRTH_YEAR = 1988
APP = 1  # the column of Sessions


class KeyboardTest(DashboardTest):
    def setUp(self):
        self.seed()

    def test_popovers_open_and_close(self):
        self.start()
        self.dashboard.open_page("Today")
        self.check_popover("指标说明", "最长专注")
        self.dashboard.open_page("Tokens")
        self.check_popover("Token 换算逻辑", "参考：基于 GPT-4o tokenizer 实测统计")
        self.dashboard.open_page("Alerts")
        self.check_popover("告警触发条件", "冷却时间")

    def check_popover(self, name, line):
        self.dashboard.tab_to("push button", name)
        self.desktop.press("space")
        self.wait_for_focus("dialog", name)
        self.assertIn(line, [element.name for element in self.reader.inside("dialog", name)])
        self.desktop.press("Tab")  # which leads nowhere
        self.desktop.press("Escape")
        self.wait_for_focus("push button", name)
        self.assertIsNone(self.reader.find("dialog", name))
        self.desktop.press("space")
        self.wait_for_focus("dialog", name)
        self.desktop.click(self.reader.find("label", "墨川·Quillbrook").center)
        self.wait_for_focus("push button", name)
        self.assertIsNone(self.reader.find("dialog", name))

    def test_days_of_alerts_fold_and_unfold(self):
        self.add_alerts_of_today()
        self.start()
        self.dashboard.open_page("Alerts")
        data = self.record("Alerts", "过去7天")
        self.reader.wait_for("push button", expected.alert_days(data)[0][0])
        today, yesterday = [day for day, _total in expected.alert_days(data)][:2]
        self.dashboard.tab_to("push button", today)
        self.desktop.press("Tab", "Down")
        dots = [name for name, _value in self.dashboard.marks(today)]
        self.wait_for_focus("indicator", dots[0])
        self.desktop.press("Right")
        self.wait_for_focus("indicator", dots[1])
        self.desktop.press("shift+Tab", "space")
        wait_for(lambda: not self.dashboard.marks(today), "the end of the dots")
        self.wait_for_focus("push button", today)
        self.desktop.press("Tab", "space")
        wait_for(lambda: self.dashboard.marks(yesterday), "the dots of the day before")
        self.wait_for_focus("push button", yesterday)
        self.dashboard.pick("过去30天")  # other days: today's alone are open then
        wait_for(lambda: self.reader.find("push button", today).is_unfolded, "today's dots")
        self.assertFalse(self.reader.find("push button", yesterday).is_unfolded)

    def test_the_filters_of_sessions(self):
        self.clear_the_edges()
        self.add_session("Slack", 120)
        self.start_on_page("Sessions")
        rows = expected.session_rows(self.record("Sessions", "1小时"), NOW)
        self.wait_for_rows(rows)
        self.dashboard.tab_to("page tab", "1小时")
        for role, name in (("push button", "刷新"), ("combo box", "应用"), ("combo box", "关闭"),
                           ("combo box", "状态"), ("cell", rows[0][0])):
            self.desktop.press("Tab")
            self.wait_for_focus(role, name)
        self.desktop.press("shift+Tab", "shift+Tab", "shift+Tab")
        self.wait_for_focus("combo box", "应用")
        before = len(self.desktop.program_windows())
        self.desktop.press("Return")
        wait_for(lambda: len(self.desktop.program_windows()) > before, "the menu")
        self.desktop.press("Escape")
        wait_for(lambda: len(self.desktop.program_windows()) == before, "the end of the menu")
        self.wait_for_focus("combo box", "应用")
        app = sorted({row[APP] for row in rows})[0]
        self.desktop.press("Down")
        self.wait_for_rows([row for row in rows if row[APP] == app])
        self.assertEqual(self.reader.find("combo box", "应用").value, app)
        self.dashboard.tab_to("cell", rows[0][0])
        self.desktop.press("Right")
        self.wait_for_focus("cell", app)

    def test_periods_cells_and_years_are_walked_by_arrows(self):
        self.start()
        self.dashboard.open_page("Past")
        self.wait_for_marks("应用的活跃时长", expected.app_cells(self.record("Past", "今日")))
        self.dashboard.tab_to("page tab", "今日")
        self.desktop.press("Right")
        self.wait_for_focus("page tab", "昨日")
        cells = expected.app_cells(self.record("Past", "昨日"))
        self.wait_for_marks("应用的活跃时长", cells)
        self.dashboard.tab_to("panel", "应用的活跃时长")
        self.desktop.press("Down", "Down")
        self.wait_for_focus("cell", cells[1][0])
        self.check_menu_of_the_cell(cells[1][0])
        self.dashboard.open_page("Future")
        self.dashboard.tab_to("combo box", "选择出生年度")
        self.desktop.press("Up")
        wait_for(lambda: self.dashboard.figures() == expected.life_figures(NOW, BIRTH_YEAR - 1),
                 "the figures of another year")

    def check_menu_of_the_cell(self, name):
        before = len(self.desktop.program_windows())
        self.desktop.press("Menu")
        wait_for(lambda: len(self.desktop.program_windows()) > before, "the menu of the cell")
        self.desktop.press("Escape")
        wait_for(lambda: len(self.desktop.program_windows()) == before, "the end of the menu")
        self.wait_for_focus("cell", name)


if __name__ == "__main__":
    unittest.main()
