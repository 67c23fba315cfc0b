#pragma once

#include <xcb/xcb.h>

#include <cstdint>

namespace quillbrook {

class X11Connection;

/// The events of one window that one part of the program wants to hear of. Several parts may watch
/// one window: the server keeps a single mask for it, which holds what all of them want. Main
/// thread only; the connection outlives it.
class WindowWatch {
public:
    explicit WindowWatch(X11Connection& x11);
    ~WindowWatch();

    WindowWatch(const WindowWatch&) = delete;
    WindowWatch& operator=(const WindowWatch&) = delete;

    /// Watches `next`, 0 for none, and no longer the window before. Asks the server each time, as
    /// a window's number may be that of a new one.
    void set(xcb_window_t next, std::uint32_t nextEvents);

    xcb_window_t window() const { return watched; }
    std::uint32_t events() const { return wanted; }

private:
    X11Connection& x11;
    xcb_window_t watched = 0;
    std::uint32_t wanted = XCB_EVENT_MASK_NO_EVENT;
};

} // namespace quillbrook
