#pragma once

#include "platform/linux/x11/WindowWatch.h"

#include <xcb/xcb.h>

#include <functional>
#include <optional>
#include <string>

namespace quillbrook {

class X11Connection;

/// The theme of the desktop that shares its settings with all programs of the display, as XFCE,
/// MATE and GNOME do. Whoever shares them may come later and change. Main thread only; as it
/// listens to the connection for good, it lives as long.
class XSettingsTheme {
public:
    /// Calls `changed` at each change, not for what is there now.
    XSettingsTheme(X11Connection& x11, std::function<void()> changed);

    XSettingsTheme(const XSettingsTheme&) = delete;
    XSettingsTheme& operator=(const XSettingsTheme&) = delete;

    /// Empty while none is told.
    const std::optional<std::string>& name() const { return theme; }

private:
    void handle(const xcb_generic_event_t& event);
    void findManager();
    std::optional<std::string> readName();

    X11Connection& x11;
    std::function<void()> changed;
    xcb_atom_t selection; // whose owner shares the settings
    xcb_atom_t managerMessage;
    xcb_atom_t settings;
    WindowWatch root;
    WindowWatch manager;
    std::optional<std::string> theme{};
};

} // namespace quillbrook
