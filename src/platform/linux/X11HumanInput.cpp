#include "platform/linux/X11HumanInput.h"

#include "platform/linux/Notice.h"
#include "platform/linux/X11Connection.h"
#include "platform/linux/XcbReply.h"

#include <xcb/screensaver.h>

namespace quillbrook {

X11HumanInput::X11HumanInput(X11Connection& x11)
    : x11(x11)
    , isKnown(x11.majorOpcode(xcb_screensaver_id) != 0)
{
    if (x11.isUsable() && !isKnown) {
        notice("X 服务器没有 MIT-SCREEN-SAVER 扩展，无法得知闲置时间");
    }
}

double X11HumanInput::secondsSinceLastInput() const
{
    if (!isKnown || !x11.isUsable()) {
        return 0;
    }
    const auto cookie = xcb_screensaver_query_info(x11.get(), x11.root());
    const XcbReply<xcb_screensaver_query_info_reply_t> reply(
        xcb_screensaver_query_info_reply(x11.get(), cookie, nullptr));
    x11.drain();
    return reply ? reply->ms_since_user_input / 1000.0 : 0;
}

} // namespace quillbrook
