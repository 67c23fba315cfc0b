#pragma once

#include "platform/ChildProcess.h"

namespace quillbrook {

class Notifications;

/// Answers the few command lines that the logic launches in process: nothing is started, and
/// nothing is waited for.
class LinuxChildProcess final : public ChildProcess {
public:
    explicit LinuxChildProcess(Notifications& notifications) : notifications(notifications) {}

    /// A notification goes to the desktop's service; nothing else can be launched.
    void launch(const std::string& path, const std::vector<std::string>& arguments,
        FailureHandler failed) override;

    /// The line that asks for the display server's figures prints nothing, and a permission is
    /// reset at once, as no grant is kept; nothing else can be launched.
    std::variant<FinishedProcess, LaunchFailure> run(
        const std::string& path, const std::vector<std::string>& arguments) override;

private:
    Notifications& notifications;
};

} // namespace quillbrook
