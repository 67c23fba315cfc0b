#pragma once

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QTimer>

#include <functional>

namespace quillbrook {

/// Runs the event loop until `condition` holds. False when it doesn't within 20 seconds.
inline bool becomesTrue(const std::function<bool()>& condition)
{
    const QDeadlineTimer deadline(20'000);
    QTimer alarm; // to look again where no event comes
    alarm.start(5);
    while (!condition() && !deadline.hasExpired()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return condition();
}

} // namespace quillbrook
