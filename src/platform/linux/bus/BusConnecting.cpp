#include "platform/linux/bus/BusConnecting.h"

#include "platform/MainLoop.h"
#include "platform/WorkQueues.h"
#include "platform/linux/bus/BusConversation.h"
#include "platform/linux/bus/IBusAddress.h"
#include "platform/linux/bus/SessionManagerGreeting.h"
#include "platform/linux/words/Notice.h"

#include <QFileInfo>
#include <QPointer>

#include <future>
#include <string>
#include <utility>

namespace quillbrook {

namespace {

/// Refuses at once, where no address at all would let the library look for a bus by itself.
constexpr const char* kNoBus = "unix:path=/dev/null";

constexpr const char* kSessionVariable = "DBUS_SESSION_BUS_ADDRESS";
constexpr const char* kManagerVariable = "SESSION_MANAGER";
constexpr const char* kReaderVariable = "AT_SPI_BUS_ADDRESS";

/// What the toolkit asks and waits for when it makes an icon in the tray.
constexpr BusCall kTrayCall{.service = "org.kde.StatusNotifierWatcher",
    .path = "/StatusNotifierWatcher",
    .interface = "org.freedesktop.DBus.Introspectable",
    .member = "Introspect"};

/// What it asks when it gets ready for screen readers.
constexpr BusCall kReaderCall{.service = "org.a11y.Bus",
    .path = "/org/a11y/bus",
    .interface = "org.a11y.Bus",
    .member = "GetAddress"};

QString& hiddenSessionBusAddress()
{
    static QString address;
    return address;
}

bool isSilent(const std::string& address)
{
    return !address.empty() && !BusConversation(address).isAnswered();
}

/// Who keeps the toolkit waiting.
struct Silence {
    bool isSessionBus = false; // or somebody on it that can't be hidden alone
    bool isReaderBus = false;
};

Silence silenceOn(const std::string& sessionAddress)
{
    if (sessionAddress.empty()) {
        return {};
    }
    BusConversation session(sessionAddress);
    if (!session.answerTo(kTrayCall)) {
        return {.isSessionBus = true};
    }
    const auto readerAddress = session.answerTo(kReaderCall);
    return {.isReaderBus = !readerAddress || isSilent(*readerAddress)};
}

} // namespace

QString sessionBusAddress()
{
    QString address = qEnvironmentVariable(kSessionVariable);
    if (address.isEmpty()) {
        const QString socket = qEnvironmentVariable("XDG_RUNTIME_DIR") + QStringLiteral("/bus");
        if (QFileInfo::exists(socket)) {
            address = QStringLiteral("unix:path=") + socket;
        }
    }
    return address;
}

QString trueSessionBusAddress()
{
    const QString& hidden = hiddenSessionBusAddress();
    return hidden.isEmpty() ? sessionBusAddress() : hidden;
}

QString systemBusAddress()
{
    const QString named = qEnvironmentVariable("DBUS_SYSTEM_BUS_ADDRESS");
    return named.isEmpty() ? QStringLiteral("unix:path=/run/dbus/system_bus_socket") : named;
}

QDBusConnection connectToAnsweringBus(const QString& address, const QString& name)
{
    if (!BusConversation(address.toStdString()).isAnswered()) {
        return QDBusConnection(name);
    }
    return QDBusConnection::connectToBus(address, name);
}

void connectLater(WorkQueues& workQueues, MainLoop& mainLoop, const QString& address,
    const QString& name, QObject* context, std::function<void()> ended)
{
    workQueues.runDefault(
        [&mainLoop, address, name, weak = QPointer<QObject>(context), ended = std::move(ended)] {
            connectToAnsweringBus(address, name);
            mainLoop.post([name, weak, ended] {
                if (weak) {
                    ended();
                } else {
                    QDBusConnection::disconnectFromBus(name);
                }
            });
        });
}

void hideSilentServices()
{
    const bool usesIBus
        = qgetenv("QT_IM_MODULE") == "ibus" || qgetenv("QT_IM_MODULES").split(';').contains("ibus");
    // Side by side, so that silence costs the time of one and not of all.
    auto ibusAnswer = std::async(
        std::launch::async, isSilent, usesIBus ? ibusAddress().toStdString() : std::string());
    auto readerAnswer
        = std::async(std::launch::async, isSilent, qgetenv(kReaderVariable).toStdString());
    auto managerAnswer = std::async(
        std::launch::async, isSessionManagerAnswering, qgetenv(kManagerVariable).toStdString());
    const QString session = sessionBusAddress();
    const Silence silence = silenceOn(session.toStdString());
    const bool isIBusSilent = ibusAnswer.get();
    const bool isManagerSilent = !managerAnswer.get();
    const bool isReaderBusSilent = readerAnswer.get() || silence.isReaderBus;

    hiddenSessionBusAddress() = silence.isSessionBus ? session : QString();
    if (silence.isSessionBus) {
        notice("会话总线没有应答，窗口不使用它");
        qputenv(kSessionVariable, kNoBus);
    }
    if (isManagerSilent) {
        notice("会话管理器没有应答，不使用它");
        qunsetenv(kManagerVariable);
    }
    if (isReaderBusSilent) {
        qputenv(kReaderVariable, kNoBus);
    }
    if (isIBusSilent) {
        notice("IBus 没有应答，窗口不使用它");
        qputenv("QT_IM_MODULE", "compose");
        qunsetenv("QT_IM_MODULES");
    }
}

} // namespace quillbrook
