#include "platform/linux/gnome/ShellExtensionSwitch.h"

#include "platform/linux/bus/Bus.h"
#include "platform/qt/QtMainLoop.h"
#include "platform/qt/QtWorkQueues.h"
#include "support/BecomesTrue.h"
#include "support/TemporaryDirectory.h"
#include "tests/platform/linux/gnome/GnomeFixture.h"

#include <gtest/gtest.h>

#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QList>
#include <QVariantMap>

#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <optional>

namespace quillbrook {
namespace {

using State = DesktopExtension::State;

constexpr const char* kShell = "org.gnome.Shell";
constexpr const char* kPath = "/org/gnome/Shell";
const QString kExtension = QStringLiteral("quillbrook@tarnlow.cn");

/// What GNOME Shell says of its extensions.
class FakeShell {
public:
    explicit FakeShell(const QString& address) : peer(address, QStringLiteral("shell")) {}

    void come() { peer.own(kShell); }

    void announce(const Peer& by, const QString& extension, double newState)
    {
        auto signal = QDBusMessage::createSignal(QString::fromLatin1(kPath),
            QStringLiteral("org.gnome.Shell.Extensions"), QStringLiteral("ExtensionStateChanged"));
        signal << extension << QVariantMap{{QStringLiteral("state"), newState}};
        by.bus.send(signal);
    }

    Peer peer;
    std::optional<double> state{};
    bool mayAnyRun = true;
    std::function<void()> beforeAnswer = [] {}; // to whether any extension may run
    bool isOdd = false;
    QString enabled{};
    FakeObject object{peer.bus, kPath, [this](const QDBusMessage& call) {
                          if (call.member() == QLatin1String("Get")) {
                              beforeAnswer();
                              return call.createReply(QVariant::fromValue(QDBusVariant(mayAnyRun)));
                          }
                          if (call.member() == QLatin1String("EnableExtension")) {
                              enabled = call.arguments().at(0).toString();
                              state = mayAnyRun ? 1 : 2;
                              return call.createReply(true);
                          }
                          if (isOdd) {
                              return call.createReply(QVariant::fromValue(
                                  QList<QDBusObjectPath>{QDBusObjectPath("/a")}));
                          }
                          QVariantMap facts;
                          if (state) {
                              facts.insert(QStringLiteral("state"), *state);
                          }
                          return call.createReply(facts);
                      }};
};

class ShellExtensionSwitchTest : public GnomeTest {
protected:
    bool waitForState(State state)
    {
        return becomesTrue([&] { return extensionSwitch.state() == state; });
    }

    void install()
    {
        const auto folder = directory.path() / kExtension.toStdString();
        std::filesystem::create_directories(folder);
        std::ofstream(folder / "metadata.json") << "{}";
    }

    TemporaryDirectory directory{};
    QtMainLoop mainLoop{};
    QtWorkQueues workQueues{};
    Bus bus{Bus::Kind::session, mainLoop, workQueues};
    FakeShell shell{daemon.address};
    ShellExtensionSwitch extensionSwitch{bus, {"/nonexistent", directory.path()}};
};

TEST_F(ShellExtensionSwitchTest, OtherDesktopsNeedNone)
{
    letPass(100);
    EXPECT_EQ(extensionSwitch.state(), State::notNeeded);
    extensionSwitch.enable();
    shell.state = 1;
    shell.come();
    EXPECT_TRUE(waitForState(State::on));
    shell.peer.disown(kShell);
    EXPECT_TRUE(waitForState(State::notNeeded));
}

TEST_F(ShellExtensionSwitchTest, OneThatTheShellDoesNotKnowWantsALoginOrIsMissing)
{
    shell.come();
    ASSERT_TRUE(waitForState(State::missing));
    install();
    extensionSwitch.enable();
    shell.announce(shell.peer, kExtension, 99);
    EXPECT_TRUE(waitForState(State::needsLogin));
}

TEST_F(ShellExtensionSwitchTest, AnAnswerOfAnotherFormIsNone)
{
    shell.isOdd = true;
    shell.come();
    EXPECT_TRUE(waitForState(State::missing));
}

TEST_F(ShellExtensionSwitchTest, IsSwitchedOnWhenAsked)
{
    int changes = 0;
    extensionSwitch.whenChanged([&changes] { ++changes; });
    shell.state = 6;
    shell.come();
    ASSERT_TRUE(waitForState(State::off));
    EXPECT_TRUE(shell.enabled.isEmpty()) << "never unasked";
    extensionSwitch.enable();
    ASSERT_TRUE(waitForState(State::on));
    EXPECT_EQ(shell.enabled, kExtension);
    EXPECT_EQ(changes, 2);
}

TEST_F(ShellExtensionSwitchTest, AllExtensionsMayBeSwitchedOff)
{
    shell.state = 2;
    shell.mayAnyRun = false;
    shell.come();
    ASSERT_TRUE(waitForState(State::allOff));
    extensionSwitch.enable();
    ASSERT_TRUE(becomesTrue([this] { return !shell.enabled.isEmpty(); }));
    letPass(50);
    EXPECT_EQ(extensionSwitch.state(), State::allOff);
}

TEST_F(ShellExtensionSwitchTest, FollowsWhatTheShellTells)
{
    shell.state = 1;
    shell.come();
    ASSERT_TRUE(waitForState(State::on));
    shell.announce(shell.peer, QStringLiteral("other@example.org"), 3);
    const Peer poser(daemon.address, QStringLiteral("poser"));
    shell.announce(poser, kExtension, 3);
    poser.finish();
    letPass(50);
    EXPECT_EQ(extensionSwitch.state(), State::on);
    shell.announce(shell.peer, kExtension, 2);
    EXPECT_TRUE(waitForState(State::off));
    shell.announce(shell.peer, kExtension, 3);
    EXPECT_TRUE(waitForState(State::broken));
    shell.announce(shell.peer, kExtension, 1);
    EXPECT_TRUE(waitForState(State::on));
    shell.announce(shell.peer, kExtension, 4);
    EXPECT_TRUE(waitForState(State::broken));
}

TEST_F(ShellExtensionSwitchTest, OneThatHasStartedMeanwhileIsOn)
{
    shell.state = 1;
    shell.come();
    ASSERT_TRUE(waitForState(State::on));
    shell.announce(shell.peer, kExtension, 2);
    ASSERT_TRUE(waitForState(State::off));
    shell.beforeAnswer = [this] { shell.announce(shell.peer, kExtension, 1); };
    shell.announce(shell.peer, kExtension, 8); // is starting
    ASSERT_TRUE(waitForState(State::on));
    letPass(50);
    EXPECT_EQ(extensionSwitch.state(), State::on);
}

} // namespace
} // namespace quillbrook
