#include "platform/linux/bus/Logind.h"

#include "platform/linux/bus/Bus.h"
#include "platform/qt/QtMainLoop.h"
#include "platform/qt/QtWorkQueues.h"
#include "support/BecomesTrue.h"
#include "tests/platform/linux/bus/LeaveBus.h"
#include "tests/platform/linux/bus/PrivateBus.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusUnixFileDescriptor>
#include <QDBusVariant>
#include <QDBusVirtualObject>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

namespace quillbrook {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const QString kService = QStringLiteral("org.freedesktop.login1");
const QString kPath = QStringLiteral("/org/freedesktop/login1");
const QString kManager = QStringLiteral("org.freedesktop.login1.Manager");

/// Stands in for logind on a connection of its own.
class FakeLogind final : public QDBusVirtualObject {
public:
    explicit FakeLogind(const QString& address)
        : bus(QDBusConnection::connectToBus(address, QStringLiteral("fake-logind")))
    {
        bus.registerVirtualObject(kPath, this, QDBusConnection::SubPath);
        bus.registerService(kService);
    }
    ~FakeLogind() override
    {
        closeHeld();
        leaveBus(bus, kPath, *this);
    }

    QString introspect(const QString&) const override { return {}; }

    bool handleMessage(const QDBusMessage& call, const QDBusConnection& connection) override
    {
        if (call.member() == QLatin1String("Inhibit")) {
            if (refusals > 0) {
                --refusals;
                return connection.send(call.createErrorReply(QDBusError::UnknownObject, {}));
            }
            closeHeld();
            int ends[2] = {-1, -1};
            EXPECT_EQ(pipe2(ends, O_CLOEXEC), 0);
            held = ends[0];
            const QDBusUnixFileDescriptor given(ends[1]); // a copy
            close(ends[1]);
            ++inhibitions;
            return connection.send(call.createReply(QVariant::fromValue(given)));
        }
        if (call.member() == QLatin1String("Get")) {
            return connection.send(
                call.createReply(QVariant::fromValue(QDBusVariant(QVariant(isLocked)))));
        }
        return connection.send(
            call.createReply(QVariant::fromValue(QDBusObjectPath(kPath + "/session/c1"))));
    }

    void announce(const char* signal, bool isBeginning) { announceOn(bus, signal, isBeginning); }

    static void announceOn(QDBusConnection connection, const char* signal, bool isBeginning)
    {
        auto message = QDBusMessage::createSignal(kPath, kManager, QString::fromLatin1(signal));
        message << isBeginning;
        connection.send(message);
    }

    void setLocked(bool isOn)
    {
        isLocked = isOn;
        auto message = QDBusMessage::createSignal(kPath + "/session/c1",
            QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("PropertiesChanged"));
        message << QStringLiteral("org.freedesktop.login1.Session")
                << QVariantMap{{QStringLiteral("LockedHint"), isOn}} << QStringList();
        bus.send(message);
    }

    void leave() { bus.unregisterService(kService); }
    void comeBack() { bus.registerService(kService); }

    /// Whether somebody holds it back.
    bool isHeldBack() const
    {
        pollfd end{.fd = held, .events = POLLIN, .revents = 0};
        return held >= 0 && poll(&end, 1, 0) == 0;
    }

    int inhibitions = 0;
    int refusals = 0; // of the next calls to hold it back

private:
    void closeHeld()
    {
        if (held >= 0) {
            close(held);
        }
    }

    QDBusConnection bus;
    int held = -1;
    bool isLocked = false;
};

class LogindTest : public testing::Test {
protected:
    LogindTest()
    {
        setenv("DBUS_SYSTEM_BUS_ADDRESS", daemon->address.toUtf8().constData(), 1);
        setenv("XDG_SESSION_ID", "c1", 1);
        fake = std::make_unique<FakeLogind>(daemon->address);
        bus = std::make_unique<Bus>(Bus::Kind::system, mainLoop, workQueues);
        logind = std::make_unique<Logind>(*bus, mainLoop,
            Logind::Handlers{.willSleep = [this] { heard.emplace_back("will sleep"); },
                .didWake = [this] { heard.emplace_back("did wake"); },
                .isGone = [this] { heard.emplace_back("gone"); },
                .willShutDown = [this] { heard.emplace_back("will shut down"); },
                .lockedChanged
                = [this](bool isLocked) { heard.emplace_back(isLocked ? "locked" : "unlocked"); }});
        EXPECT_TRUE(becomesTrue([this] { return fake->isHeldBack(); }));
        EXPECT_TRUE(waitForHeard(1)) << "the lock at the beginning";
        heard.clear();
    }
    ~LogindTest() override { setenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent", 1); }

    bool waitForHeard(std::size_t count)
    {
        return becomesTrue([&] { return heard.size() >= count; });
    }

    void letPass(double seconds)
    {
        bool isOver = false;
        mainLoop.runAfter(seconds, [&] { isOver = true; });
        becomesTrue([&] { return isOver; });
    }

    int count = 1;
    std::string name = "test";
    char* values[2] = {name.data(), nullptr};
    QCoreApplication application{count, values};
    std::unique_ptr<PrivateBus> daemon = std::make_unique<PrivateBus>();
    QtMainLoop mainLoop{};
    QtWorkQueues workQueues{};
    std::vector<std::string> heard{};
    std::unique_ptr<FakeLogind> fake{};
    std::unique_ptr<Bus> bus{};
    std::unique_ptr<Logind> logind{};
};

TEST_F(LogindTest, SleepWaitsForWhatIsDueEverySecond)
{
    int looks = 0;
    mainLoop.repeatEvery(1, [&] { ++looks; });
    letPass(0.1);
    fake->announce("PrepareForSleep", true);
    ASSERT_TRUE(waitForHeard(1));
    EXPECT_TRUE(fake->isHeldBack());
    ASSERT_TRUE(becomesTrue([this] { return !fake->isHeldBack(); }));
    EXPECT_GE(looks, 1);
    fake->announce("PrepareForSleep", false);
    ASSERT_TRUE(becomesTrue([this] { return fake->isHeldBack(); })) << "for the next time";
    EXPECT_THAT(heard, ElementsAre("will sleep", "did wake"));
}

TEST_F(LogindTest, ASleepThatWasCalledOffHoldsBackTheNextOne)
{
    fake->announce("PrepareForSleep", true);
    fake->announce("PrepareForSleep", false);
    ASSERT_TRUE(becomesTrue([this] { return fake->inhibitions == 2; }));
    letPass(2);
    EXPECT_TRUE(fake->isHeldBack()) << "the first announcement's end is not the second's";
}

TEST_F(LogindTest, ShutdownWaitsForTheEndOnly)
{
    fake->announce("PrepareForShutdown", true);
    ASSERT_TRUE(becomesTrue([this] { return !fake->isHeldBack(); }));
    EXPECT_THAT(heard, ElementsAre("will shut down"));
}

TEST_F(LogindTest, OthersCannotSpeakForIt)
{
    auto stranger = QDBusConnection::connectToBus(daemon->address, QStringLiteral("stranger"));
    FakeLogind::announceOn(stranger, "PrepareForSleep", true);
    FakeLogind::announceOn(stranger, "PrepareForShutdown", true);
    stranger.interface()->isServiceRegistered(kService); // by its answer the signals are out
    fake->setLocked(true);
    ASSERT_TRUE(waitForHeard(1));
    EXPECT_THAT(heard, ElementsAre("locked"));
    QDBusConnection::disconnectFromBus(stranger.name());
}

TEST_F(LogindTest, ALogindThatStartsAnewIsFollowed)
{
    fake->announce("PrepareForSleep", true);
    ASSERT_TRUE(waitForHeard(1));
    fake->leave();
    ASSERT_TRUE(waitForHeard(3));
    EXPECT_THAT(heard, ElementsAre("will sleep", "unlocked", "gone"));
    fake->announce("PrepareForSleep", false);
    fake->comeBack();
    ASSERT_TRUE(becomesTrue([this] { return fake->inhibitions == 2; }));
    heard.clear();
    fake->announce("PrepareForSleep", true);
    ASSERT_TRUE(becomesTrue([this] { return !heard.empty() && heard.back() == "will sleep"; }));
}

TEST_F(LogindTest, ALogindThatStartsAnewIsHeldBackThroughTheOldAnnouncement)
{
    fake->announce("PrepareForSleep", true);
    ASSERT_TRUE(waitForHeard(1));
    fake->leave();
    ASSERT_TRUE(waitForHeard(3));
    fake->comeBack();
    ASSERT_TRUE(becomesTrue([this] { return fake->inhibitions == 2; }));
    bool isLet
        = false; // what lets the machine sleep runs a second and a half after the announcement
    mainLoop.runAfter(2, [&isLet] { isLet = true; });
    ASSERT_TRUE(becomesTrue([&isLet] { return isLet; }));
    EXPECT_TRUE(fake->isHeldBack());
}

TEST_F(LogindTest, ALogindThatTakesNoCallsYetIsAskedAgain)
{
    fake->leave();
    ASSERT_TRUE(waitForHeard(1));
    fake->refusals = 2;
    fake->comeBack();
    EXPECT_TRUE(becomesTrue([this] { return fake->inhibitions == 2; }));
}

TEST_F(LogindTest, ItsBusGoingIsItsOwnGoing)
{
    fake->announce("PrepareForSleep", true);
    ASSERT_TRUE(waitForHeard(1));
    daemon.reset();
    ASSERT_TRUE(waitForHeard(3));
    EXPECT_THAT(heard, ElementsAre("will sleep", "unlocked", "gone"));
}

} // namespace
} // namespace quillbrook
