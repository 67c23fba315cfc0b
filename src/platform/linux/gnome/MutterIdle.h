#pragma once

#include "base/Lifetime.h"
#include "platform/linux/bus/NameOwner.h"
#include "platform/linux/session/IdleTime.h"

#include <QObject>

#include <cstdint>

class QDBusMessage;

namespace quillbrook {

class Bus;
class MainLoop;

/// Lets GNOME's Mutter tell of rest and use of the seat, by watches that it keeps for us. While a
/// program wishes the session not to rest, as for a film, none of them fires when nobody is there:
/// so Mutter is asked now and then, too. Main thread only.
class MutterIdle final : public QObject {
    Q_OBJECT

public:
    /// `idle` learns what Mutter tells.
    MutterIdle(Bus& sessionBus, MainLoop& mainLoop, IdleTime& idle);

private Q_SLOTS:
    void watchFired(uint watch, const QDBusMessage& signal);

private:
    /// How it is known that nobody touches the seat.
    enum class Rest : std::uint8_t { none, asked, told };

    void ownerChanged();
    void askWhetherResting();
    void restFound(qulonglong restMs);
    void addWatch(const char* method, const QList<QVariant>& arguments, uint& watch);

    Bus& sessionBus;
    IdleTime& idle;
    uint idleWatch = 0; // fires each time that nobody has touched the seat for so long
    uint activeWatch = 0; // fires once, when somebody touches it
    Rest rest = Rest::none;
    NameOwner mutter;

    Lifetime lifetime{};
};

} // namespace quillbrook
