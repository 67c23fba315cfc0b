#pragma once

#include "platform/linux/x11/WindowWatch.h"

#include <functional>

namespace quillbrook {

class X11Connection;

/// Tells when the program xscreensaver blanks or locks the screens: `changed(true)`, and when it no
/// longer does. It says so in a property of the root window and nowhere else. Lives as long as the
/// connection; main thread only.
class XScreenSaverStatus {
public:
    XScreenSaverStatus(X11Connection& x11, std::function<void(bool)> changed);

    XScreenSaverStatus(const XScreenSaverStatus&) = delete;
    XScreenSaverStatus& operator=(const XScreenSaverStatus&) = delete;

private:
    void handle(const xcb_generic_event_t& event);
    void update();
    bool isDaemon(xcb_window_t window) const;
    xcb_window_t findDaemon() const;

    X11Connection& x11;
    std::function<void(bool)> changed;
    xcb_atom_t statusAtom;
    xcb_atom_t versionAtom;
    WindowWatch root;
    WindowWatch daemon; // by whose end we see that what the property says is over
    bool wasOn = false;
};

} // namespace quillbrook
