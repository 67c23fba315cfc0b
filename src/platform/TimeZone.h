#pragma once

namespace quillbrook {

/// The zone of the computer's local time. Any thread.
class TimeZone {
public:
    virtual ~TimeZone() = default;

    /// How many seconds local time is ahead of UTC at an instant, seconds since 1970. macOS and
    /// Linux: `localtime_r`.
    virtual int secondsFromUtc(double unixSeconds) const = 0;
};

} // namespace quillbrook
