#include "platform/linux/bus/BusConnecting.h"

#include "platform/MainLoop.h"
#include "platform/WorkQueues.h"
#include "platform/linux/bus/BusConversation.h"

#include <QFileInfo>
#include <QPointer>

#include <utility>

namespace quillbrook {

namespace {

constexpr const char* kSessionVariable = "DBUS_SESSION_BUS_ADDRESS";

QString& hiddenSessionBusAddress()
{
    static QString address;
    return address;
}

/// The bus that a session has without naming it; empty when there is none.
QString unnamedSessionBusAddress()
{
    const QString socket = qEnvironmentVariable("XDG_RUNTIME_DIR") + QStringLiteral("/bus");
    return QFileInfo::exists(socket) ? QStringLiteral("unix:path=") + socket : QString();
}

} // namespace

QString sessionBusAddress()
{
    const QString address = qEnvironmentVariable(kSessionVariable);
    return address.isEmpty() ? unnamedSessionBusAddress() : address;
}

QString trueSessionBusAddress()
{
    const QString& hidden = hiddenSessionBusAddress();
    if (!hidden.isEmpty()) {
        return hidden;
    }
    const QString address = sessionBusAddress();
    return address == QLatin1String(kNoBus) ? unnamedSessionBusAddress() : address;
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

void hideSessionBus(bool isHidden)
{
    hiddenSessionBusAddress() = isHidden ? sessionBusAddress() : QString();
    // Where none is named, the library would start one, for the whole session and bound as we are.
    if (isHidden || sessionBusAddress().isEmpty()) {
        qputenv(kSessionVariable, kNoBus);
    }
}

} // namespace quillbrook
