#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quillbrook {

/// The name of the theme ("Net/ThemeName") in the settings that a desktop shows in the property
/// `_XSETTINGS_SETTINGS`. Empty when there is none, and when `settings` is not well-formed up to
/// it.
std::optional<std::string> themeNameIn(std::string_view settings);

/// Whether a theme is the dark one of its kind, such as "Adwaita-dark" or "Mint-Y-Dark-Aqua"; the
/// light windows of "Arc-Darker" only have dark title bars.
bool isDarkTheme(std::string_view name);

} // namespace quillbrook
