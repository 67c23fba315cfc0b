#pragma once

#include "pages/marks/Geometry.h"
#include "platform/qt/QtText.h"

#include <QPointF>
#include <QRectF>

namespace quillbrook {

inline QRectF toQRectF(const Rect& rect)
{
    return {rect.x, rect.y, rect.width, rect.height};
}

inline QPointF toQPointF(const Point& point)
{
    return {point.x, point.y};
}

} // namespace quillbrook
