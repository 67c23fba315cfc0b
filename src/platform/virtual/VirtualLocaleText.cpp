#include "platform/virtual/VirtualLocaleText.h"

#include "base/Text.h"

#include <clocale>
#include <cwctype>
#include <string>

namespace quillbrook {

namespace {

/// The code points of well-formed UTF-8.
std::u32string codePoints(std::string_view text)
{
    std::u32string points;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x80) {
            points.push_back(byte);
        } else if (byte >= 0xF0) {
            points.push_back(byte & 0x07U);
        } else if (byte >= 0xE0) {
            points.push_back(byte & 0x0FU);
        } else if (byte >= 0xC0) {
            points.push_back(byte & 0x1FU);
        } else {
            points.back() = (points.back() << 6U) | (byte & 0x3FU);
        }
    }
    return points;
}

std::u32string folded(std::string_view text)
{
    static const locale_t kUnicode = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    std::u32string points = codePoints(validUtf8(text));
    for (char32_t& point : points) {
        const auto wide = static_cast<std::wint_t>(point);
        point = static_cast<char32_t>(
            kUnicode != nullptr ? towlower_l(wide, kUnicode) : std::towlower(wide));
    }
    return points;
}

} // namespace

bool VirtualLocaleText::containsIgnoringCase(std::string_view text, std::string_view part) const
{
    return folded(text).find(folded(part)) != std::u32string::npos;
}

int VirtualLocaleText::compareIgnoringCase(std::string_view left, std::string_view right) const
{
    return folded(left).compare(folded(right));
}

std::string VirtualLocaleText::groupedNumber(std::int64_t number) const
{
    std::string text = std::to_string(number);
    const std::size_t firstDigit = number < 0 ? 1 : 0;
    for (std::size_t place = text.size(); place > firstDigit + 3;) {
        place -= 3;
        text.insert(place, 1, ',');
    }
    return text;
}

} // namespace quillbrook
