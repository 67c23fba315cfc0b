#pragma once

#include "platform/Clock.h"
#include "platform/HumanInput.h"

namespace quillbrook {

/// Input that is placed in time, and that grows old with the clock.
class VirtualHumanInput final : public HumanInput {
public:
    explicit VirtualHumanInput(const Clock& clock) : clock(clock), lastInputAt(clock.now()) {}

    void happenNow() { happenAgo(0); }
    void happenAgo(double seconds) { lastInputAt = clock.now() - seconds; }
    double secondsSinceLastInput() const override { return clock.now() - lastInputAt; }

private:
    const Clock& clock;
    double lastInputAt;
};

} // namespace quillbrook
