"""The real program in a real KWin: what is done, and the rows that tell of it."""

import unittest

from kwin_desktop import KWinDesktop
from wayland_desktop import WaylandDesktopTest


class KWinTest(WaylandDesktopTest):
    def setUp(self):
        self.open_wayland(KWinDesktop)

    def test_each_front_is_a_session(self):
        self.check_each_front_is_a_session()

    def test_nothing_in_front_is_nobody(self):
        self.check_nothing_in_front_is_nobody()

    def test_a_minimised_window_is_not_in_front(self):
        self.check_a_minimised_window_is_not_in_front()

    def test_a_person_who_went_is_idle(self):
        self.check_a_person_who_went_is_idle()

    def test_a_person_at_work_is_not_idle(self):
        self.check_a_person_at_work_is_not_idle()

    def test_a_locked_session(self):
        self.check_a_locked_session()

    def test_a_second_launch_raises_the_dashboard(self):
        self.check_a_second_launch_raises_the_dashboard()

    def test_a_dead_compositor_blocks_nobody(self):
        self.check_a_dead_compositor_blocks_nobody()


if __name__ == "__main__":
    unittest.main()
