#pragma once

#include "base/Lifetime.h"
#include "platform/linux/keys/PlausibleKeys.h"

#include <QDBusServiceWatcher>
#include <QObject>
#include <QString>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

class QDBusConnection;
class QDBusMessage;

namespace quillbrook {

class Bus;
class MainLoop;

/// What the counter service, a process of the system's, tells of keys. It may be missing, come
/// later, end and start anew; each of these is followed without waiting, and is one notice. Figures
/// that come from anybody else, or that no hands make, don't count. Main thread only.
class KeyCounterClient final : public QObject {
    Q_OBJECT

public:
    struct Surroundings {
        Bus& systemBus;
        MainLoop& mainLoop;
        std::function<double()> now; ///< seconds of a clock that never goes back
        std::vector<std::filesystem::path> installations = standardInstallations();
    };

    /// `counted` gets the keys of the last second.
    KeyCounterClient(Surroundings surroundings, std::function<void(std::uint32_t)> counted);

    /// Where a service says that it can be started by a call.
    static std::vector<std::filesystem::path> standardInstallations();

    /// Whether to be told of keys; not at first.
    void setWanted(bool isOn);

    /// Whether keys are told or, while that isn't known, the service is installed. Asks one that
    /// has refused again, now and then.
    bool isPossible();

private Q_SLOTS:
    void keysPressed(uint keys, const QDBusMessage& signal);

private:
    enum class State : std::uint8_t { asking, telling, missing };

    void setUp(QDBusConnection bus);
    void ownerChanged(const QString& name);
    void subscribe();
    void answered(const QDBusMessage& reply);
    void checkUserOf(const QString& name);
    void failed(const std::string& reason);
    void forget(State next);
    bool isInstalled() const;
    static void tellOnce(bool& isTold, const std::string& text);

    Surroundings surroundings;
    std::function<void(std::uint32_t)> counted;
    QDBusServiceWatcher watcher{};
    bool isWanted = false;
    State state = State::asking;
    QString owner{}; // the service's own name on the bus, while it tells
    int conversation = 0; // answers to an earlier one mean nothing
    std::size_t failures = 0; // since it told last
    double lastAskedAt = 0;
    PlausibleKeys plausible{};
    bool isMissingTold = false;
    bool isImpostorTold = false;
    bool isAbsurdityTold = false;

    Lifetime lifetime{};
};

} // namespace quillbrook
