#pragma once

#include "pages/kit/DrawnItem.h"

#include <QWidget>

#include <vector>

namespace quillbrook {

/// A widget that paints what it shows, and offers the same things to screen readers as its
/// children.
class DrawnView : public QWidget {
    Q_OBJECT

public:
    using QWidget::QWidget;

    /// What is painted, in reading order, from the figures that the painting uses.
    virtual std::vector<DrawnItem> drawnItems() const = 0;
};

} // namespace quillbrook
