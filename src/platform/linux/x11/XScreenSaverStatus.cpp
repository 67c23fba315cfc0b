#include "platform/linux/x11/XScreenSaverStatus.h"

#include "platform/linux/x11/WindowProperties.h"
#include "platform/linux/x11/X11Connection.h"

#include <algorithm>
#include <utility>

namespace quillbrook {

XScreenSaverStatus::XScreenSaverStatus(X11Connection& x11, std::function<void(bool)> changed)
    : x11(x11)
    , changed(std::move(changed))
    , statusAtom(x11.atom("_SCREENSAVER_STATUS"))
    , versionAtom(x11.atom("_SCREENSAVER_VERSION"))
    , root(x11)
    , daemon(x11)
{
    if (!x11.isUsable()) {
        return;
    }
    root.set(x11.root(), XCB_EVENT_MASK_PROPERTY_CHANGE);
    x11.addHandler([this](const xcb_generic_event_t& event) { handle(event); });
    update();
    x11.drain();
}

void XScreenSaverStatus::handle(const xcb_generic_event_t& event)
{
    const int type = event.response_type & 0x7f;
    if (type == XCB_PROPERTY_NOTIFY) {
        const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(event);
        if (change.window == x11.root() && change.atom == statusAtom) {
            update();
        }
    } else if (type == XCB_DESTROY_NOTIFY) {
        const auto& end = reinterpret_cast<const xcb_destroy_notify_event_t&>(event);
        if (end.window == daemon.window()) {
            update();
        }
    }
}

void XScreenSaverStatus::update()
{
    // The first number is 0 while the screens show what people work on. A daemon that was killed
    // leaves the property as it was.
    const auto status = numbersIn(x11, x11.root(), statusAtom, XCB_ATOM_INTEGER);
    const bool saysOn = status && !status->empty() && status->front() != 0;
    daemon.set(
        saysOn ? findDaemon() : xcb_window_t{XCB_WINDOW_NONE}, XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    // Asked again once its end would be told: it may have gone in between.
    if (daemon.window() != XCB_WINDOW_NONE && !isDaemon(daemon.window())) {
        daemon.set(XCB_WINDOW_NONE, XCB_EVENT_MASK_NO_EVENT);
    }
    const bool isOn = daemon.window() != XCB_WINDOW_NONE;
    if (isOn != std::exchange(wasOn, isOn)) {
        changed(isOn);
    }
}

bool XScreenSaverStatus::isDaemon(xcb_window_t window) const
{
    return numbersIn(x11, window, versionAtom, XCB_GET_PROPERTY_TYPE_ANY).has_value();
}

xcb_window_t XScreenSaverStatus::findDaemon() const
{
    const auto windows = childrenOf(x11, x11.root());
    const auto found
        = std::ranges::find_if(windows, [this](xcb_window_t window) { return isDaemon(window); });
    return found != windows.end() ? *found : xcb_window_t{XCB_WINDOW_NONE};
}

} // namespace quillbrook
