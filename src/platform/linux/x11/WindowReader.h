#pragma once

#include "platform/linux/applications/WindowTraits.h"

#include <xcb/xcb.h>

#include <array>
#include <optional>
#include <string>

namespace quillbrook {

class X11Connection;

/// A window as the server knows it at one moment.
struct SeenWindow {
    WindowTraits traits{};
    bool isDesktop = false; // the background of the screen, with icons maybe
    xcb_window_t transientFor = 0; // the window that it serves; 0 when there is none

    bool operator==(const SeenWindow&) const = default;
};

/// Reads what windows tell of themselves. Main thread only.
class WindowReader {
public:
    explicit WindowReader(X11Connection& x11);

    /// Empty when the window is gone. Waits for the server once.
    std::optional<SeenWindow> read(xcb_window_t window) const;

    /// Whether a window's property is one that `read` looks at.
    bool reads(xcb_atom_t property) const;

private:
    enum Property {
        wmClass,
        gtkApplicationId,
        kdeDesktopFile,
        pid,
        machine,
        windowType,
        transient
    };

    X11Connection& x11;
    std::array<xcb_atom_t, 7> atoms; // by Property
    xcb_atom_t desktopTypeAtom;
    bool knowsClients; // the server can tell the process of a window
    std::string hostName;
};

} // namespace quillbrook
