#pragma once

#include "pages/kit/Spoken.h"

#include <QPainterPath>
#include <QPointer>
#include <QWidget>

class QVBoxLayout;

namespace quillbrook {

/// A small window that hangs on a widget by an arrow, and closes with Escape or a click elsewhere.
/// It has the focus while it is open, which is then where it was before. Screen readers find it
/// inside its anchor.
class Popover : public QWidget, public Spoken {
    Q_OBJECT

public:
    /// `width` is that of the body; its content is padded by 20. Round it lie arrow and shadow.
    Popover(int width, QWidget* anchor);

    QVBoxLayout* content() { return column; }

    /// Opens under the anchor, or above it where there is more room, and within the screen.
    void open();

    QAccessible::Role accessibleRole() const override { return QAccessible::Dialog; }

    /// The place of the body in the popover's coordinates.
    QRect body() const;
    /// Where the arrow points to, in the popover's coordinates.
    QPoint tip() const;

signals:
    void closed();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void placeAt(const QRect& anchorPlace, const QRect& within);
    QPainterPath outline() const;

    QWidget* anchor;
    QVBoxLayout* column;
    QPointer<QWidget> focusBefore{};
    bool isAbove = false;
    int tipX = 0;
};

} // namespace quillbrook
