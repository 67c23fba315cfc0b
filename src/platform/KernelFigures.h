#pragma once

#include <cstdint>
#include <optional>

namespace quillbrook {

/// What the kernel tells of the machine. Any thread.
class KernelFigures {
public:
    virtual ~KernelFigures() = default;

    /// When the kernel was booted, in whole seconds since 1970; empty when the reading fails.
    /// macOS: `sysctl` KERN_BOOTTIME; Linux: `btime` of /proc/stat.
    virtual std::optional<std::int64_t> bootTime() const = 0;
};

} // namespace quillbrook
