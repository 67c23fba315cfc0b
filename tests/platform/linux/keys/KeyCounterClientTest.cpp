#include "platform/linux/keys/KeyCounterClient.h"

#include "keycounter/keyboards/KeyCounterNames.h"
#include "platform/linux/bus/Calls.h"
#include "support/BecomesTrue.h"
#include "tests/platform/linux/bus/LeaveBus.h"
#include "tests/platform/linux/keys/KeysFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QProcess>

#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace quillbrook {
namespace {

const QString kService = QString::fromLatin1(KeyCounterNames::kService);
const QString kPath = QString::fromLatin1(KeyCounterNames::kPath);
const QString kInterface = QString::fromLatin1(KeyCounterNames::kInterface);

const QDBusMessage kGetId = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"),
    QStringLiteral("/"), QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetId"));

QDBusMessage telling(const QString& receiver, const QVariant& keys)
{
    auto signal = QDBusMessage::createTargetedSignal(
        receiver, kPath, kInterface, QString::fromLatin1(KeyCounterNames::kKeysPressed));
    signal << keys;
    return signal;
}

/// Stands in for the service on a connection of its own.
class FakeCounter final : public QDBusVirtualObject {
public:
    explicit FakeCounter(const QString& address)
        : bus(QDBusConnection::connectToBus(address, QStringLiteral("fake-counter")))
    {
        bus.registerVirtualObject(kPath, this);
    }
    ~FakeCounter() override { leaveBus(bus, kPath, *this); }

    QString introspect(const QString&) const override { return {}; }

    bool handleMessage(const QDBusMessage& call, const QDBusConnection& connection) override
    {
        if (call.member() == QLatin1String("Unsubscribe")) {
            subscriber.clear();
        } else if (++subscriptions; isRefusing) {
            return connection.send(call.createErrorReply(QDBusError::AccessDenied, refusal));
        } else {
            subscriber = call.service();
        }
        return isSilent || connection.send(call.createReply());
    }

    void come() { bus.registerService(kService); }
    void leave()
    {
        bus.unregisterService(kService);
        subscriber.clear();
    }
    void tell(const QVariant& keys) { bus.send(telling(subscriber, keys)); }
    void flush() { bus.call(kGetId); }

    QString subscriber{};
    int subscriptions = 0;
    bool isRefusing = false;
    QString refusal = QStringLiteral("no seat");
    bool isSilent = false;

private:
    QDBusConnection bus;
};

class KeyCounterClientTest : public KeysFixture {
protected:
    void startClient()
    {
        client = std::make_unique<KeyCounterClient>(surroundings(), [this](std::uint32_t keys) {
            total += keys;
            ++tellings;
        });
        client->setWanted(true);
    }

    bool waitForTelling()
    {
        return becomesTrue([this] { return !fake.subscriber.isEmpty() && client->isPossible(); });
    }

    /// Whether the service is believed; it tells one key for that.
    bool isHeard()
    {
        const auto before = total;
        fake.tell(1U);
        return becomesTrue([this, before] { return total == before + 1; });
    }

    /// Waits until the client has seen all that was sent to it.
    void passOnWhatWasTold()
    {
        fake.flush();
        bool isAnswered = false;
        callLater(bus().connection(), kGetId, &application,
            [&isAnswered](const QDBusMessage&) { isAnswered = true; });
        ASSERT_TRUE(becomesTrue([&isAnswered] { return isAnswered; }));
    }

    FakeCounter fake{daemon->address};
    std::unique_ptr<KeyCounterClient> client{};
    std::uint64_t total = 0;
    int tellings = 0;
};

TEST_F(KeyCounterClientTest, HearsWhatTheServiceTells)
{
    fake.come();
    startClient();
    ASSERT_TRUE(waitForTelling());
    fake.tell(3U);
    fake.tell(4U);
    ASSERT_TRUE(becomesTrue([this] { return tellings == 2; }));
    EXPECT_EQ(total, 7);
}

TEST_F(KeyCounterClientTest, IsPossibleFromTheBeginningWhereTheServiceIsInstalled)
{
    install();
    startClient();
    EXPECT_TRUE(client->isPossible());
}

TEST_F(KeyCounterClientTest, IsNotPossibleWithoutService)
{
    startClient();
    EXPECT_FALSE(client->isPossible());
    bool isLater = false;
    mainLoop.runAfter(0.3, [&isLater] { isLater = true; });
    ASSERT_TRUE(becomesTrue([&isLater] { return isLater; }));
    EXPECT_FALSE(client->isPossible());
}

TEST_F(KeyCounterClientTest, IsNotPossibleWhereTheServiceFailsTwice)
{
    install();
    fake.isRefusing = true;
    fake.come();
    startClient();
    ASSERT_TRUE(becomesTrue([this] { return fake.subscriptions == 1; }));
    EXPECT_TRUE(client->isPossible()) << "it may have been about to end";
    testing::internal::CaptureStderr();
    ASSERT_TRUE(becomesTrue([this] { return !client->isPossible(); }));
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
        "quillbrook: 按键计数服务不可用，暂不统计按键: no seat\n");
    EXPECT_EQ(fake.subscriptions, 2);
}

TEST_F(KeyCounterClientTest, WhateverARefusalSaysIsOneShortLine)
{
    fake.isRefusing = true;
    fake.refusal = "no\nseat " + QString(10'000, u'x');
    fake.come();
    testing::internal::CaptureStderr();
    startClient();
    ASSERT_TRUE(becomesTrue([this] { return fake.subscriptions == 2; }));
    passOnWhatWasTold();
    const std::string told = testing::internal::GetCapturedStderr();
    EXPECT_EQ(std::ranges::count(told, '\n'), 1);
    EXPECT_LT(told.size(), 400);
}

TEST_F(KeyCounterClientTest, AsksOneThatRefusedAgainNowAndThen)
{
    install();
    fake.isRefusing = true;
    fake.come();
    startClient();
    ASSERT_TRUE(becomesTrue([this] { return !client->isPossible(); }));
    fake.isRefusing = false;
    const int before = fake.subscriptions;
    EXPECT_FALSE(client->isPossible());
    now += 29.9;
    EXPECT_FALSE(client->isPossible());
    EXPECT_EQ(fake.subscriptions, before);
    now += 0.1;
    EXPECT_FALSE(client->isPossible()) << "only the answer tells";
    EXPECT_TRUE(waitForTelling());
    EXPECT_EQ(fake.subscriptions, before + 1);
    EXPECT_TRUE(isHeard());
}

TEST_F(KeyCounterClientTest, TakesUpAServiceThatComesLater)
{
    startClient();
    ASSERT_TRUE(becomesTrue([this] { return bus().isThere(); }));
    fake.come();
    ASSERT_TRUE(waitForTelling());
    EXPECT_TRUE(isHeard());
}

TEST_F(KeyCounterClientTest, TakesUpAServiceThatStartsAnew)
{
    install();
    fake.come();
    startClient();
    ASSERT_TRUE(waitForTelling());
    fake.leave();
    ASSERT_TRUE(becomesTrue([this] { return fake.subscriber.isEmpty(); }));
    EXPECT_TRUE(client->isPossible()) << "it may be about to start anew";
    uninstall(); // what is possible from now on was proved
    fake.come();
    ASSERT_TRUE(waitForTelling());
    EXPECT_TRUE(isHeard());
    EXPECT_TRUE(isHeard());
    EXPECT_EQ(tellings, 2) << "each is heard once";
}

TEST_F(KeyCounterClientTest, AServiceThatStaysAwayIsMissing)
{
    fake.come();
    startClient();
    ASSERT_TRUE(waitForTelling());
    testing::internal::CaptureStderr();
    fake.leave();
    install();
    ASSERT_TRUE(becomesTrue([this] { return !client->isPossible(); }));
    EXPECT_THAT(testing::internal::GetCapturedStderr(),
        testing::StartsWith("quillbrook: 按键计数服务不可用，暂不统计按键: "));
}

TEST_F(KeyCounterClientTest, WithoutTheBusThereIsNoService)
{
    fake.come();
    startClient();
    ASSERT_TRUE(waitForTelling());
    daemon.reset();
    ASSERT_TRUE(becomesTrue([this] { return !client->isPossible(); }));
}

TEST_F(KeyCounterClientTest, ASilentServiceKeepsNobodyWaiting)
{
    fake.isSilent = true;
    fake.come();
    startClient();
    ASSERT_TRUE(becomesTrue([this] { return fake.subscriptions > 0; }));
    EXPECT_FALSE(client->isPossible());
    install();
    EXPECT_TRUE(client->isPossible());
    fake.tell(5U);
    bool isLater = false;
    mainLoop.runAfter(0.2, [&isLater] { isLater = true; });
    ASSERT_TRUE(becomesTrue([&isLater] { return isLater; }));
    EXPECT_EQ(total, 0) << "nobody is believed before he has answered";
}

TEST_F(KeyCounterClientTest, AbsurdFiguresDontCount)
{
    fake.come();
    startClient();
    ASSERT_TRUE(waitForTelling());
    testing::internal::CaptureStderr();
    fake.tell(0U);
    fake.tell(4'000'000'000U);
    fake.tell(-5);
    fake.tell(5ULL);
    fake.tell(QStringLiteral("5"));
    EXPECT_TRUE(isHeard());
    EXPECT_EQ(tellings, 1);
    EXPECT_EQ(
        testing::internal::GetCapturedStderr(), "quillbrook: 按键计数服务的数字不可信，不采用\n")
        << "one line for all of them";
}

TEST_F(KeyCounterClientTest, OfAFloodNoMoreCountsThanOfAMinute)
{
    fake.come();
    startClient();
    ASSERT_TRUE(waitForTelling());
    testing::internal::CaptureStderr();
    for (int i = 0; i < 5000; ++i) {
        fake.tell(10U);
    }
    passOnWhatWasTold();
    EXPECT_EQ(tellings, 90);
    now += 60;
    EXPECT_TRUE(isHeard());
    EXPECT_EQ(total, 901);
    EXPECT_EQ(
        testing::internal::GetCapturedStderr(), "quillbrook: 按键计数服务的数字不可信，不采用\n");
}

TEST_F(KeyCounterClientTest, WhatOthersTellDoesntCount)
{
    fake.come();
    startClient();
    ASSERT_TRUE(waitForTelling());
    testing::internal::CaptureStderr();
    auto poser = QDBusConnection::connectToBus(daemon->address, QStringLiteral("poser"));
    auto broadcast = QDBusMessage::createSignal(
        kPath, kInterface, QString::fromLatin1(KeyCounterNames::kKeysPressed));
    broadcast << 1000U;
    poser.send(telling(fake.subscriber, 1000U));
    poser.send(broadcast);
    poser.call(kGetId);
    passOnWhatWasTold();
    EXPECT_TRUE(isHeard());
    EXPECT_EQ(total, 1);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
        "quillbrook: 有程序冒充按键计数服务，不采用它的数字\n");
    QDBusConnection::disconnectFromBus(QStringLiteral("poser"));
}

TEST_F(KeyCounterClientTest, AnotherUsersServiceDoesntCount)
{
    if (getuid() != 0) {
        GTEST_SKIP() << "only root can act as another user";
    }
    std::ofstream(directory.path() / "bus.conf") << R"(
<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig><type>system</type><listen>unix:tmpdir=/tmp</listen><policy context="default">
<allow user="*"/><allow own="*"/><allow send_destination="*" eavesdrop="true"/><allow eavesdrop="true"/></policy></busconfig>)";
    daemon = std::make_unique<PrivateBus>(
        QString::fromStdString("--config-file=" + (directory.path() / "bus.conf").string()));
    setenv("DBUS_SYSTEM_BUS_ADDRESS", daemon->address.toUtf8().constData(), 1);
    QProcess other;
    other.setProgram(QStringLiteral("/usr/bin/python3"));
    other.setArguments({QStringLiteral("-B"), QStringLiteral(OTHER_COUNTER), daemon->address});
    other.start();
    QByteArray said;
    const auto hasSaid = [&other, &said](const char* word) {
        said += other.readAllStandardOutput();
        return said.contains(word);
    };
    ASSERT_TRUE(becomesTrue([&hasSaid] { return hasSaid("there"); }));
    testing::internal::CaptureStderr();
    startClient();
    install();
    EXPECT_TRUE(becomesTrue([&hasSaid] { return hasSaid("told"); }));
    passOnWhatWasTold();
    EXPECT_TRUE(becomesTrue([this] { return !client->isPossible(); }));
    EXPECT_EQ(total, 0);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
        "quillbrook: 按键计数服务属于另一个用户，不采用它的数字\n");
    other.kill();
    other.waitForFinished();
}

TEST_F(KeyCounterClientTest, UnsubscribesWhenNothingIsWanted)
{
    fake.come();
    startClient();
    ASSERT_TRUE(waitForTelling());
    ASSERT_TRUE(isHeard());
    const QString us = fake.subscriber;
    client->setWanted(false);
    ASSERT_TRUE(becomesTrue([this] { return fake.subscriber.isEmpty(); }));
    fake.subscriber = us;
    fake.tell(5U);
    fake.subscriber.clear();
    client->setWanted(true);
    ASSERT_TRUE(waitForTelling());
    EXPECT_TRUE(isHeard());
    EXPECT_EQ(total, 2) << "what was told meanwhile is nobody's";
}

} // namespace
} // namespace quillbrook
