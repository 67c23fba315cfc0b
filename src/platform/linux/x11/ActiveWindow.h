#pragma once

#include "platform/linux/x11/WindowWatch.h"

#include <xcb/xcb.h>

#include <optional>
#include <vector>

namespace quillbrook {

class X11Connection;

/// The window that has the keys: the one that the window manager calls active, and where none does,
/// the one with the input focus, or under the pointer when the focus follows it. Main thread only.
class ActiveWindow {
public:
    explicit ActiveWindow(X11Connection& x11);

    /// The window, which may be gone; nothing when there is none. Waits for the server, and watches
    /// for what would change the answer.
    std::optional<xcb_window_t> read();

    /// Whether the answer may be another after an event.
    bool changesWith(const xcb_generic_event_t& event);

    /// Whether a window manager tells of each active window, so that none is the empty desktop.
    /// Otherwise none is simply not known.
    bool isTold() const { return isToldByManager; }

private:
    void readManager();
    bool changesManager(const xcb_property_notify_event_t& change) const;
    std::optional<xcb_window_t> focusedClient();
    std::optional<xcb_window_t> clientUnderPointer();
    std::optional<xcb_window_t> clientAround(xcb_window_t window) const;
    std::optional<xcb_window_t> clientWithin(xcb_window_t frame) const;
    bool isClient(xcb_window_t window) const;

    X11Connection& x11;
    xcb_atom_t activeWindowAtom;
    xcb_atom_t managerAtom;
    xcb_atom_t supportedAtom;
    bool isToldByManager = false;
    WindowWatch root;
    WindowWatch manager; // the window by which a window manager shows that it lives
    WindowWatch focus; // the window with the focus or under the pointer, where no manager tells
};

} // namespace quillbrook
