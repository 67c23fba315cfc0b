#include "platform/linux/x11/X11ScreenLocker.h"
#include "platform/linux/x11/XScreenSaverStatus.h"
#include "platform/virtual/VirtualMainLoop.h"
#include "support/BecomesTrue.h"
#include "tests/platform/linux/x11/X11Fixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace quillbrook {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Lockers played by hand, on a server with a window that has the focus. The ten seconds by which
/// they are told from pickers pass at once.
class ScreenLockerTest : public X11Test {
protected:
    ScreenLockerTest()
    {
        application = client.makeWindow("Application");
        client.setNumber(application, "WM_STATE", XCB_ATOM_INTEGER, 1);
        client.show(application);
        client.focus(application);
        locker = std::make_unique<X11ScreenLocker>(
            x11, timers, [this](bool isLocked) { changes.push_back(isLocked); });
    }

    void grabKeyboard()
    {
        const XcbReply<xcb_grab_keyboard_reply_t> grab(xcb_grab_keyboard_reply(client.connection,
            xcb_grab_keyboard(client.connection, 0, client.root, XCB_CURRENT_TIME,
                XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC),
            nullptr));
        ASSERT_EQ(grab->status, XCB_GRAB_STATUS_SUCCESS);
    }

    void freeKeyboard()
    {
        xcb_ungrab_keyboard(client.connection, XCB_CURRENT_TIME);
        client.sync();
    }

    xcb_window_t coverScreen(std::uint16_t width = 1280)
    {
        const xcb_window_t window = xcb_generate_id(client.connection);
        const std::uint32_t passesManager = 1;
        xcb_create_window(client.connection, 0, window, client.root, 0, 0, width, 800, 0,
            XCB_WINDOW_CLASS_INPUT_OUTPUT, 0, XCB_CW_OVERRIDE_REDIRECT, &passesManager);
        client.show(window);
        return window;
    }

    void pass(double seconds)
    {
        runFor(100);
        timers.runThrough(clock.now() + seconds);
    }

    VirtualClock clock{0};
    VirtualMainLoop timers{clock};
    xcb_window_t application = 0;
    std::vector<bool> changes{};
    std::unique_ptr<X11ScreenLocker> locker{};
};

TEST_F(ScreenLockerTest, ACoverAndTheKeyboardAreALockAfterTenSeconds)
{
    const xcb_window_t cover = coverScreen();
    grabKeyboard();
    pass(9.9);
    EXPECT_THAT(changes, IsEmpty());
    pass(0.1);
    EXPECT_THAT(changes, ElementsAre(true));
    freeKeyboard();
    pass(0);
    EXPECT_THAT(changes, ElementsAre(true, false));
    client.destroy(cover);
    pass(20);
    EXPECT_THAT(changes, ElementsAre(true, false));
}

TEST_F(ScreenLockerTest, TheKeyboardMayBeTakenFirstAndTheCoverGoFirst)
{
    grabKeyboard();
    pass(20);
    EXPECT_THAT(changes, IsEmpty());
    const xcb_window_t cover = coverScreen();
    pass(10);
    EXPECT_THAT(changes, ElementsAre(true));
    xcb_unmap_window(client.connection, cover);
    client.sync();
    pass(0);
    EXPECT_THAT(changes, ElementsAre(true, false));
    client.show(cover);
    pass(10);
    EXPECT_THAT(changes, ElementsAre(true, false, true));
    client.destroy(cover);
    pass(0);
    EXPECT_THAT(changes, ElementsAre(true, false, true, false));
}

TEST_F(ScreenLockerTest, WhatGivesWayWithinTenSecondsIsAPicker)
{
    for (int i = 0; i < 3; ++i) {
        const xcb_window_t cover = coverScreen();
        grabKeyboard();
        pass(5);
        freeKeyboard();
        client.destroy(cover);
        pass(4);
    }
    pass(20);
    EXPECT_THAT(changes, IsEmpty());
}

TEST_F(ScreenLockerTest, OneHalfAloneIsNoLock)
{
    coverScreen(1279);
    grabKeyboard();
    pass(20);
    freeKeyboard();
    coverScreen();
    pass(20);
    EXPECT_THAT(changes, IsEmpty());
}

TEST_F(ScreenLockerTest, AnApplicationThatFillsTheScreenAndTakesTheKeyboardIsNone)
{
    // A virtual machine's window, in the frame of a window manager.
    const xcb_window_t frame = coverScreen();
    const xcb_window_t border = client.makeBareWindow(frame);
    const xcb_window_t inside = client.makeWindow("Machine", border);
    client.setNumber(inside, "WM_STATE", XCB_ATOM_INTEGER, 1);
    client.show(border);
    client.show(inside);
    client.focus(inside);
    grabKeyboard();
    pass(20);
    EXPECT_THAT(changes, IsEmpty());
}

TEST_F(ScreenLockerTest, APictureBehindTheWindowsIsNone)
{
    const xcb_window_t wallpaper = coverScreen();
    const std::uint32_t below = XCB_STACK_MODE_BELOW;
    xcb_configure_window(client.connection, wallpaper, XCB_CONFIG_WINDOW_STACK_MODE, &below);
    client.sync();
    grabKeyboard();
    pass(20);
    EXPECT_THAT(changes, IsEmpty());
}

TEST_F(ScreenLockerTest, TheWindowWithTheFocusMayGoAndChange)
{
    client.destroy(application);
    pass(0);
    const xcb_window_t other = client.makeWindow("Other");
    client.setNumber(other, "WM_STATE", XCB_ATOM_INTEGER, 1);
    client.show(other);
    client.focus(other);
    pass(0);
    coverScreen();
    grabKeyboard();
    pass(10);
    EXPECT_THAT(changes, ElementsAre(true));
    client.destroy(other);
    pass(0);
    freeKeyboard();
    pass(0);
    EXPECT_THAT(changes, ElementsAre(true, false));
}

TEST_F(ScreenLockerTest, ALockThatIsOnAtTheStartIsSeen)
{
    coverScreen();
    grabKeyboard();
    std::vector<bool> later;
    const X11ScreenLocker second(
        x11, timers, [&later](bool isLocked) { later.push_back(isLocked); });
    pass(10);
    EXPECT_THAT(later, ElementsAre(true));
}

class XScreenSaverTest : public X11Test {
protected:
    void say(std::uint32_t status)
    {
        const std::uint32_t values[] = {status, 1795282145, 0};
        xcb_change_property(client.connection, XCB_PROP_MODE_REPLACE, client.root,
            client.atom("_SCREENSAVER_STATUS"), XCB_ATOM_INTEGER, 32, 3, values);
        client.sync();
    }

    xcb_window_t makeDaemon()
    {
        const xcb_window_t window = client.makeWindow("XScreenSaver");
        client.setText(window, "_SCREENSAVER_VERSION", "6.06");
        return window;
    }

    bool isTold(const std::vector<bool>& expected)
    {
        return becomesTrue([&] { return changes == expected; });
    }

    std::vector<bool> changes{};
    std::unique_ptr<XScreenSaverStatus> status
        = std::make_unique<XScreenSaverStatus>(x11, [this](bool isOn) { changes.push_back(isOn); });
};

TEST_F(XScreenSaverTest, TellsByAPropertyOfTheRoot)
{
    makeDaemon();
    say(0);
    say(client.atom("BLANK"));
    EXPECT_TRUE(isTold({true}));
    say(client.atom("LOCK"));
    say(0);
    EXPECT_TRUE(isTold({true, false}));
}

TEST_F(XScreenSaverTest, CoversNothingAfterItsEnd)
{
    const xcb_window_t daemon = makeDaemon();
    say(client.atom("LOCK"));
    EXPECT_TRUE(isTold({true}));
    client.destroy(daemon);
    EXPECT_TRUE(isTold({true, false}));
    // What it left behind is there at the next start, too.
    std::vector<bool> later;
    const XScreenSaverStatus second(x11, [&later](bool isOn) { later.push_back(isOn); });
    EXPECT_THAT(later, IsEmpty());
}

TEST_F(XScreenSaverTest, MayEndAtOnce)
{
    std::vector<bool> expected;
    for (int time = 0; time < 30; ++time) {
        const xcb_window_t daemon = makeDaemon();
        say(client.atom("LOCK"));
        expected.push_back(true);
        ASSERT_TRUE(isTold(expected));
        client.destroy(daemon); // before or after the server watches it for the recorder
        expected.push_back(false);
        ASSERT_TRUE(isTold(expected)) << time;
        say(0);
    }
}

TEST_F(XScreenSaverTest, MayBeOnAtTheStart)
{
    makeDaemon();
    say(client.atom("LOCK"));
    std::vector<bool> later;
    const XScreenSaverStatus second(x11, [&later](bool isOn) { later.push_back(isOn); });
    EXPECT_THAT(later, ElementsAre(true));
}

} // namespace
} // namespace quillbrook
