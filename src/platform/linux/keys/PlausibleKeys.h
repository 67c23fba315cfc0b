#pragma once

#include <cstdint>

namespace quillbrook {

/// Holds what another process tells of keys against what hands and the rules of the telling allow.
class PlausibleKeys {
public:
    /// Whether to believe in so many keys, told at `now`, in seconds of a clock that never goes
    /// back.
    bool areBelieved(std::uint32_t keys, double now);

private:
    double minuteBegan = 0;
    int tellings = 0; // in that minute
};

} // namespace quillbrook
