#include "platform/qt/QtMainLoop.h"

#include <QMetaObject>
#include <QTimer>

#include <chrono>
#include <cmath>
#include <utility>

namespace quillbrook {

namespace {

std::chrono::milliseconds milliseconds(double seconds)
{
    return std::chrono::milliseconds(std::llround(seconds * 1000));
}

} // namespace

void QtMainLoop::repeatEvery(double intervalSec, Block body)
{
    auto* timer = new QTimer(&context);
    // A precise timer keeps to its rhythm; coarser ones shift it and wake up as often.
    timer->setTimerType(Qt::PreciseTimer);
    QObject::connect(timer, &QTimer::timeout, &context, std::move(body));
    timer->start(milliseconds(intervalSec));
}

void QtMainLoop::runAfter(double delaySec, Block block)
{
    QTimer::singleShot(milliseconds(delaySec), Qt::PreciseTimer, &context, std::move(block));
}

void QtMainLoop::post(Block block)
{
    QMetaObject::invokeMethod(&context, std::move(block), Qt::QueuedConnection);
}

} // namespace quillbrook
