#include "platform/linux/BusInstance.h"

#include "platform/linux/BusConnecting.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>

namespace quillbrook {

namespace {

const QString kName = QStringLiteral("cn.tarnlow.quillbrook");
const QString kPath = QStringLiteral("/cn/tarnlow/quillbrook");
const QString kConnection = QStringLiteral("quillbrook-instance");

constexpr int kAnswerTimeoutMs = 3000;

/// What a window system wants to know of who asks for a window.
QVariantMap activationTokens()
{
    QVariantMap tokens;
    const auto add = [&tokens](const QString& key, const char* variable) {
        if (const QString value = qEnvironmentVariable(variable); !value.isEmpty()) {
            tokens.insert(key, value);
        }
    };
    add(QStringLiteral("desktop-startup-id"), "DESKTOP_STARTUP_ID");
    add(QStringLiteral("activation-token"), "XDG_ACTIVATION_TOKEN");
    return tokens;
}

} // namespace

BusInstance::BusInstance() : bus(kConnection)
{
    const QString address = sessionBusAddress();
    if (address.isEmpty()) {
        return;
    }
    bus = connectToAnsweringBus(address, kConnection);
    if (!bus.isConnected()) {
        return;
    }
    bus.registerObject(kPath, this, QDBusConnection::ExportScriptableSlots);
    bus.interface()->setTimeout(kAnswerTimeoutMs);
    hasName = bus.registerService(kName);
}

BusInstance::~BusInstance()
{
    QDBusConnection::disconnectFromBus(kConnection);
}

bool BusInstance::handOver()
{
    if (hasName || !bus.isConnected()) {
        return false;
    }
    auto call = QDBusMessage::createMethodCall(
        kName, kPath, QStringLiteral("org.freedesktop.Application"), QStringLiteral("Activate"));
    call.setArguments({activationTokens()});
    call.setAutoStartService(false);
    return bus.call(call, QDBus::Block, kAnswerTimeoutMs).type() == QDBusMessage::ReplyMessage;
}

void BusInstance::Activate(const QVariantMap&)
{
    reopened();
}

} // namespace quillbrook
