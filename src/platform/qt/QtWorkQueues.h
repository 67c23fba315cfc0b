#pragma once

#include "platform/WorkQueues.h"

#include <QThreadPool>

namespace quillbrook {

/// Two thread pools. Waits for the work under way when it goes.
class QtWorkQueues final : public WorkQueues {
public:
    QtWorkQueues();

    void runUserInitiated(Block block) override;
    void runDefault(Block block) override;

private:
    QThreadPool userInitiated{};
    QThreadPool background{};
};

} // namespace quillbrook
