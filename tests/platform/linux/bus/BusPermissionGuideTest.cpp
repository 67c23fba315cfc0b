#include "platform/linux/bus/BusPermissionGuide.h"

#include "platform/linux/bus/Bus.h"
#include "platform/qt/QtMainLoop.h"
#include "platform/qt/QtWorkQueues.h"
#include "tests/platform/linux/bus/PrivateBus.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QDeadlineTimer>
#include <QTimer>

#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

namespace quillbrook {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// A service on a bus that keeps the calls that it got, and answers or refuses them.
class KeepingService final : public QDBusVirtualObject {
public:
    KeepingService(const QString& address, const QString& name, const QString& path)
        : bus(QDBusConnection::connectToBus(address, name))
    {
        bus.registerVirtualObject(path, this, QDBusConnection::SubPath);
        bus.registerService(name);
    }
    ~KeepingService() override { QDBusConnection::disconnectFromBus(bus.name()); }

    QString introspect(const QString&) const override { return {}; }

    bool handleMessage(const QDBusMessage& call, const QDBusConnection& connection) override
    {
        calls.push_back(call);
        return connection.send(refuses
                ? call.createErrorReply(QDBusError::AccessDenied, QStringLiteral("no"))
                : call.createReply());
    }

    std::vector<std::string> members() const
    {
        std::vector<std::string> names;
        for (const QDBusMessage& call : calls) {
            names.push_back(call.member().toStdString());
        }
        return names;
    }

    std::vector<QDBusMessage> calls{};
    bool refuses = false;

private:
    QDBusConnection bus;
};

class BusPermissionGuideTest : public testing::Test {
protected:
    BusPermissionGuideTest()
    {
        setenv("DBUS_SESSION_BUS_ADDRESS", sessionDaemon.address.toUtf8().constData(), 1);
        setenv("DBUS_SYSTEM_BUS_ADDRESS", systemDaemon.address.toUtf8().constData(), 1);
    }
    ~BusPermissionGuideTest() override
    {
        setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent", 1);
        setenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent", 1);
    }

    static bool waitFor(const std::function<bool()>& condition)
    {
        const QDeadlineTimer deadline(10000);
        QTimer alarm;
        alarm.start(5);
        while (!condition() && !deadline.hasExpired()) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
        return condition();
    }

    /// A guide on both buses, which are there.
    struct Guided {
        Guided()
        {
            EXPECT_TRUE(waitFor([this] { return sessionBus.isThere() && systemBus.isThere(); }));
        }

        QtMainLoop mainLoop{};
        QtWorkQueues workQueues{};
        Bus sessionBus{Bus::Kind::session, mainLoop, workQueues};
        Bus systemBus{Bus::Kind::system, mainLoop, workQueues};
        BusPermissionGuide guide{sessionBus, systemBus, "/opt/a b/墨%20川/quillbrook"};
    };

    int count = 1;
    std::string name = "test";
    char* values[2] = {name.data(), nullptr};
    QCoreApplication application{count, values};
    PrivateBus sessionDaemon{};
    PrivateBus systemDaemon{};
    KeepingService files{sessionDaemon.address, QStringLiteral("org.freedesktop.FileManager1"),
        QStringLiteral("/org/freedesktop/FileManager1")};
    KeepingService systemd{systemDaemon.address, QStringLiteral("org.freedesktop.systemd1"),
        QStringLiteral("/org/freedesktop/systemd1")};
};

TEST_F(BusPermissionGuideTest, AServiceGivesThePermission)
{
    EXPECT_EQ(Guided().guide.giver(), PermissionGiver::counterService);
}

TEST_F(BusPermissionGuideTest, TheFileManagerIsAskedForTheProgramWithoutWaiting)
{
    Guided guided;
    // The service answers in this thread: whoever waited for it here would wait in vain.
    guided.guide.revealProgram();
    EXPECT_THAT(files.members(), IsEmpty());
    ASSERT_TRUE(waitFor([this] { return !files.calls.empty(); }));
    EXPECT_THAT(files.members(), ElementsAre("ShowItems"));
    const QDBusMessage& call = files.calls.front();
    EXPECT_EQ(call.interface(), "org.freedesktop.FileManager1");
    EXPECT_EQ(call.signature(), "ass");
    EXPECT_EQ(call.arguments().value(0).toStringList(),
        QStringList{"file:///opt/a%20b/%E5%A2%A8%2520%E5%B7%9D/quillbrook"});
    EXPECT_EQ(call.arguments().value(1).toString(), "");
    EXPECT_THAT(systemd.members(), IsEmpty());
}

TEST_F(BusPermissionGuideTest, TheCounterServiceIsSwitchedOnAndStarted)
{
    Guided guided;
    guided.guide.openSettings();
    EXPECT_THAT(systemd.members(), IsEmpty());
    ASSERT_TRUE(waitFor([this] { return systemd.calls.size() == 2; }));
    EXPECT_THAT(systemd.members(), ElementsAre("EnableUnitFiles", "StartUnit"));
    const QDBusMessage& enabling = systemd.calls[0];
    EXPECT_EQ(enabling.signature(), "asbb");
    EXPECT_EQ(
        enabling.arguments().value(0).toStringList(), QStringList{"quillbrook-keycounter.service"});
    EXPECT_FALSE(enabling.arguments().value(1).toBool());
    EXPECT_FALSE(enabling.arguments().value(2).toBool());
    EXPECT_EQ(systemd.calls[1].arguments(),
        (QVariantList{QStringLiteral("quillbrook-keycounter.service"), QStringLiteral("replace")}));
    for (const QDBusMessage& call : systemd.calls) {
        EXPECT_EQ(call.interface(), "org.freedesktop.systemd1.Manager");
        EXPECT_TRUE(call.isInteractiveAuthorizationAllowed()) << call.member().toStdString();
    }
    EXPECT_THAT(files.members(), IsEmpty());
}

TEST_F(BusPermissionGuideTest, AServiceThatMayNotBeSwitchedOnIsNotStarted)
{
    Guided guided;
    systemd.refuses = true;
    testing::internal::CaptureStderr();
    guided.guide.openSettings();
    ASSERT_TRUE(waitFor([this] { return !systemd.calls.empty(); }));
    waitFor([end = QDeadlineTimer(100)] { return end.hasExpired(); });
    EXPECT_THAT(systemd.members(), ElementsAre("EnableUnitFiles"));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "quillbrook: no\n");
}

TEST_F(BusPermissionGuideTest, WithoutABusNothingHappensButANotice)
{
    QtMainLoop mainLoop;
    QtWorkQueues workQueues;
    setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent", 1);
    testing::internal::CaptureStderr();
    const Bus missing(Bus::Kind::session, mainLoop, workQueues);
    BusPermissionGuide guide(missing, missing, "/opt/quillbrook");
    guide.revealProgram();
    EXPECT_THAT(testing::internal::GetCapturedStderr(),
        testing::HasSubstr("没有总线，无法调用 org.freedesktop.FileManager1"));
}

} // namespace
} // namespace quillbrook
