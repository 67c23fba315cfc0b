#include "platform/virtual/VirtualMainLoop.h"

#include "base/Fatal.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace quillbrook {

void VirtualMainLoop::repeatEvery(double intervalSec, Block body)
{
    if (!(intervalSec > 0)) {
        fatal("repeatEvery: the interval must be above 0");
    }
    add({.due = clock.now() + intervalSec,
        .madeAt = clock.now(),
        .intervalSec = intervalSec,
        .round = 1,
        .block = std::make_shared<Block>(std::move(body))});
}

void VirtualMainLoop::runAfter(double delaySec, Block block)
{
    add({.due = clock.now() + delaySec, .block = std::make_shared<Block>(std::move(block))});
}

void VirtualMainLoop::post(Block block)
{
    runAfter(0, std::move(block));
}

void VirtualMainLoop::runBefore(double time)
{
    if (time == clock.now()) {
        return;
    }
    for (auto entry = firstEntry(); entry != entries.end() && entry->due < time;
         entry = firstEntry()) {
        run(entry);
    }
    clock.set(time);
}

void VirtualMainLoop::runThrough(double time)
{
    for (auto entry = firstEntry(); entry != entries.end() && entry->due <= time;
         entry = firstEntry()) {
        run(entry);
    }
    clock.set(std::max(time, clock.now()));
}

void VirtualMainLoop::add(Entry entry)
{
    entry.order = nextOrder++;
    entries.push_back(std::move(entry));
}

VirtualMainLoop::Entries::iterator VirtualMainLoop::firstEntry()
{
    return std::ranges::min_element(
        entries, {}, [](const Entry& entry) { return std::tuple(entry.due, entry.order); });
}

void VirtualMainLoop::run(Entries::iterator entry)
{
    clock.set(std::max(entry->due, clock.now()));
    const std::shared_ptr<Block> block = entry->block;
    if (entry->intervalSec > 0) {
        // A clock that jumped has passed several rounds: they are one, and the next lies ahead.
        do {
            entry->due = entry->madeAt + static_cast<double>(++entry->round) * entry->intervalSec;
        } while (entry->due <= clock.now());
    } else {
        entries.erase(entry);
    }
    (*block)();
}

} // namespace quillbrook
