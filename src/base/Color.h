#pragma once

#include <cstdint>
#include <string_view>

namespace quillbrook {

/// An opaque colour in sRGB.
struct Color {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;

    bool operator==(const Color&) const = default;
};

/// The colour of a text such as "#3B82F6" or "#F80", whatever ASCII signs stand around it. Reading
/// stops at the first sign that is no hexadecimal digit. Black when there are neither six
/// characters nor three.
Color colorFromHex(std::string_view hex);

} // namespace quillbrook
