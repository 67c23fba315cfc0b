#pragma once

#include <array>
#include <compare>
#include <cstdint>

namespace quillbrook {

/// 128 bits that tell one thing from another.
struct Uuid {
    std::array<std::uint8_t, 16> bytes{};

    /// A fresh one, version 4. Any thread. Not fit for secrets.
    static Uuid random();

    auto operator<=>(const Uuid&) const = default;
};

} // namespace quillbrook
