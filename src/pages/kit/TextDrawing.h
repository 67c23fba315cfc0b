#pragma once

#include <QColor>
#include <QFont>
#include <QRectF>
#include <QString>

class QLabel;
class QPainter;
class QWidget;

namespace quillbrook {

/// The text with a space for each tab, line break and other control character: names come from
/// outside, and have one line.
QString oneLine(QString text);

/// Draws one line in `rect`, at half its height, and at its left, right or middle. A text that is
/// too wide is drawn smaller, down to `minimumScale` of its size, and is then elided in the middle.
/// The base line follows from the font alone, so that neighbours stand level in every script.
void drawShrunkText(QPainter& painter, const QRectF& rect, Qt::AlignmentFlag alignment,
    const QString& text, const QFont& font, const QColor& color, double minimumScale = 1);

/// Draws one line in white on a ground of any colour, with a soft dark rim that keeps it
/// readable on the light ones; otherwise as above. `opacity` is that of the text.
void drawTextOnColor(QPainter& painter, const QRectF& rect, Qt::AlignmentFlag alignment,
    const QString& text, const QFont& font, double opacity = 1);

/// A tooltip that shows `text` as it stands. Names come from outside, and Qt would read a name
/// that looks like markup as such.
QString plainToolTip(const QString& text);

/// A label that elides nothing and takes part in no focus. `parent` may be null.
QLabel* textLabel(const QString& text, const QFont& font, QWidget* parent = nullptr);

/// The same in the secondary colour.
QLabel* secondaryLabel(const QString& text, const QFont& font, QWidget* parent = nullptr);

} // namespace quillbrook
