#include "platform/linux/wayland/WaylandConnection.h"

#include "platform/linux/session/IdleTime.h"
#include "platform/linux/wayland/CompositorIdle.h"
#include "platform/linux/wayland/CompositorOutputs.h"
#include "platform/linux/wayland/WlrToplevels.h"
#include "platform/virtual/VirtualMainLoop.h"
#include "support/BecomesTrue.h"
#include "support/TemporaryDirectory.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <utility>

namespace quillbrook {
namespace {

/// A stand-in for a compositor, which says on its socket what a test lets it say.
class WaylandConnectionTest : public testing::Test {
protected:
    static constexpr std::uint32_t kRegistry = 2; // the numbers of the objects that we make first
    static constexpr std::uint32_t kFirstBound = 4;
    static constexpr std::uint32_t kFirstOfServer = 0xFF000000;

    WaylandConnectionTest()
    {
        sockaddr_un name{};
        name.sun_family = AF_UNIX;
        std::ranges::copy(path, name.sun_path);
        EXPECT_EQ(bind(listener, reinterpret_cast<const sockaddr*>(&name), sizeof name), 0);
        EXPECT_EQ(listen(listener, 5), 0);
        compositor.add(toplevels);
        compositor.add(compositorIdle);
        compositor.add(outputs);
    }

    ~WaylandConnectionTest() override
    {
        hangUp();
        close(listener);
    }

    void connect()
    {
        ASSERT_TRUE(compositor.connect());
        peer = accept(listener, nullptr, nullptr);
        ASSERT_GE(peer, 0);
    }

    void hangUp()
    {
        if (peer >= 0) {
            close(std::exchange(peer, -1));
        }
    }

    static std::string number(std::uint32_t value)
    {
        std::string bytes(sizeof value, '\0');
        std::memcpy(bytes.data(), &value, sizeof value);
        return bytes;
    }

    static std::string text(const std::string& value)
    {
        const std::size_t padded = (value.size() + 1 + 3) / 4 * 4;
        std::string bytes = value;
        bytes.resize(padded, '\0');
        return number(static_cast<std::uint32_t>(value.size() + 1)) + bytes;
    }

    void event(std::uint32_t object, std::uint32_t opcode, const std::string& arguments = {}) const
    {
        const auto size = static_cast<std::uint32_t>(arguments.size() + 8);
        const std::string bytes = number(object) + number(size << 16 | opcode) + arguments;
        ASSERT_EQ(write(peer, bytes.data(), bytes.size()), ssize_t(bytes.size()));
    }

    void offer(std::uint32_t name, const std::string& interface, std::uint32_t version = 1) const
    {
        event(kRegistry, 0, number(name) + text(interface) + number(version));
    }

    /// Waits until both of two things that are offered were bound.
    bool areBound(const std::string& one, const std::string& other)
    {
        std::string said;
        return becomesTrue([&] {
            std::string bytes(4096, '\0');
            const auto count = recv(peer, bytes.data(), bytes.size(), MSG_DONTWAIT);
            said += bytes.substr(0, static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
            return said.find(one) != std::string::npos && said.find(other) != std::string::npos;
        });
    }

    std::string inFront() const
    {
        const auto window = toplevels.front();
        return window ? window->traits.className : "none";
    }

    /// Opens a window with the keys.
    void open(std::uint32_t manager, std::uint32_t handle, const std::string& appId) const
    {
        event(manager, 0, number(handle));
        event(handle, 1, text(appId));
        event(handle, 4, number(8) + number(0) + number(2));
        event(handle, 5);
    }

    int count = 1;
    std::string programName = "test";
    char* values[2] = {programName.data(), nullptr};
    QCoreApplication application{count, values};
    TemporaryDirectory directory{};
    const std::string path = (directory.path() / "wayland-0").string();
    const int listener = socket(AF_UNIX, SOCK_STREAM, 0);
    int peer = -1;
    double time = 100;
    bool areScreensOff = false;
    VirtualClock clock{0};
    VirtualMainLoop mainLoop{clock};
    IdleTime idle{[this] { return time; }};
    WaylandConnection compositor{mainLoop, path};
    WlrToplevels toplevels{[] {}};
    CompositorIdle compositorIdle{idle};
    CompositorOutputs outputs{[this](bool areOff) { areScreensOff = areOff; }};
};

TEST_F(WaylandConnectionTest, NobodyListens)
{
    WaylandConnection other(mainLoop, (directory.path() / "wayland-7").string());
    EXPECT_FALSE(other.connect());
    EXPECT_FALSE(other.isUsable());
}

TEST_F(WaylandConnectionTest, FollowsTheWindowWithTheKeys)
{
    connect();
    EXPECT_FALSE(toplevels.isThere());
    offer(9, "zwlr_foreign_toplevel_manager_v1", 3);
    ASSERT_TRUE(becomesTrue([&] { return toplevels.isThere(); }));
    open(kFirstBound, kFirstOfServer, "foot");
    EXPECT_TRUE(becomesTrue([&] { return inFront() == "foot"; }));
    event(kFirstOfServer, 6); // closed
    EXPECT_TRUE(becomesTrue([&] { return inFront() == "none"; }));
    open(kFirstBound, kFirstOfServer + 1, "a\xFF\xFE");
    EXPECT_TRUE(becomesTrue([&] { return inFront().starts_with("a\uFFFD"); }));
    event(kRegistry, 1, number(9));
    EXPECT_TRUE(becomesTrue([&] { return !toplevels.isThere(); }));
    EXPECT_TRUE(compositor.isUsable());
}

TEST_F(WaylandConnectionTest, HearsOfRestAndUseByTheOlderProtocol)
{
    connect();
    offer(1, "wl_seat", 5);
    offer(2, "org_kde_kwin_idle");
    ASSERT_TRUE(becomesTrue([&] { return idle.isKnown(); }));
    constexpr std::uint32_t kTimeout = kFirstBound + 2;
    time += 3;
    event(kTimeout, 1); // resumed
    EXPECT_TRUE(becomesTrue([&] { return idle.secondsSinceLastInput() == 0; }));
    time += 60;
    event(kTimeout, 0);
    EXPECT_TRUE(becomesTrue([&] { return idle.secondsSinceLastInput() == 5; }));
}

TEST_F(WaylandConnectionTest, HearsOfRestByTheNewerProtocolWhicheverComesFirst)
{
    connect();
    offer(2, "ext_idle_notifier_v1", 2);
    offer(1, "wl_seat", 5);
    ASSERT_TRUE(becomesTrue([&] { return idle.isKnown(); }));
    constexpr std::uint32_t kNotification = kFirstBound + 2;
    time += 3;
    event(kNotification, 1);
    EXPECT_TRUE(becomesTrue([&] { return idle.secondsSinceLastInput() == 0; }));
    time += 60;
    event(kNotification, 0);
    EXPECT_TRUE(becomesTrue([&] { return idle.secondsSinceLastInput() == 5; }));
    event(kRegistry, 1, number(1)); // the seat
    EXPECT_TRUE(becomesTrue([&] { return !idle.isKnown(); }));
}

TEST_F(WaylandConnectionTest, SeesTheScreensGoDark)
{
    connect();
    offer(1, "wl_output", 3);
    offer(2, "zwlr_output_power_manager_v1");
    ASSERT_TRUE(areBound("wl_output", "zwlr_output_power_manager_v1"));
    constexpr std::uint32_t kPower = kFirstBound + 2;
    event(kPower, 0, number(0));
    EXPECT_TRUE(becomesTrue([&] { return areScreensOff; }));
    event(kPower, 0, number(1));
    EXPECT_TRUE(becomesTrue([&] { return !areScreensOff; }));
}

TEST_F(WaylandConnectionTest, SeesKdesScreensGoDarkUntilTheyAreGone)
{
    connect();
    offer(2, "org_kde_kwin_dpms_manager");
    offer(1, "wl_output", 3);
    ASSERT_TRUE(areBound("wl_output", "org_kde_kwin_dpms_manager"));
    constexpr std::uint32_t kPower = kFirstBound + 2;
    event(kPower, 1, number(3));
    event(kPower, 2);
    EXPECT_TRUE(becomesTrue([&] { return areScreensOff; }));
    event(kRegistry, 1, number(1));
    EXPECT_TRUE(becomesTrue([&] { return !areScreensOff; }));
}

TEST_F(WaylandConnectionTest, ADeadCompositorLeavesNothingKnownUntilOneComes)
{
    connect();
    offer(1, "wl_seat", 5);
    offer(2, "org_kde_kwin_idle");
    offer(3, "zwlr_foreign_toplevel_manager_v1");
    offer(4, "wl_output", 3);
    offer(5, "zwlr_output_power_manager_v1");
    ASSERT_TRUE(becomesTrue([&] { return toplevels.isThere() && idle.isKnown(); }));
    hangUp();
    EXPECT_TRUE(becomesTrue([&] { return !compositor.isUsable(); }));
    EXPECT_FALSE(toplevels.isThere());
    EXPECT_FALSE(idle.isKnown());
    EXPECT_EQ(inFront(), "none");
    mainLoop.runThrough(6);
    EXPECT_TRUE(compositor.isUsable());
    peer = accept(listener, nullptr, nullptr);
    offer(3, "zwlr_foreign_toplevel_manager_v1");
    EXPECT_TRUE(becomesTrue([&] { return toplevels.isThere(); }));
}

TEST_F(WaylandConnectionTest, ACompositorThatSpeaksNonsenseIsGone)
{
    connect();
    const std::string nonsense = number(kRegistry) + number(3U << 16 | 0) + number(0);
    ASSERT_EQ(write(peer, nonsense.data(), nonsense.size()), ssize_t(nonsense.size()));
    EXPECT_TRUE(becomesTrue([&] { return !compositor.isUsable(); }));
}

TEST_F(WaylandConnectionTest, ASilentCompositorIsWaitedForByNobody)
{
    connect();
    QElapsedTimer timer;
    timer.start();
    QCoreApplication::processEvents();
    compositor.flush();
    EXPECT_LT(timer.elapsed(), 1000);
    EXPECT_TRUE(compositor.isUsable());
}

} // namespace
} // namespace quillbrook
