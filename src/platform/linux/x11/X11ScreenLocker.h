#pragma once

#include "base/Lifetime.h"
#include "platform/linux/x11/WindowWatch.h"

#include <cstdint>
#include <functional>

namespace quillbrook {

class MainLoop;
class X11Connection;

/// Tells when a program has locked the screens by itself, as i3lock and xsecurelock do, which tell
/// nobody: `changed(true)`, and when they are unlocked.
///
/// What such programs have in common is a window that covers the whole screen, over all windows of
/// applications and past the window manager, while the keyboard is held by a grab. A picker for
/// colours or a part of the screen looks the same for a moment, so only what lasts ten seconds is a
/// lock. The server tells of grabs by events, so that nothing is asked at rest. Lives as long as
/// the connection; main thread only.
class X11ScreenLocker {
public:
    X11ScreenLocker(X11Connection& x11, MainLoop& mainLoop, std::function<void(bool)> changed);

    X11ScreenLocker(const X11ScreenLocker&) = delete;
    X11ScreenLocker& operator=(const X11ScreenLocker&) = delete;

private:
    void handle(const xcb_generic_event_t& event);
    void focusChanged(int mode);
    void watchFocus();
    void keyboardWasGrabbed();
    void keyboardWasFreed();
    bool isKeyboardHeld() const;
    xcb_window_t findCover() const;
    bool isOfApplication(xcb_window_t window) const;
    void lookForCover();
    void uncover();

    X11Connection& x11;
    MainLoop& mainLoop;
    std::function<void(bool)> changed;
    xcb_atom_t stateAtom;
    WindowWatch root;
    WindowWatch focus; // the window with the focus, which is told of each grab
    bool isGrabbed = false;
    xcb_window_t cover = 0;
    std::uint64_t covers = 0; // that came or went, by which a wait sees that it is over
    bool isLocked = false;
    Lifetime lifetime{};
};

} // namespace quillbrook
