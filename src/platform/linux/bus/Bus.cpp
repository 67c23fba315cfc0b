#include "platform/linux/bus/Bus.h"

#include "platform/MainLoop.h"
#include "platform/linux/bus/BusConnecting.h"
#include "platform/linux/words/Notice.h"

#include <QDBusVariant>
#include <QMetaType>
#include <QPointer>

#include <string>
#include <utility>

namespace quillbrook {

namespace {

constexpr double kRetrySec = 30;

} // namespace

Bus::Bus(Kind kind, MainLoop& mainLoop, WorkQueues& workQueues)
    : kind(kind)
    , mainLoop(mainLoop)
    , workQueues(workQueues)
{
    qRegisterMetaType<QDBusVariant>(); // slots are found by the names of their types
    connectToBus();
}

Bus::~Bus()
{
    QDBusConnection::disconnectFromBus(connectionName);
}

void Bus::whenThere(std::function<void(QDBusConnection)> body)
{
    // At the end of an attempt all are called: some would be twice, as the connection stands
    // before.
    if (isThere() && !isAttemptUnderWay) {
        body(connection());
    }
    thereBodies.push_back(std::move(body));
}

void Bus::whenKnown(std::function<void(bool)> body)
{
    knownBodies.push_back(std::move(body));
    if (!isAttemptUnderWay) {
        tellKnown();
    }
}

void Bus::tellKnown()
{
    for (const auto& body : std::exchange(knownBodies, {})) {
        body(isThere());
    }
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
    const QString address = isSession ? trueSessionBusAddress() : systemBusAddress();
    if (address.isEmpty()) {
        attemptEnded();
        return;
    }
    isAttemptUnderWay = true;
    connectLater(workQueues, mainLoop, address, connectionName, this, [this] { attemptEnded(); });
}

void Bus::attemptEnded()
{
    isAttemptUnderWay = false;
    if (!isThere()) {
        if (!std::exchange(isMissingTold, true)) {
            notice(kind == Kind::session ? "没有会话总线，暂无通知、屏保和输入法信息"
                                         : "没有系统总线，暂无睡眠和锁屏信息");
        }
        tellKnown();
        retryLater();
        return;
    }
    isMissingTold = false;
    connection().connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
        QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"), this,
        SLOT(disconnected()));
    const auto present = thereBodies; // one of them may add others
    for (const auto& body : present) {
        body(connection());
    }
    tellKnown();
}

void Bus::disconnected()
{
    const auto present = goneBodies; // one of them may add others
    for (const auto& body : present) {
        body();
    }
    connectToBus();
}

void Bus::retryLater()
{
    mainLoop.runAfter(kRetrySec, [self = QPointer<Bus>(this)] {
        if (!self.isNull()) {
            self->connectToBus();
        }
    });
}

} // namespace quillbrook
