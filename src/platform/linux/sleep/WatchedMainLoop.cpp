#include "platform/linux/sleep/WatchedMainLoop.h"

#include "platform/linux/sleep/SleepWatch.h"

#include <utility>

namespace quillbrook {

namespace {

constexpr double kBusDelaySec = 0.2;

} // namespace

void WatchedMainLoop::repeatEvery(double intervalSec, Block body)
{
    mainLoop.repeatEvery(intervalSec, watched(std::move(body)));
}

void WatchedMainLoop::runAfter(double delaySec, Block block)
{
    mainLoop.runAfter(delaySec, watched(std::move(block)));
}

void WatchedMainLoop::post(Block block)
{
    mainLoop.post(watched(std::move(block)));
}

MainLoop::Block WatchedMainLoop::watched(Block block)
{
    return [this, shared = std::make_shared<const Block>(std::move(block))] { run(shared); };
}

void WatchedMainLoop::run(const std::shared_ptr<const Block>& block)
{
    const bool isTimely = watch.look();
    if (isTimely && heldBack.empty()) {
        (*block)();
        return;
    }
    if (heldBack.empty()) {
        mainLoop.runAfter(kBusDelaySec, [this] { runHeldBack(); });
    }
    heldBack.push_back(block);
}

void WatchedMainLoop::runHeldBack()
{
    watch.look();
    for (const auto& block : std::exchange(heldBack, {})) {
        (*block)();
    }
}

} // namespace quillbrook
