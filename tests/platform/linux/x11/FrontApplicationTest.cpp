#include "platform/linux/x11/FrontApplication.h"

#include "platform/linux/x11/X11HumanInput.h"
#include "platform/linux/x11/XkbLayout.h"
#include "support/BecomesTrue.h"
#include "tests/platform/linux/x11/FrontFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quillbrook {
namespace {

using FrontApplicationTest = FrontFixture;

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
    client.activate(client.makeBareWindow());
    EXPECT_TRUE(isInFront("未知应用"));
}

TEST_F(FrontApplicationTest, OddNamesArriveWhole)
{
    client.activate(client.makeWindow("O'Neil \"q\" 📝"));
    EXPECT_TRUE(isInFront("O'Neil \"q\" 📝"));
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
    xcb_change_property(client.connection, XCB_PROP_MODE_REPLACE, client.root,
        client.atom("_NET_ACTIVE_WINDOW"), XCB_ATOM_STRING, 8, 1, &byte);
    xcb_flush(client.connection);
    EXPECT_TRUE(isInFront("桌面"));
}

TEST_F(FrontApplicationTest, ALongNameOfSeveralLinesIsCutAndOfOne)
{
    std::string given = "[2026-01-01T00:00:00Z]\n";
    std::string expected = "[2026-01-01T00:00:00Z] ";
    for (int i = 0; i < 16384; ++i) {
        given += "谱";
        expected += i < 200 - 23 ? "谱" : "";
    }
    client.activate(client.makeWindow(given));
    EXPECT_TRUE(isInFront(expected)) << frontName();
    EXPECT_EQ(frontBundle(), expected);
}

TEST_F(FrontApplicationTest, TheRootAsActiveWindowIsNoneAndLeavesTheRestHeard)
{
    bringToFront("One");
    client.activate(client.root);
    EXPECT_TRUE(isInFront("桌面"));
    bringToFront("Two");
    bringToFront("Three");
}

TEST_F(FrontApplicationTest, NobodyIsInFrontWhereNobodyTells)
{
    client.manage("_NET_CLIENT_LIST");
    client.focus(XCB_INPUT_FOCUS_NONE);
    runFor(700);
    EXPECT_EQ(frontName(), "none");
}

TEST_F(FrontApplicationTest, AManagerThatDiesTakesItsActiveWindowAlong)
{
    const xcb_window_t manager = client.manage();
    bringToFront("One");
    client.destroy(manager);
    EXPECT_TRUE(isInFront("none"));
    client.manage();
    EXPECT_TRUE(isInFront("One"));
    client.activate(0);
    EXPECT_TRUE(isInFront("桌面"));
}

TEST_F(FrontApplicationTest, WithoutAManagerTheFocusTells)
{
    const xcb_window_t one = client.makeWindow("One");
    const xcb_window_t two = client.makeWindow("Two");
    const xcb_window_t inside = client.makeBareWindow(two);
    client.show(one);
    client.show(two);
    client.show(inside);
    client.focus(one);
    EXPECT_TRUE(isInFront("One"));
    client.focus(inside);
    EXPECT_TRUE(isInFront("Two"));
    client.focus(one);
    EXPECT_TRUE(isInFront("One"));
    client.destroy(one);
    EXPECT_FALSE(frontName() == "桌面");
    client.focus(XCB_INPUT_FOCUS_NONE);
    EXPECT_TRUE(isInFront("none"));
    client.focus(two);
    EXPECT_TRUE(isInFront("Two"));
}

TEST_F(FrontApplicationTest, WithoutAManagerOrAFocusThePointerTells)
{
    const xcb_window_t frame = client.makeBareWindow();
    const xcb_window_t framed = client.makeWindow("Framed", frame);
    const xcb_window_t bare = client.makeWindow("Bare");
    const std::uint32_t place[] = {100, 100};
    xcb_configure_window(client.connection, bare, XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y, place);
    client.show(framed);
    client.show(frame);
    client.show(bare);
    client.focus(XCB_INPUT_FOCUS_POINTER_ROOT);
    pressKeys("mousemove 5 5");
    EXPECT_TRUE(isInFront("Framed"));
    pressKeys("mousemove 105 105");
    EXPECT_TRUE(isInFront("Bare"));
    pressKeys("mousemove 500 500");
    EXPECT_TRUE(isInFront("none"));
    pressKeys("mousemove 105 105");
    EXPECT_TRUE(isInFront("Bare"));
    client.destroy(bare);
    EXPECT_TRUE(isInFront("none"));
}

class FrontWithoutSaverTest : public FrontApplicationTest {
protected:
    FrontWithoutSaverTest() : FrontApplicationTest({"-extension", "MIT-SCREEN-SAVER"}) {}
};

TEST_F(FrontWithoutSaverTest, AnEmptyFrontIsNotKnown)
{
    client.manage();
    bringToFront("One");
    client.activate(0);
    EXPECT_TRUE(isInFront("none"));
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
    EXPECT_TRUE(becomesTrue([this] { return !x11.isUsable(); }));
    EXPECT_EQ(frontName(), "One");
    EXPECT_EQ(input.secondsSinceLastInput(), 0);
    EXPECT_EQ(XkbLayout(x11).currentIdentifier(), std::nullopt);
}

} // namespace
} // namespace quillbrook
