#include "platform/linux/bus/BusInstance.h"

#include "platform/linux/bus/BusConnecting.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QGuiApplication>

namespace quillbrook {

namespace {

const QString kName = QStringLiteral("cn.tarnlow.quillbrook");
const QString kPath = QStringLiteral("/cn/tarnlow/quillbrook");
const QString kConnection = QStringLiteral("quillbrook-instance");
const QString kStartupId = QStringLiteral("desktop-startup-id");
const QString kActivationToken = QStringLiteral("activation-token");

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
    add(kStartupId, "DESKTOP_STARTUP_ID");
    add(kActivationToken, "XDG_ACTIVATION_TOKEN");
    return tokens;
}

} // namespace

BusInstance::BusInstance() : bus(kConnection)
{
    claimOn(sessionBusAddress());
}

void BusInstance::claim()
{
    if (!bus.isConnected()) {
        QDBusConnection::disconnectFromBus(kConnection); // what is left of one that has ended
        claimOn(trueSessionBusAddress());
    }
}

void BusInstance::claimOn(const QString& address)
{
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
    bus.unregisterObject(kPath); // nobody may reach it over a connection that goes
    QDBusConnection::disconnectFromBus(kConnection);
}

QDBusConnection BusInstance::connection()
{
    return QDBusConnection(kConnection);
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
    if (bus.call(call, QDBus::Block, kAnswerTimeoutMs).type() == QDBusMessage::ReplyMessage) {
        return true;
    }
    // Who has ended meanwhile leaves us the name. Who still has it has been asked, and a second
    // program beside a slow one would write into the same files.
    hasName = bus.registerService(kName);
    return !hasName;
}

void BusInstance::Activate(const QVariantMap& platformData)
{
    // The one is meant for X11, the other for Wayland; a launch may bring both.
    const bool isOnWayland = QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
    const QString& wanted = isOnWayland ? kActivationToken : kStartupId;
    reopened(platformData.value(wanted).toString().toStdString());
}

} // namespace quillbrook
