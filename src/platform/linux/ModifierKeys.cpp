#include "platform/linux/ModifierKeys.h"

#include "platform/linux/X11Connection.h"
#include "platform/linux/XcbReply.h"

#include <cstdint>
#include <span>

namespace quillbrook {

ModifierKeys::ModifierKeys(X11Connection& x11) : x11(x11)
{
    if (!x11.isUsable()) {
        return;
    }
    x11.addHandler([this](const xcb_generic_event_t& event) {
        if ((event.response_type & 0x7f) == XCB_MAPPING_NOTIFY) {
            read();
        }
    });
    read();
    x11.drain();
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
