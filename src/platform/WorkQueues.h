#pragma once

#include <functional>

namespace quillbrook {

/// Work off the main thread, in two priorities. macOS: the global concurrent queues; Linux: two
/// thread pools.
class WorkQueues {
public:
    using Block = std::function<void()>;

    virtual ~WorkQueues() = default;

    /// Runs `block` beside the main thread, for results that the user waits for. Blocks run side
    /// by side and end in any order.
    virtual void runUserInitiated(Block block) = 0;

    /// The same, for work that may come after it.
    virtual void runDefault(Block block) = 0;
};

} // namespace quillbrook
