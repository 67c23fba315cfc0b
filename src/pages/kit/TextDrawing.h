#pragma once

#include <QColor>
#include <QFont>
#include <QRectF>
#include <QString>

class QLabel;
class QPainter;
class QWidget;

namespace quillbrook {

/// Draws one line in `rect`. A text that is too wide is drawn smaller, down to `minimumScale` of
/// its size, and is then elided in the middle.
void drawShrunkText(QPainter& painter, const QRectF& rect, int alignment, const QString& text,
    const QFont& font, const QColor& color, double minimumScale = 1);

/// A label that elides nothing and takes part in no focus. `parent` may be null.
QLabel* textLabel(const QString& text, const QFont& font, QWidget* parent = nullptr);

/// The same in the secondary colour.
QLabel* secondaryLabel(const QString& text, const QFont& font, QWidget* parent = nullptr);

} // namespace quillbrook
