#include "pages/kit/MarkPainter.h"

#include "pages/kit/Convert.h"
#include "pages/kit/Look.h"
#include "pages/kit/RoundedFill.h"
#include "pages/kit/Symbol.h"
#include "pages/kit/TextDrawing.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>
#include <vector>

namespace quillbrook {

namespace {

void addSteps(QPainterPath& outline, const Path& path)
{
    for (const PathStep& step : path) {
        switch (step.kind) {
        case PathStep::Kind::move:
            outline.moveTo(toQPointF(step.to));
            break;
        case PathStep::Kind::line:
            outline.lineTo(toQPointF(step.to));
            break;
        case PathStep::Kind::cubic:
            outline.cubicTo(toQPointF(step.control1), toQPointF(step.control2), toQPointF(step.to));
            break;
        }
    }
}

/// What an opaque colour looks like under another one.
QColor laidOver(const QColor& ground, const QColor& color)
{
    const float opacity = color.alphaF();
    const auto mixed
        = [opacity](float below, float above) { return below + (above - below) * opacity; };
    return QColor::fromRgbF(mixed(ground.redF(), color.redF()),
        mixed(ground.greenF(), color.greenF()), mixed(ground.blueF(), color.blueF()));
}

/// Fills a rectangle that lies on whole device pixels, where smooth edges would only blur.
void fillSharp(QPainter& painter, const QRectF& rect, const QColor& color)
{
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.fillRect(rect, color);
    painter.setRenderHint(QPainter::Antialiasing);
}

struct OutlineOf {
    QPainterPath& outline;

    void operator()(const Box& box) const
    {
        outline.addRoundedRect(toQRectF(box.rect), box.radius, box.radius);
    }
    void operator()(const StraightLine& line) const
    {
        outline.moveTo(toQPointF(line.from));
        outline.lineTo(toQPointF(line.to));
    }
    void operator()(const Circle& circle) const
    {
        outline.addEllipse(toQPointF(circle.center), circle.radius, circle.radius);
    }
    void operator()(const Path& path) const { addSteps(outline, path); }
};

struct Paint {
    QPainter& painter;
    const Mark& mark;
    const QPalette& palette;

    void operator()(const Box& box) const
    {
        if (box.rect.width <= 0 || box.rect.height <= 0) {
            return;
        }
        const QRectF rect = onDevicePixels(painter, toQRectF(box.rect));
        for (const QColor& fill : layers()) {
            fillRounded(painter, rect, box.radius, fill);
        }
        if (mark.gradient.size() > 1) {
            painter.setPen(Qt::NoPen);
            painter.setBrush(gradientAlong(rect));
            painter.drawRoundedRect(rect, box.radius, box.radius);
        }
        if (mark.stroke) {
            const double width = deviceLineWidth(painter, mark.stroke->width);
            const double half = width / 2;
            painter.setBrush(Qt::NoBrush);
            painter.setPen(pen(width, Qt::MiterJoin));
            painter.drawRoundedRect(
                rect.adjusted(half, half, -half, -half), box.radius, box.radius);
        }
    }

    void operator()(const StraightLine& line) const
    {
        if (!mark.stroke) {
            return;
        }
        const QPointF from = toQPointF(line.from);
        const QPointF to = toQPointF(line.to);
        if (from.x() != to.x() && from.y() != to.y()) {
            painter.setPen(pen(mark.stroke->width));
            painter.drawLine(from, to);
            return;
        }
        const double half = mark.stroke->width / 2;
        const bool isLevel = from.y() == to.y();
        const QRectF place = QRectF(from, to).normalized().adjusted(
            isLevel ? 0 : -half, isLevel ? -half : 0, isLevel ? 0 : half, isLevel ? half : 0);
        QRectF drawn = onDevicePixels(painter, place);
        const double width = deviceLineWidth(painter, mark.stroke->width);
        isLevel ? drawn.setHeight(width) : drawn.setWidth(width);
        fillSharp(painter, drawn, Look::color(mark.stroke->tint, palette));
    }

    void operator()(const Circle& circle) const
    {
        for (const QColor& fill : layers()) {
            painter.setPen(Qt::NoPen);
            painter.setBrush(fill);
            painter.drawEllipse(toQPointF(circle.center), circle.radius, circle.radius);
        }
        if (mark.stroke) {
            painter.setBrush(Qt::NoBrush);
            painter.setPen(pen(mark.stroke->width));
            painter.drawEllipse(toQPointF(circle.center), circle.radius, circle.radius);
        }
    }

    void operator()(const Path& path) const
    {
        if (mark.fills.empty() && !mark.stroke) {
            return;
        }
        const QPainterPath outline = outlineOf(path);
        for (const QColor& fill : layers()) {
            painter.fillPath(outline, fill);
        }
        if (mark.stroke) {
            painter.strokePath(outline, pen(mark.stroke->width));
        }
    }

private:
    QLinearGradient gradientAlong(const QRectF& rect) const
    {
        QLinearGradient gradient(rect.topLeft(), rect.topRight());
        const auto last = static_cast<double>(mark.gradient.size() - 1);
        for (std::size_t stop = 0; stop < mark.gradient.size(); ++stop) {
            gradient.setColorAt(
                static_cast<double>(stop) / last, Look::color(mark.gradient[stop], palette));
        }
        return gradient;
    }

    /// What is filled, from the lowest: all fills, or what they make of the ground.
    std::vector<QColor> layers() const
    {
        std::vector<QColor> colors;
        for (const Tint& fill : mark.fills) {
            colors.push_back(Look::color(fill, palette));
        }
        if (!mark.ground || colors.empty()) {
            return colors;
        }
        QColor mixed = Look::color(Tint{*mark.ground}, palette);
        for (const QColor& color : colors) {
            mixed = laidOver(mixed, color);
        }
        return {mixed};
    }

    QPen pen(double width, Qt::PenJoinStyle join = Qt::RoundJoin) const
    {
        return {Look::color(mark.stroke->tint, palette), width, Qt::SolidLine, Qt::RoundCap, join};
    }
};

Qt::AlignmentFlag alignmentOf(TextAlignment alignment)
{
    switch (alignment) {
    case TextAlignment::leading:
        return Qt::AlignLeft;
    case TextAlignment::center:
        return Qt::AlignHCenter;
    case TextAlignment::trailing:
        return Qt::AlignRight;
    }
    return Qt::AlignLeft;
}

void paintText(QPainter& painter, const TextLine& line, const QPalette& palette)
{
    const QRectF place = toQRectF(line.place);
    const QString text = toQString(line.text);
    const QFont font = Look::font(line.face);
    const QColor color = Look::color(line.tint, palette);
    if (line.isOnColor) {
        drawTextOnColor(painter, place, alignmentOf(line.alignment), text, font, line.tint.opacity);
    } else {
        drawShrunkText(
            painter, place, alignmentOf(line.alignment), text, font, color, line.minimumScale);
    }
}

} // namespace

QPainterPath outlineOf(const Shape& shape)
{
    QPainterPath outline;
    std::visit(OutlineOf{outline}, shape);
    return outline;
}

QRectF onDevicePixels(const QPainter& painter, const QRectF& rect)
{
    const QTransform toDevice = painter.deviceTransform();
    const QRectF device = toDevice.mapRect(rect);
    const QRectF snapped(QPointF(std::round(device.left()), std::round(device.top())),
        QPointF(std::round(device.right()), std::round(device.bottom())));
    return toDevice.inverted().mapRect(snapped);
}

double deviceLineWidth(const QPainter& painter, double width)
{
    const double scale = painter.deviceTransform().m11();
    return std::max(1.0, std::round(width * scale)) / scale;
}

void paintMark(QPainter& painter, const Mark& mark, const QPalette& palette)
{
    painter.setRenderHint(QPainter::Antialiasing);
    std::visit(Paint{painter, mark, palette}, mark.shape);
    for (const SymbolMark& symbol : mark.symbols) {
        Symbol::draw(painter, toQString(symbol.symbol), toQRectF(symbol.place),
            Look::color(symbol.tint, palette));
    }
    for (const TextLine& line : mark.texts) {
        paintText(painter, line, palette);
    }
}

} // namespace quillbrook
