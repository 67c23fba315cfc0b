#pragma once

#include "pages/marks/Mark.h"

#include <QAccessible>

#include <functional>
#include <map>

namespace quillbrook {

/// What screen readers call a mark of that role.
QAccessible::Role accessibleRole(MarkRole role);

/// The accessible children of a widget that paints what it shows, by their place. A child is made
/// when it is first asked for, and all go with this.
class PaintedChildren {
public:
    using Maker = std::function<QAccessibleInterface*()>;

    PaintedChildren() = default;
    ~PaintedChildren();

    PaintedChildren(const PaintedChildren&) = delete;
    PaintedChildren& operator=(const PaintedChildren&) = delete;

    QAccessibleInterface* at(int place, const Maker& make);

    /// -1 for an interface that is none of them.
    int placeOf(const QAccessibleInterface* child) const;

private:
    std::map<int, QAccessible::Id> children{};
};

} // namespace quillbrook
