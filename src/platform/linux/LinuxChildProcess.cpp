#include "platform/linux/LinuxChildProcess.h"

#include "platform/linux/bus/Notifications.h"

#include <utility>

namespace quillbrook {

void LinuxChildProcess::launch(
    const std::string& path, const std::vector<std::string>& arguments, FailureHandler failed)
{
    const auto texts = path == "/usr/bin/osascript" && arguments.size() == 2
        ? notificationIn(arguments[1])
        : std::nullopt;
    if (!texts) {
        failed(LaunchFailure{"本系统没有 " + path});
        return;
    }
    notifications.notify(*texts, [failed = std::move(failed)](const std::string& description) {
        failed(LaunchFailure{description});
    });
}

std::variant<FinishedProcess, LaunchFailure> LinuxChildProcess::run(
    const std::string& path, const std::vector<std::string>& arguments)
{
    if (path == "/bin/bash" && !arguments.empty()
        && arguments.back().find("WindowServer") != std::string::npos) {
        return FinishedProcess{};
    }
    if (path == "/usr/bin/tccutil" && !arguments.empty() && arguments.front() == "reset") {
        return FinishedProcess{}; // nothing is kept here that could be stale
    }
    return LaunchFailure{"本系统没有 " + path};
}

} // namespace quillbrook
