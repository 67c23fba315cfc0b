#pragma once

#include "platform/TimeZone.h"

namespace quillbrook {

/// A zone without summer time, at first eight hours ahead of UTC.
class VirtualTimeZone final : public TimeZone {
public:
    int secondsFromUtc(double) const override { return seconds; }

    void setSecondsFromUtc(int newSeconds) { seconds = newSeconds; }

private:
    int seconds = 28800;
};

} // namespace quillbrook
