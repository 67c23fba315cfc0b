#include "platform/linux/Bus.h"

#include "platform/MainLoop.h"
#include "platform/linux/Notice.h"

#include <QFileInfo>
#include <QPointer>

#include <string>
#include <utility>

namespace quillbrook {

namespace {

constexpr double kRetrySec = 30;

} // namespace

QString sessionBusAddress()
{
    QString address = qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS");
    if (address.isEmpty()) {
        const QString socket = qEnvironmentVariable("XDG_RUNTIME_DIR") + QStringLiteral("/bus");
        if (QFileInfo::exists(socket)) {
            address = QStringLiteral("unix:path=") + socket;
        }
    }
    return address;
}

Bus::Bus(Kind kind, MainLoop& mainLoop) : kind(kind), mainLoop(mainLoop)
{
    connectToBus();
}

Bus::~Bus()
{
    QDBusConnection::disconnectFromBus(connectionName);
}

void Bus::whenThere(std::function<void(QDBusConnection)> body)
{
    if (isThere()) {
        body(connection());
    }
    thereBodies.push_back(std::move(body));
}

void Bus::connectToBus()
{
    const bool isSession = kind == Kind::session;
    if (!connectionName.isEmpty()) {
        QDBusConnection::disconnectFromBus(connectionName);
    }
    // A name of its own for each attempt: what a dead connection held stays with its name.
    connectionName
        = QStringLiteral("quillbrook-%1-%2").arg(isSession ? "session" : "system").arg(++attempts);
    if (isSession) {
        if (const QString busAddress = sessionBusAddress(); !busAddress.isEmpty()) {
            QDBusConnection::connectToBus(busAddress, connectionName);
        }
    } else {
        QDBusConnection::connectToBus(QDBusConnection::SystemBus, connectionName);
    }
    if (!isThere()) {
        if (!std::exchange(isMissingTold, true)) {
            notice(isSession ? "没有会话总线，暂无通知、屏保和输入法信息"
                             : "没有系统总线，暂无睡眠和锁屏信息");
        }
        retryLater();
        return;
    }
    isMissingTold = false;
    connection().connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
        QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"), this,
        SLOT(disconnected()));
    for (const auto& body : thereBodies) {
        body(connection());
    }
}

void Bus::disconnected()
{
    for (const auto& body : goneBodies) {
        body();
    }
    connectToBus();
}

void Bus::retryLater()
{
    mainLoop.runAfter(kRetrySec, [self = QPointer<Bus>(this)] {
        if (self) {
            self->connectToBus();
        }
    });
}

} // namespace quillbrook
