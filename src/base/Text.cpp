#include "base/Text.h"

#include "base/Fatal.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>

namespace quillbrook {

namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

bool isContinuation(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

/// Most text is ASCII, and every text that is read from the store is looked through.
bool startsWithEightAscii(std::string_view text)
{
    std::uint64_t word = 0;
    if (text.size() < sizeof word) {
        return false;
    }
    std::memcpy(&word, text.data(), sizeof word);
    return (word & 0x8080808080808080U) == 0;
}

/// Whether a well-formed character of U+4000 to U+9FFF begins `text`, as most others do here.
bool startsWithHan(std::string_view text)
{
    return text.size() >= 3 && text[0] >= '\xE4' && text[0] <= '\xE9' && isContinuation(text[1])
        && isContinuation(text[2]);
}

/// Length in bytes of the well-formed character at the beginning of `text`, 0 when there is
/// none. Overlong forms, surrogates and values above U+10FFFF are not well-formed.
std::size_t characterLength(std::string_view text)
{
    const auto lead = static_cast<unsigned char>(text.front());
    if (lead < 0x80) {
        return 1;
    }
    if (lead < 0xC2 || lead > 0xF4) {
        return 0;
    }
    std::size_t length = 4;
    if (lead < 0xE0) {
        length = 2;
    } else if (lead < 0xF0) {
        length = 3;
    }
    if (text.size() < length) {
        return 0;
    }
    for (std::size_t i = 1; i < length; ++i) {
        if (!isContinuation(text[i])) {
            return 0;
        }
    }
    const auto second = static_cast<unsigned char>(text[1]);
    const bool isOverlong = (lead == 0xE0 && second < 0xA0) || (lead == 0xF0 && second < 0x90);
    const bool isSurrogate = lead == 0xED && second >= 0xA0;
    const bool isBeyondUnicode = lead == 0xF4 && second >= 0x90;
    return isOverlong || isSurrogate || isBeyondUnicode ? 0 : length;
}

} // namespace

std::string shortestText(double value)
{
    if (!std::isfinite(value)) {
        fatal("shortestText: not a finite number");
    }
    // In the range of usual numbers without an exponent, also where one would be shorter.
    constexpr double kSmallest = 1e-4;
    constexpr double kLargest = 1e16;
    const double size = std::abs(value);
    const bool isUsual = value == 0 || (size >= kSmallest && size < kLargest);
    std::array<char, 32> text{}; // the longest double takes 24
    const auto result = std::to_chars(text.data(), text.data() + text.size(), value,
        isUsual ? std::chars_format::fixed : std::chars_format::scientific);
    return {text.data(), result.ptr};
}

std::string fixedText(double value, int decimals)
{
    if (!std::isfinite(value)) {
        fatal("fixedText: not a finite number");
    }
    std::array<char, 512> text{}; // the largest double has 309 digits before the point
    const auto result = std::to_chars(
        text.data(), text.data() + text.size(), value, std::chars_format::fixed, decimals);
    return {text.data(), result.ptr};
}

std::string sqlQuoted(std::string_view text)
{
    std::string quoted;
    quoted.reserve(text.size());
    for (const char c : text) {
        quoted.append(c == '\'' ? 2 : 1, c);
    }
    return quoted;
}

std::string filled(std::string_view form, std::initializer_list<std::string_view> values)
{
    constexpr std::string_view kPlace = "{}";
    std::string text;
    const auto* next = values.begin();
    for (auto place = form.find(kPlace); place != std::string_view::npos;
         place = form.find(kPlace)) {
        if (next == values.end()) {
            fatal("filled: more places than values");
        }
        text.append(form.substr(0, place)).append(*next++);
        form.remove_prefix(place + kPlace.size());
    }
    if (next != values.end()) {
        fatal("filled: more values than places");
    }
    return text.append(form);
}

std::string validUtf8(std::string_view text)
{
    if (isValidUtf8(text)) {
        return std::string(text);
    }
    std::string valid;
    valid.reserve(text.size());
    while (!text.empty()) {
        const std::size_t length = characterLength(text);
        valid.append(length == 0 ? kReplacement : text.substr(0, length));
        text.remove_prefix(length == 0 ? 1 : length);
    }
    return valid;
}

bool isValidUtf8(std::string_view text)
{
    while (!text.empty()) {
        if (startsWithEightAscii(text)) {
            text.remove_prefix(8);
            continue;
        }
        if (startsWithHan(text)) {
            text.remove_prefix(3);
            continue;
        }
        const std::size_t length = characterLength(text);
        if (length == 0) {
            return false;
        }
        text.remove_prefix(length);
    }
    return true;
}

std::string_view firstCharacters(std::string_view text, std::size_t count)
{
    std::size_t end = 0;
    for (; end < text.size(); ++end) {
        if (!isContinuation(text[end]) && count-- == 0) {
            break;
        }
    }
    return text.substr(0, end);
}

std::string asciiLowered(std::string_view text)
{
    std::string lowered(text);
    for (char& c : lowered) {
        if (c >= 'A' && c <= 'Z') {
            c = static_cast<char>(c - 'A' + 'a');
        }
    }
    return lowered;
}

} // namespace quillbrook
