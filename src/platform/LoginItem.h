#pragma once

#include <optional>
#include <string>

namespace quillbrook {

/// Why the login item could not be changed, in words for the log.
struct LoginItemFailure {
    std::string description{};
};

/// Whether the program starts by itself when the user logs in. Main thread only.
class LoginItem {
public:
    virtual ~LoginItem() = default;

    /// macOS: the status of `SMAppService.mainAppService` is enabled; Linux: an autostart entry of
    /// ours that the desktop will start and whose program is there. Asked of the system each time.
    virtual bool isEnabled() const = 0;

    /// Switches it on. Empty on success. macOS: `register`; Linux: writes the autostart entry.
    virtual std::optional<LoginItemFailure> enable() = 0;

    /// Switches it off. Empty on success. macOS: `unregister`; Linux: removes the user's autostart
    /// entry, or hides the system's with one that is switched off.
    virtual std::optional<LoginItemFailure> disable() = 0;
};

} // namespace quillbrook
