#pragma once

#include "platform/MainLoop.h"
#include "platform/virtual/VirtualClock.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace quillbrook {

/// A run loop whose time passes only in `runBefore` and `runThrough`. What is due at one time runs
/// in the order in which it was made. A repeating timer made at t is due at t + k * interval,
/// computed so and not summed up, and the clock stands at exactly that time while its body runs.
class VirtualMainLoop final : public MainLoop {
public:
    explicit VirtualMainLoop(VirtualClock& clock) : clock(clock) {}

    void repeatEvery(double intervalSec, Block body) override;
    void runAfter(double delaySec, Block block) override;
    void post(Block block) override;

    /// Runs all that is due before `time`, then lets the clock stand there. Does nothing when the
    /// clock is there already.
    void runBefore(double time);

    /// Runs all that is due up to and at `time`, then lets the clock stand there.
    void runThrough(double time);

    /// Lets the clock jump to `time` with nothing running, as when the machine sleeps. What became
    /// due meanwhile runs once each at the next run, with the clock where it then stands.
    void jumpTo(double time) { clock.set(time); }

    /// Forgets all timers and blocks, as the end of the process does.
    void clear() { entries.clear(); }

private:
    struct Entry {
        double due = 0;
        std::uint64_t order = 0;
        double madeAt = 0;
        double intervalSec = 0; // 0: runs once
        std::uint64_t round = 0;
        std::shared_ptr<Block> block{}; // shared with its own run, which may clear the entries
    };

    using Entries = std::vector<Entry>;

    void add(Entry entry);
    Entries::iterator firstEntry();
    void run(Entries::iterator entry);

    VirtualClock& clock;
    Entries entries{};
    std::uint64_t nextOrder = 0;
};

} // namespace quillbrook
