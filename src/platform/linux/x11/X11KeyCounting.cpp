#include "platform/linux/x11/X11KeyCounting.h"

#include "platform/linux/x11/RecordTap.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/XWayland.h"
#include "platform/linux/x11/XcbReply.h"

#include <xcb/record.h>
#include <xcb/xinput.h>

#include <utility>

namespace quillbrook {

namespace {

/// XInput's opcode when the server has version 2.1 or later: raw events of earlier ones stop while
/// another program holds the keyboard.
std::uint8_t inputOpcodeOf(X11Connection& x11)
{
    const std::uint8_t opcode = x11.majorOpcode(xcb_input_id);
    if (opcode == 0) {
        return 0;
    }
    const XcbReply<xcb_input_xi_query_version_reply_t> reply(xcb_input_xi_query_version_reply(
        x11.get(), xcb_input_xi_query_version(x11.get(), 2, 2), nullptr));
    x11.drain();
    const bool isNewEnough = reply
        && (reply->major_version > 2 || (reply->major_version == 2 && reply->minor_version >= 1));
    return isNewEnough ? opcode : std::uint8_t{0};
}

} // namespace

X11KeyCounting::X11KeyCounting(X11Connection& x11)
    : x11(x11)
    , modifiers(x11)
    // A guest of another display would count the keys of X programs alone.
    , isOfSession(!isXWayland(x11))
    , inputOpcode(isOfSession ? inputOpcodeOf(x11) : std::uint8_t{0})
    , hasRecord(isOfSession && x11.majorOpcode(xcb_record_id) != 0)
{
    if (inputOpcode != 0) {
        x11.addHandler([this](const xcb_generic_event_t& event) { handle(event); });
    }
}

bool X11KeyCounting::isPossible() const
{
    return x11.isUsable() && (inputOpcode != 0 || hasRecord);
}

bool X11KeyCounting::addGlobalMonitor(KeyDownHandler handler)
{
    if (!x11.isUsable() || inputOpcode == 0) {
        return false;
    }
    if (monitors.empty()) {
        // The master devices speak for all keyboards; those themselves would count each key twice.
        struct {
            xcb_input_event_mask_t header;
            std::uint32_t mask;
        } selection{.header = {.deviceid = XCB_INPUT_DEVICE_ALL_MASTER, .mask_len = 1},
            .mask = XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS};
        const auto cookie
            = xcb_input_xi_select_events_checked(x11.get(), x11.root(), 1, &selection.header);
        const XcbReply<xcb_generic_error_t> failure(xcb_request_check(x11.get(), cookie));
        x11.drain();
        if (failure) {
            return false;
        }
    }
    monitors.push_back(std::move(handler));
    return true;
}

void X11KeyCounting::handle(const xcb_generic_event_t& event) const
{
    if ((event.response_type & 0x7f) != XCB_GE_GENERIC) {
        return;
    }
    const auto& press = reinterpret_cast<const xcb_input_raw_key_press_event_t&>(event);
    if (press.extension != inputOpcode || press.event_type != XCB_INPUT_RAW_KEY_PRESS
        || modifiers.contain(press.detail)) {
        return;
    }
    for (const KeyDownHandler& monitor : monitors) {
        monitor();
    }
}

std::unique_ptr<EventTap> X11KeyCounting::createTap(KeyDownHandler handler)
{
    if (!x11.isUsable() || !hasRecord) {
        return nullptr;
    }
    return RecordTap::create(x11, modifiers, std::move(handler));
}

} // namespace quillbrook
