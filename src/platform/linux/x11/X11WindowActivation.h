#pragma once

#include "platform/WindowActivation.h"

#include <xcb/xcb.h>

#include <optional>

namespace quillbrook {

class X11Connection;

/// The server's time at which a launch began, from a startup identifier such as
/// "panel-4711-host_TIME123456"; empty when it tells none.
std::optional<xcb_timestamp_t> startupTime(std::string_view startupId);

/// The time of a request: that of the launch, else `now`. A launch of more than half a minute ago
/// is not the one that asks: terminals hand the identifier of their own launch down.
xcb_timestamp_t requestTime(std::string_view startupId, xcb_timestamp_t now);

/// Asks the window manager of X11.
class X11WindowActivation final : public WindowActivation {
public:
    explicit X11WindowActivation(X11Connection& x11);

    X11WindowActivation(const X11WindowActivation&) = delete;
    X11WindowActivation& operator=(const X11WindowActivation&) = delete;

    bool bring(std::uint64_t window, std::string_view startupId) override;

private:
    bool canBeAsked();
    xcb_timestamp_t serverTime();
    std::optional<std::uint32_t> numberOf(xcb_window_t window, const char* property);

    X11Connection& x11;
    xcb_window_t clockWindow = XCB_WINDOW_NONE; // whose changes carry the server's time
    xcb_timestamp_t lastTime = XCB_CURRENT_TIME;
};

} // namespace quillbrook
