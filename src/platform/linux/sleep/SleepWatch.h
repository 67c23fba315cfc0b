#pragma once

#include "platform/linux/sleep/BelatedClock.h"
#include "platform/linux/sleep/KernelTime.h"

#include <cstdint>
#include <functional>

namespace quillbrook {

/// Tells of the machine's sleep and waking in their true order. Logind announces both, but after
/// the sleep its second message reaches us later than the timers that are due by then: the kernel's
/// clocks tell at once. They also tell of a sleep that nobody announced. Main thread only.
class SleepWatch {
public:
    struct Handlers {
        std::function<void()> willSleep; ///< runs on a clock that stands at the sleep's beginning
        std::function<void()> didWake;
    };

    /// `time` reads the kernel's clocks.
    SleepWatch(BelatedClock& clock, std::function<KernelTime()> time, Handlers handlers);

    /// The machine is about to sleep.
    void sleepAnnounced();

    /// The machine is awake again, or stayed awake.
    void wakingAnnounced();

    /// Whoever announces is gone and will say no more: as we run, the machine is awake.
    void announcerGone();

    /// Looks whether the machine has slept, and tells of it; to be called before anything else runs
    /// after a wait. False when the process was held up otherwise while a sleep is announced: the
    /// waking may have been announced meanwhile, and come in at any moment.
    bool look();

private:
    enum class Phase : std::uint8_t { awake, sleepAnnounced, wakingTold };

    void tellSleepSince(double time);
    void tellWaking();

    BelatedClock& clock;
    std::function<KernelTime()> time;
    Handlers handlers;
    Phase phase = Phase::awake;
    KernelTime last; // at the last look
    double lastLookAt; // by `clock`
};

} // namespace quillbrook
