#include "platform/linux/bus/TrayHost.h"

#include "platform/linux/bus/Calls.h"

#include <QDBusMessage>
#include <QDBusVariant>

#include <utility>

namespace quillbrook {

namespace {

const auto kWatcher = QStringLiteral("org.kde.StatusNotifierWatcher");
const auto kPath = QStringLiteral("/StatusNotifierWatcher");

} // namespace

TrayHost::TrayHost(std::function<void()> whenChanged)
    : changed(std::move(whenChanged))
    , bus(QString())
    , watcher(kWatcher, [this] { ask(); })
{
}

void TrayHost::follow(const QDBusConnection& connection)
{
    bus = connection;
    for (const char* news : {"StatusNotifierHostRegistered", "StatusNotifierHostUnregistered"}) {
        bus.connect(QString(), kPath, kWatcher, QString::fromLatin1(news), this, SLOT(ask()));
    }
    watcher.follow(bus);
}

void TrayHost::ask()
{
    const int question = ++questions;
    if (watcher.owner().isEmpty()) {
        set(false);
        return;
    }
    auto call = QDBusMessage::createMethodCall(watcher.owner(), kPath,
        QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    call << kWatcher << QStringLiteral("IsStatusNotifierHostRegistered");
    callLater(bus, call, this, [this, question](const QDBusMessage& reply) {
        if (question == questions) { // else something has changed meanwhile
            set(reply.arguments().value(0).value<QDBusVariant>().variant().toBool());
        }
    });
}

void TrayHost::set(bool isThere)
{
    if (!std::exchange(known, true) || isThere != present) {
        present = isThere;
        changed();
    }
}

} // namespace quillbrook
