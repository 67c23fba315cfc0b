#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>

#include <functional>
#include <vector>

namespace quillbrook {

class MainLoop;

/// The address of the user's session bus, empty when there is none. Asking the library without one
/// would start a bus of its own, which nobody else knows.
QString sessionBusAddress();

/// A message bus that may be missing, may die and may come later. Whoever uses it sets its signals
/// up anew each time that it is there. Main thread only.
class Bus final : public QObject {
    Q_OBJECT

public:
    enum class Kind { session, system };

    Bus(Kind kind, MainLoop& mainLoop);
    ~Bus() override;

    Bus(const Bus&) = delete;
    Bus& operator=(const Bus&) = delete;

    /// Calls `body` now if the bus is there, and each time that it comes.
    void whenThere(std::function<void(QDBusConnection)> body);

    /// The connection; not connected while the bus is missing.
    QDBusConnection connection() const { return QDBusConnection(connectionName); }

    bool isThere() const { return connection().isConnected(); }

private:
    void connectToBus();
    Kind kind;
    QString connectionName{};
    int attempts = 0;
    bool isMissingTold = false;
    std::vector<std::function<void(QDBusConnection)>> bodies{};
};

} // namespace quillbrook
