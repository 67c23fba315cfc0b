#pragma once

namespace quillbrook {

/// The wall clock. macOS: `Date`; Linux: `CLOCK_REALTIME`.
class Clock {
public:
    virtual ~Clock() = default;

    /// Seconds since 1970-01-01 UTC, with fractions. Jumps when the user or the network sets the
    /// clock. Any thread.
    virtual double now() const = 0;
};

} // namespace quillbrook
