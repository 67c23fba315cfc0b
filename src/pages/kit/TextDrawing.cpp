#include "pages/kit/TextDrawing.h"

#include <QFontMetricsF>
#include <QGlyphRun>
#include <QLabel>
#include <QPainter>
#include <QTextDocument>
#include <QTextLayout>

#include <algorithm>
#include <array>
#include <cmath>

namespace quillbrook {

namespace {

/// How strong one of the eight copies is that make up the dark rim of a label. Beside a letter
/// three or four of them lie on each other, and keep white at three to one against the lightest of
/// our colours.
constexpr double kRimOpacity = 0.2;
constexpr std::array kRimOffsets = {QPointF(-1, 0), QPointF(1, 0), QPointF(0, -1), QPointF(0, 1),
    QPointF(-0.7, -0.7), QPointF(0.7, -0.7), QPointF(-0.7, 0.7), QPointF(0.7, 0.7)};

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
    // Shaped once and drawn nine times, which costs a fraction of an outline that is stroked.
    QTextLayout layout(line.text, line.font);
    layout.beginLayout();
    QTextLine whole = layout.createLine();
    whole.setNumColumns(static_cast<int>(line.text.size()));
    layout.endLayout();
    const QPointF origin = line.base - QPointF(0, whole.ascent());
    const QList<QGlyphRun> letters = layout.glyphRuns();
    const auto draw = [&](QPointF offset, const QColor& color) {
        painter.setPen(color);
        for (const QGlyphRun& run : letters) {
            painter.drawGlyphRun(origin + offset, run);
        }
    };
    for (const QPointF& offset : kRimOffsets) {
        draw(offset, QColor::fromRgbF(0, 0, 0, static_cast<float>(kRimOpacity)));
    }
    draw({}, QColor::fromRgbF(1, 1, 1, static_cast<float>(opacity)));
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
