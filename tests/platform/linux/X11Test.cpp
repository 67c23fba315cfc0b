#include "platform/linux/DesktopEntries.h"
#include "platform/linux/FrontApplication.h"
#include "platform/linux/X11Connection.h"
#include "platform/linux/X11Dpms.h"
#include "platform/linux/X11HumanInput.h"
#include "platform/linux/X11KeyCounting.h"
#include "platform/linux/X11ScreenSaver.h"
#include "platform/linux/XcbReply.h"
#include "platform/linux/XkbLayout.h"
#include "platform/linux/XkbProtocol.h"
#include "platform/qt/QtMainLoop.h"
#include "support/XServer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QTimer>

#include <cstdlib>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quillbrook {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Another client of the server: programs with their windows, and a window manager played by hand.
class Client {
public:
    Client()
        : connection(xcb_connect(nullptr, nullptr))
        , root(xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root)
        , activeWindow(atom("_NET_ACTIVE_WINDOW"))
    {
    }
    ~Client() { xcb_disconnect(connection); }

    Client(const Client&) = delete;
    Client& operator=(const Client&) = delete;

    xcb_atom_t atom(const std::string& name)
    {
        const XcbReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection,
            xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.c_str()),
            nullptr));
        return reply->atom;
    }

    xcb_window_t makeWindow(const std::string& className)
    {
        const xcb_window_t window = xcb_generate_id(connection);
        xcb_create_window(connection, 0, window, root, 0, 0, 10, 10, 0,
            XCB_WINDOW_CLASS_INPUT_OUTPUT, 0, 0, nullptr);
        const std::string value = className + '\0' + className + '\0';
        xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_CLASS,
            XCB_ATOM_STRING, 8, static_cast<std::uint32_t>(value.size()), value.data());
        return window;
    }

    void activate(xcb_window_t window)
    {
        xcb_change_property(
            connection, XCB_PROP_MODE_REPLACE, root, activeWindow, XCB_ATOM_WINDOW, 32, 1, &window);
        xcb_flush(connection);
    }

    void destroy(xcb_window_t window)
    {
        xcb_destroy_window(connection, window);
        sync();
    }

    /// Waits until the server has done all that was asked.
    void sync() { atom("_NET_ACTIVE_WINDOW"); }

    xcb_connection_t* connection;
    xcb_window_t root;
    xcb_atom_t activeWindow;
};

class X11Test : public testing::Test {
protected:
    /// Runs the event loop until `condition` holds, or for five seconds.
    static bool waitFor(const std::function<bool()>& condition)
    {
        const QDeadlineTimer deadline(5000);
        QTimer alarm;
        alarm.start(20);
        while (!condition() && !deadline.hasExpired()) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
        return condition();
    }

    static void runFor(int milliseconds)
    {
        const QDeadlineTimer deadline(milliseconds);
        waitFor([&deadline] { return deadline.hasExpired(); });
    }

    static void pressKeys(const std::string& keys)
    {
        ASSERT_EQ(std::system(("xdotool " + keys).c_str()), 0);
    }

    XServer server{};
    int count = 1;
    std::string name = "test";
    char* values[2] = {name.data(), nullptr};
    QCoreApplication application{count, values};
    QtMainLoop mainLoop{};
    X11Connection x11{};
    Client client{};
};

class FrontApplicationTest : public X11Test {
protected:
    std::string frontName() const
    {
        return front->current() ? front->current()->localizedName.value_or("-") : "none";
    }

    bool isInFront(const std::string& className)
    {
        return waitFor([&] { return frontName() == className; });
    }

    void bringToFront(const std::string& className)
    {
        client.activate(client.makeWindow(className));
        ASSERT_TRUE(isInFront(className));
    }

    DesktopEntries entries{{}, {}};
    std::unique_ptr<FrontApplication> front
        = std::make_unique<FrontApplication>(x11, entries, mainLoop);
};

TEST_F(FrontApplicationTest, FollowsTheActiveWindow)
{
    EXPECT_EQ(frontName(), "none");
    bringToFront("One");
    EXPECT_EQ(front->current()->bundleIdentifier, "One");
    bringToFront("Two");
}

TEST_F(FrontApplicationTest, KnowsWhatWasInFrontBefore)
{
    client.activate(client.makeWindow("Early"));
    client.sync();
    front = std::make_unique<FrontApplication>(x11, entries, mainLoop);
    EXPECT_EQ(frontName(), "Early");
}

TEST_F(FrontApplicationTest, AnEmptyFrontIsTheDesktopAfterAWhile)
{
    bringToFront("One");
    client.activate(0);
    client.sync();
    runFor(300);
    EXPECT_EQ(frontName(), "One");
    EXPECT_TRUE(isInFront("桌面"));
    EXPECT_EQ(front->current()->bundleIdentifier, "com.apple.finder");
    bringToFront("Two");
}

TEST_F(FrontApplicationTest, AShortGapIsBridged)
{
    bringToFront("One");
    std::vector<std::string> seen;
    QTimer observer;
    QObject::connect(&observer, &QTimer::timeout, [&] { seen.push_back(frontName()); });
    observer.start(1);
    const xcb_window_t two = client.makeWindow("Two");
    client.activate(0);
    client.sync();
    runFor(50);
    client.activate(two);
    ASSERT_TRUE(isInFront("Two"));
    runFor(700);
    EXPECT_THAT(seen, testing::Not(testing::Contains("桌面")));
    EXPECT_EQ(seen.back(), "Two");
}

TEST_F(FrontApplicationTest, ManyShortGapsAreBridgedEach)
{
    bringToFront("One");
    for (int i = 0; i < 4; ++i) {
        client.activate(0);
        runFor(300);
        client.activate(client.makeWindow("W" + std::to_string(i)));
        ASSERT_TRUE(isInFront("W" + std::to_string(i)));
    }
}

TEST_F(FrontApplicationTest, AWindowThatIsGoneIsNoFront)
{
    // Some window managers leave the property pointing at the last window.
    const xcb_window_t window = client.makeWindow("One");
    client.activate(window);
    ASSERT_TRUE(isInFront("One"));
    client.destroy(window);
    EXPECT_TRUE(isInFront("桌面"));
}

TEST_F(FrontApplicationTest, AStaleWindowIsNoFront)
{
    bringToFront("One");
    const xcb_window_t window = client.makeWindow("Gone");
    client.destroy(window);
    client.activate(window);
    EXPECT_TRUE(isInFront("桌面"));
}

TEST_F(FrontApplicationTest, WindowsWithoutTraitsAreSomebodys)
{
    const xcb_window_t window = xcb_generate_id(client.connection);
    xcb_create_window(client.connection, 0, window, client.root, 0, 0, 1, 1, 0,
        XCB_WINDOW_CLASS_INPUT_OUTPUT, 0, 0, nullptr);
    client.activate(window);
    EXPECT_TRUE(isInFront("未知应用"));
}

TEST_F(FrontApplicationTest, OddNamesArriveWhole)
{
    const std::string longName(4096, 'n');
    for (const std::string& name : {std::string("O'Neil \"q\" 📝"), longName}) {
        client.activate(client.makeWindow(name));
        EXPECT_TRUE(isInFront(name));
    }
    client.activate(client.makeWindow("bad\xff"));
    EXPECT_TRUE(isInFront("bad\uFFFD"));
}

TEST_F(FrontApplicationTest, PropertiesOfOddTypesAreSurvived)
{
    const xcb_window_t window = client.makeWindow("One");
    const std::uint32_t words[] = {0xffffffff, 0xffffffff};
    for (const char* property :
        {"_NET_WM_PID", "_GTK_APPLICATION_ID", "_KDE_NET_WM_DESKTOP_FILE"}) {
        xcb_change_property(client.connection, XCB_PROP_MODE_REPLACE, window, client.atom(property),
            XCB_ATOM_CARDINAL, 32, 2, words);
    }
    client.activate(window);
    EXPECT_TRUE(isInFront("One"));
    const std::uint8_t byte = 7;
    xcb_change_property(client.connection, XCB_PROP_MODE_REPLACE, client.root, client.activeWindow,
        XCB_ATOM_STRING, 8, 1, &byte);
    xcb_flush(client.connection);
    EXPECT_TRUE(isInFront("桌面"));
}

TEST_F(FrontApplicationTest, TenThousandSwitchesInARowEndAtTheLast)
{
    const xcb_window_t one = client.makeWindow("One");
    const xcb_window_t two = client.makeWindow("Two");
    for (int i = 0; i < 5000; ++i) {
        client.activate(one);
        client.activate(two);
        if (i % 100 == 0) {
            client.sync();
            QCoreApplication::processEvents();
        }
    }
    client.activate(client.makeWindow("Last"));
    EXPECT_TRUE(isInFront("Last"));
}

TEST_F(FrontApplicationTest, AServerThatDiesLeavesTheLastAnswer)
{
    bringToFront("One");
    X11HumanInput input(x11);
    server.kill();
    EXPECT_TRUE(waitFor([this] { return !x11.isUsable(); }));
    EXPECT_EQ(frontName(), "One");
    EXPECT_EQ(input.secondsSinceLastInput(), 0);
    EXPECT_EQ(XkbLayout(x11).currentIdentifier(), std::nullopt);
}

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
    EXPECT_TRUE(waitFor([this] { return !x11.isUsable(); }));
    tap->enable(false);
    tap.reset();
    EXPECT_FALSE(keys.createTap([] {}));
    EXPECT_FALSE(X11Accessibility(keys).isTrusted());
}

TEST_F(X11Test, SilenceGrowsUntilTheNextInput)
{
    const X11HumanInput input(x11);
    runFor(300);
    EXPECT_GE(input.secondsSinceLastInput(), 0.3);
    pressKeys("key a");
    EXPECT_LT(input.secondsSinceLastInput(), 0.25);
}

TEST_F(X11Test, TheServersSaverTellsWhenItComesAndGoes)
{
    std::vector<bool> changes;
    const X11ScreenSaver saver(x11, [&changes](bool isOn) { changes.push_back(isOn); });
    xcb_force_screen_saver(client.connection, XCB_SCREEN_SAVER_ACTIVE);
    client.sync();
    EXPECT_TRUE(waitFor([&] { return changes == std::vector{true}; }));
    pressKeys("key a");
    EXPECT_TRUE(waitFor([&] { return changes == std::vector{true, false}; }));
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
