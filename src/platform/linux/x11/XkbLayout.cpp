#include "platform/linux/x11/XkbLayout.h"

#include "base/Text.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/XcbReply.h"
#include "platform/linux/x11/XkbProtocol.h"

#include <cstdint>

namespace quillbrook {

namespace {

constexpr std::uint32_t kMaxPropertyWords = 1024;

/// The part of `text` with the number `index`, counted from 0; empty when there are fewer.
std::string_view part(std::string_view text, char separator, std::size_t index)
{
    for (; index > 0; --index) {
        const auto end = text.find(separator);
        if (end == std::string_view::npos) {
            return {};
        }
        text.remove_prefix(end + 1);
    }
    return text.substr(0, text.find(separator));
}

} // namespace

std::optional<std::string> xkbIdentifier(std::string_view rulesNames, std::size_t group)
{
    constexpr std::size_t kLayouts = 2;
    constexpr std::size_t kVariants = 3;
    const auto layout = part(part(rulesNames, '\0', kLayouts), ',', group);
    if (layout.empty()) {
        return std::nullopt;
    }
    const auto variant = part(part(rulesNames, '\0', kVariants), ',', group);
    std::string identifier = "xkb.keylayout." + std::string(layout);
    if (!variant.empty()) {
        identifier += "." + std::string(variant);
    }
    return validUtf8(identifier);
}

XkbLayout::XkbLayout(X11Connection& x11) : x11(x11), rulesNamesAtom(x11.atom("_XKB_RULES_NAMES"))
{
    if (x11.majorOpcode(xcb_xkb_id) == 0) {
        return;
    }
    const XcbReply<xcb_xkb_use_extension_reply_t> reply(
        xcb_xkb_use_extension_reply(x11.get(), xcb_xkb_use_extension(x11.get(), 1, 0), nullptr));
    x11.drain();
    hasXkb = reply && reply->supported != 0;
}

std::optional<std::string> XkbLayout::currentIdentifier() const
{
    if (!hasXkb || !x11.isUsable()) {
        return std::nullopt;
    }
    const auto namesCookie = xcb_get_property(
        x11.get(), 0, x11.root(), rulesNamesAtom, XCB_ATOM_STRING, 0, kMaxPropertyWords);
    const auto stateCookie = xcb_xkb_get_state(x11.get(), XCB_XKB_ID_USE_CORE_KBD);
    const XcbReply<xcb_get_property_reply_t> names(
        xcb_get_property_reply(x11.get(), namesCookie, nullptr));
    const XcbReply<xcb_xkb_get_state_reply_t> state(
        xcb_xkb_get_state_reply(x11.get(), stateCookie, nullptr));
    x11.drain();
    if (!names || !state) {
        return std::nullopt;
    }
    const std::string_view bytes(static_cast<const char*>(xcb_get_property_value(names.get())),
        static_cast<std::size_t>(xcb_get_property_value_length(names.get())));
    return xkbIdentifier(bytes, state->group);
}

} // namespace quillbrook
