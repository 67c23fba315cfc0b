#pragma once

#include <functional>

namespace quillbrook {

/// The main thread's run loop. Everything handed to it runs on the main thread, one at a time.
/// macOS: repeating timers of the main run loop and blocks of the main queue; Linux: the same
/// through Qt's event loop.
///
/// Nothing handed over can be taken back: a block holds what it needs weakly and does nothing
/// when that is gone.
class MainLoop {
public:
    using Block = std::function<void()>;

    virtual ~MainLoop() = default;

    /// Runs `body` every `intervalSec` (above 0), for the first time one interval from now, for
    /// the life of the process. Main thread only.
    virtual void repeatEvery(double intervalSec, Block body) = 0;

    /// Runs `block` once, `delaySec` (at least 0) from now. Main thread only.
    virtual void runAfter(double delaySec, Block block) = 0;

    /// Runs `block` once, as soon as what runs now is done, in the order of posting. Any thread.
    virtual void post(Block block) = 0;
};

} // namespace quillbrook
