#pragma once

#include "platform/ChildProcess.h"

namespace quillbrook {

/// A system on which every program runs at once, prints nothing and succeeds.
class VirtualChildProcess final : public ChildProcess {
public:
    std::optional<LaunchFailure> launch(
        const std::string&, const std::vector<std::string>&) override
    {
        return std::nullopt;
    }

    std::variant<FinishedProcess, LaunchFailure> run(
        const std::string&, const std::vector<std::string>&) override
    {
        return FinishedProcess{};
    }
};

} // namespace quillbrook
