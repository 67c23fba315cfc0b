#include "platform/linux/words/OutsideName.h"

#include "base/Text.h"

#include <cstddef>

namespace quillbrook {

namespace {

constexpr std::size_t kMostCharacters = 200;

/// The bytes of the control character or separator of lines that begins well-formed `text`, 0 when
/// another character does.
std::size_t controlLength(std::string_view text)
{
    const auto lead = static_cast<unsigned char>(text.front());
    if (lead < 0x20 || lead == 0x7F) {
        return 1;
    }
    if (lead == 0xC2 && static_cast<unsigned char>(text[1]) < 0xA0) {
        return 2; // U+0080 to U+009F
    }
    return text.starts_with("\u2028") || text.starts_with("\u2029") ? 3 : 0;
}

} // namespace

std::string outsideName(std::string_view bytes)
{
    const std::string valid = validUtf8(bytes);
    std::string name;
    for (std::string_view rest = valid; !rest.empty();) {
        const std::size_t length = controlLength(rest);
        name += length > 0 ? ' ' : rest.front();
        rest.remove_prefix(length > 0 ? length : 1);
    }
    const std::string_view beginning = firstCharacters(withoutOuterBlanks(name), kMostCharacters);
    return std::string(withoutOuterBlanks(beginning));
}

std::string_view withoutOuterBlanks(std::string_view text)
{
    constexpr std::string_view kBlanks = " \t\r\n\v\f";
    const auto begin = text.find_first_not_of(kBlanks);
    if (begin == std::string_view::npos) {
        return {};
    }
    return text.substr(begin, text.find_last_not_of(kBlanks) - begin + 1);
}

} // namespace quillbrook
