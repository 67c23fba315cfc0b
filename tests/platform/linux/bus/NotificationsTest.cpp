#include "platform/linux/bus/Notifications.h"

#include "platform/linux/LinuxChildProcess.h"
#include "platform/linux/bus/Bus.h"
#include "platform/qt/QtMainLoop.h"
#include "platform/qt/QtWorkQueues.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QCoreApplication>

#include <cstdlib>
#include <string>
#include <variant>
#include <vector>

namespace quillbrook {
namespace {

using testing::ElementsAre;

TEST(NotificationScript, HoldsBodyAndTitle)
{
    EXPECT_EQ(notificationIn(
                  R"(display notification "It's <b>90%</b> & 🎉" with title "⚠️ A 'b'")"),
        (NotificationTexts{.title = "⚠️ A 'b'", .body = "It's <b>90%</b> & 🎉"}));
    EXPECT_EQ(notificationIn(R"(display notification "" with title "")"), NotificationTexts{});
}

TEST(NotificationScript, OtherScriptsAreNone)
{
    EXPECT_FALSE(notificationIn(""));
    EXPECT_FALSE(notificationIn("do shell script \"rm\""));
    EXPECT_FALSE(notificationIn(R"(display notification "a")"));
    EXPECT_FALSE(notificationIn(R"(display notification "a" with title ")"));
    EXPECT_FALSE(notificationIn(R"(display notification "a" with title "b)"));
}

TEST(Markup, IsShownAsItStands)
{
    EXPECT_EQ(
        withoutMarkup("<b>1 & 2</b> \"q\" 'p' 文"), "&lt;b&gt;1 &amp; 2&lt;/b&gt; \"q\" 'p' 文");
}

/// Without any bus.
class LinuxChildProcessTest : public testing::Test {
protected:
    void launch(const std::string& path, const std::vector<std::string>& arguments)
    {
        childProcess.launch(path, arguments,
            [this](const LaunchFailure& failure) { failures.push_back(failure.description); });
    }

    const int unsetBefore = unsetenv("DBUS_SESSION_BUS_ADDRESS"); // the bus asks when it is made
    std::vector<std::string> failures{};
    int count = 1;
    std::string name = "test";
    char* values[2] = {name.data(), nullptr};
    QCoreApplication application{count, values};
    QtMainLoop mainLoop{};
    QtWorkQueues workQueues{};
    Bus sessionBus{Bus::Kind::session, mainLoop, workQueues};
    Notifications notifications{sessionBus};
    LinuxChildProcess childProcess{notifications};
};

TEST_F(LinuxChildProcessTest, WithoutABusANotificationFailsAtOnce)
{
    launch("/usr/bin/osascript", {"-e", R"(display notification "a" with title "b")"});
    EXPECT_THAT(failures, ElementsAre("没有会话总线"));
}

TEST_F(LinuxChildProcessTest, TheDisplayServersLinePrintsNothing)
{
    const auto outcome = childProcess.run(
        "/bin/bash", {"-c", "ps -p $(pgrep -x WindowServer) -o %cpu=,rss= 2>/dev/null"});
    ASSERT_TRUE(std::holds_alternative<FinishedProcess>(outcome));
    EXPECT_EQ(std::get<FinishedProcess>(outcome).exitStatus, 0);
    EXPECT_EQ(std::get<FinishedProcess>(outcome).standardOutput, "");
}

TEST_F(LinuxChildProcessTest, NothingElseCanBeLaunched)
{
    launch("/usr/bin/osascript", {"-e", "beep"});
    launch("/bin/true", {});
    EXPECT_THAT(failures, ElementsAre("本系统没有 /usr/bin/osascript", "本系统没有 /bin/true"));
    EXPECT_TRUE(std::holds_alternative<LaunchFailure>(childProcess.run("/bin/bash", {"-c", "ls"})));
    const auto other = childProcess.run("/usr/bin/tccutil", {"list"});
    ASSERT_TRUE(std::holds_alternative<LaunchFailure>(other));
    EXPECT_EQ(std::get<LaunchFailure>(other).description, "本系统没有 /usr/bin/tccutil");
}

TEST_F(LinuxChildProcessTest, APermissionIsResetAtOnce)
{
    const auto reset
        = childProcess.run("/usr/bin/tccutil", {"reset", "Accessibility", "cn.tarnlow.quillbrook"});
    ASSERT_TRUE(std::holds_alternative<FinishedProcess>(reset));
    EXPECT_EQ(std::get<FinishedProcess>(reset).exitStatus, 0);
}

} // namespace
} // namespace quillbrook
