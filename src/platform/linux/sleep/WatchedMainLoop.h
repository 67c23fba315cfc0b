#pragma once

#include "platform/MainLoop.h"

#include <memory>
#include <vector>

namespace quillbrook {

class SleepWatch;

/// A run loop that tells of the machine's waking before it runs anything else after a sleep.
class WatchedMainLoop final : public MainLoop {
public:
    WatchedMainLoop(MainLoop& mainLoop, SleepWatch& watch) : mainLoop(mainLoop), watch(watch) {}

    void repeatEvery(double intervalSec, Block body) override;
    void runAfter(double delaySec, Block block) override;
    void post(Block block) override;

private:
    Block watched(Block block);
    void run(const std::shared_ptr<const Block>& block);
    void runHeldBack();

    MainLoop& mainLoop;
    SleepWatch& watch;
    std::vector<std::shared_ptr<const Block>> heldBack{}; // until the bus had time to speak
};

} // namespace quillbrook
