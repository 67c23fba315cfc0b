#include "platform/linux/x11/X11ScreenSaver.h"

#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/XcbReply.h"

#include <xcb/screensaver.h>

#include <utility>

namespace quillbrook {

X11ScreenSaver::X11ScreenSaver(X11Connection& x11, std::function<void(bool)> changed)
{
    const std::uint8_t firstEvent = x11.firstEvent(xcb_screensaver_id);
    if (firstEvent == 0) {
        return;
    }
    x11.addHandler([firstEvent, changed = std::move(changed)](const xcb_generic_event_t& event) {
        if ((event.response_type & 0x7f) == firstEvent + XCB_SCREENSAVER_NOTIFY) {
            const auto& notify = reinterpret_cast<const xcb_screensaver_notify_event_t&>(event);
            changed(notify.state == XCB_SCREENSAVER_STATE_ON);
        }
    });
    // Waiting for the server's answer makes sure that no change from here on is missed.
    const auto cookie = xcb_screensaver_select_input_checked(
        x11.get(), x11.root(), XCB_SCREENSAVER_EVENT_NOTIFY_MASK);
    const XcbReply<xcb_generic_error_t> ignored(xcb_request_check(x11.get(), cookie));
    x11.drain();
}

} // namespace quillbrook
