#pragma once

#include "base/Color.h"
#include "base/Property.h"

#include <functional>
#include <optional>

namespace quillbrook {

/// How the desktop wants windows to look; empty where it has no preference or tells none.
struct Appearance {
    std::optional<bool> isDark{};
    std::optional<Color> accent{};

    bool operator==(const Appearance&) const = default;
};

/// The desktop's wishes for all windows. Main thread only.
class DesktopAppearance {
public:
    virtual ~DesktopAppearance() = default;

    /// Calls `changed` with what is known now, and at each change as long as the subscription
    /// lives. macOS: the application's effective appearance; Linux: the settings
    /// portal, else the theme that the desktop shares or KDE's colours.
    [[nodiscard]] virtual Subscription observe(std::function<void(const Appearance&)> changed) = 0;

    /// Calls `body` once: now, or when the desktop, which is given a moment, has told its wishes. A
    /// window that is shown then doesn't change its look at once. macOS: now.
    virtual void whenKnown(std::function<void()> body) = 0;

    /// Whether a window may be partly transparent at the moment. macOS: always; Linux: Wayland, or
    /// X11 with a compositor.
    virtual bool canBlendWindows() const = 0;
};

} // namespace quillbrook
