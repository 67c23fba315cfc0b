#pragma once

#include <QCoreApplication>
#include <QDBusConnection>
#include <QObject>
#include <QString>

namespace quillbrook {

/// Ends the connection of an object that answers calls at or below `path`, before the object goes.
/// A call that comes in while both go would be answered on a connection that is no longer there.
inline void leaveBus(QDBusConnection bus, const QString& path, QObject& object)
{
    bus.unregisterObject(path, QDBusConnection::UnregisterTree);
    QCoreApplication::removePostedEvents(&object);
    QDBusConnection::disconnectFromBus(bus.name());
}

} // namespace quillbrook
