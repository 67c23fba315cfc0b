#include "pages/views/TimelineChart.h"

#include "base/Text.h"
#include "pages/kit/Look.h"
#include "pages/kit/TextDrawing.h"
#include "platform/qt/QtText.h"

#include <QFontMetricsF>
#include <QHelpEvent>
#include <QPainter>
#include <QPainterPath>
#include <QToolTip>

#include <cmath>
#include <utility>

namespace quillbrook {

namespace {

constexpr int kLine = 44;
constexpr int kAxisWidth = 50;
constexpr int kTickWidth = 8;
constexpr int kBeforeTick = 4;
constexpr int kLabelPadding = 4;
constexpr int kLabelWidth = 20;
constexpr int kGapAtEnd = 10;
constexpr int kScaleDrop = 14; // how far the closing line lies below the last row
constexpr int kBlockInset = 2; // above and below a block, within its line
constexpr int kBlockPadding = 4;
constexpr int kBlockPixels = 9;
constexpr int kDurationPixels = 8;
constexpr int kMinimumWidth = 320;
constexpr int kFadeMs = 200;

/// Draws a block's label. Where it is too long the minutes go first, as the block's width tells
/// them too.
void drawLabel(QPainter& painter, const QRectF& inside, const HourBlock& block)
{
    const QFont font = Look::systemFont(kBlockPixels, QFont::Medium);
    const QString whole = toQString(block.label);
    const bool isRoom = QFontMetricsF(font).horizontalAdvance(whole) <= inside.width();
    drawTextOnColor(
        painter, inside, Qt::AlignLeft, isRoom ? whole : toQString(block.appName), font);
}

} // namespace

TimelineChart::TimelineChart(QWidget* parent) : DrawnView(parent)
{
    setAccessibleName("时间线");
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    fade.setDuration(kFadeMs);
    fade.setEasingCurve(QEasingCurve::InOutQuad);
    fade.setStartValue(0.0);
    fade.setEndValue(1.0);
    connect(&fade, &QVariantAnimation::valueChanged, this, [this] { update(); });
}

void TimelineChart::setTimeline(std::vector<HourlyTimelineEntry> newTimeline)
{
    timeline = std::move(newTimeline);
    updateGeometry();
    update();
}

void TimelineChart::setHighlightedApp(std::optional<std::string> appName)
{
    highlightedBefore = std::exchange(highlightedApp, std::move(appName));
    fade.stop();
    fade.start();
}

QSize TimelineChart::sizeHint() const
{
    return {kMinimumWidth, static_cast<int>(timeline.size()) * kLine + kScaleDrop + 1};
}

QSize TimelineChart::minimumSizeHint() const
{
    return sizeHint();
}

QRectF TimelineChart::rowArea(std::size_t row) const
{
    const int behind = kLabelPadding + kLabelWidth + kGapAtEnd;
    return {kAxisWidth, static_cast<double>(row) * kLine,
        static_cast<double>(width() - kAxisWidth - behind), kLine};
}

QRectF TimelineChart::blockRect(const QRectF& area, const HourBlock& block) const
{
    return {area.left() + block.x, area.top() + kBlockInset, block.width,
        area.height() - 2 * kBlockInset - 1};
}

double TimelineChart::dim(const std::string& appName) const
{
    const double progress
        = fade.state() == QAbstractAnimation::Running ? fade.currentValue().toDouble() : 1.0;
    return std::lerp(
        dimFactor(highlightedBefore, appName), dimFactor(highlightedApp, appName), progress);
}

void TimelineChart::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    for (std::size_t row = 0; row < timeline.size(); ++row) {
        drawAxis(painter, row);
        drawRow(painter, row, appColorMap(timeline));
    }
    if (!timeline.empty()) {
        const QRectF last = rowArea(timeline.size() - 1);
        painter.fillRect(QRectF(last.left(), last.bottom() + kScaleDrop - 1, last.width(), 1),
            Look::faded(Look::secondaryText(palette()), 0.15));
    }
}

void TimelineChart::drawAxis(QPainter& painter, std::size_t row) const
{
    const QRectF area = rowArea(row);
    const QColor color = Look::secondaryText(palette());
    painter.setFont(Look::monospacedFont(TextStyle::caption2));
    painter.setPen(color);
    painter.drawText(QRectF(0, area.top(), kAxisWidth - kTickWidth - kBeforeTick, area.height()),
        Qt::AlignRight | Qt::AlignVCenter, toQString(hourText(timeline[row].hour)));
    painter.fillRect(QRectF(kAxisWidth - kTickWidth, std::floor(area.center().y()), kTickWidth, 1),
        Look::faded(color, 0.2));

    painter.setFont(Look::monospacedFont(kDurationPixels));
    painter.setPen(Look::faded(color, 0.5));
    painter.drawText(
        QRectF(area.right() + kLabelPadding, area.top(), kLabelWidth + kGapAtEnd, area.height()),
        Qt::AlignLeft | Qt::AlignVCenter, toQString(durationLabel(timeline[row].total)));
}

void TimelineChart::drawRow(QPainter& painter, std::size_t row, const AppColorMap& colors) const
{
    const QRectF area = rowArea(row);
    const std::vector<HourBlock> blocks = hourBlocks(timeline[row], colors, area.width());
    if (blocks.empty()) {
        painter.fillRect(area, Look::faded(Look::secondaryText(palette()), 0.04));
    }
    painter.save();
    painter.setClipRect(area);
    for (const HourBlock& block : blocks) {
        drawBlock(painter, blockRect(area, block), block);
    }
    painter.restore();
    painter.fillRect(
        QRectF(area.left(), area.bottom() - 1, area.width(), 1), Look::separator(palette()));
}

void TimelineChart::drawBlock(QPainter& painter, const QRectF& rect, const HourBlock& block) const
{
    const QColor color = Look::color(block.color, palette());
    const double strength = dim(block.appName);
    QPainterPath shape;
    shape.addRoundedRect(rect, block.radius, block.radius);
    painter.fillPath(shape, Look::faded(color, 0.7 * strength));
    painter.fillPath(shape, Look::faded(color, 0.15 * strength));
    if (!block.label.empty()) {
        drawLabel(painter, rect.adjusted(kBlockPadding, 0, -kBlockPadding, 0), block);
    }
}

std::vector<DrawnItem> TimelineChart::drawnItems() const
{
    std::vector<DrawnItem> items;
    const AppColorMap colors = appColorMap(timeline);
    for (std::size_t row = 0; row < timeline.size(); ++row) {
        const QRectF area = rowArea(row);
        items.push_back({DrawnRole::text, toQString(hourText(timeline[row].hour)), {},
            QRectF(0, area.top(), kAxisWidth, area.height())});
        for (const HourBlock& block : hourBlocks(timeline[row], colors, area.width())) {
            items.push_back({DrawnRole::mark, toQString(block.appName),
                toQString(shortestText(block.seconds)), blockRect(area, block)});
        }
        if (const std::string label = durationLabel(timeline[row].total); !label.empty()) {
            items.push_back({DrawnRole::text, toQString(label), {},
                QRectF(area.right() + kLabelPadding, area.top(), kLabelWidth, area.height())});
        }
    }
    return items;
}

QString TimelineChart::helpAt(QPointF point) const
{
    const AppColorMap colors = appColorMap(timeline);
    for (std::size_t row = 0; row < timeline.size(); ++row) {
        const QRectF area = rowArea(row);
        if (!area.contains(point)) {
            continue;
        }
        for (const HourBlock& block : hourBlocks(timeline[row], colors, area.width())) {
            if (blockRect(area, block).contains(point)) {
                return toQString(blockHelp(block));
            }
        }
    }
    return {};
}

bool TimelineChart::event(QEvent* event)
{
    if (event->type() != QEvent::ToolTip) {
        return DrawnView::event(event);
    }
    const auto* help = static_cast<QHelpEvent*>(event);
    const QString text = helpAt(help->pos());
    if (text.isEmpty()) {
        QToolTip::hideText();
        event->ignore();
    } else {
        QToolTip::showText(help->globalPos(), plainToolTip(text), this);
    }
    return true;
}

} // namespace quillbrook
