#include "pages/kit/TextDrawing.h"

#include <QFontMetricsF>
#include <QLabel>
#include <QPainter>
#include <QTextDocument>

#include <algorithm>
#include <cmath>

namespace quillbrook {

namespace {

constexpr double kShadowOpacity = 0.22;
constexpr double kTolerance = 0.5; // a text in a place of its own width is not elided

QFont fittingFont(const QString& text, const QFont& font, double width, double minimumScale)
{
    QFont fitting = font;
    const double wanted = QFontMetricsF(font).horizontalAdvance(text);
    if (wanted > width && width > 0) {
        const double scale = std::max(minimumScale, width / wanted);
        fitting.setPixelSize(std::max(1, static_cast<int>(font.pixelSize() * scale)));
    }
    return fitting;
}

double leftEdge(const QRectF& rect, Qt::AlignmentFlag alignment, double width)
{
    if (alignment == Qt::AlignLeft) {
        return rect.left();
    }
    const double rest = rect.width() - width;
    return rect.left() + (alignment == Qt::AlignRight ? rest : rest / 2);
}

} // namespace

void drawShrunkText(QPainter& painter, const QRectF& rect, Qt::AlignmentFlag alignment,
    const QString& text, const QFont& font, const QColor& color, double minimumScale)
{
    QString line = text;
    line.replace('\n', ' ');
    const QFont fitting = fittingFont(line, font, rect.width(), minimumScale);
    const QFontMetricsF metrics(fitting);
    line = metrics.elidedText(line, Qt::ElideMiddle, rect.width() + kTolerance);
    const double left = leftEdge(rect, alignment, metrics.horizontalAdvance(line));
    const double base = rect.center().y() + (metrics.ascent() - metrics.descent()) / 2;
    painter.setFont(fitting);
    painter.setPen(color);
    painter.drawText(QPointF(left, std::round(base)), line);
}

void drawTextOnColor(QPainter& painter, const QRectF& rect, Qt::AlignmentFlag alignment,
    const QString& text, const QFont& font, double opacity)
{
    drawShrunkText(painter, rect.translated(0, 1), alignment, text, font,
        QColor::fromRgbF(0, 0, 0, static_cast<float>(kShadowOpacity * opacity)));
    drawShrunkText(painter, rect, alignment, text, font,
        QColor::fromRgbF(1, 1, 1, static_cast<float>(opacity)));
}

QString plainToolTip(const QString& text)
{
    return Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text, Qt::WhiteSpaceNormal) : text;
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
