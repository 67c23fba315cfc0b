#include "pages/kit/RoundedFill.h"

#include "pages/kit/MarkPainter.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

namespace quillbrook {

namespace {

/// The part of the rounded rectangle from its upper edge down to `lower`.
QPainterPath upperBand(const QRectF& rect, double radius, double lower)
{
    const QSizeF arc(2 * radius, 2 * radius);
    QPainterPath band(QPointF(rect.left(), lower));
    band.lineTo(rect.left(), rect.top() + radius);
    band.arcTo(QRectF(rect.topLeft(), arc), 180, -90);
    band.lineTo(rect.right() - radius, rect.top());
    band.arcTo(QRectF(QPointF(rect.right() - 2 * radius, rect.top()), arc), 90, -90);
    band.lineTo(rect.right(), lower);
    band.closeSubpath();
    return band;
}

QPainterPath mirrored(const QPainterPath& band, const QRectF& rect)
{
    return QTransform(1, 0, 0, -1, 0, rect.top() + rect.bottom()).map(band);
}

void fillSharp(QPainter& painter, const QRectF& rect, const QColor& color)
{
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.fillRect(rect, color);
    painter.setRenderHint(QPainter::Antialiasing);
}

} // namespace

void fillRounded(QPainter& painter, const QRectF& wanted, double radius, const QColor& color)
{
    const QRectF rect = onDevicePixels(painter, wanted);
    const double scale = painter.deviceTransform().m11();
    const double rounded = std::min({radius, rect.width() / 2, rect.height() / 2});
    const double band = std::ceil(rounded * scale) / scale; // ends between two rows of pixels
    if (rounded <= 0) {
        fillSharp(painter, rect, color);
        return;
    }
    if (2 * band >= rect.height()) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(color);
        painter.drawRoundedRect(rect, rounded, rounded);
        return;
    }
    const QPainterPath upper = upperBand(rect, rounded, rect.top() + band);
    painter.fillPath(upper, color);
    fillSharp(painter, rect.adjusted(0, band, 0, -band), color);
    painter.fillPath(mirrored(upper, rect), color);
}

} // namespace quillbrook
