#include "platform/linux/bus/Bus.h"

#include "platform/linux/bus/BusConnecting.h"
#include "platform/linux/bus/BusConversation.h"
#include "platform/linux/bus/IBusInputMethod.h"
#include "platform/linux/bus/SessionManagerGreeting.h"
#include "platform/linux/bus/SilentServices.h"
#include "platform/qt/QtMainLoop.h"
#include "platform/qt/QtWorkQueues.h"
#include "support/BecomesTrue.h"
#include "support/TemporaryDirectory.h"
#include "tests/platform/linux/bus/PrivateBus.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QTimer>

#include <cstdlib>
#include <future>
#include <memory>
#include <optional>
#include <string>
#include <thread>

namespace quillbrook {
namespace {

constexpr BusCall kGetId{.service = "org.freedesktop.DBus",
    .path = "/org/freedesktop/DBus",
    .interface = "org.freedesktop.DBus",
    .member = "GetId"};
constexpr BusCall kMissing{.service = "org.example.Missing",
    .path = "/",
    .interface = "org.freedesktop.DBus.Peer",
    .member = "Ping"};

TEST(BusConversation, ABusAnswers)
{
    const PrivateBus bus;
    BusConversation conversation(bus.address.toStdString());
    ASSERT_TRUE(conversation.isAnswered());
    const auto id = conversation.answerTo(kGetId);
    ASSERT_TRUE(id);
    EXPECT_EQ(id->size(), 32U);
    EXPECT_EQ(conversation.answerTo(kMissing), "") << "a refusal is a sign of life";
    EXPECT_EQ(conversation.answerTo(kGetId), id);
}

TEST(BusConversation, ASocketThatSaysNothingIsNoBus)
{
    const TemporaryDirectory directory;
    SilentSocket silent(directory.path() / "bus");
    EXPECT_FALSE(BusConversation(silent.address()).isAnswered());
    silent.fillQueue();
    const BusConversation waiting(silent.address());
    EXPECT_FALSE(waiting.isAnswered());
    EXPECT_FALSE(waiting.isRefused()) << "who listens without taking in anybody is there";
    EXPECT_TRUE(BusConversation("unix:path=/nonexistent").isRefused());
}

TEST(BusConversation, ABusMayFallSilentInTheMiddle)
{
    PrivateBus bus;
    BusConversation conversation(bus.address.toStdString());
    bus.freeze(true);
    EXPECT_EQ(conversation.answerTo(kGetId), std::nullopt);
    EXPECT_FALSE(BusConversation(bus.address.toStdString()).isAnswered());
    bus.freeze(false);
    EXPECT_TRUE(BusConversation(bus.address.toStdString()).isAnswered());
}

TEST(BusConversation, TheFirstOfSeveralAddressesThatIsThereCounts)
{
    const PrivateBus bus;
    const std::string address = bus.address.toStdString();
    EXPECT_TRUE(BusConversation("unix:path=/nonexistent;" + address).isAnswered());
    EXPECT_TRUE(BusConversation("tcp:host=localhost,port=1;" + address).isAnswered());
    std::string escaped = address;
    escaped.replace(escaped.find("/tmp"), 4, "%2ftmp");
    EXPECT_TRUE(BusConversation(escaped).isAnswered());
    for (const char* none : {"", ";", "unix:", "unix:path", "unix:path=", "unix:path=%",
             "unix:path=%zz", "unix:abstract=quillbrook-nowhere", "tcp:host=localhost,port=1"}) {
        EXPECT_FALSE(BusConversation(none).isAnswered()) << none;
    }
    EXPECT_FALSE(BusConversation("unix:path=/" + std::string(200, 'x')).isAnswered());
}

TEST(SessionManagerGreeting, ASilentOneDoesNotAnswer)
{
    const TemporaryDirectory directory;
    const SilentSocket silent(directory.path() / "manager");
    const std::string path = directory.path() / "manager";
    EXPECT_FALSE(isSessionManagerAnswering("local/host:@nowhere,unix/host:" + path));
    EXPECT_FALSE(isSessionManagerAnswering("unix/host:" + path + ",unix/host:/nonexistent"));
    for (const char* none : {"", ",", "local/", "unix/host", "unix/host:", "unix/host:@",
             "unix/host:/nonexistent", "tcp/localhost:1"}) {
        EXPECT_TRUE(isSessionManagerAnswering(none)) << none;
    }
}

TEST(SessionManagerGreeting, OneThatGreetsAnswers)
{
    const TemporaryDirectory directory;
    SilentSocket manager(directory.path() / "manager");
    const std::string networkId = "local/host:" + (directory.path() / "manager").string();
    auto answer = std::async(std::launch::async, isSessionManagerAnswering, networkId);
    manager.speak("greeting");
    EXPECT_TRUE(answer.get());
    answer = std::async(std::launch::async, isSessionManagerAnswering, networkId);
    manager.speak("no");
    EXPECT_FALSE(answer.get());
}

class BusTest : public testing::Test {
protected:
    BusTest()
    {
        setenv("HOME", directory.path().c_str(), 1);
        setenv("XDG_CONFIG_HOME", directory.path().c_str(), 1);
        forgetBuses();
    }
    ~BusTest() override
    {
        forgetBuses();
        hideSilentServices(); // there is none that could be hidden from later tests
    }

    static void forgetBuses()
    {
        for (const char* name : {"DBUS_SESSION_BUS_ADDRESS", "XDG_RUNTIME_DIR", "IBUS_ADDRESS",
                 "AT_SPI_BUS_ADDRESS", "QT_IM_MODULE", "QT_IM_MODULES"}) {
            unsetenv(name);
        }
        setenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent", 1);
    }

    TemporaryDirectory directory{};
    int count = 1;
    std::string name = "test";
    char* values[2] = {name.data(), nullptr};
    QCoreApplication application{count, values};
    QtMainLoop mainLoop{};
    QtWorkQueues workQueues{};
};

TEST_F(BusTest, ABusIsThereAMomentLater)
{
    const PrivateBus daemon;
    setenv("DBUS_SESSION_BUS_ADDRESS", daemon.address.toUtf8().constData(), 1);
    Bus bus(Bus::Kind::session, mainLoop, workQueues);
    int there = 0;
    std::optional<bool> known;
    bus.whenThere(
        [&](const QDBusConnection& connection) { there += connection.isConnected() ? 1 : 0; });
    bus.whenKnown([&](bool isThere) { known = isThere; });
    EXPECT_EQ(known, std::nullopt);
    ASSERT_TRUE(becomesTrue([&] { return known.has_value(); }));
    EXPECT_EQ(known, true);
    EXPECT_EQ(there, 1);
    bus.whenKnown([&](bool) { known.reset(); });
    EXPECT_EQ(known, std::nullopt) << "known already";
}

TEST_F(BusTest, WhoAsksWhileItIsConnectedToIsToldOnce)
{
    const PrivateBus daemon;
    setenv("DBUS_SESSION_BUS_ADDRESS", daemon.address.toUtf8().constData(), 1);
    Bus bus(Bus::Kind::session, mainLoop, workQueues);
    // The connection stands before the main thread hears of it.
    for (const QDeadlineTimer deadline(20000); !bus.isThere() && !deadline.hasExpired();) {
        std::this_thread::yield();
    }
    int there = 0;
    bus.whenThere([&](const QDBusConnection&) { ++there; });
    bool isKnown = false;
    bus.whenKnown([&](bool) { isKnown = true; });
    ASSERT_TRUE(becomesTrue([&] { return isKnown; }));
    EXPECT_EQ(there, 1);
}

TEST_F(BusTest, WhoIsToldMayBringOthersWhoWantToBeTold)
{
    auto daemon = std::make_unique<PrivateBus>();
    setenv("DBUS_SESSION_BUS_ADDRESS", daemon->address.toUtf8().constData(), 1);
    constexpr int kMany = 100; // for which the room of one is too small
    Bus bus(Bus::Kind::session, mainLoop, workQueues);
    int there = 0;
    int gone = 0;
    int broughtWhenGone = 0;
    bus.whenThere([&](const QDBusConnection&) {
        for (int i = 0; i < kMany; ++i) {
            bus.whenThere([&](const QDBusConnection&) { ++there; });
        }
    });
    bus.whenGone([&] {
        for (int i = 0; i < kMany; ++i) {
            bus.whenGone([&] { ++broughtWhenGone; });
        }
        ++gone;
    });
    ASSERT_TRUE(becomesTrue([&] { return there > 0; }));
    EXPECT_EQ(there, kMany);
    daemon.reset();
    ASSERT_TRUE(becomesTrue([&] { return gone > 0; }));
    EXPECT_EQ(broughtWhenGone, 0) << "the bus went before they came";
}

TEST_F(BusTest, WithoutAnAddressNothingIsWaitedFor)
{
    Bus bus(Bus::Kind::session, mainLoop, workQueues);
    std::optional<bool> known;
    bus.whenKnown([&](bool isThere) { known = isThere; });
    EXPECT_EQ(known, false);
}

TEST_F(BusTest, TheMainThreadGoesOnBesideBusesThatSayNothing)
{
    const SilentSocket silent(directory.path() / "bus");
    for (const char* variable :
        {"DBUS_SESSION_BUS_ADDRESS", "DBUS_SYSTEM_BUS_ADDRESS", "IBUS_ADDRESS"}) {
        setenv(variable, silent.address().c_str(), 1);
    }
    int rounds = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&] { ++rounds; });
    timer.start(10);
    Bus session(Bus::Kind::session, mainLoop, workQueues);
    Bus system(Bus::Kind::system, mainLoop, workQueues);
    const IBusInputMethod ibus(mainLoop, workQueues);
    int known = 0;
    for (Bus* bus : {&session, &system}) {
        bus->whenKnown([&](bool isThere) { known += isThere ? 0 : 1; });
    }
    ASSERT_TRUE(becomesTrue([&] { return rounds >= 20; }));
    EXPECT_EQ(known, 0) << "still asking";
    ASSERT_TRUE(becomesTrue([&] { return known == 2; }));
    EXPECT_EQ(ibus.identifier(), std::nullopt);
}

TEST_F(BusTest, ABusThatGoesWhileItIsAskedLeavesNothing)
{
    const SilentSocket silent(directory.path() / "bus");
    setenv("DBUS_SESSION_BUS_ADDRESS", silent.address().c_str(), 1);
    bool isTold = false;
    {
        Bus bus(Bus::Kind::session, mainLoop, workQueues);
        bus.whenKnown([&](bool) { isTold = true; });
    }
    bool isLater = false;
    mainLoop.runAfter(2, [&] { isLater = true; });
    ASSERT_TRUE(becomesTrue([&] { return isLater; }));
    EXPECT_FALSE(isTold);
}

TEST_F(BusTest, SilentBusesAreHiddenFromTheToolkitAndKeptForUs)
{
    const SilentSocket silent(directory.path() / "bus");
    const auto address = QString::fromStdString(silent.address());
    for (const char* variable :
        {"DBUS_SESSION_BUS_ADDRESS", "AT_SPI_BUS_ADDRESS", "IBUS_ADDRESS"}) {
        setenv(variable, silent.address().c_str(), 1);
    }
    setenv("QT_IM_MODULE", "ibus", 1);
    setenv("SESSION_MANAGER", ("unix/host:" + (directory.path() / "bus").string()).c_str(), 1);
    hideSilentServices();
    EXPECT_FALSE(qEnvironmentVariableIsSet("SESSION_MANAGER"));
    EXPECT_EQ(qgetenv("DBUS_SESSION_BUS_ADDRESS"), "unix:path=/dev/null");
    EXPECT_EQ(qgetenv("AT_SPI_BUS_ADDRESS"), "unix:path=/dev/null");
    EXPECT_EQ(qgetenv("QT_IM_MODULE"), "compose");
    EXPECT_EQ(trueSessionBusAddress(), address);
    EXPECT_FALSE(connectToAnsweringBus(sessionBusAddress(), "hidden").isConnected());
}

TEST_F(BusTest, AnAddressAtWhichNobodyListensIsLeftToTheToolkit)
{
    setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent", 1);
    hideSilentServices();
    EXPECT_EQ(qgetenv("DBUS_SESSION_BUS_ADDRESS"), "unix:path=/nonexistent");
    bool isAsked = false;
    whenTrayAnswers(mainLoop, workQueues, [&] { isAsked = true; });
    EXPECT_TRUE(isAsked);
}

TEST_F(BusTest, ABusThatNobodyNamesIsNeverStartedAndIsTakenUpWhenItComes)
{
    setenv("XDG_RUNTIME_DIR", directory.path().c_str(), 1);
    hideSilentServices();
    EXPECT_EQ(qgetenv("DBUS_SESSION_BUS_ADDRESS"), "unix:path=/dev/null");
    EXPECT_EQ(trueSessionBusAddress(), "");
    const SilentSocket socket(directory.path() / "bus");
    EXPECT_EQ(trueSessionBusAddress().toStdString(), socket.address());
}

TEST_F(BusTest, BusesThatAnswerStay)
{
    const PrivateBus daemon;
    const QByteArray address = daemon.address.toUtf8();
    for (const char* variable :
        {"DBUS_SESSION_BUS_ADDRESS", "AT_SPI_BUS_ADDRESS", "IBUS_ADDRESS"}) {
        setenv(variable, address.constData(), 1);
    }
    setenv("QT_IM_MODULE", "ibus", 1);
    hideSilentServices();
    EXPECT_EQ(qgetenv("DBUS_SESSION_BUS_ADDRESS"), address);
    EXPECT_EQ(qgetenv("AT_SPI_BUS_ADDRESS"), address);
    EXPECT_EQ(qgetenv("QT_IM_MODULE"), "ibus");
    EXPECT_EQ(trueSessionBusAddress(), daemon.address);
}

} // namespace
} // namespace quillbrook
