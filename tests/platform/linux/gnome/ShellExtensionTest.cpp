#include "platform/linux/gnome/ShellExtension.h"

#include "support/BecomesTrue.h"
#include "tests/platform/linux/gnome/FakeExtension.h"
#include "tests/platform/linux/gnome/GnomeFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QDBusVariant>

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quillbrook {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr const char* kShell = "org.gnome.Shell";
constexpr const char* kTray = "org.kde.StatusNotifierWatcher";

/// Gathers the icons of programs for others to show, of whom there may be none.
struct FakeTray {
    explicit FakeTray(const QString& address) : peer(address, QStringLiteral("tray"))
    {
        peer.own(kTray);
    }

    void setHost(bool isThere)
    {
        hasHost = isThere;
        peer.bus.send(QDBusMessage::createSignal(QStringLiteral("/StatusNotifierWatcher"),
            QString::fromLatin1(kTray),
            isThere ? QStringLiteral("StatusNotifierHostRegistered")
                    : QStringLiteral("StatusNotifierHostUnregistered")));
    }

    Peer peer;
    bool hasHost = false;
    FakeObject object{peer.bus, "/StatusNotifierWatcher", [this](const QDBusMessage& call) {
                          return call.createReply(QVariant::fromValue(QDBusVariant(hasHost)));
                      }};
};

class ShellExtensionTest : public GnomeTest {
protected:
    ShellExtensionTest()
    {
        link.whenFrontChanges([this] { ++changes; });
        link.setHandlers({.menuOpens = [this] { ++openings; },
            .chosen =
                [this](std::uint32_t id, const std::string& token) {
                    chosen.push_back(std::to_string(id) + " " + token);
                }});
    }

    std::unique_ptr<FakeExtension> peerNamed(const char* name)
    {
        return std::make_unique<FakeExtension>(
            daemon.address, QString::fromLatin1(name), ours.bus.baseService());
    }

    /// The shell with our extension, which has said hello and was answered.
    std::unique_ptr<FakeExtension> startShell(const char* name = "shell")
    {
        auto shell = peerNamed(name);
        shell->peer.own(kShell);
        EXPECT_TRUE(becomesTrue([&] { return !shell->heard.empty(); }));
        return shell;
    }

    bool waitForFront(const std::string& className)
    {
        return becomesTrue([&] {
            const auto front = link.front();
            return front && front->traits.className == className;
        });
    }

    Peer ours{daemon.address, QStringLiteral("ours")};
    ShellExtension link{ours.bus};
    int changes = 0;
    int openings = 0;
    std::vector<std::string> chosen{};
};

TEST_F(ShellExtensionTest, KnowsTheFrontFromTheFirstTelling)
{
    const auto shell = startShell();
    EXPECT_FALSE(link.isThere()) << "the shell alone knows nothing of us";
    shell->tellFront("org.gnome.gedit", "gedit", 4711);
    ASSERT_TRUE(waitForFront("gedit"));
    EXPECT_TRUE(link.isThere());
    EXPECT_EQ(link.front()->traits.applicationId, "org.gnome.gedit");
    EXPECT_EQ(link.front()->process, 4711);
    shell->tellFront("", "", 0);
    ASSERT_TRUE(becomesTrue([this] { return !link.front(); }));
    EXPECT_TRUE(link.isThere()) << "nobody in front is an answer, too";
    EXPECT_EQ(changes, 2);
}

TEST_F(ShellExtensionTest, AnExtensionThatLeavesKnowsNoFront)
{
    const auto shell = startShell();
    shell->tellFront("", "gedit", 1);
    ASSERT_TRUE(waitForFront("gedit"));
    shell->say("Bye");
    ASSERT_TRUE(becomesTrue([this] { return !link.isThere(); }));
    EXPECT_FALSE(link.front());
    shell->say("Hello");
    ASSERT_TRUE(becomesTrue([&] { return shell->heard.size() == 2; }));
    EXPECT_FALSE(link.isThere());
    shell->tellFront("", "gedit", 1);
    EXPECT_TRUE(waitForFront("gedit"));
}

TEST_F(ShellExtensionTest, AShellThatDiesKnowsNoFrontAndTheNextOneIsHeard)
{
    auto shell = startShell();
    shell->tellFront("", "gedit", 1);
    ASSERT_TRUE(waitForFront("gedit"));
    shell.reset();
    ASSERT_TRUE(becomesTrue([this] { return !link.isThere(); }));
    EXPECT_FALSE(link.front());
    shell = startShell("next");
    EXPECT_FALSE(link.isThere());
    shell->tellFront("", "nautilus", 1);
    EXPECT_TRUE(waitForFront("nautilus"));
}

TEST_F(ShellExtensionTest, APoserIsIgnoredAndToldOnce)
{
    const auto shell = startShell();
    shell->tellFront("", "gedit", 1);
    ASSERT_TRUE(waitForFront("gedit"));
    const auto poser = peerNamed("poser");
    testing::internal::CaptureStderr();
    for (int i = 0; i < 3; ++i) {
        poser->say("Hello");
        poser->tellFront("", "evil", 1);
        poser->say("Choose", {uint(5), QStringLiteral("x")});
        poser->say("MenuOpens");
        poser->say("Bye");
    }
    poser->peer.finish();
    shell->say("MenuOpens");
    ASSERT_TRUE(becomesTrue([this] { return openings > 0; }))
        << "it comes after all of the poser's";
    const std::string told = testing::internal::GetCapturedStderr();
    EXPECT_THAT(told, HasSubstr("冒充"));
    EXPECT_EQ(told.find("冒充"), told.rfind("冒充"));
    EXPECT_EQ(openings, 1);
    EXPECT_TRUE(link.isThere());
    EXPECT_EQ(link.front()->traits.className, "gedit");
    EXPECT_THAT(chosen, IsEmpty());
    EXPECT_THAT(poser->heard, IsEmpty()) << "what is shown is for the shell alone";
}

TEST_F(ShellExtensionTest, WithoutAShellNobodyIsHeard)
{
    const auto poser = peerNamed("poser");
    poser->tellFront("", "evil", 1);
    poser->peer.finish();
    letPass(200);
    EXPECT_FALSE(link.isThere());
    EXPECT_EQ(changes, 0);
}

TEST_F(ShellExtensionTest, TheShellMayBeThereBefore)
{
    const auto shell = peerNamed("shell");
    shell->peer.own(kShell);
    ShellExtension second(shell->peer.bus); // on a connection that has no object yet
    ASSERT_TRUE(becomesTrue([&] { return !shell->heard.empty(); }));
}

TEST_F(ShellExtensionTest, NamesAreCutAndCleaned)
{
    const auto shell = startShell();
    shell->tellFront(QString(10000, QLatin1Char('x')),
        QStringLiteral(" two\nlines") + QChar(0xD83D) + QStringLiteral("\u001b[31m "), 1);
    ASSERT_TRUE(becomesTrue([this] { return link.front().has_value(); }));
    const auto front = link.front();
    EXPECT_EQ(front->traits.applicationId, std::string(200, 'x'));
    EXPECT_THAT(front->traits.className, testing::StartsWith("two lines"));
    EXPECT_EQ(front->traits.className.find('\x1b'), std::string::npos);
}

TEST_F(ShellExtensionTest, AProcessThatCannotBeIsNone)
{
    const auto shell = startShell();
    shell->tellFront("", "gedit", 0xFFFFFFFF);
    ASSERT_TRUE(waitForFront("gedit"));
    EXPECT_EQ(link.front()->process, 0);
}

TEST_F(ShellExtensionTest, CallsOfAnotherFormAreIgnored)
{
    const auto shell = startShell();
    shell->say("Front", {QStringLiteral("gedit")});
    shell->say("Front", {1, 2, 3});
    shell->say("Choose", {QStringLiteral("0"), 1});
    shell->say("Choose");
    shell->say("Nonsense", {QByteArray(100000, 'x')});
    shell->say("MenuOpens");
    ASSERT_TRUE(becomesTrue([this] { return openings == 1; }));
    EXPECT_FALSE(link.isThere());
    EXPECT_THAT(chosen, IsEmpty());
}

TEST_F(ShellExtensionTest, AFloodOfChangesBlocksNothing)
{
    const auto shell = startShell();
    const auto begin = std::chrono::steady_clock::now();
    for (uint i = 1; i <= 10000; ++i) {
        shell->tellFront("", i % 2 == 0 ? "even" : "odd", i);
    }
    ASSERT_TRUE(becomesTrue([this] { return link.front() && link.front()->process == 10000; }));
    EXPECT_EQ(link.front()->traits.className, "even");
    EXPECT_EQ(changes, 10000);
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - begin;
    EXPECT_LT(taken.count(), 10) << "a thousand in a second are no load";
}

TEST_F(ShellExtensionTest, ShowsItsContentAndEachChangeOnce)
{
    const auto shell = startShell();
    EXPECT_THAT(shell->heard, ElementsAre(""));
    const PanelItemContent content{.label = "3h5m",
        .isAlert = true,
        .menu = {{.id = 0, .title = "Alerts：1"}, {}, {.id = 5, .title = "退出"}}};
    link.show(content);
    ASSERT_TRUE(becomesTrue([&] { return shell->heard.size() == 2; }));
    EXPECT_EQ(shell->heard.back(), "3h5m! 0=Alerts：1 0= 5=退出");
    link.show(content);
    shell->say("Hello");
    ASSERT_TRUE(becomesTrue([&] { return shell->heard.size() == 3; }));
    letPass(100);
    EXPECT_EQ(shell->heard.size(), 3U) << "the same content is no change";
    EXPECT_EQ(shell->heard.back(), shell->heard.at(1));
}

TEST_F(ShellExtensionTest, WhereATrayShowsItThereIsNoLabel)
{
    link.show({.label = "3h5m", .isAlert = false, .menu = {}});
    const auto shell = startShell();
    EXPECT_EQ(shell->heard.back(), "3h5m");
    FakeTray tray(daemon.address);
    ASSERT_TRUE(becomesTrue([&] { return !tray.object.calls.empty(); }));
    letPass(100);
    EXPECT_EQ(shell->heard.back(), "3h5m") << "nobody shows the icons that it gathers";
    tray.setHost(true);
    ASSERT_TRUE(becomesTrue([&] { return shell->heard.back().empty(); }));
    tray.setHost(false);
    ASSERT_TRUE(becomesTrue([&] { return shell->heard.back() == "3h5m"; }));
    tray.setHost(true);
    ASSERT_TRUE(becomesTrue([&] { return shell->heard.back().empty(); }));
    tray.peer.disown(kTray);
    ASSERT_TRUE(becomesTrue([&] { return shell->heard.back() == "3h5m"; }));
}

TEST_F(ShellExtensionTest, TellsWhetherThereIsATray)
{
    std::vector<bool> told;
    link.followTray([&](bool isThere) { told.push_back(isThere); });
    ASSERT_TRUE(becomesTrue([&] { return told.size() == 1; }));
    FakeTray tray(daemon.address);
    tray.setHost(true);
    ASSERT_TRUE(becomesTrue([&] { return told.size() == 2; }));
    EXPECT_THAT(told, ElementsAre(false, true));
    link.followTray([&](bool isThere) { told.push_back(!isThere); });
    EXPECT_THAT(told, ElementsAre(false, true, false)) << "who asks later is told at once";
}

TEST_F(ShellExtensionTest, AChosenEntryComesWithItsToken)
{
    const auto shell = startShell();
    shell->say("Choose", {uint(5), QStringLiteral("gnome-shell/Quillbrook/1-0-vm_TIME5")});
    shell->say("Choose", {uint(7), QString(10000, QLatin1Char('t'))});
    ASSERT_TRUE(becomesTrue([this] { return chosen.size() == 2; }));
    EXPECT_EQ(chosen.front(), "5 gnome-shell/Quillbrook/1-0-vm_TIME5");
    EXPECT_EQ(chosen.back(), "7 " + std::string(200, 't'));
}

TEST_F(ShellExtensionTest, WithoutABusThereIsNothing)
{
    ShellExtension alone(QDBusConnection(QStringLiteral("nowhere")));
    alone.show({.label = "3h5m", .isAlert = false, .menu = {}});
    EXPECT_FALSE(alone.isThere());
}

} // namespace
} // namespace quillbrook
