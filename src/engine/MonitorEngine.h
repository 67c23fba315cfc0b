#pragma once

#include "base/Lifetime.h"
#include "engine/AlertEngine.h"
#include "engine/AttentionMachine.h"
#include "engine/KeystrokeCapture.h"
#include "engine/MonitorFiles.h"
#include "engine/MonitorLog.h"
#include "engine/MonitorStore.h"
#include "engine/Notifier.h"
#include "engine/SystemSampler.h"
#include "platform/Platform.h"

namespace quillbrook {

/// The background collector: records who has a person's attention, how many keys are pressed and
/// whether the machine is under strain, from `start` to `stop`, into monitor.db in the data
/// directory, with monitor.log and monitor.pid beside it.
///
/// It has no lock: everything runs on the main thread. Timers and observers that it leaves in the
/// platform do nothing once it is gone. A new `start` after `stop` would schedule them a second
/// time, so an engine is started once.
class MonitorEngine {
public:
    explicit MonitorEngine(const Platform& platform) : platform(platform) {}

    /// Opens the store and begins to record; nothing if it records already. When another instance
    /// of the program runs, or the store can't be opened, the log says so and nothing is recorded;
    /// the next call tries again.
    void start();

    /// Finishes all open rows and closes the store; nothing unless `start` succeeded before.
    void stop();

private:
    bool checkSingleInstance();
    void removePidFile();
    void registerObservers();
    void scheduleTimers();

    Platform platform;
    MonitorFiles files{platform.directories};
    MonitorLog log{platform.clock};
    MonitorStore store{platform, log};
    AttentionMachine attention{platform, store, log};
    Notifier notifier{platform, log};
    SystemSampler sampler{platform};
    AlertEngine alertEngine{platform, store, notifier, log};
    KeystrokeCapture keystrokes{platform, store, notifier, log, isRunning};
    bool isRunning = false;

    Lifetime lifetime{};
};

} // namespace quillbrook
