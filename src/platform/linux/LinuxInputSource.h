#pragma once

#include "base/Lifetime.h"
#include "platform/InputSource.h"
#include "platform/linux/bus/Fcitx5InputMethod.h"
#include "platform/linux/bus/IBusInputMethod.h"

namespace quillbrook {

class Bus;
class DisplaySession;
class MainLoop;
class WorkQueues;

/// The input source by the first that tells of Fcitx 5, IBus and the keyboard's layout. Fcitx 5
/// comes first, as it poses as IBus too.
class LinuxInputSource final : public InputSource {
public:
    LinuxInputSource(
        Bus& sessionBus, const DisplaySession& display, MainLoop& mainLoop, WorkQueues& workQueues);

    /// As of at most two seconds after the last key.
    std::optional<std::string> currentIdentifier() const override;

    /// To be called at each key-down: keys switch input methods, and are what is counted under
    /// their names. Asks anew two seconds later, once for all keys until then.
    void keyWentDown();

private:
    void refresh();

    const DisplaySession& display;
    MainLoop& mainLoop;
    Fcitx5InputMethod fcitx;
    IBusInputMethod ibus;
    bool isRefreshComing = false;

    Lifetime lifetime{};
};

} // namespace quillbrook
