#include "platform/linux/LinuxWorkspace.h"

#include "platform/Directories.h"
#include "platform/linux/proc/Processes.h"

#include <unistd.h>

namespace quillbrook {

std::optional<RunningApplication> LinuxWorkspace::frontmostApplication() const
{
    if (areScreensAsleep) {
        return RunningApplication{
            .localizedName = "loginwindow", .bundleIdentifier = "com.apple.loginwindow"};
    }
    return front();
}

int LinuxWorkspace::runningApplicationCount(std::string_view bundleIdentifier) const
{
    return bundleIdentifier == kDataFolderName ? instancesOfThisProgram() : 0;
}

std::int64_t LinuxWorkspace::processIdentifier() const
{
    return getpid();
}

void LinuxWorkspace::addObserver(WorkspaceNotification notification, std::function<void()> observer)
{
    observers.emplace_back(notification, std::move(observer));
}

void LinuxWorkspace::notify(WorkspaceNotification notification)
{
    if (notification == WorkspaceNotification::screensDidSleep) {
        areScreensAsleep = true;
    } else if (notification == WorkspaceNotification::screensDidWake) {
        areScreensAsleep = false;
    }
    for (const auto& [observed, observer] : observers) {
        if (observed == notification) {
            observer();
        }
    }
}

} // namespace quillbrook
