#include "base/Text.h"
#include "engine/MonitorLog.h"
#include "engine/Notifier.h"
#include "platform/MainLoop.h"
#include "platform/linux/LinuxPlatform.h"
#include "platform/linux/bus/NotificationIcon.h"
#include "platform/qt/SystemClock.h"
#include "support/BecomesTrue.h"
#include "support/TemporaryDirectory.h"
#include "support/XServer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QColor>
#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusVirtualObject>
#include <QImage>
#include <QProcess>
#include <QXmlStreamReader>

#include <sys/prctl.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quillbrook {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// A bus that would start no service but those of a folder.
constexpr const char* kBusConfiguration = R"(<!DOCTYPE busconfig PUBLIC
 "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:tmpdir=/tmp</listen>
  <servicedir>{}</servicedir>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
)";

constexpr const char* kDunstService = R"([D-BUS Service]
Name=org.freedesktop.Notifications
Exec=/usr/bin/dunst
)";

/// A service that refuses everything in two lines.
class RefusingService final : public QDBusVirtualObject {
public:
    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override
    {
        return connection.send(message.createErrorReply(QStringLiteral("org.example.No"),
            QStringLiteral("no\n[2026-01-01T00:00:00Z] ✅ 就绪\x1b")));
    }
};

/// A service that keeps the hints of the last notification.
class KeepingService final : public QDBusVirtualObject {
public:
    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override
    {
        constexpr int kHintsPlace = 6;
        hints = qdbus_cast<QVariantMap>(message.arguments().value(kHintsPlace));
        return connection.send(message.createReply(1U));
    }

    std::optional<QVariantMap> hints{};
};

/// What a person reads of a text with markup.
std::string shownTextOf(const QString& markup)
{
    QXmlStreamReader reader(QStringLiteral("<text>") + markup + QStringLiteral("</text>"));
    QString text;
    while (!reader.atEnd()) {
        if (reader.readNext() == QXmlStreamReader::Characters) {
            text += reader.text();
        }
    }
    return reader.hasError() ? "no markup: " + markup.toStdString() : text.toStdString();
}

/// The engine's notifier and the whole Linux platform on a bus and a display of their own, beside
/// dunst where a test starts it.
class NotificationServiceTest : public testing::Test {
protected:
    NotificationServiceTest()
    {
        qDBusRegisterMetaType<QList<QVariantMap>>();
        for (const char* variable : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME"}) {
            setenv(variable, directory.path().c_str(), 1);
        }
        setenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent", 1);
        write("bus.conf", filled(kBusConfiguration, {(directory.path() / "services").native()}));
        startProgram(bus, "dbus-daemon",
            {"--nofork", "--print-address=1", "--config-file",
                QString::fromStdString(directory.path() / "bus.conf")});
        bus.waitForReadyRead();
        setenv("DBUS_SESSION_BUS_ADDRESS", bus.readLine().trimmed().constData(), 1);
        connection = std::make_unique<QDBusConnection>(QDBusConnection::connectToBus(
            qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"), QStringLiteral("test")));
        platform = std::make_unique<LinuxPlatform>([] {});
        log.openFile(directory.path() / "monitor.log");
    }
    ~NotificationServiceTest() override
    {
        notifier.reset();
        platform.reset();
        QDBusConnection::disconnectFromBus(connection->name());
        end(dunst);
        end(bus);
    }

    void write(const std::filesystem::path& name, const std::string& text) const
    {
        std::filesystem::create_directories((directory.path() / name).parent_path());
        std::ofstream(directory.path() / name) << text;
    }

    /// The log's lines, without their times.
    std::vector<std::string> logLines() const
    {
        std::vector<std::string> lines;
        std::ifstream stream(directory.path() / "monitor.log");
        for (std::string line; std::getline(stream, line);) {
            lines.push_back(line.substr(line.find(' ') + 1));
        }
        return lines;
    }

    static void startProgram(QProcess& process, const char* program, const QStringList& arguments)
    {
        // A test that dies leaves nothing behind.
        process.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
        process.start(QString::fromLatin1(program), arguments);
        if (!process.waitForStarted()) {
            ADD_FAILURE() << program << " doesn't start";
        }
    }

    static void end(QProcess& process)
    {
        process.kill();
        process.waitForFinished();
    }

    void startDunst()
    {
        startProgram(dunst, "dunst", {});
        ASSERT_TRUE(becomesTrue([this] { return isDunstThere(); }));
    }

    void killDunst()
    {
        end(dunst);
        ASSERT_TRUE(becomesTrue([this] { return !isDunstThere(); }));
    }

    bool isDunstThere() const
    {
        return connection->interface()->isServiceRegistered(
            QStringLiteral("org.freedesktop.Notifications"));
    }

    QDBusMessage askDunst(const char* method) const
    {
        auto call = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.Notifications"),
            QStringLiteral("/org/freedesktop/Notifications"),
            QStringLiteral("org.dunstproject.cmd0"), QString::fromLatin1(method));
        call.setAutoStartService(false);
        return connection->call(call);
    }

    /// All notifications that the service showed, the newest first.
    QList<QVariantMap> shown() const
    {
        askDunst("NotificationCloseAll"); // those on the screen come into the history by that
        const auto reply = askDunst("NotificationListHistory");
        return qdbus_cast<QList<QVariantMap>>(reply.arguments().value(0));
    }

    void send(const std::string& title, const std::string& body)
    {
        if (!notifier) {
            notifier = std::make_unique<Notifier>(platform->platform(), log);
        }
        notifier->sendNotification(title, body);
    }

    XServer server{};
    TemporaryDirectory directory{};
    int count = 1;
    std::string name = "test";
    char* values[2] = {name.data(), nullptr};
    QCoreApplication application{count, values};
    QProcess bus{};
    QProcess dunst{};
    std::unique_ptr<QDBusConnection> connection{};
    std::unique_ptr<LinuxPlatform> platform{};
    SystemClock clock{};
    MonitorLog log{clock};
    std::unique_ptr<Notifier> notifier{};
};

TEST_F(NotificationServiceTest, TextsAreShownAsTheyStand)
{
    startDunst();
    send(R"(🔴 "Title" & <i>more</i>)", R"(It's "<b>90%</b>" & 内存不足 🎉 &amp; \n %s $HOME)");
    QList<QVariantMap> notifications;
    ASSERT_TRUE(becomesTrue([&] {
        notifications = shown();
        return !notifications.isEmpty();
    }));
    ASSERT_EQ(notifications.size(), 1);
    const QVariantMap& notification = notifications.front();
    // The engine makes single quotes of double ones.
    EXPECT_EQ(notification["summary"].toString().toStdString(), "🔴 'Title' & <i>more</i>");
    EXPECT_EQ(shownTextOf(notification["body"].toString()),
        R"(It's '<b>90%</b>' & 内存不足 🎉 &amp; \n %s $HOME)");
    EXPECT_THAT(shownTextOf(notification["message"].toString()),
        testing::AllOf(HasSubstr("🔴 'Title' & <i>more</i>"),
            HasSubstr(R"(It's '<b>90%</b>' & 内存不足 🎉 &amp; \n %s $HOME)")));
    EXPECT_EQ(notification["appname"].toString(), QStringLiteral("Quillbrook"));
}

TEST_F(NotificationServiceTest, WithoutAServiceEachNotificationIsALineOfTheLog)
{
    send("Title", "Body");
    send("Title", "Body");
    ASSERT_TRUE(becomesTrue([&] { return logLines().size() == 2; }));
    EXPECT_THAT(logLines(),
        testing::Each(testing::AllOf(
            HasSubstr("⚠️ 通知发送失败: "), HasSubstr("org.freedesktop.Notifications"))));
}

TEST_F(NotificationServiceTest, AServiceThatTheBusKnowsIsStarted)
{
    write("services/dunst.service", kDunstService);
    connection->call(QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"),
        QStringLiteral("/org/freedesktop/DBus"), QStringLiteral("org.freedesktop.DBus"),
        QStringLiteral("ReloadConfig")));
    send("Title", "Body");
    ASSERT_TRUE(becomesTrue([this] { return isDunstThere() && shown().size() == 1; }));
    EXPECT_EQ(shown().front()["body"].toString(), QStringLiteral("Body"));
    EXPECT_THAT(logLines(), IsEmpty());
}

TEST_F(NotificationServiceTest, AServiceMayDieAndComeBack)
{
    startDunst();
    send("Title", "One");
    ASSERT_TRUE(becomesTrue([this] { return shown().size() == 1; }));
    EXPECT_THAT(logLines(), IsEmpty());
    killDunst();
    send("Title", "Two");
    ASSERT_TRUE(becomesTrue([&] { return logLines().size() == 1; }));
    startDunst();
    send("Title", "Three");
    ASSERT_TRUE(becomesTrue([this] { return shown().size() == 1; }));
    EXPECT_EQ(shown().front()["body"].toString(), QStringLiteral("Three"));
    EXPECT_EQ(logLines().size(), 1U);
}

TEST_F(NotificationServiceTest, ARefusalIsOneLineWhateverItSays)
{
    RefusingService service;
    connection->registerVirtualObject(QStringLiteral("/org/freedesktop/Notifications"), &service);
    connection->registerService(QStringLiteral("org.freedesktop.Notifications"));
    send("Title", "Body");
    ASSERT_TRUE(becomesTrue([&] { return !logLines().empty(); }));
    EXPECT_THAT(logLines(),
        ElementsAre("⚠️ 通知发送失败: no [2026-01-01T00:00:00Z] ✅ 就绪 "));
}

TEST_F(NotificationServiceTest, OurIconStandsBesideEachNotification)
{
    KeepingService service;
    connection->registerVirtualObject(QStringLiteral("/org/freedesktop/Notifications"), &service);
    connection->registerService(QStringLiteral("org.freedesktop.Notifications"));
    QImage picture(2, 1, QImage::Format_ARGB32);
    picture.setPixelColor(0, 0, QColor(1, 2, 3));
    picture.setPixelColor(1, 0, QColor(4, 5, 6, 7));
    platform->setIcon(picture);
    send("Title", "Body");
    ASSERT_TRUE(becomesTrue([&] { return service.hints.has_value(); }));
    const auto sent = service.hints->value(QStringLiteral("image-data")).value<QDBusArgument>();
    EXPECT_EQ(sent.currentSignature(), QStringLiteral("(iiibiiay)"));
    const auto icon = qdbus_cast<NotificationIcon>(sent);
    EXPECT_EQ(icon.width, 2);
    EXPECT_EQ(icon.height, 1);
    EXPECT_EQ(icon.pixels, QByteArray("\1\2\3\377\4\5\6\7"));
}

TEST_F(NotificationServiceTest, ANotifierThatIsGoneLogsNothing)
{
    send("Title", "Body");
    notifier.reset();
    bool isLater = false;
    platform->platform().mainLoop.runAfter(1, [&] { isLater = true; });
    ASSERT_TRUE(becomesTrue([&] { return isLater; }));
    EXPECT_THAT(logLines(), IsEmpty());
}

} // namespace
} // namespace quillbrook
