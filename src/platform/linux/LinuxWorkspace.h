#pragma once

#include "platform/Workspace.h"

#include <functional>
#include <optional>
#include <utility>
#include <vector>

namespace quillbrook {

/// The Linux desktop, as its parts tell of it. While the screens are dark or locked nobody sees the
/// window that keeps the keys, and the login window is in front.
class LinuxWorkspace final : public Workspace {
public:
    using Front = std::function<std::optional<RunningApplication>()>;

    explicit LinuxWorkspace(Front front) : front(std::move(front)) {}

    std::optional<RunningApplication> frontmostApplication() const override;
    int runningApplicationCount(std::string_view bundleIdentifier) const override;
    std::int64_t processIdentifier() const override;
    void addObserver(WorkspaceNotification notification, std::function<void()> observer) override;

    /// Calls the observers of `notification`, in the order of their adding.
    void notify(WorkspaceNotification notification);

private:
    using Observer = std::pair<WorkspaceNotification, std::function<void()>>;

    Front front; // of the display
    bool areScreensAsleep = false;
    std::vector<Observer> observers{};
};

} // namespace quillbrook
