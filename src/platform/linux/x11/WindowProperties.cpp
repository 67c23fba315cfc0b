#include "platform/linux/x11/WindowProperties.h"

#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/XcbReply.h"

#include <algorithm>
#include <cstddef>

namespace quillbrook {

namespace {

constexpr std::uint32_t kMaxPropertyWords = 4096; // 16 KiB
constexpr std::size_t kMostChildren = 1000;

} // namespace

std::string_view bytesOf(const xcb_get_property_reply_t& reply)
{
    const auto size = static_cast<std::size_t>(xcb_get_property_value_length(&reply));
    return {static_cast<const char*>(xcb_get_property_value(&reply)), size};
}

std::vector<std::uint32_t> numbersOf(const xcb_get_property_reply_t& reply)
{
    if (reply.format != 32) {
        return {};
    }
    const auto* first = static_cast<const std::uint32_t*>(xcb_get_property_value(&reply));
    return {first, first + reply.value_len};
}

std::optional<std::vector<std::uint32_t>> numbersIn(
    const X11Connection& x11, xcb_window_t window, xcb_atom_t property, xcb_atom_t type)
{
    const auto cookie
        = xcb_get_property(x11.get(), 0, window, property, type, 0, kMaxPropertyWords);
    const XcbReply<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(x11.get(), cookie, nullptr));
    if (!reply || reply->type == XCB_ATOM_NONE) {
        return std::nullopt;
    }
    return numbersOf(*reply);
}

std::optional<xcb_window_t> windowNamedBy(
    const X11Connection& x11, xcb_window_t window, xcb_atom_t property)
{
    const auto numbers = numbersIn(x11, window, property, XCB_ATOM_WINDOW);
    return numbers && !numbers->empty() && numbers->front() != XCB_WINDOW_NONE
        ? std::optional(numbers->front())
        : std::nullopt;
}

std::vector<xcb_window_t> childrenOf(const X11Connection& x11, xcb_window_t window)
{
    const XcbReply<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(x11.get(), xcb_query_tree(x11.get(), window), nullptr));
    if (!tree) {
        return {};
    }
    const xcb_window_t* first = xcb_query_tree_children(tree.get());
    return {first, first + std::min<std::size_t>(tree->children_len, kMostChildren)};
}

} // namespace quillbrook
