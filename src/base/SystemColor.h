#pragma once

#include <cstdint>

namespace quillbrook {

/// A colour by its name; how it looks depends on whether the desktop is light or dark.
enum class SystemColor : std::uint8_t {
    blue,
    green,
    orange,
    purple,
    teal,
    pink,
    indigo,
    mint,
    cyan,
    yellow,
    red,
    brown,
    gray,
};

} // namespace quillbrook
