#include "pages/motion/FlipDigitView.h"

#include "pages/figures/FlipClockMarks.h"
#include "pages/figures/Motion.h"
#include "pages/kit/Frames.h"
#include "pages/kit/MarkPainter.h"
#include "platform/Clock.h"
#include "platform/MainLoop.h"
#include "platform/Platform.h"

#include <QPainter>

#include <cmath>

namespace quillbrook {

namespace {

constexpr double kDark = 0.5;
constexpr double kDarkenSec = 0.1;
constexpr double kLightenSec = 0.15;

} // namespace

FlipDigitView::FlipDigitView(const Platform& platform, int digit, QWidget* parent)
    : QWidget(parent)
    , platform(platform)
    , digit(digit)
    , displayed(digit)
    , frames(new Frames(this, [this] { return opacity() != (opacityChange ? kDark : 1); }))
{
}

void FlipDigitView::setDigit(int newDigit)
{
    if (newDigit == digit) {
        return;
    }
    digit = newDigit;
    fade(true);
    platform.mainLoop.runAfter(kDarkenSec, lifetime.whileAlive([this, newDigit] {
        displayed = newDigit; // of this change, even when another one has begun
        fade(false);
    }));
}

void FlipDigitView::fade(bool isChanging)
{
    fadeFrom = opacity();
    fadeBegan = platform.clock.now();
    opacityChange = isChanging;
    frames->begin();
}

double FlipDigitView::opacity() const
{
    const double elapsed = platform.clock.now() - fadeBegan;
    const double whole = opacityChange ? kDarkenSec : kLightenSec;
    // A clock that was set back ends the fade.
    const double share = elapsed < 0 ? 1 : easeInOut(elapsed / whole);
    return std::lerp(fadeFrom, opacityChange ? kDark : 1, share);
}

void FlipDigitView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setOpacity(opacity());
    for (const Mark& mark : flipDigitMarks(displayed)) {
        paintMark(painter, mark, palette());
    }
}

} // namespace quillbrook
