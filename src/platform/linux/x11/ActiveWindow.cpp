#include "platform/linux/x11/ActiveWindow.h"

#include "platform/linux/x11/WindowProperties.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/XcbReply.h"

#include <algorithm>

namespace quillbrook {

namespace {

constexpr int kMaxDepth = 32; // of windows in windows

constexpr std::uint32_t kFocusEvents = XCB_EVENT_MASK_FOCUS_CHANGE;
constexpr std::uint32_t kPointerEvents = XCB_EVENT_MASK_ENTER_WINDOW | XCB_EVENT_MASK_LEAVE_WINDOW;

} // namespace

ActiveWindow::ActiveWindow(X11Connection& x11)
    : x11(x11)
    , activeWindowAtom(x11.atom("_NET_ACTIVE_WINDOW"))
    , managerAtom(x11.atom("_NET_SUPPORTING_WM_CHECK"))
    , supportedAtom(x11.atom("_NET_SUPPORTED"))
    , root(x11)
    , manager(x11)
    , focus(x11)
{
    root.set(x11.root(), XCB_EVENT_MASK_PROPERTY_CHANGE);
    readManager();
}

void ActiveWindow::readManager()
{
    // A manager names a window of its own, which names itself; what a dead one left names nothing.
    const auto named = windowNamedBy(x11, x11.root(), managerAtom);
    const bool isNamed = named && *named != x11.root();
    manager.set(isNamed ? *named : xcb_window_t{XCB_WINDOW_NONE},
        XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE);
    const bool isAlive = isNamed && windowNamedBy(x11, *named, managerAtom) == named;
    if (isNamed && !isAlive) {
        isToldByManager = false;
        return;
    }
    const auto supported = numbersIn(x11, x11.root(), supportedAtom, XCB_ATOM_ATOM);
    isToldByManager = supported
        ? std::ranges::find(*supported, activeWindowAtom) != supported->end()
        : numbersIn(x11, x11.root(), activeWindowAtom, XCB_GET_PROPERTY_TYPE_ANY).has_value();
}

std::optional<xcb_window_t> ActiveWindow::read()
{
    if (!isToldByManager) {
        return focusedClient();
    }
    root.set(x11.root(), XCB_EVENT_MASK_PROPERTY_CHANGE);
    focus.set(XCB_WINDOW_NONE, XCB_EVENT_MASK_NO_EVENT);
    const auto window = windowNamedBy(x11, x11.root(), activeWindowAtom);
    return window != x11.root() ? window : std::nullopt; // the root is the screen, and nobody's
}

bool ActiveWindow::changesWith(const xcb_generic_event_t& event)
{
    switch (event.response_type & 0x7f) {
    case XCB_PROPERTY_NOTIFY: {
        const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(event);
        if (changesManager(change)) {
            readManager();
            return true;
        }
        return isToldByManager && change.window == x11.root() && change.atom == activeWindowAtom;
    }
    case XCB_DESTROY_NOTIFY: {
        const auto& end = reinterpret_cast<const xcb_destroy_notify_event_t&>(event);
        if (end.window == manager.window()) {
            readManager();
            return true;
        }
        return !isToldByManager && end.window == focus.window();
    }
    case XCB_FOCUS_IN:
    case XCB_FOCUS_OUT: {
        const auto& change = reinterpret_cast<const xcb_focus_in_event_t&>(event);
        return !isToldByManager && change.mode != XCB_NOTIFY_MODE_GRAB;
    }
    case XCB_ENTER_NOTIFY:
    case XCB_LEAVE_NOTIFY:
        return !isToldByManager;
    default:
        return false;
    }
}

bool ActiveWindow::changesManager(const xcb_property_notify_event_t& change) const
{
    if (change.window == x11.root()) {
        // Some managers do without a window of their own, and show themselves by what they tell.
        return change.atom == managerAtom || change.atom == supportedAtom
            || (change.atom == activeWindowAtom && !isToldByManager);
    }
    return change.window == manager.window() && change.atom == managerAtom;
}

std::optional<xcb_window_t> ActiveWindow::focusedClient()
{
    // The events are asked for before the state is read, so that no change falls in between.
    root.set(x11.root(), XCB_EVENT_MASK_PROPERTY_CHANGE | kFocusEvents);
    const XcbReply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(x11.get(), xcb_get_input_focus(x11.get()), nullptr));
    if (!reply || reply->focus == XCB_INPUT_FOCUS_NONE) {
        return std::nullopt;
    }
    if (reply->focus == XCB_INPUT_FOCUS_POINTER_ROOT || reply->focus == x11.root()) {
        return clientUnderPointer();
    }
    focus.set(reply->focus, kFocusEvents | XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    return clientAround(reply->focus);
}

std::optional<xcb_window_t> ActiveWindow::clientUnderPointer()
{
    root.set(x11.root(), XCB_EVENT_MASK_PROPERTY_CHANGE | kFocusEvents | kPointerEvents);
    const XcbReply<xcb_query_pointer_reply_t> reply(
        xcb_query_pointer_reply(x11.get(), xcb_query_pointer(x11.get(), x11.root()), nullptr));
    const xcb_window_t window = reply ? reply->child : xcb_window_t{XCB_WINDOW_NONE};
    focus.set(window, kFocusEvents | kPointerEvents | XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    return window != XCB_WINDOW_NONE ? clientWithin(window) : std::nullopt;
}

std::optional<xcb_window_t> ActiveWindow::clientAround(xcb_window_t window) const
{
    for (int depth = 0; depth < kMaxDepth && window != x11.root(); ++depth) {
        if (isClient(window)) {
            return window;
        }
        const XcbReply<xcb_query_tree_reply_t> tree(
            xcb_query_tree_reply(x11.get(), xcb_query_tree(x11.get(), window), nullptr));
        if (!tree || tree->parent == XCB_WINDOW_NONE) {
            break;
        }
        window = tree->parent;
    }
    return std::nullopt;
}

std::optional<xcb_window_t> ActiveWindow::clientWithin(xcb_window_t frame) const
{
    if (isClient(frame)) {
        return frame;
    }
    const auto windows = childrenOf(x11, frame);
    const auto found
        = std::ranges::find_if(windows, [this](xcb_window_t window) { return isClient(window); });
    return found != windows.end() ? std::optional(*found) : std::nullopt;
}

bool ActiveWindow::isClient(xcb_window_t window) const
{
    return numbersIn(x11, window, XCB_ATOM_WM_CLASS, XCB_GET_PROPERTY_TYPE_ANY).has_value();
}

} // namespace quillbrook
