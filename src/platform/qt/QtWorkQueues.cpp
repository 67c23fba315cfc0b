#include "platform/qt/QtWorkQueues.h"

#include <utility>

namespace quillbrook {

QtWorkQueues::QtWorkQueues()
{
    background.setThreadPriority(QThread::LowPriority);
}

void QtWorkQueues::runUserInitiated(Block block)
{
    userInitiated.start(std::move(block));
}

void QtWorkQueues::runDefault(Block block)
{
    background.start(std::move(block));
}

} // namespace quillbrook
