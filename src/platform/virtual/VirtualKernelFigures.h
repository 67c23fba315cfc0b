#pragma once

#include "platform/KernelFigures.h"

namespace quillbrook {

/// Figures that stand as they were set.
class VirtualKernelFigures final : public KernelFigures {
public:
    std::optional<std::int64_t> bootTime() const override { return boot; }
    std::optional<CpuTicks> cpuTicks() const override { return ticks; }
    std::optional<MemoryFigures> memory() const override { return memoryFigures; }
    std::optional<SwapFigures> swap() const override { return swapFigures; }
    LoadAvg loadAverages() const override { return load; }
    double processTableBytes() const override { return processBytes; }

    void setBootTime(std::optional<std::int64_t> time) { boot = time; }
    void setCpuTicks(std::optional<CpuTicks> sums) { ticks = sums; }
    void setMemory(std::optional<MemoryFigures> figures) { memoryFigures = figures; }
    void setSwap(std::optional<SwapFigures> figures) { swapFigures = figures; }
    void setLoadAverages(LoadAvg averages) { load = averages; }
    void setProcessTableBytes(double bytes) { processBytes = bytes; }

private:
    std::optional<std::int64_t> boot = 0;
    std::optional<CpuTicks> ticks = CpuTicks{};
    std::optional<MemoryFigures> memoryFigures
        = MemoryFigures{.pageSize = 4096, .physicalBytes = 8589934592};
    std::optional<SwapFigures> swapFigures = SwapFigures{};
    LoadAvg load{};
    double processBytes = 0;
};

} // namespace quillbrook
