#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>

#include <functional>
#include <utility>
#include <vector>

namespace quillbrook {

class MainLoop;
class WorkQueues;

/// A message bus that may be missing or silent, may die and may come later. It is connected to
/// beside the main thread, which never waits for it. Whoever uses it sets its signals up anew each
/// time that it is there. Main thread only.
class Bus final : public QObject {
    Q_OBJECT

public:
    enum class Kind { session, system };

    Bus(Kind kind, MainLoop& mainLoop, WorkQueues& workQueues);
    ~Bus() override;

    Bus(const Bus&) = delete;
    Bus& operator=(const Bus&) = delete;

    /// Calls `body` now if the bus is there, and each time that it comes.
    void whenThere(std::function<void(QDBusConnection)> body);

    /// Calls `body` each time that the bus goes away.
    void whenGone(std::function<void()> body) { goneBodies.push_back(std::move(body)); }

    /// Calls `body` once, with whether the bus is there: now, or when the first attempt or the one
    /// under way has ended.
    void whenKnown(std::function<void(bool)> body);

    /// The connection; not connected while the bus is missing.
    QDBusConnection connection() const { return QDBusConnection(connectionName); }

    bool isThere() const { return connection().isConnected(); }

private Q_SLOTS:
    void disconnected();

private:
    void connectToBus();
    void attemptEnded();
    void tellKnown();
    void retryLater();

    Kind kind;
    MainLoop& mainLoop;
    WorkQueues& workQueues;
    QString connectionName{};
    int attempts = 0;
    bool isAttemptUnderWay = false;
    bool isMissingTold = false;
    std::vector<std::function<void(QDBusConnection)>> thereBodies{};
    std::vector<std::function<void()>> goneBodies{};
    std::vector<std::function<void(bool)>> knownBodies{};
};

} // namespace quillbrook
