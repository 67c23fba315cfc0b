#pragma once

#include <functional>

namespace quillbrook {

/// One running program for each user session. The first that is made is the one; a later one asks
/// it to show itself. Main thread only.
class SingleInstance {
public:
    virtual ~SingleInstance() = default;

    /// Asks the instance that runs already to show itself. False when there is none: then this one
    /// runs on.
    virtual bool handOver() = 0;

    /// Calls `body` each time that a later instance hands over.
    virtual void onReopen(std::function<void()> body) = 0;
};

} // namespace quillbrook
