#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>

#include <functional>
#include <utility>
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

    /// Calls `body` each time that the bus goes away.
    void whenGone(std::function<void()> body) { goneBodies.push_back(std::move(body)); }

    /// The connection; not connected while the bus is missing.
    QDBusConnection connection() const { return QDBusConnection(connectionName); }

    bool isThere() const { return connection().isConnected(); }

private Q_SLOTS:
    void disconnected();

private:
    void connectToBus();
    void retryLater();
    Kind kind;
    MainLoop& mainLoop;
    QString connectionName{};
    int attempts = 0;
    bool isMissingTold = false;
    std::vector<std::function<void(QDBusConnection)>> thereBodies{};
    std::vector<std::function<void()>> goneBodies{};
};

} // namespace quillbrook
