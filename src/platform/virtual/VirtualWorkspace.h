#pragma once

#include "platform/Workspace.h"

#include <utility>
#include <vector>

namespace quillbrook {

/// A desktop on which applications come to the front when told.
class VirtualWorkspace final : public Workspace {
public:
    std::optional<RunningApplication> frontmostApplication() const override { return front; }
    int runningApplicationCount(std::string_view) const override { return instances; }
    std::int64_t processIdentifier() const override { return pid; }
    void addObserver(WorkspaceNotification notification, std::function<void()> observer) override;

    void setFront(std::optional<RunningApplication> application) { front = std::move(application); }
    void setInstances(int count) { instances = count; }
    void setProcessIdentifier(std::int64_t identifier) { pid = identifier; }

    /// Calls the observers of `notification`, in the order of their adding.
    void notify(WorkspaceNotification notification) const;

    /// Forgets all observers, as the end of the process does.
    void clearObservers() { observers.clear(); }

private:
    using Observer = std::pair<WorkspaceNotification, std::function<void()>>;

    std::optional<RunningApplication> front{};
    int instances = 1;
    std::int64_t pid = 4242;
    std::vector<Observer> observers{};
};

} // namespace quillbrook
