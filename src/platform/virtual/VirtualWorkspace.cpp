#include "platform/virtual/VirtualWorkspace.h"

namespace quillbrook {

void VirtualWorkspace::addObserver(
    WorkspaceNotification notification, std::function<void()> observer)
{
    observers.emplace_back(notification, std::move(observer));
}

void VirtualWorkspace::notify(WorkspaceNotification notification) const
{
    const auto present = observers; // an observer may add observers
    for (const auto& [watched, observer] : present) {
        if (watched == notification) {
            observer();
        }
    }
}

} // namespace quillbrook
