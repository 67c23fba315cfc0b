#pragma once

#include <cstdint>

namespace quillbrook {

/// The systems that the program is made for, where what it says of itself differs.
enum class SystemKind : std::uint8_t {
    macOS,
    linuxDesktop,
};

} // namespace quillbrook
