#pragma once

#include "platform/MainLoop.h"

#include <QObject>

namespace quillbrook {

/// Qt's event loop of the main thread, on which it must be made. Its timers stop with it.
class QtMainLoop final : public MainLoop {
public:
    void repeatEvery(double intervalSec, Block body) override;
    void runAfter(double delaySec, Block block) override;
    void post(Block block) override;

private:
    QObject context{}; // whose thread the blocks run on, and whose end drops them
};

} // namespace quillbrook
