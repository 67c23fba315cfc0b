#include "shell/SingleInstance.h"

#include "platform/linux/Bus.h"

#include <QDBusMessage>

namespace quillbrook {

namespace {

const QString kName = QStringLiteral("cn.tarnlow.quillbrook");
const QString kPath = QStringLiteral("/cn/tarnlow/quillbrook");
const QString kConnection = QStringLiteral("quillbrook-instance");

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

SingleInstance::SingleInstance() : bus(kConnection)
{
    const QString address = sessionBusAddress();
    if (address.isEmpty()) {
        return;
    }
    bus = QDBusConnection::connectToBus(address, kConnection);
    if (!bus.isConnected()) {
        return;
    }
    bus.registerObject(kPath, this, QDBusConnection::ExportScriptableSlots);
    first = bus.registerService(kName);
}

SingleInstance::~SingleInstance()
{
    QDBusConnection::disconnectFromBus(kConnection);
}

void SingleInstance::handOver() const
{
    auto call = QDBusMessage::createMethodCall(
        kName, kPath, QStringLiteral("org.freedesktop.Application"), QStringLiteral("Activate"));
    call.setArguments({activationTokens()});
    call.setAutoStartService(false);
    bus.call(call);
}

void SingleInstance::Activate(const QVariantMap&)
{
    reopened();
}

} // namespace quillbrook
