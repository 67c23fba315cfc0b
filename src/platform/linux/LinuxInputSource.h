#pragma once

#include "base/Lifetime.h"
#include "platform/InputSource.h"
#include "platform/linux/bus/Fcitx5InputMethod.h"
#include "platform/linux/bus/IBusInputMethod.h"
#include "platform/linux/x11/XkbLayout.h"

namespace quillbrook {

class Bus;
class MainLoop;
class WorkQueues;
class X11Connection;

/// The input source by the first that tells of Fcitx 5, IBus and the keyboard's layout. Fcitx 5
/// comes first, as it poses as IBus too.
class LinuxInputSource final : public InputSource {
public:
    LinuxInputSource(
        Bus& sessionBus, X11Connection& x11, MainLoop& mainLoop, WorkQueues& workQueues);

    /// As of at most two seconds after the last key.
    std::optional<std::string> currentIdentifier() const override;

    /// To be called at each key-down: keys switch input methods, and are what is counted under
    /// their names. Asks anew two seconds later, once for all keys until then.
    void keyWentDown();

private:
    void refresh();

    MainLoop& mainLoop;
    Fcitx5InputMethod fcitx;
    IBusInputMethod ibus;
    XkbLayout xkb;
    bool isRefreshComing = false;

    Lifetime lifetime{};
};

} // namespace quillbrook
