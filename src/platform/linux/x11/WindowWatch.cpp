#include "platform/linux/x11/WindowWatch.h"

#include "platform/linux/x11/X11Connection.h"

#include <utility>

namespace quillbrook {

WindowWatch::WindowWatch(X11Connection& x11) : x11(x11)
{
    x11.add(*this);
}

WindowWatch::~WindowWatch()
{
    set(0, XCB_EVENT_MASK_NO_EVENT);
    x11.remove(*this);
}

void WindowWatch::set(xcb_window_t next, std::uint32_t nextEvents)
{
    const xcb_window_t before = std::exchange(watched, next);
    wanted = nextEvents;
    if (before != next) {
        x11.selectEvents(before);
    }
    x11.selectEvents(next);
}

} // namespace quillbrook
