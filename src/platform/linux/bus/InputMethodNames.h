#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quillbrook {

/// The identifier of an input method of Fcitx 5: of a keyboard "xkb.keylayout.us.dvorak", of
/// anything else "fcitx5.{id}.{name}.{native name}".
std::string fcitxIdentifier(
    std::string_view id, std::string_view name, std::string_view nativeName);

/// The identifier of an engine of IBus: of a keyboard "xkb.keylayout.us.dvorak", of anything else
/// "ibus.{engine}".
std::string ibusIdentifier(std::string_view engine);

/// What is put behind an identifier whose method is set to double pinyin.
constexpr std::string_view kDoublePinyinMark = ".Shuangpin";

/// Whether a schema of Rime is one of double pinyin.
bool isDoublePinyinSchema(std::string_view schema);

/// The address in the text of a file in which the IBus daemon leaves it.
std::optional<std::string> ibusAddressIn(std::string_view text);

} // namespace quillbrook
