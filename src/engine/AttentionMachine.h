#pragma once

#include "engine/AttentionState.h"
#include "platform/Platform.h"

#include <cstdint>
#include <optional>
#include <string>

namespace quillbrook {

class MonitorLog;
class MonitorStore;

/// Decides second by second which application has a person's attention, and writes each change as
/// rows of sessions and idle periods at the moment it happens.
///
/// A tick every second sees switches, sleep and locked screens. A check every minute looks at the
/// time since the last input; it alone finds that a person has gone, and nearly alone that one is
/// back. All times are seconds since 1970. Main thread only.
class AttentionMachine {
public:
    AttentionMachine(const Platform& platform, MonitorStore& store, MonitorLog& log)
        : platform(platform)
        , store(store)
        , log(log)
    {
    }

    /// Takes the present as the base of the silence and as the last input.
    void begin();

    /// One second's look at the machine.
    void attentionTick();

    /// One minute's look at the person.
    void humanPresenceCheck();

    void screensDidSleep();
    void screensDidWake();
    void systemWillSleep();
    void systemDidWake();

private:
    struct PendingFrontmost {
        std::string name{};
        std::string bundleId{};
        double firstSeenAt = 0;
    };

    struct Judgement {
        std::string name{};
        std::string bundleId{};
        bool isSystemApp = false;
    };

    bool isSystemApp(const std::string& name, const std::string& bundleId);
    bool isSystemName(const std::string& name) const;
    AttentionSnapshot collectSnapshot();
    AttentionState reduce(const AttentionState& state, const AttentionSnapshot& snapshot);
    void executeTransition(const AttentionState& from, const AttentionState& to);
    void becomeIdle(double now);
    void switchTo(const ActiveApp& app, double now);
    void resume(const ActiveApp& app, double now);
    void goIdleByTimeout(double now);
    void tryToRecover(double now);
    void logHealth(double now, double hid, bool wasActive);
    std::int64_t causeCode() const;

    Platform platform;
    MonitorStore& store;
    MonitorLog& log;

    AttentionState attentionState{};
    std::optional<Judgement> lastJudgement{}; // asked for each second of the same application
    std::optional<PendingFrontmost> pendingFrontmost{};
    bool isLocked = false;
    bool isSleeping = false;
    std::optional<IdleSourceType> lastInactiveCause{};
    std::string currentAppName = "Unknown"; // stays when the session has closed
    double currentSessionStart = 0;
    double lastStateTransition = 0;
    double lastHIDActivityTime = 0;
    double sleepStartTime = 0;
    double lastHealthCheckLog = 0;
};

} // namespace quillbrook
