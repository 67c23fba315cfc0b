#pragma once

class QColor;
class QPainter;
class QRectF;

namespace quillbrook {

/// Fills a rectangle with round corners, its straight edges on whole device pixels.
///
/// Only the bands with the corners are drawn as a curved shape. One tall curved shape is hundreds
/// of short runs of pixels, which the raster engine hands to other threads and waits for.
void fillRounded(QPainter& painter, const QRectF& rect, double radius, const QColor& color);

} // namespace quillbrook
