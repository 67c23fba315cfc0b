#include "pages/motion/MonkBellButton.h"

#include "pages/figures/Motion.h"
#include "pages/kit/FocusRing.h"
#include "pages/kit/Frames.h"
#include "pages/kit/Look.h"
#include "pages/kit/TextDrawing.h"
#include "platform/Clock.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <utility>

namespace quillbrook {

namespace {

constexpr int kMonkPixels = 36;
constexpr int kDrumPixels = 22;
constexpr int kDrumRise = 22; // above the monk's middle
constexpr int kCaptionPixels = 10;
constexpr int kAboveCaption = 3;
constexpr QSize kSize(68, 78);
constexpr double kFocusRadius = 8;
constexpr double kDrumStruck = 0.85;
constexpr double kMonkStartled = 0.9;
constexpr Spring kDrumSpring{.responseSec = 0.3, .damping = 0.5};
constexpr Spring kMonkSpring{.responseSec = 0.2, .damping = 0.5};

/// Where a spring is; one whose clock was set back has come to rest.
double positionAt(const Spring& spring, double elapsedSec)
{
    return elapsedSec < 0 || elapsedSec > springRest(spring) ? 1
                                                             : springPosition(spring, elapsedSec);
}

void drawEmoji(QPainter& painter, const QString& emoji, QPointF middle, int pixels, double scale)
{
    painter.save();
    painter.translate(middle);
    painter.scale(scale, scale);
    const double side = 2.0 * pixels;
    drawShrunkText(painter, QRectF(-side / 2, -side / 2, side, side), Qt::AlignHCenter, emoji,
        Look::systemFont(pixels), Qt::black);
    painter.restore();
}

} // namespace

MonkBellButton::MonkBellButton(const Clock& clock, QWidget* parent)
    : QAbstractButton(parent)
    , clock(clock)
    , frames(new Frames(this, [this] {
        const double now = this->clock.now();
        return now < std::max(
                   drumMovedAt + springRest(kDrumSpring), monkMovedAt + springRest(kMonkSpring));
    }))
{
    setAccessibleName("点击敲木鱼");
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::PointingHandCursor);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void MonkBellButton::setShowBellEffect(bool isOn)
{
    if (isOn != showBellEffect) {
        drumFrom = drumScale();
        showBellEffect = isOn;
        drumMovedAt = clock.now();
        frames->begin();
    }
}

void MonkBellButton::setMonkAnimationCount(int newCount)
{
    if (std::exchange(monkAnimationCount, newCount) != newCount) {
        monkMovedAt = clock.now();
        frames->begin();
    }
}

double MonkBellButton::drumScale() const
{
    return std::lerp(drumFrom, showBellEffect ? kDrumStruck : 1,
        positionAt(kDrumSpring, clock.now() - drumMovedAt));
}

double MonkBellButton::monkScale() const
{
    return monkAnimationCount == 0
        ? 1
        : std::lerp(kMonkStartled, 1, positionAt(kMonkSpring, clock.now() - monkMovedAt));
}

QSize MonkBellButton::sizeHint() const
{
    return kSize;
}

void MonkBellButton::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    const QRectF caption(0, height() - kCaptionPixels * 1.25 - 1, width(), kCaptionPixels * 1.25);
    const QPointF monk(width() / 2.0, caption.top() - kAboveCaption - kMonkPixels * 1.25 / 2);
    drawEmoji(painter, "🧘", monk, kMonkPixels, monkScale());
    drawEmoji(painter, "🪘", monk - QPointF(0, kDrumRise), kDrumPixels, drumScale());
    drawShrunkText(painter, caption, Qt::AlignHCenter, accessibleName(),
        Look::systemFont(kCaptionPixels), Look::secondaryText(palette()));
    drawFocusRing(painter, *this, rect(), kFocusRadius);
}

} // namespace quillbrook
