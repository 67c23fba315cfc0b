#include "platform/linux/appearance/KdeColors.h"

#include <array>
#include <charconv>

namespace quillbrook {

namespace {

/// A colour such as "239,240,241", with or without an opacity behind.
std::optional<Color> colorIn(std::string_view text)
{
    std::array<std::uint8_t, 3> parts{};
    const char* position = text.data();
    const char* end = position + text.size();
    for (std::size_t i = 0; i < parts.size(); ++i) {
        if (i > 0 && (position == end || *position++ != ',')) {
            return std::nullopt;
        }
        const auto read = std::from_chars(position, end, parts[i]);
        if (read.ec != std::errc()) {
            return std::nullopt;
        }
        position = read.ptr;
    }
    const bool isWhole = position == end || *position == ',';
    return isWhole ? std::optional(Color{parts[0], parts[1], parts[2]}) : std::nullopt;
}

bool isDark(Color background)
{
    // How bright an eye finds red, green and blue.
    const int brightness = background.red * 299 + background.green * 587 + background.blue * 114;
    return brightness < 128 * 1000;
}

} // namespace

Appearance kdeAppearanceIn(std::string_view kdeglobals)
{
    Appearance told;
    std::string_view group;
    while (!kdeglobals.empty()) {
        const auto end = kdeglobals.find('\n');
        std::string_view line = kdeglobals.substr(0, end);
        kdeglobals.remove_prefix(end == std::string_view::npos ? kdeglobals.size() : end + 1);
        if (line.ends_with('\r')) {
            line.remove_suffix(1);
        }
        const auto equals = line.find('=');
        if (line.starts_with('[')) {
            group = line;
        } else if (equals == std::string_view::npos) {
            continue;
        } else if (const auto color = colorIn(line.substr(equals + 1)); color) {
            const std::string_view key = line.substr(0, equals);
            if (group == "[Colors:Window]" && key == "BackgroundNormal") {
                told.isDark = isDark(*color);
            } else if (group == "[General]" && key == "AccentColor") {
                told.accent = color;
            }
        }
    }
    return told;
}

} // namespace quillbrook
