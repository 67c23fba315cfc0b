"""The real program in a real GNOME Shell with its extension: what is done, and what tells of it."""

import time
import unittest

import dbus

from gnome_desktop import EXTENSION, ITEM, GnomeDesktop
from waiting import wait_for
from wayland_desktop import GTK3, GTK4, OURS, QT, XTERM, WaylandDesktopTest

NO_FRONT = "此桌面没有告诉前台应用"
PANEL = ("/cn/tarnlow/quillbrook/Panel", "cn.tarnlow.quillbrook.Panel")


class GnomeTest(WaylandDesktopTest):
    def open(self, **options):
        self.open_wayland(GnomeDesktop, **options)
        return self.desktop

    def work_in_gtk3(self):
        """Starts the recorder with somebody at work in a window of GTK 3."""
        desktop = self.desktop
        recorder = desktop.start_recorder_and_wait()
        window = desktop.open_gtk3()
        desktop.focus(GTK3[0])
        desktop.touch()
        desktop.wait_for_session(GTK3[1])
        return recorder, window

    def test_each_front_is_a_session(self):
        desktop = self.open()
        self.work_in_gtk3()
        desktop.open_gtk4()
        desktop.focus(GTK4[0])
        desktop.wait_for_session(GTK4[1], 2)
        desktop.open_qt()
        desktop.focus(QT[0])
        desktop.wait_for_session(QT[1], 3)
        terminal = desktop.open_xterm()
        desktop.focus("XTerm")
        desktop.wait_for_session(XTERM[0], 4)
        desktop.focus(GTK4[0])
        desktop.wait_for_session(GTK4[1], 5)
        desktop.focus("XTerm")
        desktop.wait_for_session(XTERM[0], 6)
        desktop.kill(terminal)
        desktop.wait_for_session(GTK4[1], 7)
        self.assertEqual([row[:3] for row in desktop.sessions()], [
            (GTK3[1], GTK3[0], 1), (GTK4[1], GTK4[0], 0), (QT[1], QT[0], 0),
            XTERM + (0,), (GTK4[1], GTK4[0], 0), XTERM + (0,), (GTK4[1], GTK4[0], 0)])
        self.assertEqual(desktop.idles(), [])

    def test_what_is_told_of_a_window(self):
        desktop = self.open()
        self.work_in_gtk3()
        desktop.watch_fronts()
        terminal = desktop.open_xterm()
        desktop.focus("XTerm")
        wait_for(desktop.fronts, "a front")
        self.assertEqual(desktop.fronts(), [("debian-xterm", "XTerm", terminal.pid)])
        desktop.focus_desktop()
        wait_for(lambda: len(desktop.fronts()) > 1, "the desktop in front")
        self.assertEqual(desktop.fronts()[1], ("", "", 0))

    def test_a_window_of_the_overview(self):
        desktop = self.open()
        self.work_in_gtk3()
        desktop.js("Main.overview.show()")
        desktop.open_xterm()
        wait_for(lambda: desktop.windows_where("window.get_wm_class() === 'XTerm'"), "the window")
        self.assertEqual(desktop.focused(), GTK3[0])
        desktop.js("Main.overview.hide()")
        desktop.wait_for_session(XTERM[0], 2)

    def test_a_flood_of_windows(self):
        desktop = self.open()
        self.work_in_gtk3()
        desktop.open_gtk4()
        desktop.focus(GTK4[0])
        desktop.wait_for_session(GTK4[1], 2)
        desktop.watch_fronts()
        changes, seconds = desktop.flood(GTK4[0], GTK3[0])
        self.assertGreater(changes, 900)
        wait_for(lambda: desktop.fronts()[-1][1] == GTK3[0], "the last window to be told")
        desktop.wait_for_session(GTK3[1])
        self.assertLess(len(desktop.fronts()), 10 * seconds + 3)
        self.assertEqual(desktop.fronts()[-1][1], GTK3[0])
        self.assertEqual(set(desktop.session_names()), {GTK3[1], GTK4[1]})

    def test_nothing_in_front_is_nobody(self):
        desktop = self.open()
        _, window = self.work_in_gtk3()
        desktop.minimize(GTK3[0])
        desktop.wait_for_idle(1)
        desktop.focus(GTK3[0])
        desktop.touch()
        desktop.wait_for_session(GTK3[1], 2)
        desktop.kill(window)
        desktop.wait_for_idle(1)
        desktop.let_minutes_pass(5)
        self.assertEqual(desktop.session_names(), [GTK3[1]] * 2)

    def test_a_person_who_went_is_idle(self):
        self.open(speed=60)
        recorder_began = time.monotonic()
        self.work_in_gtk3()
        desktop = self.desktop
        wait_for(desktop.idles, "an idle period")
        self.assertGreater(time.monotonic() - recorder_began, 5.0)
        desktop.wait_for_session(GTK3[1], 2)

    def test_a_film_does_not_stand_for_a_person(self):
        desktop = self.open(speed=60)
        desktop.keep_from_resting()
        self.work_in_gtk3()
        wait_for(desktop.idles, "an idle period")

    def test_a_person_at_work_is_not_idle(self):
        desktop = self.open(speed=30)
        self.work_in_gtk3()
        for _ in range(10):
            desktop.touch()
            desktop.let_minutes_pass(1)
        self.assertEqual(desktop.idles(), [])
        self.assertEqual(len(desktop.sessions()), 1)

    def test_a_locked_session(self):
        desktop = self.open()
        self.work_in_gtk3()
        desktop.set_locked(True)
        desktop.wait_for_idle(3)
        desktop.set_locked(False)
        desktop.touch()
        desktop.wait_for_session(GTK3[1], 2)

    def test_dark_screens(self):
        desktop = self.open()
        self.work_in_gtk3()
        desktop.set_screens(False)
        desktop.wait_for_idle(3)
        desktop.let_minutes_pass(5)
        self.assertEqual(len(desktop.sessions()), 1)
        desktop.set_screens(True)
        desktop.touch()
        desktop.wait_for_session(GTK3[1], 2)

    def test_an_extension_that_is_switched_off_knows_no_front(self):
        desktop = self.open()
        self.work_in_gtk3()
        desktop.set_extension_enabled(False)
        desktop.wait_for_idle(1)
        self.assertFalse(desktop.has_item())
        desktop.open_gtk4()
        desktop.focus(GTK4[0])
        desktop.let_minutes_pass(5)
        self.assertEqual(desktop.session_names(), [GTK3[1]])
        desktop.set_extension_enabled(True)
        desktop.touch()
        desktop.wait_for_session(GTK4[1], 2)
        wait_for(desktop.has_item, "the label")

    def test_an_extension_that_is_switched_off_is_missed(self):
        desktop = self.open(speed=1)
        desktop.start_recorder_and_show()
        wait_for(desktop.has_item, "the label")
        time.sleep(11)  # by then the start's own look has been
        self.assertNotIn(NO_FRONT, desktop.output())
        desktop.set_extension_enabled(False)
        wait_for(lambda: NO_FRONT in desktop.output(), "the line")

    def test_an_extension_that_is_switched_off_leaves_nothing(self):
        desktop = self.open()
        self.work_in_gtk3()
        wait_for(desktop.has_item, "the label")
        desktop.minimize(GTK3[0])
        soon = desktop.js("""(() => {
            const program = %s._program;
            program._tellSoon();
            const soon = program._soon;
            Main.extensionManager.lookup('%s').stateObj.disable();
            return imports.gi.GLib.MainContext.default().find_source_by_id(soon) !== null;
        })()""" % (ITEM, EXTENSION))
        self.assertFalse(soon, "what was to be told soon")
        self.assertIsNone(desktop.js(ITEM + " ?? null"))

    def test_a_dead_shell_blocks_nobody(self):
        desktop = self.open()
        recorder, _ = self.work_in_gtk3()
        desktop.kill(desktop.compositor)
        # Its windows are gone with it: the program ends, as the toolkit wants it.
        recorder.wait(timeout=30)
        self.assertEqual(desktop.session_names(), [GTK3[1]])
        self.assertTrue(desktop.check_integrity())

    def test_the_extension_is_switched_on_for_who_wants_it(self):
        desktop = self.open(enabled=False)
        desktop.start_recorder_and_show()
        self.assertFalse(desktop.has_item())
        desktop.answer_question("启用扩展")
        wait_for(desktop.has_item, "the label")
        desktop.close_dashboard()
        desktop.open_gtk3()
        desktop.focus(GTK3[0])
        desktop.touch()
        desktop.wait_for_session(GTK3[1])

    def test_who_declines_is_left_alone(self):
        desktop = self.open(enabled=False)
        desktop.start_recorder_and_show()
        desktop.answer_question("暂不启用")
        desktop.close_dashboard()
        desktop.open_gtk3()
        desktop.focus(GTK3[0])
        desktop.touch()
        desktop.let_minutes_pass(10)
        self.assertEqual(desktop.session_names(), [], "no front is known")
        self.assertEqual(desktop.output().count(NO_FRONT), 1)
        desktop.set_extension_enabled(True)
        desktop.touch()
        desktop.wait_for_session(GTK3[1], 1)

    def test_a_poser_tells_nothing(self):
        desktop = self.open()
        self.work_in_gtk3()
        poser = dbus.bus.BusConnection(desktop.env["DBUS_SESSION_BUS_ADDRESS"])
        self.addCleanup(poser.close)
        program = poser.get_object(OURS, PANEL[0], introspect=False)
        for _ in range(2):
            with self.assertRaises(dbus.DBusException):
                program.Front("evil", "evil", dbus.UInt32(1), dbus_interface=PANEL[1])
        signal = dbus.lowlevel.SignalMessage(*PANEL, "Changed")
        signal.append("evil", True, [dbus.UInt32(1)], ["evil"], signature="sbauas")
        poser.send_message(signal)
        poser.flush()
        self.assertNotIn("evil", [desktop.label(), *desktop.titles()])
        desktop.let_minutes_pass(5)
        self.assertEqual(desktop.session_names(), [GTK3[1]])
        self.assertEqual(desktop.output().count("冒充"), 1)

    def test_the_label_and_its_menu(self):
        desktop = self.open()
        recorder, _ = self.work_in_gtk3()
        wait_for(desktop.has_item, "the label")
        # Keys can't be counted here: that is something to look at.
        wait_for(desktop.is_alert, "the alert")
        red, green, blue = desktop.label_color()
        self.assertGreater(red, 200)
        self.assertLess(max(green, blue), 100)
        desktop.open_menu()
        desktop.choose("刷新数据")
        wait_for(lambda: desktop.label().endswith("m"), "the time of today")
        self.assertRegex(desktop.label(), r"^\d+h\d+m$")
        alerts = desktop.titles()[0]
        self.assertRegex(alerts, r"^Alerts：\d+$")
        self.assertEqual(desktop.titles()[1:], [
            "Hours：" + desktop.label(), "-", "刷新数据", "-", "开机自启：开", "退出"])
        desktop.open_menu()
        desktop.choose(alerts)
        wait_for(lambda: desktop.focused() == OURS, "the dashboard in front", timeout=20)
        wait_for(lambda: desktop.last_page() == "Alerts", "the entry's page")
        desktop.close_dashboard()
        desktop.open_menu()
        desktop.choose("退出")
        self.assertEqual(recorder.wait(timeout=30), 0)
        wait_for(lambda: not desktop.has_item(), "the end of the label")

    def test_a_second_launch_raises_the_dashboard(self):
        desktop = self.open()
        recorder = desktop.start_recorder_and_show()
        desktop.open_gtk3()
        desktop.focus(GTK3[0])
        self.assertEqual(desktop.start_recorder().wait(timeout=60), 0)
        wait_for(lambda: desktop.own_windows(), "the dashboard")
        self.assertIsNone(recorder.poll())

    def test_the_module_for_later_versions_has_what_the_script_has(self):
        desktop = self.open()
        script = desktop.js("""(() => {
            const {body} = Reflect.parse(%s, {target: 'script'});
            return body.filter(node => node.declarations)
                .flatMap(node => node.declarations.map(one => one.id))
                .flatMap(id => id.properties?.map(each => each.value.name) ?? [id.name]);
        })()""" % desktop.text_of("GNOME_EXTENSION_SCRIPT"))
        module = desktop.js("""(() => {
            const {body} = Reflect.parse(%s, {target: 'module'});
            return [body.flatMap(node => node.moduleRequest ? node.specifiers : [])
                        .map(each => each.name?.name ?? each.id.name ?? '').filter(name => name),
                    body.filter(node => node.declarations)
                        .flatMap(node => node.declarations.map(one => one.id.name)),
                    body.filter(node => node.type === 'ExportDeclaration')
                        .flatMap(node => node.specifiers.map(each => each.name.name))];
        })()""" % desktop.text_of("GNOME_EXTENSION_MODULE"))
        imported, declared, exported = module
        self.assertEqual(sorted(script + ["Extension"]), sorted(imported + declared))
        self.assertEqual(exported, ["default"])

    def test_hostile_names(self):
        desktop = self.open()
        self.work_in_gtk3()
        desktop.watch_fronts()
        name = "x" * 10000
        first = desktop.open_nameless(name)
        desktop.focus(name)
        desktop.wait_for_session("x" * 200, 2)
        self.assertEqual(desktop.fronts()[-1][1], "x" * 200)
        desktop.kill(first)
        desktop.wait_for_session(GTK3[1], 3)
        desktop.open_nameless(b"\xff\xfe")
        desktop.focus("\xff\xfe")  # a class is Latin-1
        desktop.wait_for_session("\xff\xfe", 4)
        self.assertIsNone(desktop.compositor.poll())


if __name__ == "__main__":
    unittest.main()
