#pragma once

#include <functional>
#include <string>

namespace quillbrook {

/// One running program for each user session. The first that is made is the one; a later one asks
/// it to show itself. Main thread only.
class SingleInstance {
public:
    virtual ~SingleInstance() = default;

    /// Asks the instance that runs already to show itself. False when there is none: then this one
    /// runs on. True also when that one is too busy to answer soon; it will see what it was asked.
    virtual bool handOver() = 0;

    /// Calls `body` each time that a later instance hands over, with what the desktop told its
    /// launch, empty when it told nothing.
    virtual void onReopen(std::function<void(const std::string& startupId)> body) = 0;
};

} // namespace quillbrook
