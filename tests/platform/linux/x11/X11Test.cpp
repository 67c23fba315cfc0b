#include "platform/linux/applications/DesktopEntries.h"
#include "platform/linux/x11/FrontApplication.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11Dpms.h"
#include "platform/linux/x11/X11HumanInput.h"
#include "platform/linux/x11/X11KeyCounting.h"
#include "platform/linux/x11/X11ScreenSaver.h"
#include "platform/linux/x11/XcbReply.h"
#include "platform/linux/x11/XkbLayout.h"
#include "platform/linux/x11/XkbProtocol.h"
#include "support/BecomesTrue.h"
#include "tests/platform/linux/x11/X11Fixture.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quillbrook {
namespace {

TEST(NoServer, IsSurvived)
{
    setenv("DISPLAY", ":987", 1);
    int count = 1;
    std::string name = "test";
    char* values[2] = {name.data(), nullptr};
    const QCoreApplication application(count, values);
    QtMainLoop mainLoop;
    X11Connection x11;
    DesktopEntries entries({}, {});
    const FrontApplication front(x11, entries, mainLoop);
    X11KeyCounting keys(x11);
    X11ScreenSaver saver(x11, [](bool) {});
    X11Dpms powerManagement(x11, mainLoop, [](bool) {});
    EXPECT_FALSE(x11.isUsable());
    EXPECT_FALSE(front.current());
    EXPECT_FALSE(X11Accessibility(keys).isTrusted());
    EXPECT_FALSE(keys.addGlobalMonitor([] {}));
    EXPECT_FALSE(keys.createTap([] {}));
    EXPECT_EQ(XkbLayout(x11).currentIdentifier(), std::nullopt);
    EXPECT_EQ(X11HumanInput(x11).secondsSinceLastInput(), 0);
    unsetenv("DISPLAY");
}

class KeyCountingTest : public X11Test {
protected:
    /// The number of keys counted once no more come.
    int settled(const int& counted)
    {
        int before = -1;
        while (before != counted) {
            before = counted;
            runFor(150);
        }
        return counted;
    }

    X11KeyCounting keys{x11};
    int monitored = 0;
    int tapped = 0;
};

TEST_F(KeyCountingTest, IsPossibleHere)
{
    EXPECT_TRUE(X11Accessibility(keys).isTrusted());
}

TEST_F(KeyCountingTest, TheMonitorCountsKeysButNotModifiers)
{
    ASSERT_TRUE(keys.addGlobalMonitor([this] { ++monitored; }));
    pressKeys("key a b c d e");
    EXPECT_EQ(settled(monitored), 5);
    pressKeys("key A B C");
    EXPECT_EQ(settled(monitored), 8);
    pressKeys("key Shift_L Control_R Alt_L Caps_Lock Caps_Lock");
    EXPECT_EQ(settled(monitored), 8);
    pressKeys("key Return BackSpace F5 Left space");
    EXPECT_EQ(settled(monitored), 13);
}

TEST_F(KeyCountingTest, TheTapCountsTheSameWhileItIsEnabled)
{
    const auto tap = keys.createTap([this] { ++tapped; });
    ASSERT_TRUE(tap);
    pressKeys("key a");
    EXPECT_EQ(settled(tapped), 0);
    tap->enable(true);
    runFor(50);
    pressKeys("key a b A");
    EXPECT_EQ(settled(tapped), 3);
    tap->enable(false);
    runFor(50);
    pressKeys("key a");
    EXPECT_EQ(settled(tapped), 3);
    tap->enable(true);
    runFor(50);
    pressKeys("key a");
    EXPECT_EQ(settled(tapped), 4);
}

TEST_F(KeyCountingTest, BothCountWhileAnotherProgramHoldsTheKeyboard)
{
    ASSERT_TRUE(keys.addGlobalMonitor([this] { ++monitored; }));
    const auto tap = keys.createTap([this] { ++tapped; });
    ASSERT_TRUE(tap);
    tap->enable(true);
    runFor(50);
    const XcbReply<xcb_grab_keyboard_reply_t> grab(xcb_grab_keyboard_reply(client.connection,
        xcb_grab_keyboard(client.connection, 0, client.root, XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC,
            XCB_GRAB_MODE_ASYNC),
        nullptr));
    ASSERT_EQ(grab->status, XCB_GRAB_STATUS_SUCCESS);
    pressKeys("key 1 2 3 4 5");
    EXPECT_EQ(settled(monitored), 5);
    EXPECT_EQ(settled(tapped), 5);
}

TEST_F(KeyCountingTest, EventsThatAProgramMadeUpAreNoKeys)
{
    ASSERT_TRUE(keys.addGlobalMonitor([this] { ++monitored; }));
    xcb_key_press_event_t event{};
    event.response_type = XCB_KEY_PRESS;
    event.detail = 38;
    event.root = client.root;
    event.event = client.root;
    xcb_send_event(client.connection, 0, client.root, XCB_EVENT_MASK_KEY_PRESS,
        reinterpret_cast<const char*>(&event));
    client.sync();
    EXPECT_EQ(settled(monitored), 0);
}

TEST_F(KeyCountingTest, ANewKeyboardMappingIsFollowed)
{
    // The mapping makes the key "a" a modifier, of which none is counted. The layout uses the
    // keyboard extension on the same connection, as in the program.
    const XkbLayout layout(x11);
    ASSERT_TRUE(keys.addGlobalMonitor([this] { ++monitored; }));
    ASSERT_EQ(std::system("xmodmap -e 'add mod3 = a'"), 0);
    runFor(200);
    pressKeys("key a b");
    EXPECT_EQ(settled(monitored), 1);
}

TEST_F(KeyCountingTest, ATapOutlivesItsServer)
{
    auto tap = keys.createTap([this] { ++tapped; });
    ASSERT_TRUE(tap);
    tap->enable(true);
    runFor(50);
    server.kill();
    EXPECT_TRUE(becomesTrue([this] { return !x11.isUsable(); }));
    tap->enable(false);
    tap.reset();
    EXPECT_FALSE(keys.createTap([] {}));
    EXPECT_FALSE(X11Accessibility(keys).isTrusted());
}

/// After a silence of 0.3 seconds or more.
void expectInputEndsSilence(const X11HumanInput& input)
{
    const auto before = std::chrono::steady_clock::now();
    ASSERT_EQ(std::system("xdotool key a"), 0);
    const double silence = input.secondsSinceLastInput();
    const std::chrono::duration<double> sinceBefore = std::chrono::steady_clock::now() - before;
    EXPECT_LT(silence, sinceBefore.count() + 0.25);
}

TEST_F(X11Test, SilenceGrowsUntilTheNextInput)
{
    const X11HumanInput input(x11);
    runFor(300);
    EXPECT_GE(input.secondsSinceLastInput(), 0.3);
    expectInputEndsSilence(input);
}

class WithoutSaverTest : public X11Test {
protected:
    WithoutSaverTest() : X11Test({"-extension", "MIT-SCREEN-SAVER"}) {}
};

TEST_F(WithoutSaverTest, SilenceIsThatOfTheServersCounter)
{
    const X11HumanInput input(x11);
    runFor(300);
    EXPECT_GE(input.secondsSinceLastInput(), 0.3);
    expectInputEndsSilence(input);
}

TEST_F(X11Test, TheServersSaverTellsWhenItComesAndGoes)
{
    std::vector<bool> changes;
    const X11ScreenSaver saver(x11, [&changes](bool isOn) { changes.push_back(isOn); });
    xcb_force_screen_saver(client.connection, XCB_SCREEN_SAVER_ACTIVE);
    client.sync();
    EXPECT_TRUE(becomesTrue([&] { return changes == std::vector{true}; }));
    pressKeys("key a");
    EXPECT_TRUE(becomesTrue([&] { return changes == std::vector{true, false}; }));
}

TEST_F(X11Test, TheLayoutIsThatOfTheGroupInUse)
{
    const XkbLayout layout(x11);
    EXPECT_EQ(layout.currentIdentifier(), "xkb.keylayout.us");
    ASSERT_EQ(std::system("setxkbmap -layout us,cn -variant ,altgr-pinyin"), 0);
    EXPECT_EQ(layout.currentIdentifier(), "xkb.keylayout.us");
    xcb_xkb_use_extension(client.connection, 1, 0);
    xcb_xkb_latch_lock_state(
        client.connection, XCB_XKB_ID_USE_CORE_KBD, 0, 0, 1, XCB_XKB_GROUP_2, 0, 0, 0);
    client.sync();
    EXPECT_EQ(layout.currentIdentifier(), "xkb.keylayout.cn.altgr-pinyin");
}

} // namespace
} // namespace quillbrook
