#pragma once

#include <QRectF>

class QPainter;
class QWidget;

namespace quillbrook {

/// Marks `rect` with the accent colour while `widget` has the focus by keyboard.
void drawFocusRing(QPainter& painter, const QWidget& widget, const QRectF& rect, double radius);

} // namespace quillbrook
