#pragma once

#include "base/Lifetime.h"
#include "platform/KeyCounting.h"
#include "platform/Platform.h"

#include <cstdint>
#include <memory>
#include <string_view>

namespace quillbrook {

class MonitorLog;
class MonitorStore;
class Notifier;

/// Counts key presses, never their content, and once a minute writes the count with the frontmost
/// application and the class of the input method.
///
/// Counting needs the system's permission at the start. The first way is the global monitor; where
/// there is none, an event tap, tried again after 10, 30, 60 and then every 300 seconds, until a
/// third failure under a granted permission shows that the grant is stale: it is reset, and
/// counting stays off until the program's next start. Main thread only.
class KeystrokeCapture {
public:
    /// `isRunning` is the engine's, which stays true to its end.
    KeystrokeCapture(const Platform& platform, MonitorStore& store, Notifier& notifier,
        MonitorLog& log, const bool& isRunning)
        : platform(platform)
        , store(store)
        , notifier(notifier)
        , log(log)
        , isRunning(isRunning)
    {
    }

    /// Begins to count a second from now, if the permission is there.
    void setupKeyTap();

    /// Writes the keys since the last flush, if there are any. What can't be written is lost.
    void flushKeystrokesToDB();

    /// Switches the event tap off, if there is one. The monitor can't be switched off.
    void disableTap();

private:
    void start();
    bool tryNSEventMonitor();
    void tryCreateKeyTap();
    void tapFailed();
    void resetStaleAccessibilityPermission();
    std::string_view classifyInputMethod() const;
    KeyCounting::KeyDownHandler countingHandler();

    Platform platform;
    MonitorStore& store;
    Notifier& notifier;
    MonitorLog& log;
    const bool& isRunning;

    std::int64_t gKeystrokeCount = 0;
    std::unique_ptr<EventTap> keyTap{};
    int keyTapRetryCount = 0;

    Lifetime lifetime{};
};

} // namespace quillbrook
