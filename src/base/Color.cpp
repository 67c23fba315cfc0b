#include "base/Color.h"

#include <charconv>

namespace quillbrook {

namespace {

bool isLetterOrDigit(char character)
{
    // The bytes of a character beyond ASCII count as letters.
    const auto byte = static_cast<unsigned char>(character);
    return byte >= 0x80 || (byte >= '0' && byte <= '9') || (byte >= 'a' && byte <= 'z')
        || (byte >= 'A' && byte <= 'Z');
}

std::string_view trimmed(std::string_view text)
{
    while (!text.empty() && !isLetterOrDigit(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && !isLetterOrDigit(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

} // namespace

Color colorFromHex(std::string_view hex)
{
    const std::string_view digits = trimmed(hex);
    std::uint32_t number = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), number, 16);
    const auto part = [number](unsigned shift, std::uint32_t mask, std::uint32_t factor) {
        return static_cast<std::uint8_t>(((number >> shift) & mask) * factor);
    };
    if (digits.size() == 6) {
        return {part(16, 0xFF, 1), part(8, 0xFF, 1), part(0, 0xFF, 1)};
    }
    if (digits.size() == 3) {
        return {part(8, 0xF, 17), part(4, 0xF, 17), part(0, 0xF, 17)};
    }
    return {};
}

} // namespace quillbrook
