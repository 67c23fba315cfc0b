#pragma once

#include <QRectF>
#include <QString>

#include <cstdint>

namespace quillbrook {

/// What a thing that is painted, not a widget, is to a screen reader.
enum class DrawnRole : std::uint8_t {
    text,
    mark, ///< a bar, block, point or sector of a chart
    cell, ///< a rectangle of a treemap
};

/// A thing that a widget paints, as screen readers find it.
struct DrawnItem {
    DrawnRole role = DrawnRole::text;
    QString name{}; // whole, never elided
    QString value{}; // empty when the name says all
    QRectF rect{}; // in the widget's coordinates
};

} // namespace quillbrook
