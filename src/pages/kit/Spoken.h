#pragma once

#include <QAccessible>
#include <QString>

namespace quillbrook {

/// A widget that tells screen readers what it is. Its name is the widget's `accessibleName`.
class Spoken {
public:
    virtual ~Spoken() = default;

    virtual QAccessible::Role accessibleRole() const = 0;

    /// Empty when the name says all.
    virtual QString accessibleValue() const { return {}; }
};

} // namespace quillbrook
