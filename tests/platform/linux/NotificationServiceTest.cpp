#include "engine/MonitorLog.h"
#include "engine/Notifier.h"
#include "platform/linux/LinuxPlatform.h"
#include "support/TemporaryDirectory.h"
#include "support/XServer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDeadlineTimer>
#include <QProcess>
#include <QTimer>
#include <QXmlStreamReader>

#include <fcntl.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

namespace quillbrook {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// Standard error in a file, until this goes.
class ErrorsInFile {
public:
    explicit ErrorsInFile(std::string path) : path(std::move(path)), before(dup(STDERR_FILENO))
    {
        const int file = open(this->path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
        dup2(file, STDERR_FILENO);
        close(file);
    }
    ~ErrorsInFile()
    {
        dup2(before, STDERR_FILENO);
        close(before);
    }

    ErrorsInFile(const ErrorsInFile&) = delete;
    ErrorsInFile& operator=(const ErrorsInFile&) = delete;

    /// The lines that tell of notifications.
    std::vector<std::string> notices() const
    {
        std::vector<std::string> found;
        std::ifstream stream(path);
        for (std::string line; std::getline(stream, line);) {
            if (line.find("通知") != std::string::npos) {
                found.push_back(line);
            }
        }
        return found;
    }

private:
    std::string path;
    int before;
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
        startProgram(bus, "dbus-daemon", {"--session", "--nofork", "--print-address=1"});
        bus.waitForReadyRead();
        setenv("DBUS_SESSION_BUS_ADDRESS", bus.readLine().trimmed().constData(), 1);
        connection = std::make_unique<QDBusConnection>(QDBusConnection::connectToBus(
            qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"), QStringLiteral("test")));
        platform = std::make_unique<LinuxPlatform>([] {});
        log = std::make_unique<MonitorLog>(platform->platform().clock);
    }
    ~NotificationServiceTest() override
    {
        platform.reset();
        QDBusConnection::disconnectFromBus(connection->name());
        end(dunst);
        end(bus);
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

    static bool waitFor(const std::function<bool()>& condition)
    {
        const QDeadlineTimer deadline(20000);
        QTimer alarm;
        alarm.start(20);
        while (!condition() && !deadline.hasExpired()) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
        return condition();
    }

    void startDunst()
    {
        startProgram(dunst, "dunst", {});
        ASSERT_TRUE(waitFor([this] { return isDunstThere(); }));
    }

    void killDunst()
    {
        end(dunst);
        ASSERT_TRUE(waitFor([this] { return !isDunstThere(); }));
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
        Notifier(platform->platform(), *log).sendNotification(title, body);
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
    std::unique_ptr<MonitorLog> log{};
};

TEST_F(NotificationServiceTest, TextsAreShownAsTheyStand)
{
    startDunst();
    send(R"(🔴 "Title" & <i>more</i>)", R"(It's "<b>90%</b>" & 内存不足 🎉 &amp; \n %s $HOME)");
    QList<QVariantMap> notifications;
    ASSERT_TRUE(waitFor([&] {
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

TEST_F(NotificationServiceTest, WithoutAServiceEachNotificationIsOneNotice)
{
    const ErrorsInFile errors(directory.path() / "errors");
    bool isLater = false; // by then the bus is there
    QTimer::singleShot(1000, &application, [&] { isLater = true; });
    ASSERT_TRUE(waitFor([&] { return isLater; }));
    send("Title", "Body");
    ASSERT_TRUE(waitFor([&] { return !errors.notices().empty(); }));
    send("Title", "Body");
    ASSERT_TRUE(waitFor([&] { return errors.notices().size() > 1; }));
    EXPECT_THAT(
        errors.notices(), ElementsAre(HasSubstr("通知发送失败: "), HasSubstr("通知发送失败: ")));
    // The bus could start one, as it knows of it, but nobody asked for that.
    EXPECT_FALSE(isDunstThere());
}

TEST_F(NotificationServiceTest, AServiceMayDieAndComeBack)
{
    const ErrorsInFile errors(directory.path() / "errors");
    startDunst();
    send("Title", "One");
    ASSERT_TRUE(waitFor([this] { return shown().size() == 1; }));
    EXPECT_THAT(errors.notices(), IsEmpty());
    killDunst();
    send("Title", "Two");
    ASSERT_TRUE(waitFor([&] { return errors.notices().size() == 1; }));
    startDunst();
    send("Title", "Three");
    ASSERT_TRUE(waitFor([this] { return shown().size() == 1; }));
    EXPECT_EQ(shown().front()["body"].toString(), QStringLiteral("Three"));
    EXPECT_EQ(errors.notices().size(), 1U);
}

} // namespace
} // namespace quillbrook
