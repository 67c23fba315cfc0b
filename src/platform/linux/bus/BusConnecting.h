#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>

#include <functional>

namespace quillbrook {

class MainLoop;
class WorkQueues;

/// Refuses at once, where no address at all would let a library look for a bus by itself.
constexpr const char* kNoBus = "unix:path=/dev/null";

/// The address of the session bus as the environment names it, empty when there is none. Asking the
/// library without one would start a bus of its own, which nobody else knows.
QString sessionBusAddress();

/// The same, also while it is hidden from the toolkit.
QString trueSessionBusAddress();

/// The address of the machine's bus.
QString systemBusAddress();

/// A connection of that name, a new one, to the bus at `address`; not connected when that gives no
/// sign of life within some two seconds. Any thread.
QDBusConnection connectToAnsweringBus(const QString& address, const QString& name);

/// The same beside the main thread: `ended` runs on it when the connection is there or the attempt
/// has failed, unless `context` is gone by then.
void connectLater(WorkQueues& workQueues, MainLoop& mainLoop, const QString& address,
    const QString& name, QObject* context, std::function<void()> ended);

/// Hides the session bus from the toolkit, or not; we go on knowing it.
void hideSessionBus(bool isHidden);

} // namespace quillbrook
