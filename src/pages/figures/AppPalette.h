#pragma once

#include "base/SystemColor.h"

#include <array>
#include <cstddef>

namespace quillbrook {

/// The colours that applications get by rank. The last is also that of an unknown application.
constexpr std::array appPalette = {
    SystemColor::blue,
    SystemColor::green,
    SystemColor::orange,
    SystemColor::purple,
    SystemColor::teal,
    SystemColor::pink,
    SystemColor::indigo,
    SystemColor::mint,
    SystemColor::cyan,
    SystemColor::yellow,
    SystemColor::red,
    SystemColor::brown,
    SystemColor::gray,
};

/// The colour of a place from 0; the palette starts over behind its end.
constexpr SystemColor paletteColor(std::size_t place)
{
    return appPalette[place % appPalette.size()];
}

} // namespace quillbrook
