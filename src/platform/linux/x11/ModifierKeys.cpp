#include "platform/linux/x11/ModifierKeys.h"

#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/XcbReply.h"
#include "platform/linux/x11/XkbProtocol.h"

#include <cstdint>
#include <span>

namespace quillbrook {

ModifierKeys::ModifierKeys(X11Connection& x11) : x11(x11)
{
    if (!x11.isUsable()) {
        return;
    }
    followKeyboardExtension();
    x11.addHandler([this](const xcb_generic_event_t& event) {
        const int type = event.response_type & 0x7f;
        if (type == XCB_MAPPING_NOTIFY || (xkbEvent != 0 && type == xkbEvent)) {
            read();
        }
    });
    read();
    x11.drain();
}

void ModifierKeys::followKeyboardExtension()
{
    // A client that uses the extension is told of a new mapping by the extension alone.
    xkbEvent = x11.firstEvent(xcb_xkb_id);
    if (xkbEvent == 0) {
        return;
    }
    const XcbReply<xcb_xkb_use_extension_reply_t> reply(
        xcb_xkb_use_extension_reply(x11.get(), xcb_xkb_use_extension(x11.get(), 1, 0), nullptr));
    constexpr std::uint16_t kEvents
        = XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY;
    constexpr std::uint16_t kModifiers = XCB_XKB_MAP_PART_MODIFIER_MAP;
    xcb_xkb_select_events(
        x11.get(), XCB_XKB_ID_USE_CORE_KBD, kEvents, 0, kEvents, kModifiers, kModifiers, nullptr);
    xcb_flush(x11.get());
}

void ModifierKeys::read()
{
    const XcbReply<xcb_get_modifier_mapping_reply_t> reply(
        xcb_get_modifier_mapping_reply(x11.get(), xcb_get_modifier_mapping(x11.get()), nullptr));
    if (!reply) {
        return;
    }
    keys.reset();
    const auto count
        = static_cast<std::size_t>(xcb_get_modifier_mapping_keycodes_length(reply.get()));
    for (const std::uint8_t key :
        std::span(xcb_get_modifier_mapping_keycodes(reply.get()), count)) {
        keys.set(key);
    }
    keys.reset(0); // stands for no key
}

} // namespace quillbrook
