#pragma once

#include <QColor>
#include <QIcon>
#include <QPainterPath>
#include <QRectF>
#include <QStringList>

class QPainter;

namespace quillbrook {

/// The drawings that stand for the platform's named symbols: outlines on a grid of 24 units, drawn
/// with one stroke weight, in whatever colour they are asked for. Main thread only.
namespace Symbol {

/// The outline of a symbol on the grid; a broken frame for a name without a drawing.
const QPainterPath& outline(const QString& name);

/// Every name that has a drawing, in alphabetical order.
QStringList names();

/// Draws a symbol centred in `rect`, as large as its shorter side.
void draw(QPainter& painter, const QString& name, const QRectF& rect, const QColor& color);

/// A symbol as an icon for menus, sharp on every screen.
QIcon icon(const QString& name, int pixels, const QColor& color);

} // namespace Symbol

} // namespace quillbrook
