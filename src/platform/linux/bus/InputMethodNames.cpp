#include "platform/linux/bus/InputMethodNames.h"

#include <algorithm>

namespace quillbrook {

namespace {

std::string keyboardIdentifier(std::string_view layout, std::string_view variant)
{
    std::string identifier = "xkb.keylayout." + std::string(layout);
    if (!variant.empty()) {
        identifier += "." + std::string(variant);
    }
    return identifier;
}

/// The part of `text` before `separator`, or all of it; `text` is what stands behind.
std::string_view takePart(std::string_view& text, char separator)
{
    const auto end = std::min(text.find(separator), text.size());
    const std::string_view part = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return part;
}

} // namespace

std::string fcitxIdentifier(std::string_view id, std::string_view name, std::string_view nativeName)
{
    constexpr std::string_view kKeyboard = "keyboard-";
    if (id.starts_with(kKeyboard)) {
        id.remove_prefix(kKeyboard.size());
        const std::string_view layout = takePart(id, '-');
        return keyboardIdentifier(layout, id);
    }
    return "fcitx5." + std::string(id) + "." + std::string(name) + "." + std::string(nativeName);
}

std::string ibusIdentifier(std::string_view engine)
{
    constexpr std::string_view kKeyboard = "xkb:";
    if (engine.starts_with(kKeyboard)) {
        engine.remove_prefix(kKeyboard.size());
        const std::string_view layout = takePart(engine, ':');
        return keyboardIdentifier(layout, takePart(engine, ':'));
    }
    return "ibus." + std::string(engine);
}

bool isDoublePinyinSchema(std::string_view schema)
{
    return schema.find("double_pinyin") != std::string_view::npos
        || schema.find("flypy") != std::string_view::npos;
}

std::optional<std::string> ibusAddressIn(std::string_view text)
{
    constexpr std::string_view kKey = "IBUS_ADDRESS=";
    while (!text.empty()) {
        const std::string_view line = takePart(text, '\n');
        if (line.starts_with(kKey) && line.size() > kKey.size()) {
            return std::string(line.substr(kKey.size()));
        }
    }
    return std::nullopt;
}

} // namespace quillbrook
