#pragma once

#include "platform/linux/bus/NameOwner.h"
#include "platform/linux/session/IdleTime.h"

#include <QObject>

#include <functional>

class QDBusMessage;

namespace quillbrook {

class Bus;

/// Lets GNOME's Mutter tell of rest and use of the seat, by watches that it keeps for us. Main
/// thread only.
class MutterIdle final : public QObject {
    Q_OBJECT

public:
    /// `idle` learns what Mutter tells.
    MutterIdle(Bus& sessionBus, IdleTime& idle);

private Q_SLOTS:
    void watchFired(uint watch, const QDBusMessage& signal);

private:
    void ownerChanged();
    void addWatch(const char* method, const QList<QVariant>& arguments, uint& watch);

    Bus& sessionBus;
    IdleTime& idle;
    uint idleWatch = 0; // fires each time that nobody has touched the seat for so long
    uint activeWatch = 0; // fires once, when somebody touches it
    bool isResting = false;
    NameOwner mutter;
};

} // namespace quillbrook
