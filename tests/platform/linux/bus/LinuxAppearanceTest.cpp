#include "platform/linux/LinuxAppearance.h"

#include "platform/linux/bus/Bus.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/qt/QtMainLoop.h"
#include "platform/qt/QtWorkQueues.h"
#include "platform/virtual/VirtualMainLoop.h"
#include "support/BecomesTrue.h"
#include "tests/platform/linux/bus/LeaveBus.h"
#include "tests/platform/linux/bus/PrivateBus.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDBusVirtualObject>

#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace quillbrook {
namespace {

/// A portal that answers when it is told to.
class WaitingPortal final : public QDBusVirtualObject {
public:
    explicit WaitingPortal(const QString& address)
        : bus(QDBusConnection::connectToBus(address, QStringLiteral("waiting-portal")))
    {
        bus.registerVirtualObject(path, this);
        bus.registerService(QStringLiteral("org.freedesktop.portal.Desktop"));
    }
    ~WaitingPortal() override { leaveBus(bus, path, *this); }

    QString introspect(const QString&) const override { return {}; }

    bool handleMessage(const QDBusMessage& call, const QDBusConnection&) override
    {
        questions.push_back(call);
        return true;
    }

    /// The first that asked is told that windows shall be dark, all others that there is no such
    /// setting.
    void answer()
    {
        bool isFirst = true;
        for (const QDBusMessage& question : std::exchange(questions, {})) {
            const auto dark = QVariant::fromValue(QDBusVariant(QVariant::fromValue(1U)));
            bus.send(std::exchange(isFirst, false)
                    ? question.createReply(dark)
                    : question.createErrorReply(QDBusError::UnknownProperty, {}));
        }
    }

    /// All are told that windows shall be dark from now on.
    void change()
    {
        auto signal = QDBusMessage::createSignal(path,
            QStringLiteral("org.freedesktop.portal.Settings"), QStringLiteral("SettingChanged"));
        signal << QStringLiteral("org.freedesktop.appearance") << QStringLiteral("color-scheme")
               << QVariant::fromValue(QDBusVariant(QVariant::fromValue(1U)));
        bus.send(signal);
    }

    std::vector<QDBusMessage> questions{};

private:
    const QString path = QStringLiteral("/org/freedesktop/portal/desktop");
    QDBusConnection bus;
};

class LinuxAppearanceTest : public testing::Test {
protected:
    ~LinuxAppearanceTest() override
    {
        appearance.reset();
        bus.reset();
        setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent", 1);
    }

    /// Notes what the desktop is known to wish by the time that is told to be the right one.
    void askWhenKnown() { askWhenKnown(daemon.address.toStdString()); }

    void askWhenKnown(const std::string& address)
    {
        setenv("DBUS_SESSION_BUS_ADDRESS", address.c_str(), 1);
        bus = std::make_unique<Bus>(Bus::Kind::session, mainLoop, workQueues);
        appearance = std::make_unique<LinuxAppearance>(*bus, noDisplay, timers);
        wishes = appearance->observe([this](const Appearance& wish) { last = wish; });
        appearance->whenKnown([this] {
            ++tellings;
            known = last;
        });
    }

    static X11Connection& withoutDisplay()
    {
        setenv("DISPLAY", ":4095", 1);
        static X11Connection connection;
        return connection;
    }

    int count = 1;
    std::string name = "test";
    char* values[2] = {name.data(), nullptr};
    QCoreApplication application{count, values};
    PrivateBus daemon{};
    QtMainLoop mainLoop{};
    QtWorkQueues workQueues{};
    VirtualClock clock{0};
    VirtualMainLoop timers{clock};
    X11Connection& noDisplay = withoutDisplay();
    std::unique_ptr<Bus> bus{};
    std::unique_ptr<LinuxAppearance> appearance{};
    Subscription wishes{};
    Appearance last{};
    std::optional<Appearance> known{};
    int tellings = 0;
};

TEST_F(LinuxAppearanceTest, IsKnownWhenThePortalHasAnsweredAll)
{
    WaitingPortal portal(daemon.address);
    askWhenKnown();
    ASSERT_TRUE(becomesTrue([&] { return portal.questions.size() == 2; }));
    EXPECT_FALSE(known);
    portal.answer();
    ASSERT_TRUE(becomesTrue([this] { return known.has_value(); }));
    EXPECT_EQ(known->isDark, true);
    timers.runThrough(100);
    EXPECT_EQ(tellings, 1);
}

TEST_F(LinuxAppearanceTest, IsKnownAtOnceFromThenOn)
{
    WaitingPortal portal(daemon.address);
    askWhenKnown();
    ASSERT_TRUE(becomesTrue([&] { return portal.questions.size() == 2; }));
    portal.answer();
    ASSERT_TRUE(becomesTrue([this] { return known.has_value(); }));
    bool isTold = false;
    appearance->whenKnown([&] { isTold = true; });
    EXPECT_TRUE(isTold);
}

TEST_F(LinuxAppearanceTest, AChangeIsFollowed)
{
    WaitingPortal portal(daemon.address);
    askWhenKnown();
    ASSERT_TRUE(becomesTrue([&] { return portal.questions.size() == 2; }));
    portal.change();
    EXPECT_TRUE(becomesTrue([this] { return last.isDark == true; }));
}

TEST_F(LinuxAppearanceTest, ASilentPortalIsGivenASecond)
{
    WaitingPortal portal(daemon.address);
    askWhenKnown();
    ASSERT_TRUE(becomesTrue([&] { return portal.questions.size() == 2; }));
    timers.runThrough(0.99);
    EXPECT_FALSE(known);
    timers.runThrough(1);
    EXPECT_TRUE(known);
    EXPECT_EQ(last.isDark, std::nullopt);
}

TEST_F(LinuxAppearanceTest, WithoutAPortalNothingIsWaitedFor)
{
    askWhenKnown();
    EXPECT_TRUE(becomesTrue([this] { return known.has_value(); }));
}

TEST_F(LinuxAppearanceTest, WithoutABusNothingIsWaitedFor)
{
    askWhenKnown("unix:path=/nonexistent");
    EXPECT_TRUE(becomesTrue([this] { return known.has_value(); }));
}

} // namespace
} // namespace quillbrook
