#include "platform/linux/sound/CanberraSound.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/XcbReply.h"
#include "platform/linux/x11/XkbProtocol.h"
#include "support/BecomesTrue.h"
#include "support/TemporaryDirectory.h"
#include "support/XServer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QElapsedTimer>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string>
#include <vector>

namespace quillbrook {
namespace {

using testing::ElementsAre;

// Of a machine that is busy with other things; whoever waits for the device does so for good.
constexpr int kSoonMs = 5000;

/// Environment variables of a test, put back at its end.
class Environment {
public:
    ~Environment()
    {
        for (const auto& [name, value] : before) {
            value.empty() ? unsetenv(name.c_str()) : setenv(name.c_str(), value.c_str(), 1);
        }
    }

    void set(const char* name, const std::string& value)
    {
        const char* present = std::getenv(name);
        before.emplace(name, present != nullptr ? present : "");
        setenv(name, value.c_str(), 1);
    }

private:
    std::map<std::string, std::string> before{};
};

/// The threads of this process.
std::ptrdiff_t threadCount()
{
    return std::distance(std::filesystem::directory_iterator("/proc/self/task"), {});
}

/// A program without a display, whose sounds go where the test says.
class CanberraSoundTest : public testing::Test {
protected:
    CanberraSoundTest()
    {
        environment.set("DISPLAY", "");
        environment.set("XDG_CACHE_HOME", "/dev/null"); // keeps sounds of other tests from it
    }

    /// Lets sounds be played to a device of ALSA's configuration.
    void setDevice(const std::string& device)
    {
        // Another file each time, as ALSA doesn't see a change within a second.
        const std::string path = directory.path() / ("asound" + std::to_string(++devices));
        std::ofstream(path) << "pcm.!default " << device << "\n";
        environment.set("CANBERRA_DRIVER", "alsa");
        environment.set("ALSA_CONFIG_PATH", path);
    }

    void play(CanberraSound& sound, std::string_view name)
    {
        sound.play(name, [this](bool isThere) { answers.push_back(isThere); });
    }

    bool answerOf(std::string_view name)
    {
        CanberraSound sound(x11);
        play(sound, name);
        EXPECT_TRUE(becomesTrue([this] { return !answers.empty(); }));
        return answers == std::vector{true};
    }

    /// Reads what is played into `pipe` until no more than `count` threads are left.
    static void endThreads(const std::string& pipe, std::ptrdiff_t count)
    {
        const int reader = open(pipe.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
        EXPECT_TRUE(becomesTrue([reader, count] {
            std::array<char, 65'536> sound{};
            while (read(reader, sound.data(), sound.size()) > 0) {}
            return threadCount() <= count;
        }));
        close(reader);
    }

    int count = 1;
    char name[5] = "test";
    char* values[2] = {name, nullptr};
    QCoreApplication application{count, values};
    TemporaryDirectory directory{};
    Environment environment{};
    X11Connection x11{};
    std::vector<bool> answers{};
    int devices = 0;
};

// A process keeps the driver and the theme that it found first. What is missing is therefore looked
// for in a process of its own, before any test finds it.

TEST_F(CanberraSoundTest, HasNoneWithoutADriver)
{
    environment.set("CANBERRA_DRIVER", "null");
    EXPECT_EXIT(std::_Exit(answerOf("Glass") ? 1 : 0), testing::ExitedWithCode(0), "");
}

TEST_F(CanberraSoundTest, HasNoneWithoutATheme)
{
    setDevice("{ type null }");
    environment.set("XDG_DATA_HOME", directory.path());
    environment.set("XDG_DATA_DIRS", directory.path());
    EXPECT_EXIT(std::_Exit(answerOf("Glass") ? 1 : 0), testing::ExitedWithCode(0), "");
}

TEST_F(CanberraSoundTest, PlaysBothSoundsOfTheBell)
{
    setDevice("{ type null }");
    CanberraSound sound(x11);
    play(sound, "Glass");
    play(sound, "Ping");
    EXPECT_THAT(answers, ElementsAre());
    EXPECT_TRUE(becomesTrue([this] { return answers.size() == 2; }));
    EXPECT_THAT(answers, ElementsAre(true, true));
}

TEST_F(CanberraSoundTest, KnowsNoOtherSound)
{
    setDevice("{ type null }");
    EXPECT_FALSE(answerOf("Basso"));
}

TEST_F(CanberraSoundTest, HasNoneWithoutADevice)
{
    setDevice("{ type hw card 31 }");
    EXPECT_FALSE(answerOf("Glass"));
}

TEST_F(CanberraSoundTest, TakesADeviceThatComesLater)
{
    setDevice("{ type hw card 31 }");
    CanberraSound sound(x11);
    play(sound, "Glass");
    ASSERT_TRUE(becomesTrue([this] { return answers.size() == 1; }));
    setDevice("{ type null }");
    play(sound, "Glass");
    ASSERT_TRUE(becomesTrue([this] { return answers.size() == 2; }));
    EXPECT_THAT(answers, ElementsAre(false, true));
}

TEST_F(CanberraSoundTest, IsContentWithASoundThatTheUserSwitchedOff)
{
    setDevice("{ type null }");
    const auto folder = directory.path() / "sounds" / "freedesktop";
    std::filesystem::create_directories(folder / "stereo");
    std::filesystem::copy("/usr/share/sounds/freedesktop/index.theme", folder);
    std::ofstream(folder / "stereo" / "bell.disabled") << "";
    environment.set("XDG_DATA_HOME", directory.path());
    EXPECT_TRUE(answerOf("Glass"));
}

TEST_F(CanberraSoundTest, WaitsForNoDeviceThatDoesNotAnswer)
{
    // Whoever opens a pipe waits until somebody reads from it.
    std::signal(SIGPIPE, SIG_IGN); // as the program does
    const std::string pipe = directory.path() / "pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    setDevice("{ type file file \"" + pipe + "\" slave.pcm { type null } }");
    const std::ptrdiff_t threadsBefore = threadCount();
    QElapsedTimer watch;
    {
        CanberraSound sound(x11);
        watch.start();
        for (int request = 0; request < 6; ++request) {
            play(sound, "Glass");
        }
        EXPECT_LT(watch.elapsed(), kSoonMs);
        ASSERT_TRUE(becomesTrue([this] { return answers.size() == 2; }));
        EXPECT_THAT(answers, ElementsAre(false, false)); // those that are too many
        watch.start();
    }
    EXPECT_LT(watch.elapsed(), kSoonMs);
    endThreads(pipe, threadsBefore); // ALSA aborts a program whose listener goes while it plays
}

TEST_F(CanberraSoundTest, BeepsWithTheBellOfTheDisplay)
{
    const XServer server;
    X11Connection display;
    xcb_connection_t* client = xcb_connect(nullptr, nullptr);
    const XcbReply<xcb_xkb_use_extension_reply_t> reply(
        xcb_xkb_use_extension_reply(client, xcb_xkb_use_extension(client, 1, 0), nullptr));
    xcb_xkb_select_events(client, XCB_XKB_ID_USE_CORE_KBD, XCB_XKB_EVENT_TYPE_BELL_NOTIFY, 0,
        XCB_XKB_EVENT_TYPE_BELL_NOTIFY, 0, 0, nullptr);
    free(xcb_get_input_focus_reply(client, xcb_get_input_focus(client), nullptr));
    const std::uint8_t xkb = xcb_get_extension_data(client, &xcb_xkb_id)->first_event;
    int bells = 0;
    CanberraSound(display).beep();
    EXPECT_TRUE(becomesTrue([&] {
        while (xcb_generic_event_t* event = xcb_poll_for_event(client)) {
            bells += event->response_type == xkb ? 1 : 0;
            free(event);
        }
        return bells > 0;
    }));
    EXPECT_EQ(bells, 1);
    xcb_disconnect(client);
}

TEST_F(CanberraSoundTest, BeepsToNobodyWithoutADisplay)
{
    EXPECT_FALSE(x11.isUsable());
    CanberraSound(x11).beep();
}

} // namespace
} // namespace quillbrook
