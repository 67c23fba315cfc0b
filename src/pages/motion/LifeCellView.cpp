#include "pages/motion/LifeCellView.h"

#include "pages/figures/LifeGridMarks.h"
#include "pages/kit/Frames.h"
#include "pages/kit/Look.h"
#include "pages/kit/MarkPainter.h"
#include "platform/Clock.h"
#include "platform/qt/QtText.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>

#include <cmath>
#include <utility>
#include <vector>

namespace quillbrook {

namespace {

constexpr double kSwellSec = 0.8;
constexpr double kSwollen = 1.15;
constexpr double kMargin = 10; // around the cell, for the swelling and the glow

struct Glow {
    double opacity;
    double radius;
};

constexpr Glow kCalmGlow{0.2, 2};
constexpr Glow kBellGlow{0.8, 8};

/// A soft light around the letters of a line, in layers that add up.
void paintGlow(QPainter& painter, const TextLine& line, const Glow& glow, const QColor& color)
{
    constexpr int kLayers = 4;
    const QFont font = Look::font(line.face);
    const QFontMetricsF metrics(font);
    const QString text = toQString(line.text);
    const Point middle = center(line.place);
    QPainterPath letters;
    letters.addText(middle.x - metrics.horizontalAdvance(text) / 2,
        middle.y + (metrics.ascent() - metrics.descent()) / 2, font, text);
    const QColor layer = Look::faded(color, 1 - std::pow(1 - glow.opacity, 1.0 / kLayers));
    for (int number = kLayers; number > 0; --number) {
        painter.strokePath(letters,
            QPen(layer, 2 * glow.radius * number / kLayers, Qt::SolidLine, Qt::RoundCap,
                Qt::RoundJoin));
    }
}

} // namespace

LifeCellView::LifeCellView(const Clock& clock, QWidget* grid)
    : QWidget(grid)
    , clock(clock)
    , frames(new Frames(this, [this] { return !swing.isStill(); }))
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    swing.legSec = kSwellSec;
}

void LifeCellView::setCell(
    const LifeCellInfo& newInfo, const QRectF& rect, int newLifeExpectancyAge)
{
    info = newInfo;
    lifeExpectancyAge = newLifeExpectancyAge;
    const QRect whole = rect.adjusted(-kMargin, -kMargin, kMargin, kMargin).toAlignedRect();
    setGeometry(whole);
    cell = rect.translated(-whole.topLeft());
    update();
}

void LifeCellView::setShowBellEffect(bool isOn)
{
    if (std::exchange(showBellEffect, isOn) != isOn) {
        swing.from = level();
        swing.to = isOn ? 1 : 0;
        swing.startedAt = clock.now();
        frames->begin();
    }
}

double LifeCellView::level() const
{
    return swing.at(clock.now());
}

void LifeCellView::paintEvent(QPaintEvent*)
{
    const double swollen = level();
    const double scale = std::lerp(1.0, kSwollen, swollen);
    const Glow glow{std::lerp(kCalmGlow.opacity, kBellGlow.opacity, swollen),
        std::lerp(kCalmGlow.radius, kBellGlow.radius, swollen)};
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(cell.center());
    painter.scale(scale, scale);
    painter.translate(-cell.center());
    const std::vector<Mark> marks
        = lifeCellMarks(info, {cell.x(), cell.y(), cell.width(), cell.height()}, lifeExpectancyAge);
    const Mark& number = marks[glowingNumber(marks)];
    for (const Mark& mark : marks) {
        if (&mark == &number) {
            paintGlow(
                painter, mark.texts.back(), glow, Look::color(SystemColor::orange, palette()));
        }
        paintMark(painter, mark, palette());
    }
}

} // namespace quillbrook
