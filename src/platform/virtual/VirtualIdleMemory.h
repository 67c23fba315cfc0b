#pragma once

#include "platform/IdleMemory.h"

namespace quillbrook {

/// Memory without end, which counts how often some was given back.
class VirtualIdleMemory final : public IdleMemory {
public:
    void giveBack() override { ++count; }

    int givenBackCount() const { return count; }

private:
    int count = 0;
};

} // namespace quillbrook
