#pragma once

#include "platform/KernelFigures.h"

namespace quillbrook {

/// Figures that stand as they were set.
class VirtualKernelFigures final : public KernelFigures {
public:
    std::optional<std::int64_t> bootTime() const override { return boot; }

    void setBootTime(std::optional<std::int64_t> time) { boot = time; }

private:
    std::optional<std::int64_t> boot = 0;
};

} // namespace quillbrook
