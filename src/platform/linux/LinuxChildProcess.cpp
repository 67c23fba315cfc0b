#include "platform/linux/LinuxChildProcess.h"

#include "platform/linux/Notifications.h"

namespace quillbrook {

std::optional<LaunchFailure> LinuxChildProcess::launch(
    const std::string& path, const std::vector<std::string>& arguments)
{
    if (path != "/usr/bin/osascript" || arguments.size() != 2) {
        return LaunchFailure{"本系统没有 " + path};
    }
    const auto texts = notificationIn(arguments[1]);
    if (!texts) {
        return LaunchFailure{"本系统没有 " + path};
    }
    if (!notifications.isPossible()) {
        return LaunchFailure{"没有会话总线"};
    }
    notifications.notify(*texts);
    return std::nullopt;
}

std::variant<FinishedProcess, LaunchFailure> LinuxChildProcess::run(
    const std::string& path, const std::vector<std::string>& arguments)
{
    if (path == "/bin/bash" && !arguments.empty()
        && arguments.back().find("WindowServer") != std::string::npos) {
        return FinishedProcess{};
    }
    return LaunchFailure{"本系统没有 " + path};
}

} // namespace quillbrook
