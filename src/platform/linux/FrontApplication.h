#pragma once

#include "base/Lifetime.h"
#include "platform/Workspace.h"
#include "platform/linux/WindowTraits.h"

#include <xcb/xcb.h>

#include <cstdint>
#include <optional>
#include <string>

namespace quillbrook {

class DesktopEntries;
class MainLoop;
class X11Connection;

/// The name and identifier under which a window's application is recorded: those of its desktop
/// entry, else its class, else its program's name. Programs that the category rules should know get
/// the identifier that they know.
RunningApplication applicationOf(const WindowTraits& traits, DesktopEntries& entries);

/// The application in front on an X11 desktop, kept current by the server's events, so that asking
/// costs no round trip.
///
/// Window managers report "no active window" for some milliseconds in ordinary switches: the last
/// application is held for half a second. A front that stays empty is the desktop itself. Main
/// thread only.
class FrontApplication {
public:
    FrontApplication(X11Connection& x11, DesktopEntries& entries, MainLoop& mainLoop);

    FrontApplication(const FrontApplication&) = delete;
    FrontApplication& operator=(const FrontApplication&) = delete;

    /// Empty while nothing is known yet, and for good without an X server.
    const std::optional<RunningApplication>& current() const { return application; }

private:
    void handle(const xcb_generic_event_t& event);
    void update();
    void hold();
    bool hasWindowManager();
    std::optional<xcb_window_t> windowNamedBy(xcb_window_t window, xcb_atom_t property);
    std::optional<WindowTraits> traitsOf(xcb_window_t window);
    void watch(xcb_window_t window);

    X11Connection& x11;
    DesktopEntries& entries;
    MainLoop& mainLoop;
    xcb_atom_t activeWindowAtom;
    xcb_atom_t gtkApplicationIdAtom;
    xcb_atom_t kdeDesktopFileAtom;
    xcb_atom_t pidAtom;
    xcb_window_t watched = 0; // whose end is told to us
    std::uint64_t changes = 0; // of the front, by which a hold sees that it is over
    std::optional<RunningApplication> application{};

    Lifetime lifetime{};
};

} // namespace quillbrook
