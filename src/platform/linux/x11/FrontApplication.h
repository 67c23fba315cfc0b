#pragma once

#include "base/Lifetime.h"
#include "platform/Workspace.h"
#include "platform/linux/x11/ActiveWindow.h"
#include "platform/linux/x11/WindowReader.h"
#include "platform/linux/x11/WindowWatch.h"

#include <xcb/xcb.h>

#include <cstdint>
#include <optional>

namespace quillbrook {

class DesktopEntries;
class MainLoop;
class X11Connection;

/// The application in front on an X11 desktop, kept current by the server's events, so that asking
/// costs no round trip.
///
/// Window managers report "no active window" for some milliseconds in ordinary switches: the last
/// application is held for half a second. A front that stays empty is the desktop itself where a
/// window manager tells so, and none where nobody can tell. Main thread only.
class FrontApplication {
public:
    FrontApplication(X11Connection& x11, DesktopEntries& entries, MainLoop& mainLoop);

    FrontApplication(const FrontApplication&) = delete;
    FrontApplication& operator=(const FrontApplication&) = delete;

    /// Empty while nothing is known, and for good without an X server.
    const std::optional<RunningApplication>& current() const { return application; }

private:
    void handle(const xcb_generic_event_t& event);
    void update();
    SeenWindow servedBy(const SeenWindow& seen) const;
    void hold();

    X11Connection& x11;
    DesktopEntries& entries;
    MainLoop& mainLoop;
    ActiveWindow active;
    WindowReader reader;
    WindowWatch front; // whose end and whose changes are told to us
    bool tellsEmptyFront; // of the server: false where it doesn't know of all windows
    std::uint64_t fronts = 0; // seen so far, by which a hold sees that it is over
    bool isHolding = false;
    std::optional<RunningApplication> application{};

    Lifetime lifetime{};
};

} // namespace quillbrook
