#include "pages/motion/FlipClockContainer.h"

#include "pages/kit/MarkPainter.h"
#include "pages/motion/FlipDigitView.h"
#include "platform/Clock.h"
#include "platform/MainLoop.h"
#include "platform/Platform.h"
#include "platform/TimeZone.h"
#include "platform/qt/QtText.h"

#include <QPainter>

#include <cmath>

namespace quillbrook {

FlipClockContainer::FlipClockContainer(const Platform& platform, QWidget* parent)
    : QWidget(parent)
    , platform(platform)
{
    const Size size = flipClockSize();
    setFixedSize(static_cast<int>(size.width), static_cast<int>(size.height));
    const ClockItems present = items();
    for (std::size_t place = 0; place < present.size(); ++place) {
        FlipDigitView* tile = nullptr;
        if (present[place] != kClockSeparator) {
            tile = new FlipDigitView(platform, present[place], this);
            const Rect rect = clockItemRect(place);
            tile->setGeometry(static_cast<int>(rect.x), static_cast<int>(rect.y),
                static_cast<int>(rect.width), static_cast<int>(rect.height));
        }
        tiles.append(tile);
    }
    setAccessibleName(toQString(clockText(present)));
}

ClockItems FlipClockContainer::items() const
{
    const double now = platform.clock.now();
    return clockItems(now, platform.timeZone.secondsFromUtc(now));
}

void FlipClockContainer::showTime()
{
    const ClockItems present = items();
    for (qsizetype place = 0; place < tiles.size(); ++place) {
        if (tiles[place] != nullptr) {
            tiles[place]->setDigit(present[static_cast<std::size_t>(place)]);
        }
    }
    setAccessibleName(toQString(clockText(present)));
}

void FlipClockContainer::waitForNextSecond()
{
    if (isWaiting) {
        return;
    }
    isWaiting = true;
    const double now = platform.clock.now();
    // In whole milliseconds, rounded up, as a timer that comes too early wakes up twice.
    const double delayMs = std::ceil((std::floor(now) + 1 - now) * 1000);
    platform.mainLoop.runAfter(delayMs / 1000, lifetime.whileAlive([this] {
        isWaiting = false;
        if (isOnScreen) {
            showTime();
            waitForNextSecond();
        }
    }));
}

void FlipClockContainer::showEvent(QShowEvent*)
{
    isOnScreen = true;
    showTime();
    waitForNextSecond();
}

void FlipClockContainer::hideEvent(QHideEvent*)
{
    isOnScreen = false;
}

void FlipClockContainer::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    for (const Mark& mark : flipClockMarks(items())) {
        paintMark(painter, mark, palette());
    }
}

} // namespace quillbrook
