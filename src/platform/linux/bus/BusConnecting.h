#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>

#include <functional>

namespace quillbrook {

class MainLoop;
class WorkQueues;

/// The address of the session bus as the environment names it, empty when there is none. Asking the
/// library without one would start a bus of its own, which nobody else knows.
QString sessionBusAddress();

/// The same, also where `hideSilentServices` has hidden it.
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

/// Hides from the toolkit the buses that give no sign of life, as it would wait for them without
/// end or for half a minute: the session's, IBus's and the one for screen readers; and a session
/// manager that is silent. Takes a second
/// or two where one is silent. To be called before the application object is made and before other
/// threads run; the toolkit does without them until the program's end.
void hideSilentServices();

} // namespace quillbrook
