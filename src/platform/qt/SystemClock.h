#pragma once

#include "platform/Clock.h"

#include <chrono>

namespace quillbrook {

/// The system's wall clock.
class SystemClock final : public Clock {
public:
    double now() const override
    {
        const auto sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
        return std::chrono::duration<double>(sinceEpoch).count();
    }
};

} // namespace quillbrook
