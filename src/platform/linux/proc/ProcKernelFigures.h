#pragma once

#include "platform/KernelFigures.h"

namespace quillbrook {

/// The figures of the kernel's files in /proc.
class ProcKernelFigures final : public KernelFigures {
public:
    std::optional<std::int64_t> bootTime() const override;
    std::optional<CpuTicks> cpuTicks() const override;
    std::optional<MemoryFigures> memory() const override;
    std::optional<SwapFigures> swap() const override;
    LoadAvg loadAverages() const override;
    double processTableBytes() const override;
};

} // namespace quillbrook
