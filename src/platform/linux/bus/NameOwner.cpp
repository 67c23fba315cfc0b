#include "platform/linux/bus/NameOwner.h"

#include "platform/linux/bus/Bus.h"
#include "platform/linux/bus/Calls.h"

#include <QDBusMessage>
#include <QPointer>

#include <utility>

namespace quillbrook {

NameOwner::NameOwner(QString ownedName, std::function<void()> whenChanged)
    : name(std::move(ownedName))
    , changed(std::move(whenChanged))
{
    watcher.setWatchMode(QDBusServiceWatcher::WatchForOwnerChange);
    watcher.addWatchedService(name);
    connect(&watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
        [this](const QString&, const QString&, const QString& owner) { set(owner); });
}

void NameOwner::follow(const QDBusConnection& bus)
{
    watcher.setConnection(bus);
    auto call = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"),
        QStringLiteral("/org/freedesktop/DBus"), QStringLiteral("org.freedesktop.DBus"),
        QStringLiteral("GetNameOwner"));
    call << name;
    callLater(bus, call, this, [this, asked = tellings](const QDBusMessage& reply) {
        if (tellings == asked) { // else a change was told meanwhile
            set(reply.type() == QDBusMessage::ReplyMessage ? reply.arguments().value(0).toString()
                                                           : QString());
        }
    });
}

void NameOwner::follow(Bus& bus)
{
    bus.whenThere([self = QPointer<NameOwner>(this)](const QDBusConnection& connection) {
        if (self) {
            self->follow(connection);
        }
    });
    bus.whenGone([self = QPointer<NameOwner>(this)] {
        if (self) {
            self->set({});
        }
    });
}

void NameOwner::set(const QString& owner)
{
    ++tellings;
    if (!std::exchange(known, true) || owner != present) {
        present = owner;
        changed();
    }
}

} // namespace quillbrook
