#pragma once

#include "pages/kit/PaintedChildren.h"

#include <QAccessibleWidget>

namespace quillbrook {

class MarkList;

/// A list of rows that can be pressed, those out of sight included.
class AccessibleMarkList final : public QAccessibleWidget {
public:
    explicit AccessibleMarkList(MarkList* list);

    int childCount() const override;
    QAccessibleInterface* child(int index) const override;
    QAccessibleInterface* childAt(int x, int y) const override;
    QAccessibleInterface* focusChild() const override;
    int indexOfChild(const QAccessibleInterface* item) const override;

private:
    MarkList* list() const;

    mutable PaintedChildren children{};
};

} // namespace quillbrook
