#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace quillbrook {

class X11Connection;

/// The bytes of a property, empty when the window has none such. Valid as long as the reply.
std::string_view bytesOf(const xcb_get_property_reply_t& reply);

/// The numbers of a property, empty when it is of another kind.
std::vector<std::uint32_t> numbersOf(const xcb_get_property_reply_t& reply);

/// The numbers of a window's property of the given type; nothing when the window is gone or has
/// none such. Waits for the server.
std::optional<std::vector<std::uint32_t>> numbersIn(
    const X11Connection& x11, xcb_window_t window, xcb_atom_t property, xcb_atom_t type);

/// The window that a window's property names; nothing when it names none. Waits for the server.
std::optional<xcb_window_t> windowNamedBy(
    const X11Connection& x11, xcb_window_t window, xcb_atom_t property);

/// The windows in a window, from the lowest to the topmost; at most a thousand. Waits for the
/// server.
std::vector<xcb_window_t> childrenOf(const X11Connection& x11, xcb_window_t window);

} // namespace quillbrook
