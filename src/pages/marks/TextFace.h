#pragma once

#include <cstdint>
#include <functional>
#include <string_view>

namespace quillbrook {

enum class TextFamily : std::uint8_t { system, serif, monospaced };

enum class TextWeight : std::uint8_t { regular, medium, semibold, bold, black };

/// The letters of a text.
struct TextFace {
    TextFamily family = TextFamily::system;
    int pixels = 10; // device-independent
    TextWeight weight = TextWeight::regular;

    bool operator==(const TextFace&) const = default;
};

/// How wide a line of text is in a face, in points. Whoever draws hands it to whoever places.
using TextWidth = std::function<double(std::string_view text, const TextFace& face)>;

/// The height of a line, which is the same for every script.
constexpr double lineHeight(const TextFace& face)
{
    return face.pixels * 1.25;
}

} // namespace quillbrook
