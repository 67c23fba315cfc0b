#pragma once

#include "pages/marks/Mark.h"

class QPainter;
class QPainterPath;
class QPalette;
class QRectF;

namespace quillbrook {

/// Draws one mark in the painter's coordinates. Straight edges and lines land on whole device
/// pixels, so that they are sharp at every scale.
void paintMark(QPainter& painter, const Mark& mark, const QPalette& palette);

/// The outline of a shape.
QPainterPath outlineOf(const Shape& shape);

/// `rect` with its edges moved to the nearest whole device pixels of what is painted on.
QRectF onDevicePixels(const QPainter& painter, const QRectF& rect);

/// How wide a line of `width` points is drawn: whole device pixels, at least one.
double deviceLineWidth(const QPainter& painter, double width);

} // namespace quillbrook
