#include "pages/kit/TextDrawing.h"

#include <QFontMetricsF>
#include <QLabel>
#include <QPainter>

#include <algorithm>

namespace quillbrook {

void drawShrunkText(QPainter& painter, const QRectF& rect, int alignment, const QString& text,
    const QFont& font, const QColor& color, double minimumScale)
{
    QFont fitting = font;
    const double width = QFontMetricsF(font).horizontalAdvance(text);
    if (width > rect.width() && rect.width() > 0) {
        const double scale = std::max(minimumScale, rect.width() / width);
        fitting.setPixelSize(std::max(1, static_cast<int>(font.pixelSize() * scale)));
    }
    painter.setFont(fitting);
    painter.setPen(color);
    painter.drawText(rect, alignment | Qt::TextSingleLine,
        QFontMetricsF(fitting).elidedText(text, Qt::ElideMiddle, rect.width() + 0.5));
}

QLabel* textLabel(const QString& text, const QFont& font, QWidget* parent)
{
    auto* label = new QLabel(text, parent);
    label->setFont(font);
    label->setTextFormat(Qt::PlainText);
    return label;
}

QLabel* secondaryLabel(const QString& text, const QFont& font, QWidget* parent)
{
    QLabel* label = textLabel(text, font, parent);
    label->setForegroundRole(QPalette::PlaceholderText);
    return label;
}

} // namespace quillbrook
