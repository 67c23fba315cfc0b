#include "platform/linux/x11/X11Dpms.h"

#include "platform/MainLoop.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/XcbReply.h"

#include <xcb/dpms.h>

#include <utility>

namespace quillbrook {

namespace {

constexpr double kPollSec = 5;

bool isCapable(X11Connection& x11)
{
    if (x11.majorOpcode(xcb_dpms_id) == 0) {
        return false;
    }
    const XcbReply<xcb_dpms_capable_reply_t> reply(
        xcb_dpms_capable_reply(x11.get(), xcb_dpms_capable(x11.get()), nullptr));
    x11.drain();
    return reply && reply->capable != 0;
}

bool isOff(X11Connection& x11)
{
    if (!x11.isUsable()) {
        return false;
    }
    const XcbReply<xcb_dpms_info_reply_t> reply(
        xcb_dpms_info_reply(x11.get(), xcb_dpms_info(x11.get()), nullptr));
    x11.drain();
    return reply && reply->state != 0 && reply->power_level != XCB_DPMS_DPMS_MODE_ON;
}

} // namespace

X11Dpms::X11Dpms(X11Connection& x11, MainLoop& mainLoop, std::function<void(bool)> changed)
{
    if (!isCapable(x11)) {
        return;
    }
    mainLoop.repeatEvery(kPollSec, [this, &x11, changed = std::move(changed)] {
        const bool isOffNow = isOff(x11);
        if (isOffNow != std::exchange(wasOff, isOffNow)) {
            changed(isOffNow);
        }
    });
}

} // namespace quillbrook
