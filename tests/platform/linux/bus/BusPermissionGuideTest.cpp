#include "platform/linux/bus/BusPermissionGuide.h"

#include "platform/linux/bus/Bus.h"
#include "platform/qt/QtMainLoop.h"
#include "platform/qt/QtWorkQueues.h"
#include "support/BecomesTrue.h"
#include "support/TemporaryDirectory.h"
#include "tests/platform/linux/bus/KeepingService.h"
#include "tests/platform/linux/bus/PrivateBus.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDBusMessage>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

namespace quillbrook {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kCounter = "org.example.Counter"; // as whoever makes the guide says

class BusPermissionGuideTest : public testing::Test {
protected:
    BusPermissionGuideTest()
    {
        // Where the buses look for services that they can start.
        setenv("XDG_DATA_HOME", directory.path().c_str(), 1);
        std::filesystem::create_directories(directory.path() / "dbus-1/services");
        std::ofstream(directory.path() / "dbus-1/services/counter.service")
            << "[D-BUS Service]\nName=" << kCounter << "\nExec=/usr/bin/touch "
            << started().native() << "\n";
        sessionDaemon = std::make_unique<PrivateBus>();
        systemDaemon = std::make_unique<PrivateBus>();
        files = std::make_unique<KeepingService>(sessionDaemon->address,
            QStringLiteral("org.freedesktop.FileManager1"),
            QStringLiteral("/org/freedesktop/FileManager1"));
        setenv("DBUS_SESSION_BUS_ADDRESS", sessionDaemon->address.toUtf8().constData(), 1);
        setenv("DBUS_SYSTEM_BUS_ADDRESS", systemDaemon->address.toUtf8().constData(), 1);
    }
    ~BusPermissionGuideTest() override
    {
        setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent", 1);
        setenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent", 1);
        unsetenv("XDG_DATA_HOME");
    }

    /// What the counter service leaves when it is started.
    std::filesystem::path started() const { return directory.path() / "started"; }

    /// A guide on both buses, which are there.
    struct Guided {
        Guided()
        {
            EXPECT_TRUE(
                becomesTrue([this] { return sessionBus.isThere() && systemBus.isThere(); }));
        }

        QtMainLoop mainLoop{};
        QtWorkQueues workQueues{};
        Bus sessionBus{Bus::Kind::session, mainLoop, workQueues};
        Bus systemBus{Bus::Kind::system, mainLoop, workQueues};
        BusPermissionGuide guide{sessionBus, systemBus, kCounter, "/opt/a b/墨%20川/quillbrook"};
    };

    int count = 1;
    std::string name = "test";
    char* values[2] = {name.data(), nullptr};
    QCoreApplication application{count, values};
    TemporaryDirectory directory{};
    std::unique_ptr<PrivateBus> sessionDaemon{};
    std::unique_ptr<PrivateBus> systemDaemon{};
    std::unique_ptr<KeepingService> files{};
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
    EXPECT_THAT(files->members(), IsEmpty());
    ASSERT_TRUE(becomesTrue([this] { return !files->calls.empty(); }));
    EXPECT_THAT(files->members(), ElementsAre("ShowItems"));
    const QDBusMessage& call = files->calls.front();
    EXPECT_EQ(call.interface(), "org.freedesktop.FileManager1");
    EXPECT_EQ(call.signature(), "ass");
    EXPECT_EQ(call.arguments().value(0).toStringList(),
        QStringList{"file:///opt/a%20b/%E5%A2%A8%2520%E5%B7%9D/quillbrook"});
    EXPECT_EQ(call.arguments().value(1).toString(), "");
}

TEST_F(BusPermissionGuideTest, TheCounterServiceIsStarted)
{
    Guided guided;
    guided.guide.openSettings();
    EXPECT_TRUE(becomesTrue([this] { return std::filesystem::exists(started()); }));
    EXPECT_THAT(files->members(), IsEmpty());
}

TEST_F(BusPermissionGuideTest, ARefusalIsANotice)
{
    files->refuses = true;
    Guided guided;
    testing::internal::CaptureStderr();
    guided.guide.revealProgram();
    // It holds what waits for an answer.
    EXPECT_TRUE(becomesTrue([&] { return guided.guide.children().isEmpty(); }));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "quillbrook: no\n");
}

TEST_F(BusPermissionGuideTest, WithoutABusNothingHappensButANotice)
{
    QtMainLoop mainLoop;
    QtWorkQueues workQueues;
    setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent", 1);
    testing::internal::CaptureStderr();
    const Bus missing(Bus::Kind::session, mainLoop, workQueues);
    BusPermissionGuide guide(missing, missing, kCounter, "/opt/quillbrook");
    guide.revealProgram();
    EXPECT_THAT(testing::internal::GetCapturedStderr(),
        testing::HasSubstr("没有总线，无法调用 org.freedesktop.FileManager1"));
}

} // namespace
} // namespace quillbrook
