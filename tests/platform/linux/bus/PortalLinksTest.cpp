#include "platform/linux/bus/PortalLinks.h"

#include "platform/linux/bus/Bus.h"
#include "platform/qt/QtMainLoop.h"
#include "platform/qt/QtWorkQueues.h"
#include "support/BecomesTrue.h"
#include "tests/platform/linux/bus/KeepingService.h"
#include "tests/platform/linux/bus/PrivateBus.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDesktopServices>

#include <cstdlib>
#include <memory>
#include <string>

namespace quillbrook {
namespace {

using testing::ElementsAre;

class PortalLinksTest : public testing::Test {
protected:
    PortalLinksTest()
    {
        setenv("DBUS_SESSION_BUS_ADDRESS", daemon->address.toUtf8().constData(), 1);
        sessionBus = std::make_unique<Bus>(Bus::Kind::session, mainLoop, workQueues);
        links = std::make_unique<PortalLinks>(*sessionBus);
        EXPECT_TRUE(becomesTrue([this] { return sessionBus->isThere(); }));
    }
    ~PortalLinksTest() override { setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent", 1); }

    int count = 1;
    std::string name = "test";
    char* values[2] = {name.data(), nullptr};
    QCoreApplication application{count, values};
    std::unique_ptr<PrivateBus> daemon = std::make_unique<PrivateBus>();
    KeepingService portal{daemon->address, QStringLiteral("org.freedesktop.portal.Desktop"),
        QStringLiteral("/org/freedesktop/portal/desktop")};
    KeepingService files{daemon->address, QStringLiteral("org.freedesktop.FileManager1"),
        QStringLiteral("/org/freedesktop/FileManager1")};
    QtMainLoop mainLoop{};
    QtWorkQueues workQueues{};
    std::unique_ptr<Bus> sessionBus{};
    std::unique_ptr<PortalLinks> links{};
};

TEST_F(PortalLinksTest, ALinkIsOpenedByThePortal)
{
    EXPECT_TRUE(QDesktopServices::openUrl(QUrl(QStringLiteral("https://example.org/墨 川?a=b&c"))));
    ASSERT_TRUE(becomesTrue([this] { return !portal.calls.empty(); }));
    EXPECT_THAT(portal.members(), ElementsAre("OpenURI"));
    const QDBusMessage& call = portal.calls.front();
    EXPECT_EQ(call.interface(), "org.freedesktop.portal.OpenURI");
    EXPECT_EQ(call.signature(), "ssa{sv}");
    EXPECT_EQ(call.arguments().value(0).toString(), "");
    EXPECT_EQ(
        call.arguments().value(1).toString(), "https://example.org/%E5%A2%A8%20%E5%B7%9D?a=b&c");
}

TEST_F(PortalLinksTest, AFolderIsOpenedByTheFileManager)
{
    EXPECT_TRUE(QDesktopServices::openUrl(QUrl::fromLocalFile(QStringLiteral("/opt/a b"))));
    ASSERT_TRUE(becomesTrue([this] { return !files.calls.empty(); }));
    EXPECT_THAT(files.members(), ElementsAre("ShowFolders"));
    EXPECT_EQ(files.calls.front().signature(), "ass");
    EXPECT_EQ(
        files.calls.front().arguments().value(0).toStringList(), QStringList{"file:///opt/a%20b"});
}

TEST_F(PortalLinksTest, ARefusalIsANotice)
{
    portal.refuses = true;
    testing::internal::CaptureStderr();
    links->openLink(QUrl(QStringLiteral("mailto:a@example.org")));
    EXPECT_TRUE(becomesTrue([this] { return links->children().isEmpty(); }));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "quillbrook: no\n");
}

TEST_F(PortalLinksTest, WithoutABusNothingIsStartedAndANoticeTold)
{
    daemon.reset();
    EXPECT_TRUE(becomesTrue([this] { return !sessionBus->isThere(); }));
    testing::internal::CaptureStderr();
    EXPECT_TRUE(QDesktopServices::openUrl(QUrl(QStringLiteral("https://example.org"))));
    EXPECT_THAT(testing::internal::GetCapturedStderr(),
        testing::HasSubstr("没有总线，无法调用 org.freedesktop.portal.Desktop"));
}

} // namespace
} // namespace quillbrook
