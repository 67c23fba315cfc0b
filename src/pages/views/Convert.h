#pragma once

#include "pages/marks/FigureContent.h"
#include "pages/marks/Geometry.h"
#include "pages/kit/FigureCard.h"
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

inline void setFigure(FigureCard& card, const FigureContent& figure)
{
    card.setFigure(
        toQString(figure.symbol), figure.color, toQString(figure.value), toQString(figure.title));
}

} // namespace quillbrook
