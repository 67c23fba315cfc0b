#pragma once

#include "platform/MainLoop.h"
#include "platform/WorkQueues.h"

#include <utility>

namespace quillbrook {

/// Work that runs on the main loop's own thread as soon as what runs now is done, user-initiated
/// and default alike, in the order of handing over.
class VirtualWorkQueues final : public WorkQueues {
public:
    explicit VirtualWorkQueues(MainLoop& mainLoop) : mainLoop(mainLoop) {}

    void runUserInitiated(Block block) override { mainLoop.post(std::move(block)); }
    void runDefault(Block block) override { mainLoop.post(std::move(block)); }

private:
    MainLoop& mainLoop;
};

} // namespace quillbrook
