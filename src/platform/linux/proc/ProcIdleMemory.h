#pragma once

#include "platform/IdleMemory.h"

namespace quillbrook {

/// Finds the fonts among the mappings of /proc/self.
class ProcIdleMemory final : public IdleMemory {
public:
    void giveBack() override;
};

} // namespace quillbrook
