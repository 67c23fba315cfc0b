#include "platform/linux/sleep/KernelTime.h"

#include <ctime>

namespace quillbrook {

namespace {

double secondsOf(clockid_t clock)
{
    timespec time{};
    clock_gettime(clock, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

} // namespace

KernelTime kernelTime()
{
    // CLOCK_MONOTONIC stands still while the machine sleeps, CLOCK_BOOTTIME goes on.
    const double before = secondsOf(CLOCK_MONOTONIC);
    const double sinceBoot = secondsOf(CLOCK_BOOTTIME);
    const double after = secondsOf(CLOCK_MONOTONIC);
    return {.sinceBoot = sinceBoot,
        .sleptAtLeast = sinceBoot - after,
        .sleptAtMost = sinceBoot - before};
}

} // namespace quillbrook
