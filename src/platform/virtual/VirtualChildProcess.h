#pragma once

#include "platform/ChildProcess.h"
#include "platform/virtual/OutsideCalls.h"

#include <map>

namespace quillbrook {

/// A system on which programs run at once, with the outcome that was set. A program that was never
/// installed can't be launched.
class VirtualChildProcess final : public ChildProcess {
public:
    explicit VirtualChildProcess(OutsideCalls& calls) : calls(calls) {}

    void launch(const std::string& path, const std::vector<std::string>& arguments,
        FailureHandler failed) override;
    std::variant<FinishedProcess, LaunchFailure> run(
        const std::string& path, const std::vector<std::string>& arguments) override;

    void install(const std::string& path, FinishedProcess outcome)
    {
        programs.insert_or_assign(path, std::move(outcome));
    }
    void uninstall(const std::string& path) { programs.erase(path); }

private:
    OutsideCalls& calls;
    std::map<std::string, FinishedProcess> programs{};
};

} // namespace quillbrook
