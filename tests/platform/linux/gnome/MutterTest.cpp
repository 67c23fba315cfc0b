#include "platform/linux/bus/Bus.h"
#include "platform/linux/gnome/MutterIdle.h"
#include "platform/linux/gnome/MutterScreens.h"
#include "platform/linux/session/IdleTime.h"
#include "platform/qt/QtMainLoop.h"
#include "platform/qt/QtWorkQueues.h"
#include "platform/virtual/VirtualClock.h"
#include "platform/virtual/VirtualMainLoop.h"
#include "support/BecomesTrue.h"
#include "tests/platform/linux/gnome/GnomeFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QDBusVariant>
#include <QVariantMap>

#include <memory>
#include <vector>

namespace quillbrook {
namespace {

using testing::ElementsAre;

constexpr const char* kMonitor = "org.gnome.Mutter.IdleMonitor";
constexpr const char* kMonitorPath = "/org/gnome/Mutter/IdleMonitor/Core";
constexpr const char* kDisplays = "org.gnome.Mutter.DisplayConfig";
constexpr const char* kDisplaysPath = "/org/gnome/Mutter/DisplayConfig";

/// Keeps watches and lets them fire as the test says.
class FakeMonitor {
public:
    FakeMonitor(const QString& address, const char* name) : peer(address, QString::fromLatin1(name))
    {
    }

    void come() { peer.own(kMonitor); }

    void fire(uint watch) const
    {
        auto signal = QDBusMessage::createSignal(QString::fromLatin1(kMonitorPath),
            QString::fromLatin1(kMonitor), QStringLiteral("WatchFired"));
        signal << watch;
        peer.bus.send(signal);
    }

    Peer peer;
    uint watches = 0;
    uint idleWatch = 0;
    uint activeWatch = 0;
    qulonglong idleAfterMs = 0;
    qulonglong restMs = 0;
    FakeObject object{peer.bus, kMonitorPath, [this](const QDBusMessage& call) {
                          if (call.member() == QLatin1String("GetIdletime")) {
                              return call.createReply(restMs);
                          }
                          ++watches;
                          if (call.member() == QLatin1String("AddIdleWatch")) {
                              idleAfterMs = call.arguments().at(0).toULongLong();
                              idleWatch = watches;
                          } else {
                              activeWatch = watches;
                          }
                          return call.createReply(watches);
                      }};
};

class MutterIdleTest : public GnomeTest {
protected:
    bool waitForCalls(const FakeMonitor& monitor, std::size_t calls)
    {
        const bool isCalled = becomesTrue([&] { return monitor.object.calls.size() >= calls; });
        letPass(50); // the answer comes in
        return isCalled;
    }

    double time = 1000;
    void askNow() { asking.runThrough(askingClock.now() + 30); }

    QtMainLoop mainLoop{};
    QtWorkQueues workQueues{};
    VirtualClock askingClock{0};
    VirtualMainLoop asking{askingClock};
    Bus bus{Bus::Kind::session, mainLoop, workQueues};
    IdleTime idle{[this] { return time; }};
    MutterIdle mutterIdle{bus, asking, idle};
};

TEST_F(MutterIdleTest, RestsAndUsesAreToldByWatches)
{
    FakeMonitor monitor(daemon.address, "mutter");
    EXPECT_FALSE(idle.isKnown());
    monitor.come();
    ASSERT_TRUE(becomesTrue([this] { return idle.isKnown(); }));
    EXPECT_EQ(monitor.idleAfterMs, 5000U);
    time += 100;
    EXPECT_EQ(idle.secondsSinceLastInput(), 0);
    monitor.fire(monitor.idleWatch);
    ASSERT_TRUE(waitForCalls(monitor, 2));
    EXPECT_EQ(idle.secondsSinceLastInput(), 5);
    time += 295;
    EXPECT_EQ(idle.secondsSinceLastInput(), 300);
    monitor.fire(monitor.activeWatch);
    ASSERT_TRUE(becomesTrue([this] { return idle.secondsSinceLastInput() == 0; }));
    time += 50;
    EXPECT_EQ(idle.secondsSinceLastInput(), 0);
    monitor.fire(monitor.idleWatch);
    ASSERT_TRUE(waitForCalls(monitor, 3));
    EXPECT_EQ(idle.secondsSinceLastInput(), 5);
    EXPECT_THAT(monitor.object.calls,
        ElementsAre("AddIdleWatch", "AddUserActiveWatch", "AddUserActiveWatch"))
        << "and nothing is asked again and again";
}

TEST_F(MutterIdleTest, ARestAfterARestHadInputBetween)
{
    FakeMonitor monitor(daemon.address, "mutter");
    monitor.come();
    ASSERT_TRUE(becomesTrue([this] { return idle.isKnown(); }));
    time += 100;
    monitor.fire(monitor.idleWatch);
    ASSERT_TRUE(waitForCalls(monitor, 2));
    time += 1000;
    monitor.fire(monitor.idleWatch);
    ASSERT_TRUE(waitForCalls(monitor, 3));
    EXPECT_LE(idle.secondsSinceLastInput(), 5);
}

TEST_F(MutterIdleTest, ARestThatIsNotToldIsAskedFor)
{
    FakeMonitor monitor(daemon.address, "mutter");
    monitor.come();
    ASSERT_TRUE(becomesTrue([this] { return idle.isKnown(); }));
    time += 1000;
    monitor.restMs = 4999;
    askNow();
    ASSERT_TRUE(waitForCalls(monitor, 2));
    EXPECT_EQ(idle.secondsSinceLastInput(), 0) << "a person at work";
    monitor.restMs = 400'000;
    askNow();
    ASSERT_TRUE(waitForCalls(monitor, 4));
    EXPECT_EQ(idle.secondsSinceLastInput(), 400);
    time += 200;
    askNow();
    letPass(50);
    EXPECT_THAT(monitor.object.calls,
        ElementsAre("AddIdleWatch", "GetIdletime", "GetIdletime", "AddUserActiveWatch"))
        << "whoever rests is not asked for";
    monitor.fire(monitor.idleWatch);
    letPass(100);
    EXPECT_EQ(idle.secondsSinceLastInput(), 600) << "the same rest, told late, is no use";
    monitor.fire(monitor.activeWatch);
    ASSERT_TRUE(becomesTrue([this] { return idle.secondsSinceLastInput() == 0; }));
    askNow();
    EXPECT_TRUE(waitForCalls(monitor, 6));
}

TEST_F(MutterIdleTest, OthersCannotSpeakForIt)
{
    FakeMonitor monitor(daemon.address, "mutter");
    monitor.come();
    ASSERT_TRUE(becomesTrue([this] { return idle.isKnown(); }));
    time += 100;
    const FakeMonitor poser(daemon.address, "poser");
    poser.fire(monitor.idleWatch);
    poser.peer.finish();
    monitor.fire(99);
    monitor.fire(0);
    letPass(100);
    EXPECT_EQ(idle.secondsSinceLastInput(), 0);
}

TEST_F(MutterIdleTest, OneThatStartsAnewIsAskedAnew)
{
    auto monitor = std::make_unique<FakeMonitor>(daemon.address, "mutter");
    monitor->come();
    ASSERT_TRUE(becomesTrue([this] { return idle.isKnown(); }));
    time += 100;
    monitor.reset();
    ASSERT_TRUE(becomesTrue([this] { return !idle.isKnown(); }));
    time += 500;
    EXPECT_EQ(idle.secondsSinceLastInput(), 500) << "nobody is taken for present without a sign";
    monitor = std::make_unique<FakeMonitor>(daemon.address, "next");
    monitor->come();
    ASSERT_TRUE(becomesTrue([this] { return idle.isKnown(); }));
    monitor->fire(monitor->idleWatch);
    ASSERT_TRUE(waitForCalls(*monitor, 2));
    EXPECT_EQ(idle.secondsSinceLastInput(), 500);
    monitor->fire(monitor->activeWatch);
    EXPECT_TRUE(becomesTrue([this] { return idle.secondsSinceLastInput() == 0; }));
}

class MutterScreensTest : public GnomeTest {
protected:
    static void announce(const Peer& peer, int mode)
    {
        auto signal = QDBusMessage::createSignal(QString::fromLatin1(kDisplaysPath),
            QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("PropertiesChanged"));
        signal << QString::fromLatin1(kDisplays)
               << QVariantMap{{QStringLiteral("PowerSaveMode"), mode}} << QStringList();
        peer.bus.send(signal);
    }

    bool waitForLast(bool isOff)
    {
        return becomesTrue([&] { return !heard.empty() && heard.back() == isOff; });
    }

    QtMainLoop mainLoop{};
    QtWorkQueues workQueues{};
    Bus bus{Bus::Kind::session, mainLoop, workQueues};
    std::vector<bool> heard{};
    MutterScreens screens{bus, [this](bool areOff) { heard.push_back(areOff); }};
};

TEST_F(MutterScreensTest, FollowsThePowerSaving)
{
    auto displays = std::make_unique<Peer>(daemon.address, QStringLiteral("mutter"));
    int mode = 3;
    auto object = std::make_unique<FakeObject>(
        displays->bus, kDisplaysPath, [&mode](const QDBusMessage& call) {
            return call.createReply(QVariant::fromValue(QDBusVariant(mode)));
        });
    displays->own(kDisplays);
    ASSERT_TRUE(waitForLast(true)) << "they were off before";
    announce(*displays, 0);
    ASSERT_TRUE(waitForLast(false));
    announce(*displays, 1);
    ASSERT_TRUE(waitForLast(true));
    announce(*displays, -1);
    ASSERT_TRUE(waitForLast(false)) << "unknown is not off";
    heard.clear();
    const Peer poser(daemon.address, QStringLiteral("poser"));
    announce(poser, 3);
    poser.finish();
    announce(*displays, 2);
    ASSERT_TRUE(waitForLast(true));
    EXPECT_THAT(heard, ElementsAre(true)) << "the poser's came before";
    object.reset();
    displays.reset();
    EXPECT_TRUE(waitForLast(false)) << "who dies darkens nothing";
}

} // namespace
} // namespace quillbrook
