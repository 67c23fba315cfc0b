#pragma once

#include "platform/KernelFigures.h"
#include "platform/Platform.h"

#include <cstdint>
#include <optional>

namespace quillbrook {

/// The use of the display server.
struct WindowServerInfo {
    double cpu = -1.0; // percent of one processor
    double memoryMB = -1.0;

    bool operator==(const WindowServerInfo&) const = default;
};

/// What one sample hands to the alert checks. A percentage that can't be read is -1.0.
struct SystemSample {
    LoadAvg load{};
    double memPercent = -1.0;
    double swapPercent = -1.0;
    double wsCPU = -1.0;
};

/// Reads how heavily the machine is loaded. A reading that fails is -1.0, which lies below every
/// threshold; nothing is logged. Main thread only.
class SystemSampler {
public:
    explicit SystemSampler(const Platform& platform) : platform(platform) {}

    /// All readings, once. Waits for the child process that tells of the display server.
    SystemSample sample();

    /// Percent of the processors' time since the reading before; -1.0 at the first.
    double getCPULoad();

    /// Percent of the physical memory, 100 at the most.
    double getMemoryPercent() const;

    /// Percent of the swap space; -1.0 on a machine that has none.
    double getSwapPercent() const;

    std::int64_t getProcessCount() const;

    WindowServerInfo getWindowServerInfo() const;

private:
    Platform platform;
    std::optional<CpuTicks> prevCPUTicks{};
};

} // namespace quillbrook
