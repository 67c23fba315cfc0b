#include "pages/kit/PaintedChildren.h"

#include <algorithm>

namespace quillbrook {

QAccessible::Role accessibleRole(MarkRole role)
{
    switch (role) {
    case MarkRole::none:
    case MarkRole::text:
        return QAccessible::StaticText;
    case MarkRole::mark:
        return QAccessible::Indicator;
    case MarkRole::cell:
        return QAccessible::Cell;
    case MarkRole::row:
        return QAccessible::ListItem;
    case MarkRole::button:
        return QAccessible::Button;
    }
    return QAccessible::StaticText;
}

PaintedChildren::~PaintedChildren()
{
    for (const auto& [place, id] : children) {
        QAccessible::deleteAccessibleInterface(id);
    }
}

QAccessibleInterface* PaintedChildren::at(int place, const Maker& make)
{
    auto found = children.find(place);
    if (found == children.end()) {
        const auto id = QAccessible::registerAccessibleInterface(make()); // owns it from here on
        found = children.emplace(place, id).first;
    }
    return QAccessible::accessibleInterface(found->second);
}

int PaintedChildren::placeOf(const QAccessibleInterface* child) const
{
    const auto found = std::find_if(children.begin(), children.end(), [child](const auto& entry) {
        return QAccessible::accessibleInterface(entry.second) == child;
    });
    return found == children.end() ? -1 : found->first;
}

} // namespace quillbrook
