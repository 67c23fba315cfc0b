#pragma once

#include <QAccessible>

#include <vector>

class QObject;

namespace quillbrook {

/// Collects what screen readers are told while it lives. One at a time; needs the application
/// object.
class AccessibleEvents {
public:
    AccessibleEvents();
    ~AccessibleEvents();

    AccessibleEvents(const AccessibleEvents&) = delete;
    AccessibleEvents& operator=(const AccessibleEvents&) = delete;

    struct Told {
        const QObject* object = nullptr;
        QAccessible::Event type{};
        int child = -1; // of the object; -1 for itself
    };

    const std::vector<Told>& all() const;

    /// What was told of one object, in order.
    std::vector<QAccessible::Event> of(const QObject& object) const;
};

} // namespace quillbrook
