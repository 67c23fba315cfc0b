#include "platform/linux/session/LayoutNames.h"

#include "base/Text.h"

#include <algorithm>

namespace quillbrook {

namespace {

/// Cuts the first of `text`'s parts off, with the separators around it.
std::string_view takePart(std::string_view& text, char separator)
{
    text.remove_prefix(std::min(text.find_first_not_of(separator), text.size()));
    const auto part = text.substr(0, text.find(separator));
    text.remove_prefix(part.size());
    text.remove_prefix(std::min(text.find_first_not_of(separator), text.size()));
    return part;
}

} // namespace

std::string layoutIdentifierOf(std::string_view description, std::string_view rules)
{
    std::string_view section;
    while (!rules.empty()) {
        std::string_view line = takePart(rules, '\n');
        if (line.starts_with('!')) {
            section = line.substr(std::min<std::size_t>(line.size(), 2));
            continue;
        }
        const std::string_view name = takePart(line, ' ');
        if (section == "layout" && line == description) {
            return layoutIdentifier(name, {});
        }
        if (section == "variant") { // "dvorak us: English (Dvorak)"
            const auto colon = line.find(": ");
            if (colon != std::string_view::npos && line.substr(colon + 2) == description) {
                return layoutIdentifier(line.substr(0, colon), name);
            }
        }
    }
    return layoutIdentifier(description, {});
}

std::string layoutIdentifier(std::string_view layout, std::string_view variant)
{
    std::string identifier = "xkb.keylayout." + std::string(layout);
    if (!variant.empty()) {
        identifier += "." + std::string(variant);
    }
    return validUtf8(identifier);
}

} // namespace quillbrook
