#include "platform/linux/LinuxInputSource.h"

#include "platform/MainLoop.h"

namespace quillbrook {

namespace {

constexpr double kRefreshDelaySec = 2;

} // namespace

LinuxInputSource::LinuxInputSource(
    Bus& sessionBus, X11Connection& x11, MainLoop& mainLoop, WorkQueues& workQueues)
    : mainLoop(mainLoop)
    , fcitx(sessionBus)
    , ibus(mainLoop, workQueues)
    , xkb(x11)
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
    return xkb.currentIdentifier();
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
