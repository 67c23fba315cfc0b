#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quillbrook {

/// The identifier of the keyboard layout that is described so, as "xkb.keylayout.us.dvorak" for
/// "English (Dvorak)". `rules` is the text of the list that comes with the layouts (evdev.lst); of
/// what is not in it the description stands behind "xkb.keylayout.".
std::string layoutIdentifierOf(std::string_view description, std::string_view rules);

/// The identifier of a layout and, unless it is empty, its variant.
std::string layoutIdentifier(std::string_view layout, std::string_view variant);

} // namespace quillbrook
