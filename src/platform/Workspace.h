#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace quillbrook {

/// What the system says of a running application. Texts are well-formed UTF-8.
struct RunningApplication {
    std::optional<std::string> localizedName{};
    std::optional<std::string> bundleIdentifier{};
};

enum class WorkspaceNotification : std::uint8_t {
    screensDidSleep, ///< the screens went dark, or the session was locked
    screensDidWake,
    willSleep, ///< the machine is about to sleep; observers, and what is due each second, run
               ///< before
    didWake, ///< told before anything else runs after a sleep
};

/// The user's desktop: what runs on it, what is in front, and when it sleeps. Main thread only.
class Workspace {
public:
    virtual ~Workspace() = default;

    /// The application that receives the keys, if any. macOS: `NSWorkspace.frontmostApplication`;
    /// Linux: the owner of the active window, the desktop itself where a window manager tells that
    /// there is none, and nothing where nobody can tell. Cheap enough for every second.
    virtual std::optional<RunningApplication> frontmostApplication() const = 0;

    /// How many processes of this application run, the asking one included. macOS:
    /// `NSRunningApplication`; Linux: processes of this user and session with our executable.
    virtual int runningApplicationCount(std::string_view bundleIdentifier) const = 0;

    /// The process id of the asking process.
    virtual std::int64_t processIdentifier() const = 0;

    /// Calls `observer` at each such notification, in the order of adding, for the life of the
    /// process. macOS: the workspace's notification center; Linux: logind, the screen savers and
    /// the display's power management.
    virtual void addObserver(WorkspaceNotification notification, std::function<void()> observer)
        = 0;
};

} // namespace quillbrook
