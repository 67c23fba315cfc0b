#include "pages/kit/TextDrawing.h"

#include <QFontMetricsF>
#include <QLabel>
#include <QPainter>
#include <QPainterPath>
#include <QPen>
#include <QTextDocument>

#include <algorithm>
#include <array>
#include <cmath>

namespace quillbrook {

namespace {

/// A soft dark rim in two layers, the wider one weaker. Together they keep white letters at three
/// to one against the lightest of our colours.
struct Rim {
    double width; // on both sides of the outline together
    double opacity;
};
constexpr std::array kRims = {Rim{4, 0.12}, Rim{2.2, 0.36}};
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

/// A line of text as it stands in its place.
struct PlacedLine {
    QString text;
    QFont font;
    QPointF base; // where its base line begins
};

PlacedLine placed(const QRectF& rect, Qt::AlignmentFlag alignment, const QString& text,
    const QFont& font, double minimumScale)
{
    QString line = text;
    line.replace('\n', ' ');
    const QFont fitting = fittingFont(line, font, rect.width(), minimumScale);
    const QFontMetricsF metrics(fitting);
    line = metrics.elidedText(line, Qt::ElideMiddle, rect.width() + kTolerance);
    const double left = leftEdge(rect, alignment, metrics.horizontalAdvance(line));
    const double base = rect.center().y() + (metrics.ascent() - metrics.descent()) / 2;
    return {line, fitting, {left, std::round(base)}};
}

void drawPlaced(QPainter& painter, const PlacedLine& line, const QColor& color)
{
    painter.setFont(line.font);
    painter.setPen(color);
    painter.drawText(line.base, line.text);
}

} // namespace

void drawShrunkText(QPainter& painter, const QRectF& rect, Qt::AlignmentFlag alignment,
    const QString& text, const QFont& font, const QColor& color, double minimumScale)
{
    drawPlaced(painter, placed(rect, alignment, text, font, minimumScale), color);
}

void drawTextOnColor(QPainter& painter, const QRectF& rect, Qt::AlignmentFlag alignment,
    const QString& text, const QFont& font, double opacity)
{
    const PlacedLine line = placed(rect, alignment, text, font, 1);
    QPainterPath letters;
    letters.addText(line.base, line.font, line.text);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    for (const Rim& rim : kRims) {
        const QColor dark = QColor::fromRgbF(0, 0, 0, static_cast<float>(rim.opacity));
        painter.strokePath(
            letters, QPen(dark, rim.width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    }
    painter.restore();
    drawPlaced(painter, line, QColor::fromRgbF(1, 1, 1, static_cast<float>(opacity)));
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
