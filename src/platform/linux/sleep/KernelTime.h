#pragma once

namespace quillbrook {

/// What the kernel's clocks say, in seconds. How long the machine has slept is the difference of
/// two clocks, known within the time between their readings.
struct KernelTime {
    double sinceBoot = 0; // sleep included
    double sleptAtLeast = 0; // since the boot, in all
    double sleptAtMost = 0;
};

KernelTime kernelTime();

} // namespace quillbrook
