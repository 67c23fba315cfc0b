#include "platform/linux/x11/FrontApplication.h"

#include "platform/MainLoop.h"
#include "platform/linux/applications/ApplicationIdentity.h"
#include "platform/linux/words/Notice.h"
#include "platform/linux/x11/X11Connection.h"

#include <xcb/screensaver.h>

#include <set>

namespace quillbrook {

namespace {

constexpr double kHoldSec = 0.5;
constexpr std::size_t kMaxServed = 8; // windows that serve one another in a row

} // namespace

FrontApplication::FrontApplication(X11Connection& x11, DesktopEntries& entries, MainLoop& mainLoop)
    : x11(x11)
    , entries(entries)
    , mainLoop(mainLoop)
    , active(x11)
    , reader(x11)
    , front(x11)
    // The server of a Wayland desktop sees no native window, and has no screen-saver extension.
    , tellsEmptyFront(x11.has(xcb_screensaver_id))
{
    if (!x11.isUsable()) {
        return;
    }
    x11.addHandler([this](const xcb_generic_event_t& event) { handle(event); });
    if (!active.isTold()) {
        notice("没有窗口管理器说明活动窗口，前台应用按输入焦点判断");
    }
    update();
    x11.drain();
}

void FrontApplication::handle(const xcb_generic_event_t& event)
{
    bool isOther = active.changesWith(event);
    const int type = event.response_type & 0x7f;
    if (type == XCB_PROPERTY_NOTIFY) {
        const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(event);
        isOther = isOther || (change.window == front.window() && reader.reads(change.atom));
    } else if (type == XCB_DESTROY_NOTIFY) {
        const auto& end = reinterpret_cast<const xcb_destroy_notify_event_t&>(event);
        isOther = isOther || end.window == front.window();
    }
    if (isOther) {
        update();
    }
}

void FrontApplication::update()
{
    const auto window = active.read();
    // Watched before it is read, so that no change falls in between.
    front.set(window.value_or(XCB_WINDOW_NONE),
        XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE);
    const auto seen = window ? reader.read(*window) : std::nullopt;
    if (!seen) {
        hold();
        return;
    }
    ++fronts;
    isHolding = false;
    const SeenWindow served = servedBy(*seen);
    if (served.isDesktop) {
        application = desktopItself();
    } else if (!application || !isPortal(served.traits)) {
        application = applicationOf(served.traits, entries);
    } // else it serves the application that asked for it, the one before
}

SeenWindow FrontApplication::servedBy(const SeenWindow& seen) const
{
    SeenWindow last = seen;
    std::set<xcb_window_t> visited;
    while (last.transientFor != XCB_WINDOW_NONE && last.transientFor != x11.root()) {
        if (visited.size() == kMaxServed || !visited.insert(last.transientFor).second) {
            return seen; // a circle leads nowhere
        }
        const auto next = reader.read(last.transientFor);
        if (!next || (next->traits == WindowTraits{} && !next->isDesktop)) {
            break;
        }
        last = *next;
    }
    return last;
}

void FrontApplication::hold()
{
    if (isHolding || !x11.isUsable()) {
        return;
    }
    isHolding = true;
    mainLoop.runAfter(kHoldSec, lifetime.whileAlive([this, frontsThen = fronts] {
        if (fronts == frontsThen) {
            isHolding = false;
            const bool isDesktop = active.isTold() && tellsEmptyFront;
            application = isDesktop ? std::optional(desktopItself()) : std::nullopt;
        }
    }));
}

} // namespace quillbrook
