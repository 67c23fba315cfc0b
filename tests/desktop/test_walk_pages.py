"""Every button of every page, pressed once by the mouse, with what it changed."""

import configparser
import datetime
import os
import subprocess
import time
import unittest

import expectations as expected
from bell import Bell
from dashboard import NOW, DashboardTest
from keyboard_grab import is_keyboard_grabbed
from waiting import wait_for

SHEET = "App 分类管理"
PANEL = "关于 Quillbrook"
YEAR = 2026
BIRTH_YEAR = 1988
APP, CLOSE = 1, 5  # columns of Sessions


class WalkPagesTest(DashboardTest):
    def setUp(self):
        self.seed()

    def test_today(self):
        self.start()
        self.dashboard.open_page("Today")
        for period in ("昨日", "今日"):
            self.dashboard.pick(period)
            data = self.record("Today", period)
            self.wait_for_marks("时间线", expected.timeline(data))
            self.assertEqual(self.dashboard.figures(), expected.today_figures(data))
        self.check_popover("指标说明", "最长专注")
        self.check_legend()
        self.check_export()
        self.assert_all_pressed()

    def test_past(self):
        self.start()
        self.dashboard.open_page("Past")
        for period in ("昨日", "本周", "本月", "本年", "全部", "今日"):
            self.dashboard.pick(period)
            data = self.record("Past", period)
            self.wait_for_marks("应用的活跃时长", expected.app_cells(data))
            self.assertEqual(self.dashboard.figures(), expected.past_figures(data))
        self.assert_all_pressed()

    def test_future(self):
        bell = Bell(self.desktop.env["DISPLAY"])
        self.addCleanup(bell.close)
        self.start()
        self.dashboard.open_page("Future")
        self.check_clock()
        place = self.place_in_the_present_year()
        calm = wait_for(lambda: self.desktop.color_at(place), "the colour of the present year")
        self.dashboard.press("push button", "点击敲木鱼")
        wait_for(lambda: bell.count() == 1, "the sound of the bell")
        self.check_glow(calm)
        self.pick_in_menu("选择出生年度", "Down")
        wait_for(lambda: self.setting("birthYear") == str(BIRTH_YEAR + 1), "the year on disk")
        wait_for(lambda: self.life() == expected.life_cells(YEAR, BIRTH_YEAR + 1), "the cells")
        self.assertEqual(self.dashboard.figures(), expected.life_figures(NOW, BIRTH_YEAR + 1))
        self.assert_all_pressed()

    def test_habit(self):
        self.start()
        self.dashboard.open_page("Habit")
        for period in ("昨日", "本周", "本月", "今日"):
            self.dashboard.pick(period)
            data = self.record("Habit", period)
            self.wait_for_marks("分类", expected.category_cells(data))
            self.wait_for_marks("分类时长排序", expected.category_bars(data))
        self.dashboard.press("push button", "管理App分类")
        self.wait_for_front(SHEET)
        self.add_session("Slack")
        self.desktop.press("Escape")
        self.wait_for_front("Quillbrook")
        self.wait_for_marks("分类", expected.category_cells(self.record("Habit", "今日")))
        self.assert_all_pressed()

    def test_focus(self):
        self.start()
        self.dashboard.open_page("Focus")
        for period in ("昨日", "本周", "本月", "全部", "今日"):
            self.dashboard.pick(period)
            self.wait_for_focus_page(self.record("Focus", period))
        self.add_session("Slack")
        self.dashboard.press("push button", "刷新")
        self.wait_for_focus_page(self.record("Focus", "今日"))
        self.assert_all_pressed()

    def test_tokens(self):
        self.start()
        self.dashboard.open_page("Tokens")
        for period in ("本周", "本月", "今天"):
            self.dashboard.pick(period)
            data = self.record("Tokens", period)
            self.wait_for_marks("分小时的击键次数", expected.key_bars(data))
            self.wait_for_marks("应用的Token输入排名", expected.app_tokens(data))
            self.assertEqual(self.dashboard.figures(), expected.tokens_figures(data))
        self.check_popover("Token 换算逻辑", "参考：基于 GPT-4o tokenizer 实测统计")
        self.assert_all_pressed()

    def test_alerts(self):
        self.add_alerts_of_today()
        self.start()
        self.dashboard.open_page("Alerts")
        for period in ("过去30天", "全部", "过去7天"):
            self.dashboard.pick(period)
            days = expected.alert_days(self.record("Alerts", period))
            wait_for(lambda: self.days() == days, "the days")
        data = self.record("Alerts", "过去7天")
        self.check_popover("告警触发条件", "冷却时间")
        today, *others = [day for day, _total in expected.alert_days(data)]
        self.wait_for_dots(expected.alert_dots(data, today))
        self.dashboard.press("push button", today)
        self.wait_for_dots([])
        for day in others:
            self.dashboard.press("push button", day)
            self.wait_for_dots(expected.alert_dots(data, day))
            self.dashboard.press("push button", day)
            self.wait_for_dots([])
        self.assert_all_pressed()

    def test_sessions(self):
        self.clear_the_edges()
        self.start_on_page("Sessions")
        for period in ("6小时", "今日", "昨日", "1小时"):
            self.dashboard.pick(period)
            self.wait_for_rows(expected.session_rows(self.record("Sessions", period), NOW))
        self.add_session("Slack", 120)
        self.dashboard.press("push button", "刷新")
        rows = expected.session_rows(self.record("Sessions", "1小时"), NOW)
        self.wait_for_rows(rows)
        apps = sorted({row[APP] for row in rows})
        self.pick_in_menu("应用", *["Down"] * (apps.index("Slack") + 1))
        self.wait_for_rows([row for row in rows if row[APP] == "Slack"])
        self.assertEqual(self.dashboard.text(r"\d+ 个会话"), "%d 个会话" % len(rows))
        self.pick_in_menu("关闭", "Down")
        self.wait_for_rows([row for row in rows if row[APP] == "Slack" and row[CLOSE] == "switch"])
        self.pick_in_menu("状态", "Down")
        self.reader.wait_for("label", "没有符合条件的 Session")
        self.assert_all_pressed()

    def test_idles(self):
        self.clear_the_edges()
        self.start_on_page("Idles")
        for period in ("昨日", "1小时", "6小时", "今日"):
            self.dashboard.pick(period)
            self.wait_for_rows(expected.idle_rows(self.record("Idles", period), NOW))
        self.desktop.write("INSERT INTO idle_periods (started_at, source_type) VALUES (%d.5, 2)"
                           % (NOW - 60))
        self.dashboard.press("push button", "刷新")
        self.wait_for_rows(expected.idle_rows(self.record("Idles", "今日"), NOW))
        self.assert_all_pressed()

    def test_about(self):
        self.start()
        self.desktop.click(self.reader.wait_for("push button", "关于").center)
        self.reader.wait_for("label", "Linux 原生程序，只用发行版提供的开源库")
        wait_for(lambda: self.desktop.last_page() == "关于", "the about page on disk")
        self.dashboard.press("push button", "隐私政策 →")
        self.wait_for_front("隐私政策")
        self.desktop.press("Escape")
        self.wait_for_front("Quillbrook")
        self.assert_all_pressed()

    def test_the_window(self):
        self.start()
        self.check_sharing()
        self.dashboard.open_page("Focus")
        self.wait_for_focus_page(self.record("Focus", "今日"))
        self.add_session("Slack")
        self.choose_in_menu("刷新数据")
        self.wait_for_focus_page(self.record("Focus", "今日"))
        self.choose_in_menu(PANEL)
        self.wait_for_front(PANEL)
        self.desktop.press("Escape")
        self.wait_for_front("Quillbrook")
        self.choose_in_menu("关闭窗口")
        wait_for(lambda: not self.desktop.windows("Quillbrook"), "the end of the window")
        self.assertEqual(self.desktop.start_recorder().wait(timeout=60), 0)
        self.wait_for_front("Quillbrook")
        self.choose_in_menu("退出")
        self.assertEqual(self.recorder.wait(timeout=60), 0)

    def choose_in_menu(self, title):
        self.desktop.click(self.reader.wait_for("menu item", "Quillbrook").center)
        self.desktop.click(self.reader.wait_for("menu item", title).center)

    def check_sharing(self):
        share = self.reader.wait_for("push button", "分享")
        before = len(self.desktop.program_windows())
        self.desktop.click(share.center)
        wait_for(lambda: len(self.desktop.program_windows()) > before, "the menu for the picture")
        wait_for(lambda: is_keyboard_grabbed(self.desktop.env["DISPLAY"]), "the menu's keys")
        self.desktop.press("Down", "Return")
        wait_for(lambda: self.clipboard().startswith(b"\x89PNG"), "the picture")

    def clipboard(self):
        """What another program gets when it asks for a picture."""
        return subprocess.run(["xclip", "-selection", "clipboard", "-t", "image/png", "-o"],
                              env=self.desktop.env, capture_output=True, check=False,
                              timeout=60).stdout

    # What a button changes

    def check_popover(self, name, line):
        self.dashboard.press("push button", name)
        self.reader.wait_for("label", line)
        self.desktop.press("Escape")
        wait_for(lambda: not self.reader.find("label", line), "the end of the popover")

    def check_legend(self):
        chips = [name for role, name in self.dashboard.buttons() - self.dashboard.pressed
                 if role == "push button" and name != "导出 CSV"]
        self.assertEqual(len(chips), 10)
        self.dashboard.bring_into_view("push button", chips[0])
        block = self.place_of_a_block_beside(chips[0])
        before = wait_for(lambda: self.desktop.color_at(block), "the colour of a block")
        for chip in chips:
            self.dashboard.press("push button", chip)
            wait_for(lambda: self.highlighted(chips) == [chip], "the highlight of " + chip)
        self.dashboard.press("push button", chips[0])
        wait_for(lambda: self.desktop.color_at(block) not in (None, before), "the dimmed blocks")
        self.dashboard.press("push button", chips[0])
        wait_for(lambda: self.desktop.color_at(block) == before, "the colours to come back")
        self.assertEqual(self.highlighted(chips), [])

    def highlighted(self, chips):
        return [element.name for element in self.dashboard.elements()
                if element.name in chips and element.is_checked]

    def place_of_a_block_beside(self, chip):
        """A point in the lowest block in sight that isn't the chip's, beside its label."""
        _x, top, _width, height = self.dashboard.page().rect
        x, y, _width, height = [
            element.rect for element in self.reader.inside("panel", "时间线")
            if element.role == "indicator" and element.name != chip and element.rect[2] > 20
            and element.rect[1] + element.rect[3] < top + height][-1]
        return x + 8, y + height - 6

    def check_export(self):
        path = self.desktop.home + "/Quillbrook-timeline.csv"
        self.dashboard.press("push button", "导出 CSV")
        self.wait_for_front("导出时间线数据")
        self.desktop.press("Return")
        wait_for(lambda: os.path.exists(path), "the file")
        with open(path, encoding="utf-8") as file:
            lines = file.read().splitlines()
        blocks = expected.timeline(self.record("Today", "今日"))
        self.assertEqual(lines[0], "Hour,App,Seconds,Minutes")
        self.assertEqual(sorted('"%s",%d,%.1f' % (app, seconds, seconds / 60)
                                for app, seconds in blocks),
                         sorted(line.split(",", 1)[1] for line in lines[1:]))

    def check_clock(self):
        def shown():
            text = self.dashboard.text(r"\d\d:\d\d:\d\d")
            return text and datetime.datetime.strptime(text, "%H:%M:%S")
        first = wait_for(shown, "the clock")
        wait_for(lambda: shown() > first, "the next second")
        self.assertLess((shown() - first).total_seconds(), 120)

    def place_in_the_present_year(self):
        """Beside its figures, which is a place on the screen after scrolling."""
        x, y, _width, height = self.dashboard.bring_into_view(
            "cell", "%d 岁，现在" % (YEAR - BIRTH_YEAR)).rect
        return x + 9, y + height // 2

    def check_glow(self, calm):
        """The bell has the keys and is struck by them, as the year may stand below its window."""
        place = self.place_in_the_present_year()
        wait_for(lambda: self.desktop.color_at(place) == calm, "the end of the glow")

        def strike():
            self.desktop.press("space")
            end = time.monotonic() + 1
            while time.monotonic() < end:
                if self.desktop.color_at(place) not in (None, calm):
                    return True
            return False
        wait_for(strike, "the glow")

    def pick_in_menu(self, name, *keys):
        self.dashboard.open_menu("combo box", name)
        self.desktop.press(*keys, "Return")

    # What the pages show

    def wait_for_focus_page(self, data):
        self.wait_for_marks("活跃时长分布", expected.focus_hours(data))
        self.wait_for_marks("番茄钟分布", expected.focus_lengths(data))
        self.wait_for_marks("近7天日均番茄钟", expected.focus_days(data))
        self.assertEqual(self.dashboard.figures(), expected.focus_figures(data))

    def life(self):
        return [name for name, _value in self.dashboard.marks("生命进度")]

    def days(self):
        return [(element.name, element.value) for element in self.dashboard.elements()
                if element.role == "push button" and element.value.endswith("次告警")]

    def dots(self):
        """Of all days that are open."""
        return sorted((element.name, element.value) for element in self.dashboard.elements()
                      if element.role == "indicator")

    def wait_for_dots(self, dots):
        wait_for(lambda: expected.agree(self.dots(), dots), "the dots %s" % dots)

    def assert_all_pressed(self):
        self.assertEqual(self.dashboard.buttons() - self.dashboard.pressed, set())

    def setting(self, name):
        settings = configparser.ConfigParser()
        settings.optionxform = str
        settings.read(self.desktop.home + "/config/tarnlow.cn/quillbrook.conf", encoding="utf-8")
        return settings.get("General", name, fallback=None)


if __name__ == "__main__":
    unittest.main()
