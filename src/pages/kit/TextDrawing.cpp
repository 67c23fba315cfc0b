#include "pages/kit/TextDrawing.h"

#include <QFontMetricsF>
#include <QGlyphRun>
#include <QImage>
#include <QLabel>
#include <QPainter>
#include <QRawFont>
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

constexpr double kRimReach = 3; // beyond the line: its offset, and letters that lean out

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
    const QString whole = oneLine(text);
    const QFont fitting = fittingFont(whole, font, rect.width(), minimumScale);
    const QFontMetricsF metrics(fitting);
    const QString line = metrics.elidedText(whole, Qt::ElideMiddle, rect.width() + kTolerance);
    const double left = leftEdge(rect, alignment, metrics.horizontalAdvance(line));
    const double base = rect.center().y() + (metrics.ascent() - metrics.descent()) / 2;
    return {line, fitting, {left, std::round(base)}};
}

/// Whether a font's glyphs are pictures, as those of emoji are.
bool hasOwnColors(const QRawFont& font)
{
    return !font.fontTable("CBLC").isEmpty() || !font.fontTable("COLR").isEmpty();
}

/// The letters of a line, shaped once and drawn nine times, which costs a fraction of an outline
/// that is stroked.
class ShapedLine {
public:
    explicit ShapedLine(const PlacedLine& line)
    {
        QTextLayout layout(line.text, line.font);
        layout.beginLayout();
        QTextLine whole = layout.createLine();
        whole.setNumColumns(static_cast<int>(line.text.size()));
        layout.endLayout();
        origin = line.base - QPointF(0, whole.ascent());
        letters = layout.glyphRuns();
    }

    void draw(QPainter& painter, QPointF offset, const QColor& color) const
    {
        painter.setPen(color);
        for (const QGlyphRun& run : letters) {
            painter.drawGlyphRun(origin + offset, run);
        }
    }

    void drawRim(QPainter& painter) const
    {
        painter.setPen(QColor::fromRgbF(0, 0, 0, static_cast<float>(kRimOpacity)));
        for (const QGlyphRun& run : letters) {
            if (hasOwnColors(run.rawFont())) {
                continue; // its copies would be as bright as itself
            }
            for (const QPointF& offset : kRimOffsets) {
                painter.drawGlyphRun(origin + offset, run);
            }
        }
    }

private:
    QPointF origin;
    QList<QGlyphRun> letters;
};

/// Draws letters that let their ground through. The rim is cut out under them, since it would make
/// them as dark as itself.
void drawOnOpenRim(
    QPainter& painter, const ShapedLine& letters, const PlacedLine& line, double opacity)
{
    const QFontMetricsF metrics(line.font);
    const QRectF place(line.base.x(), line.base.y() - metrics.ascent(),
        metrics.horizontalAdvance(line.text), metrics.height());
    const QTransform toDevice = painter.deviceTransform();
    const QRect pixels
        = toDevice.mapRect(place.adjusted(-kRimReach, -kRimReach, kRimReach, kRimReach))
              .toAlignedRect();
    QImage layer(pixels.size(), QImage::Format_ARGB32_Premultiplied);
    if (layer.isNull()) {
        return;
    }
    layer.fill(Qt::transparent);
    QPainter onLayer(&layer);
    onLayer.setTransform(toDevice * QTransform::fromTranslate(-pixels.x(), -pixels.y()));
    letters.drawRim(onLayer);
    onLayer.setCompositionMode(QPainter::CompositionMode_DestinationOut);
    letters.draw(onLayer, {}, Qt::white);
    onLayer.setCompositionMode(QPainter::CompositionMode_SourceOver);
    letters.draw(onLayer, {}, QColor::fromRgbF(1, 1, 1, static_cast<float>(opacity)));
    onLayer.end();
    painter.drawImage(toDevice.inverted().mapRect(QRectF(pixels)), layer);
}

void drawPlaced(QPainter& painter, const PlacedLine& line, const QColor& color)
{
    painter.setFont(line.font);
    painter.setPen(color);
    painter.drawText(line.base, line.text);
}

} // namespace

QString oneLine(QString text)
{
    std::replace_if(
        text.begin(), text.end(), [](QChar c) { return c.category() == QChar::Other_Control; },
        QChar(' '));
    return text;
}

void drawShrunkText(QPainter& painter, const QRectF& rect, Qt::AlignmentFlag alignment,
    const QString& text, const QFont& font, const QColor& color, double minimumScale)
{
    drawPlaced(painter, placed(rect, alignment, text, font, minimumScale), color);
}

void drawTextOnColor(QPainter& painter, const QRectF& rect, Qt::AlignmentFlag alignment,
    const QString& text, const QFont& font, double opacity)
{
    const PlacedLine line = placed(rect, alignment, text, font, 1);
    const ShapedLine letters(line);
    if (opacity < 1) {
        drawOnOpenRim(painter, letters, line, opacity);
        return;
    }
    letters.drawRim(painter);
    letters.draw(painter, {}, Qt::white);
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
