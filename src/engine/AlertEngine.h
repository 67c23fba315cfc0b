#pragma once

#include "engine/SystemSampler.h"
#include "platform/Platform.h"

#include <limits>

namespace quillbrook {

class MonitorLog;
class MonitorStore;
class Notifier;
struct AlertRule;

/// Holds each sample of the system against fixed thresholds. A threshold must be exceeded in
/// several samples, of which a good one undoes a bad one, and a cool-down must have passed, before
/// an alert becomes a row, a notification and a log line. Counts and cool-downs live in memory
/// only. Main thread only.
class AlertEngine {
public:
    AlertEngine(const Platform& platform, MonitorStore& store, Notifier& notifier, MonitorLog& log)
        : platform(platform)
        , store(store)
        , notifier(notifier)
        , log(log)
    {
    }

    /// Checks all rules against one sample; several may fire.
    void checkAlerts(const SystemSample& sample);

private:
    static constexpr double kDistantPast = -std::numeric_limits<double>::infinity();

    void checkRule(const AlertRule& rule, double value, double now, int& count, double& lastSent);
    bool fireAfterCoolDown(const AlertRule& rule, double value, double now, double& lastSent);

    Platform platform;
    MonitorStore& store;
    Notifier& notifier;
    MonitorLog& log;

    int loadWarningCount = 0;
    int loadCriticalCount = 0;
    int wsWarningCount = 0;
    int memWarningCount = 0;
    double lastLoadWarningSent = kDistantPast; // seconds since 1970
    double lastLoadCriticalSent = kDistantPast;
    double lastWsWarningSent = kDistantPast;
    double lastMemWarningSent = kDistantPast;
    double lastSwapCriticalSent = kDistantPast;
};

} // namespace quillbrook
