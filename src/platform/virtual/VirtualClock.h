#pragma once

#include "platform/Clock.h"

namespace quillbrook {

/// A clock that stands still until it is moved. The main loop moves it while it runs timers;
/// tests set it to let the time jump.
class VirtualClock final : public Clock {
public:
    explicit VirtualClock(double startsAt) : time(startsAt) {}

    double now() const override { return time; }
    void set(double newTime) { time = newTime; }

private:
    double time;
};

} // namespace quillbrook
