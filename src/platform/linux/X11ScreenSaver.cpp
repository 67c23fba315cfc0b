#include "platform/linux/X11ScreenSaver.h"

#include "platform/linux/X11Connection.h"

#include <xcb/screensaver.h>

#include <utility>

namespace quillbrook {

X11ScreenSaver::X11ScreenSaver(X11Connection& x11, std::function<void(bool)> changed)
{
    const std::uint8_t firstEvent = x11.firstEvent(xcb_screensaver_id);
    if (firstEvent == 0) {
        return;
    }
    xcb_screensaver_select_input(x11.get(), x11.root(), XCB_SCREENSAVER_EVENT_NOTIFY_MASK);
    xcb_flush(x11.get());
    x11.addHandler([firstEvent, changed = std::move(changed)](const xcb_generic_event_t& event) {
        if ((event.response_type & 0x7f) == firstEvent + XCB_SCREENSAVER_NOTIFY) {
            const auto& notify = reinterpret_cast<const xcb_screensaver_notify_event_t&>(event);
            changed(notify.state == XCB_SCREENSAVER_STATE_ON);
        }
    });
}

} // namespace quillbrook
