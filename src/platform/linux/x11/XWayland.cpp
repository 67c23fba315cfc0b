#include "platform/linux/x11/XWayland.h"

#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/XcbReply.h"

#include <xcb/randr.h>

#include <string_view>

namespace quillbrook {

namespace {

constexpr std::string_view kMark = "XWAYLAND";

/// New ones have an extension of that name.
bool hasMarkingExtension(X11Connection& x11)
{
    const auto cookie = xcb_query_extension(x11.get(), kMark.size(), kMark.data());
    const XcbReply<xcb_query_extension_reply_t> reply(
        xcb_query_extension_reply(x11.get(), cookie, nullptr));
    return reply && reply->present != 0;
}

/// Older ones name their first output so.
bool hasMarkedOutput(X11Connection& x11)
{
    if (!x11.has(xcb_randr_id)) {
        return false;
    }
    const auto versionCookie = xcb_randr_query_version(x11.get(), 1, 3);
    const auto outputsCookie = xcb_randr_get_screen_resources_current(x11.get(), x11.root());
    const XcbReply<xcb_randr_query_version_reply_t> version(
        xcb_randr_query_version_reply(x11.get(), versionCookie, nullptr));
    const XcbReply<xcb_randr_get_screen_resources_current_reply_t> outputs(
        xcb_randr_get_screen_resources_current_reply(x11.get(), outputsCookie, nullptr));
    if (!version || !outputs || outputs->num_outputs == 0) {
        return false;
    }
    const auto cookie = xcb_randr_get_output_info(x11.get(),
        *xcb_randr_get_screen_resources_current_outputs(outputs.get()), outputs->config_timestamp);
    const XcbReply<xcb_randr_get_output_info_reply_t> first(
        xcb_randr_get_output_info_reply(x11.get(), cookie, nullptr));
    return first
        && std::string_view(
            reinterpret_cast<const char*>(xcb_randr_get_output_info_name(first.get())),
            first->name_len)
               .starts_with(kMark);
}

} // namespace

bool isXWayland(X11Connection& x11)
{
    if (!x11.isUsable()) {
        return false;
    }
    const bool isGuest = hasMarkingExtension(x11) || hasMarkedOutput(x11);
    x11.drain();
    return isGuest;
}

} // namespace quillbrook
