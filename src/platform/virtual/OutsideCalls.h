#pragma once

#include "platform/Clock.h"

#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace quillbrook {

/// A program was launched, and its end waited for or not.
struct LaunchCall {
    std::string path{};
    std::vector<std::string> arguments{};
    bool isWaitedFor = false;

    bool operator==(const LaunchCall&) const = default;
};

/// The system was to ask for the permission to count keys.
struct PromptCall {
    bool operator==(const PromptCall&) const = default;
};

/// An event tap was switched.
struct TapEnableCall {
    bool isOn = false;

    bool operator==(const TapEnableCall&) const = default;
};

/// A call that reached outside the program.
struct OutsideCall {
    double at = 0;
    std::variant<LaunchCall, PromptCall, TapEnableCall> what{};
};

/// The calls that reached outside, in order.
class OutsideCalls {
public:
    explicit OutsideCalls(const Clock& clock) : clock(clock) {}

    void add(decltype(OutsideCall::what) what) { calls.push_back({clock.now(), std::move(what)}); }
    const std::vector<OutsideCall>& all() const { return calls; }

private:
    const Clock& clock;
    std::vector<OutsideCall> calls{};
};

} // namespace quillbrook
