#pragma once

#include <functional>
#include <memory>

namespace quillbrook {

/// A way of counting keys that can be switched on and off. Ends when it is destroyed.
class EventTap {
public:
    virtual ~EventTap() = default;

    /// macOS: `CGEventTapEnable`.
    virtual void enable(bool isOn) = 0;
};

/// The system's two ways to tell that a key went down somewhere. They never tell which. Key-downs
/// of modifiers don't count. Main thread only.
class KeyCounting {
public:
    /// Runs on the main thread at each key-down.
    using KeyDownHandler = std::function<void()>;

    virtual ~KeyCounting() = default;

    /// Calls `handler` at each key-down from now on, for the life of the process. False when the
    /// system gives no monitor. macOS: `NSEvent.addGlobalMonitorForEvents`; Linux: raw key presses
    /// of XInput 2.
    virtual bool addGlobalMonitor(KeyDownHandler handler) = 0;

    /// A tap that calls `handler` at each key-down while it is enabled, which it isn't at first;
    /// empty when the system gives none. macOS: `CGEventTapCreate`, listening only; Linux: the
    /// RECORD extension.
    virtual std::unique_ptr<EventTap> createTap(KeyDownHandler handler) = 0;
};

} // namespace quillbrook
