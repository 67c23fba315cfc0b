#pragma once

#include <functional>
#include <string>
#include <variant>
#include <vector>

namespace quillbrook {

/// Why a program could not be launched, in words for the log.
struct LaunchFailure {
    std::string description{};
};

/// A program that ran to its end.
struct FinishedProcess {
    int exitStatus = 0;
    std::string standardOutput{}; // bytes as they came
};

/// Programs of the system that the logic launches by command line. macOS runs them; Linux answers
/// the few command lines that there are with its own means, without starting anything. Main
/// thread only.
class ChildProcess {
public:
    using FailureHandler = std::function<void(const LaunchFailure&)>;

    virtual ~ChildProcess() = default;

    /// Launches and does not wait. `failed` runs if that fails: at once, or later on the main
    /// thread where the failure shows later.
    virtual void launch(
        const std::string& path, const std::vector<std::string>& arguments, FailureHandler failed)
        = 0;

    /// Launches and waits for the end.
    virtual std::variant<FinishedProcess, LaunchFailure> run(
        const std::string& path, const std::vector<std::string>& arguments)
        = 0;
};

} // namespace quillbrook
