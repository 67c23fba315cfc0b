#pragma once

#include "base/Color.h"
#include "base/SystemColor.h"

#include <cstdint>
#include <variant>

namespace quillbrook {

/// The colours of the interface itself; how they look depends on light or dark.
enum class InterfaceColor : std::uint8_t {
    primaryText,
    secondaryText,
    separator,
    windowBackground,
    controlBackground,
    accent,
};

/// What something is painted with: a named colour, one of the interface, or one in sRGB, at an
/// opacity.
struct Tint {
    std::variant<SystemColor, InterfaceColor, Color> color = InterfaceColor::primaryText;
    double opacity = 1; // 0 to 1; multiplies that of the colour itself

    bool operator==(const Tint&) const = default;
};

constexpr Color kWhite{255, 255, 255};
constexpr Color kBlack{0, 0, 0};

constexpr Tint primaryTint(double opacity = 1)
{
    return {InterfaceColor::primaryText, opacity};
}

constexpr Tint secondaryTint(double opacity = 1)
{
    return {InterfaceColor::secondaryText, opacity};
}

} // namespace quillbrook
