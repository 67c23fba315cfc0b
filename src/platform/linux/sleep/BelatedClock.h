#pragma once

#include "platform/Clock.h"

#include <functional>
#include <optional>
#include <thread>

namespace quillbrook {

/// A clock that stands still at an earlier moment while the main thread is told of what happened
/// then. Made on the main thread; other threads always read the present.
class BelatedClock final : public Clock {
public:
    explicit BelatedClock(const Clock& clock) : clock(clock) {}

    double now() const override
    {
        const bool isMainThread = std::this_thread::get_id() == mainThread;
        return isMainThread && moment ? *moment : clock.now();
    }

    /// Runs `body` as of `time`, seconds since 1970.
    void runAt(double time, const std::function<void()>& body)
    {
        moment = time;
        body();
        moment.reset();
    }

private:
    const Clock& clock;
    std::thread::id mainThread = std::this_thread::get_id();
    std::optional<double> moment{};
};

} // namespace quillbrook
