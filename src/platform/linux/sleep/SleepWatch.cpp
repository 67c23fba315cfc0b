#include "platform/linux/sleep/SleepWatch.h"

#include <utility>

namespace quillbrook {

namespace {

constexpr double kShortestSleepSec = 1;
constexpr double kHeldUpSec = 2; // something is due every second

} // namespace

SleepWatch::SleepWatch(BelatedClock& clock, std::function<KernelTime()> time, Handlers handlers)
    : clock(clock)
    , time(std::move(time))
    , handlers(std::move(handlers))
    , last(this->time())
    , lastLookAt(clock.now())
{
}

void SleepWatch::sleepAnnounced()
{
    look();
    phase = Phase::sleepAnnounced;
    handlers.willSleep();
}

void SleepWatch::wakingAnnounced()
{
    look();
    if (std::exchange(phase, Phase::awake) != Phase::wakingTold) {
        handlers.didWake();
    }
}

void SleepWatch::announcerGone()
{
    if (phase == Phase::sleepAnnounced) {
        tellWaking();
    }
}

bool SleepWatch::look()
{
    const KernelTime now = time();
    const bool hasSlept = now.sleptAtLeast - last.sleptAtMost > kShortestSleepSec;
    const bool wasHeldUp = now.sinceBoot - last.sinceBoot > kHeldUpSec;
    if (hasSlept) {
        if (phase != Phase::sleepAnnounced) {
            tellSleepSince(lastLookAt);
        }
        tellWaking();
    }
    last = now;
    lastLookAt = clock.now();
    return !(wasHeldUp && phase == Phase::sleepAnnounced);
}

void SleepWatch::tellSleepSince(double time)
{
    clock.runAt(time, handlers.willSleep);
}

void SleepWatch::tellWaking()
{
    phase = Phase::wakingTold;
    handlers.didWake();
}

} // namespace quillbrook
