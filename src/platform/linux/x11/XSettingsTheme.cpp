#include "platform/linux/x11/XSettingsTheme.h"

#include "platform/linux/appearance/ThemeName.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/XcbReply.h"

#include <utility>

namespace quillbrook {

XSettingsTheme::XSettingsTheme(X11Connection& x11, std::function<void()> changed)
    : x11(x11)
    , changed(std::move(changed))
    , selection(x11.atom("_XSETTINGS_S0"))
    , managerMessage(x11.atom("MANAGER"))
    , settings(x11.atom("_XSETTINGS_SETTINGS"))
    , root(x11)
    , manager(x11)
{
    if (!x11.isUsable()) {
        return;
    }
    x11.addHandler([this](const xcb_generic_event_t& event) { handle(event); });
    // Who takes the settings over says so to all that listen for the structure of the root.
    root.set(x11.root(), XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    findManager();
    theme = readName();
    x11.drain();
}

void XSettingsTheme::handle(const xcb_generic_event_t& event)
{
    const int type = event.response_type & 0x7f;
    if (type == XCB_CLIENT_MESSAGE) {
        const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(event);
        if (message.type != managerMessage || message.data.data32[1] != selection) {
            return;
        }
        findManager();
    } else if (type == XCB_PROPERTY_NOTIFY) {
        const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(event);
        if (change.window != manager.window() || change.atom != settings) {
            return;
        }
    } else {
        return;
    }
    // What a manager told stays true when it ends: another one is about to take its place.
    if (auto next = readName(); next && next != theme) {
        theme = std::move(next);
        changed();
    }
}

void XSettingsTheme::findManager()
{
    const auto cookie = xcb_get_selection_owner(x11.get(), selection);
    const XcbReply<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(x11.get(), cookie, nullptr));
    manager.set(
        reply ? reply->owner : xcb_window_t{XCB_WINDOW_NONE}, XCB_EVENT_MASK_PROPERTY_CHANGE);
}

std::optional<std::string> XSettingsTheme::readName()
{
    constexpr std::uint32_t kMostWords = 16384; // 64 KiB
    if (manager.window() == XCB_WINDOW_NONE) {
        return std::nullopt;
    }
    const auto cookie = xcb_get_property(
        x11.get(), 0, manager.window(), settings, XCB_GET_PROPERTY_TYPE_ANY, 0, kMostWords);
    const XcbReply<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(x11.get(), cookie, nullptr));
    if (!reply) {
        return std::nullopt;
    }
    return themeNameIn({static_cast<const char*>(xcb_get_property_value(reply.get())),
        static_cast<std::size_t>(xcb_get_property_value_length(reply.get()))});
}

} // namespace quillbrook
