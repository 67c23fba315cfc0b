#include "platform/linux/x11/X11ScreenLocker.h"

#include "platform/MainLoop.h"
#include "platform/linux/x11/WindowProperties.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/XcbReply.h"

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

namespace quillbrook {

namespace {

constexpr double kLockSec = 10;
constexpr std::size_t kMostLookedAt = 50; // windows from the top, which any program can heap up
constexpr std::size_t kMostOfFrame = 200; // windows of a window manager's frame

} // namespace

X11ScreenLocker::X11ScreenLocker(
    X11Connection& x11, MainLoop& mainLoop, std::function<void(bool)> changed)
    : x11(x11)
    , mainLoop(mainLoop)
    , changed(std::move(changed))
    , stateAtom(x11.atom("WM_STATE"))
    , root(x11)
    , focus(x11)
{
    if (!x11.isUsable()) {
        return;
    }
    root.set(x11.root(), XCB_EVENT_MASK_FOCUS_CHANGE);
    x11.addHandler([this](const xcb_generic_event_t& event) { handle(event); });
    watchFocus();
    // The keyboard is tried only where the rest looks like a lock, as trying it can be noticed.
    if (findCover() != XCB_WINDOW_NONE && isKeyboardHeld()) {
        keyboardWasGrabbed();
    }
    x11.drain();
}

void X11ScreenLocker::handle(const xcb_generic_event_t& event)
{
    switch (event.response_type & 0x7f) {
    case XCB_FOCUS_IN:
    case XCB_FOCUS_OUT:
        focusChanged(reinterpret_cast<const xcb_focus_in_event_t&>(event).mode);
        break;
    case XCB_DESTROY_NOTIFY: {
        const auto& end = reinterpret_cast<const xcb_destroy_notify_event_t&>(event);
        if (end.window == cover) {
            lookForCover();
        }
        if (end.window == focus.window()) {
            watchFocus();
        }
        break;
    }
    case XCB_UNMAP_NOTIFY:
        if (reinterpret_cast<const xcb_unmap_notify_event_t&>(event).window == cover) {
            lookForCover();
        }
        break;
    case XCB_MAP_NOTIFY:
        if (cover == XCB_WINDOW_NONE
            && reinterpret_cast<const xcb_map_notify_event_t&>(event).override_redirect != 0) {
            lookForCover();
        }
        break;
    case XCB_CONFIGURE_NOTIFY:
        if (cover == XCB_WINDOW_NONE
            && reinterpret_cast<const xcb_configure_notify_event_t&>(event).override_redirect
                != 0) {
            lookForCover();
        }
        break;
    default:
        break;
    }
}

void X11ScreenLocker::focusChanged(int mode)
{
    if (mode == XCB_NOTIFY_MODE_GRAB) {
        keyboardWasGrabbed();
    } else if (mode == XCB_NOTIFY_MODE_UNGRAB) {
        keyboardWasFreed();
    } else {
        watchFocus();
    }
}

void X11ScreenLocker::watchFocus()
{
    const XcbReply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(x11.get(), xcb_get_input_focus(x11.get()), nullptr));
    const bool isWindow = reply && reply->focus != XCB_INPUT_FOCUS_NONE
        && reply->focus != XCB_INPUT_FOCUS_POINTER_ROOT && reply->focus != x11.root();
    focus.set(isWindow ? reply->focus : xcb_window_t{XCB_WINDOW_NONE},
        XCB_EVENT_MASK_FOCUS_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY);
}

void X11ScreenLocker::keyboardWasGrabbed()
{
    if (std::exchange(isGrabbed, true)) {
        return;
    }
    // Some lockers cover the screen first, others take the keyboard first.
    root.set(x11.root(), XCB_EVENT_MASK_FOCUS_CHANGE | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY);
    lookForCover();
}

void X11ScreenLocker::keyboardWasFreed()
{
    isGrabbed = false;
    root.set(x11.root(), XCB_EVENT_MASK_FOCUS_CHANGE);
    uncover();
}

bool X11ScreenLocker::isKeyboardHeld() const
{
    const auto cookie = xcb_grab_keyboard(
        x11.get(), 0, x11.root(), XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    const XcbReply<xcb_grab_keyboard_reply_t> reply(
        xcb_grab_keyboard_reply(x11.get(), cookie, nullptr));
    if (reply && reply->status == XCB_GRAB_STATUS_SUCCESS) {
        xcb_ungrab_keyboard(x11.get(), XCB_CURRENT_TIME);
        xcb_flush(x11.get());
    }
    return reply && reply->status == XCB_GRAB_STATUS_ALREADY_GRABBED;
}

xcb_window_t X11ScreenLocker::findCover() const
{
    const auto geometryOf = [this](xcb_window_t window) {
        return XcbReply<xcb_get_geometry_reply_t>(
            xcb_get_geometry_reply(x11.get(), xcb_get_geometry(x11.get(), window), nullptr));
    };
    const auto screen = geometryOf(x11.root());
    auto windows = childrenOf(x11, x11.root());
    std::ranges::reverse(windows); // from the top
    std::size_t count = 0;
    for (const xcb_window_t window : windows) {
        const XcbReply<xcb_get_window_attributes_reply_t> attributes(
            xcb_get_window_attributes_reply(
                x11.get(), xcb_get_window_attributes(x11.get(), window), nullptr));
        if (!attributes || attributes->map_state != XCB_MAP_STATE_VIEWABLE
            || attributes->_class != XCB_WINDOW_CLASS_INPUT_OUTPUT) {
            continue;
        }
        if (isOfApplication(window) || ++count > kMostLookedAt) {
            break; // somebody works above whatever lies below
        }
        const auto place = geometryOf(window);
        if (attributes->override_redirect != 0 && screen && place && place->x <= 0 && place->y <= 0
            && place->x + place->width >= screen->width
            && place->y + place->height >= screen->height) {
            return window;
        }
    }
    return XCB_WINDOW_NONE;
}

bool X11ScreenLocker::isOfApplication(xcb_window_t window) const
{
    // The frames of window managers pass the manager by as well, and hold what it manages.
    std::vector<xcb_window_t> inside{window};
    for (std::size_t i = 0; i < inside.size() && i < kMostOfFrame; ++i) {
        if (numbersIn(x11, inside[i], stateAtom, XCB_GET_PROPERTY_TYPE_ANY)) {
            return true;
        }
        const auto children = childrenOf(x11, inside[i]);
        inside.insert(inside.end(), children.begin(), children.end());
    }
    return false;
}

void X11ScreenLocker::lookForCover()
{
    if (!isGrabbed) {
        return;
    }
    const xcb_window_t found = findCover();
    if (found == XCB_WINDOW_NONE) {
        uncover();
        return;
    }
    if (std::exchange(cover, found) != XCB_WINDOW_NONE) {
        return; // one gave way to another, as a picture to the field for the password
    }
    mainLoop.runAfter(kLockSec, lifetime.whileAlive([this, coversThen = ++covers] {
        if (covers == coversThen) {
            isLocked = true;
            changed(true);
        }
    }));
}

void X11ScreenLocker::uncover()
{
    cover = XCB_WINDOW_NONE;
    ++covers;
    if (std::exchange(isLocked, false)) {
        changed(false);
    }
}

} // namespace quillbrook
