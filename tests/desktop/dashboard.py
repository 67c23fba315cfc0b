"""The dashboard under a person's hands and eyes."""

import math
import os
import re
import subprocess

import expectations
from desktop import DesktopTest
from keyboard_grab import is_keyboard_grabbed
from screen_reader import Element, ScreenReader, Table
from waiting import wait_for

NOW = 1772609400  # 15:30 of a Wednesday in UTC+8
DAYS = 31
BUTTON_ROLES = ("push button", "page tab", "combo box")
WHEEL_UP, WHEEL_DOWN = 4, 5
WHEEL_STEP = 60  # points by which a page moves
TITLES = {"Today": "Today Is a Present", "Past": "The Past Is History",
          "Future": "The Future Is a Mystery", "Habit": "Habits Shape Us", "Focus": "Focus 分析",
          "Tokens": "Every Token Counts", "Alerts": "告警时间线"}


class Dashboard:
    """Finds things on the page that is shown, works with them, and notes what was pressed."""

    def __init__(self, desktop, reader):
        self.desktop = desktop
        self.reader = reader
        self.pressed = set()
        self._page = None

    def open_page(self, row):
        self.desktop.click(self.reader.wait_for("list item", row).center)
        wait_for(lambda: self.reader.find("label", TITLES[row], self.page()), "the page " + row)
        wait_for(lambda: self.is_checked("list item", row), "the mark on " + row)
        self.pressed.clear()

    # What is pressed

    def press(self, role, name):
        self.desktop.click(self.bring_into_view(role, name).center)
        self.pressed.add((role, name))

    def pick(self, label):
        self.press("page tab", label)
        wait_for(lambda: self.is_checked("page tab", label), "the period " + label)

    def open_menu(self, role, name):
        before = len(self.desktop.program_windows())
        self.press(role, name)
        wait_for(lambda: len(self.desktop.program_windows()) > before, "the menu of " + name)
        wait_for(lambda: is_keyboard_grabbed(self.desktop.env["DISPLAY"]), "the menu's keys")

    def tab_to(self, role, name):
        """Presses the Tab key until that has the keys."""
        def step():
            focused = self.reader.focused()
            if focused and (focused.role, focused.name) == (role, name):
                return True
            self.desktop.press("Tab")
            wait_for(lambda: self._has_moved_from(focused), "another thing to have the keys")
            return False
        wait_for(step, "the %s %s to be reached by the Tab key" % (role, name))

    def _has_moved_from(self, before):
        now = self.reader.focused()
        return now and (before is None or now.reference != before.reference)

    def bring_into_view(self, role, name):
        """Turns the wheel until it stands whole in the page, and returns it."""
        def step():
            found = self.reader.find(role, name, self.page())
            distance = found and self._distance(found.rect)
            if distance:
                self._turn_wheel(role, name, distance)
            return found if distance == 0 else None
        return wait_for(step, "the %s %s in the page" % (role, name))

    def _distance(self, rect):
        """By how much the page has to move up for it."""
        _x, top, _width, height = self.page().rect
        return min(0, rect[1] - top) or max(0, rect[1] + rect[3] - top - height)

    def _turn_wheel(self, role, name, distance):
        x, y, _width, height = self.page().rect
        self.desktop.click((x + 5, y + height // 2), WHEEL_DOWN if distance > 0 else WHEEL_UP,
                           math.ceil(abs(distance) / WHEEL_STEP))

        def has_moved():
            found = self.reader.find(role, name, self.page())
            return found and self._distance(found.rect) != distance
        wait_for(has_moved, "the page to scroll")

    def buttons(self):
        """All that can be pressed on the page."""
        return {(element.role, element.name) for element in self.elements()
                if element.role in BUTTON_ROLES}

    # What is seen

    def page(self):
        """What all pages stand in."""
        if self._page is None:
            self._page = self.reader.wait_for("layered pane", "")
        return Element(self.reader.bus, self._page.reference)

    def elements(self):
        return self.reader.elements(self.page())

    def is_checked(self, role, name):
        found = self.reader.find(role, name)
        return found and found.is_checked

    def figures(self, count=4):
        """Title and value of the first cards."""
        return [(element.name, element.value) for element in self.elements()
                if element.role == "label" and element.value][:count]

    def marks(self, picture):
        """Name and value of the marks and cells of a picture, in reading order."""
        return [(element.name, element.value) for element in self.reader.inside("panel", picture, self.page())
                if element.role in ("indicator", "cell")]

    def tables(self):
        """The tables shown, each to be read by row and column."""
        return [Table(self.reader.bus, element) for element in self.elements()
                if element.role == "table"]

    def text(self, pattern):
        """The first label that fits as a whole."""
        return next((element.name for element in self.elements()
                     if element.role == "label" and re.fullmatch(pattern, element.name)), None)


class DashboardTest(DesktopTest):
    """A test of the dashboard over a store of a month, which nobody adds to meanwhile."""

    def seed(self):
        self.open_desktop(speed=1, now=NOW)
        subprocess.check_call([os.environ["QUILLBROOK_LAB"], "seed", "--data", self.desktop.data,
                               "--days", str(DAYS), "--now", str(NOW)])
        self.desktop.set_locked(True)  # nothing is recorded then
        self.desktop.env["CANBERRA_DRIVER"] = "none"  # all sounds are beeps
        self.reader = ScreenReader(self.desktop)
        self.dashboard = Dashboard(self.desktop, self.reader)

    def record(self, tab, period):
        """What the report tells the page now."""
        return expectations.record(self.desktop, tab, NOW, period)

    def start(self):
        self.recorder = self.desktop.start_recorder(cwd=self.desktop.home)
        self.wait_for_front("Quillbrook")
        self.reader.wait_for("list item", "Today")

    def start_on_page(self, page):
        """Shows a page to which no row leads."""
        self.desktop.spawn([os.environ["PAGE_WINDOW"], page], fast=True)
        self.wait_for_front("Quillbrook")

    def add_session(self, app, length=600):
        """One that ends now."""
        self.desktop.write(
            "INSERT INTO app_sessions (app_name, bundle_id, started_at, ended_at, duration_sec, "
            "close_type) VALUES ('%s', 'com.tinyspeck.slackmacgap', %d.5, %d.5, %d.0, 0)"
            % (app, NOW - length, NOW, length))

    def add_alerts_of_today(self):
        self.desktop.write(
            "INSERT INTO alerts (timestamp, alert_type, severity, message) VALUES "
            "(%d.0, 'high_load', 'warning', ''), (%d.0, 'critical_load', 'critical', '')"
            % (NOW - 7200, NOW - 3600))

    def clear_the_edges(self):
        """Removes what would leave a span of hours while the test runs."""
        for hours in (1, 6):
            for table in ("app_sessions", "idle_periods"):
                self.desktop.write("DELETE FROM %s WHERE ABS(started_at - %d) < 600"
                                   % (table, NOW - hours * 3600))

    def wait_for_marks(self, picture, marks):
        wait_for(lambda: expectations.agree(self.dashboard.marks(picture), marks),
                 "%s in %s" % (marks, picture))

    def wait_for_rows(self, rows):
        def are_there():
            tables = self.dashboard.tables()
            return (tables[0].rows() if tables else []) == rows
        wait_for(are_there, "the rows %s" % rows)

    def wait_for_front(self, title):
        wait_for(lambda: self.desktop.active_window() in self.desktop.windows(title),
                 title + " in front")

    def wait_for_focus(self, role, name):
        def has_focus():
            focused = self.reader.focused()
            return focused and focused.role == role and focused.name == name
        wait_for(has_focus, "the keys at the %s %s" % (role, name))
