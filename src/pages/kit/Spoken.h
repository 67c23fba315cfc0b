#pragma once

#include <QAccessible>
#include <QString>

#include <optional>

namespace quillbrook {

/// A widget that tells screen readers what it is. Its name is the widget's `accessibleName`.
class Spoken {
public:
    virtual ~Spoken() = default;

    virtual QAccessible::Role accessibleRole() const = 0;

    /// Empty when the name says all.
    virtual QString accessibleValue() const { return {}; }

    /// Whether what it folds is open; empty for what folds nothing.
    virtual std::optional<bool> isUnfolded() const { return {}; }
};

} // namespace quillbrook
