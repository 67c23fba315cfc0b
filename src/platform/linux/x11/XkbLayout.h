#pragma once

#include <xcb/xcb.h>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace quillbrook {

class X11Connection;

/// The identifier of a group of the keyboard, from the bytes of the root's `_XKB_RULES_NAMES`:
/// rules, model, layouts, variants and options, each ended by a zero byte, the layouts and variants
/// with commas between groups. "xkb.keylayout.us", "xkb.keylayout.cn.altgr-pinyin". Empty when the
/// bytes name no such group.
std::optional<std::string> xkbIdentifier(std::string_view rulesNames, std::size_t group);

/// The keyboard layout of the X server. Main thread only.
class XkbLayout {
public:
    explicit XkbLayout(X11Connection& x11);

    /// The identifier of the layout that is in use now; empty when the server doesn't tell. Two
    /// round trips to the X server.
    std::optional<std::string> currentIdentifier() const;

private:
    X11Connection& x11;
    xcb_atom_t rulesNamesAtom;
    bool hasXkb = false;
};

} // namespace quillbrook
