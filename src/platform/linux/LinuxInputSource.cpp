#include "platform/linux/LinuxInputSource.h"

#include "platform/MainLoop.h"
#include "platform/linux/session/DisplaySession.h"

namespace quillbrook {

namespace {

constexpr double kRefreshDelaySec = 2;

} // namespace

LinuxInputSource::LinuxInputSource(
    Bus& sessionBus, const DisplaySession& display, MainLoop& mainLoop, WorkQueues& workQueues)
    : display(display)
    , mainLoop(mainLoop)
    , fcitx(sessionBus)
    , ibus(mainLoop, workQueues)
{
}

std::optional<std::string> LinuxInputSource::currentIdentifier() const
{
    if (fcitx.isRunning()) {
        if (auto identifier = fcitx.identifier()) {
            return identifier;
        }
    }
    if (auto identifier = ibus.identifier()) {
        return identifier;
    }
    return display.layoutIdentifier();
}

void LinuxInputSource::keyWentDown()
{
    if (isRefreshComing) {
        return;
    }
    isRefreshComing = true;
    mainLoop.runAfter(kRefreshDelaySec, lifetime.whileAlive([this] { refresh(); }));
}

void LinuxInputSource::refresh()
{
    isRefreshComing = false;
    fcitx.refresh();
    ibus.refresh();
}

} // namespace quillbrook
