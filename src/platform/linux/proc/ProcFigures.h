#pragma once

#include "platform/KernelFigures.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace quillbrook {

/// The boot time in the text of /proc/stat. Empty when it isn't there.
std::optional<std::int64_t> bootTimeOf(std::string_view stat);

/// The sums over all processors in the text of /proc/stat: waiting for a disk counts as idle, time
/// for interrupts and for other guests as the system's. Empty when they aren't there.
std::optional<CpuTicks> cpuTicksOf(std::string_view stat);

/// The memory in the text of /proc/meminfo, such that active, wired and compressor pages make up
/// all that isn't available. Empty when the total or the available memory isn't there.
std::optional<MemoryFigures> memoryOf(std::string_view meminfo, double pageSize);

/// The swap space in the text of /proc/meminfo. Empty when it isn't there.
std::optional<SwapFigures> swapOf(std::string_view meminfo);

} // namespace quillbrook
