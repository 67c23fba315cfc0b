#include "platform/linux/shells/Sway.h"

#include "platform/qt/QtMainLoop.h"
#include "support/BecomesTrue.h"
#include "support/TemporaryDirectory.h"

#include <QCoreApplication>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

namespace quillbrook {
namespace {

/// A window source that always says the same.
struct SaidFront final : FrontSource {
    bool isThere() const override { return true; }
    std::optional<FrontWindow> front() const override { return window; }

    std::optional<FrontWindow> window{};
};

/// A stand-in for sway's end of its socket.
class SwayTest : public testing::Test {
protected:
    SwayTest()
    {
        sockaddr_un name{};
        name.sun_family = AF_UNIX;
        std::ranges::copy(path, name.sun_path);
        EXPECT_EQ(bind(listener, reinterpret_cast<const sockaddr*>(&name), sizeof name), 0);
        EXPECT_EQ(listen(listener, 1), 0);
    }

    ~SwayTest() override
    {
        close(listener);
        if (peer >= 0) {
            close(peer);
        }
    }

    void say(SwayMessageType type, const std::string& json) const
    {
        const std::string bytes = swayMessage(type, json);
        ASSERT_EQ(write(peer, bytes.data(), bytes.size()), ssize_t(bytes.size()));
    }

    int count = 1;
    std::string programName = "test";
    char* values[2] = {programName.data(), nullptr};
    QCoreApplication application{count, values};
    TemporaryDirectory directory{};
    const std::string path = (directory.path() / "sway").string();
    const int listener = socket(AF_UNIX, SOCK_STREAM, 0);
    int changes = 0;
    QtMainLoop mainLoop{};
    Sway sway{mainLoop, "", [] {}};
    int peer = -1;
};

TEST_F(SwayTest, NobodyIsThereWithoutAnAddress)
{
    EXPECT_FALSE(sway.isThere());
    EXPECT_FALSE(sway.focusOwnWindow());
}

TEST_F(SwayTest, KnowsTheProcessOfTheWindowThatAnotherSourceTells)
{
    Sway connected(mainLoop, path, [this] { ++changes; });
    peer = accept(listener, nullptr, nullptr);
    ASSERT_TRUE(connected.isThere());
    say(SwayMessageType::windowEvent,
        R"({"change": "focus", "container": {"app_id": null, "pid": 7,
        "window_properties": {"class": "XTerm", "instance": "xterm"}}})");
    ASSERT_TRUE(becomesTrue([&] { return connected.window().has_value(); }));
    EXPECT_EQ(changes, 1);

    SaidFront source;
    const SwayFront front(source, connected);
    EXPECT_FALSE(front.front()) << "sway's focus may be of a window that is gone";
    source.window = FrontWindow{.traits = {.className = "XTerm", .applicationId = "XTerm"}};
    EXPECT_EQ(front.front()->process, 7);
    source.window = FrontWindow{.traits = {.className = "foot", .applicationId = "foot"}};
    EXPECT_EQ(front.front()->process, 0) << "sway has not told of this one yet";
}

TEST_F(SwayTest, FollowsTheLayout)
{
    Sway connected(mainLoop, path, [] {});
    peer = accept(listener, nullptr, nullptr);
    say(SwayMessageType::getInputs,
        R"json([{"type": "keyboard", "xkb_active_layout_name": "English (US)"}])json");
    say(SwayMessageType::inputEvent,
        R"({"input": {"type": "keyboard", "xkb_active_layout_name": "German"}})");
    EXPECT_TRUE(becomesTrue([&] { return connected.layout() == "German"; }));
}

TEST_F(SwayTest, ADeadOrMadPeerIsGone)
{
    Sway connected(mainLoop, path, [] {});
    peer = accept(listener, nullptr, nullptr);
    ASSERT_EQ(write(peer, "nonsense, and more than a head", 30), 30);
    EXPECT_TRUE(becomesTrue([&] { return !connected.isThere(); }));

    Sway other(mainLoop, path, [] {});
    close(peer);
    peer = accept(listener, nullptr, nullptr);
    ASSERT_TRUE(other.isThere());
    close(std::exchange(peer, -1));
    EXPECT_TRUE(becomesTrue([&] { return !other.isThere(); }));
}

} // namespace
} // namespace quillbrook
