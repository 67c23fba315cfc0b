#pragma once

#include <cstdint>
#include <optional>

namespace quillbrook {

/// What the processors did since the boot, in clock ticks summed over all of them.
struct CpuTicks {
    double user = 0;
    double system = 0;
    double idle = 0;
    double nice = 0;
};

/// The use of the memory. Pages that are free, inactive, speculative or purgeable don't stand here.
struct MemoryFigures {
    double activePages = 0;
    double wiredPages = 0;
    double compressorPages = 0;
    double pageSize = 0; // bytes
    double physicalBytes = 0;
};

struct SwapFigures {
    double totalBytes = 0;
    double usedBytes = 0;
};

/// Load averages over 1, 5 and 15 minutes.
struct LoadAvg {
    double oneMinute = 0;
    double fiveMinutes = 0;
    double fifteenMinutes = 0;
};

/// What the kernel tells of the machine. A reading that fails is empty. Any thread.
class KernelFigures {
public:
    virtual ~KernelFigures() = default;

    /// When the kernel was booted, in whole seconds since 1970. macOS: `sysctl` KERN_BOOTTIME;
    /// Linux: `btime` of /proc/stat.
    virtual std::optional<std::int64_t> bootTime() const = 0;

    /// macOS: `host_processor_info`; Linux: the first line of /proc/stat.
    virtual std::optional<CpuTicks> cpuTicks() const = 0;

    /// macOS: `host_statistics64` and `sysctl` HW_MEMSIZE; Linux: /proc/meminfo, where what is not
    /// available counts as used.
    virtual std::optional<MemoryFigures> memory() const = 0;

    /// macOS: `sysctlbyname` "vm.swapusage"; Linux: /proc/meminfo.
    virtual std::optional<SwapFigures> swap() const = 0;

    /// All three are 0 when the reading fails. Both systems: `getloadavg`.
    virtual LoadAvg loadAverages() const = 0;

    /// The size of the process table in bytes, at 648 bytes a process; 0 when the reading fails.
    /// macOS: `sysctl` KERN_PROC_ALL without a buffer; Linux: the processes of /proc.
    virtual double processTableBytes() const = 0;
};

} // namespace quillbrook
