#pragma once

#include <functional>

namespace quillbrook {

class MainLoop;
class X11Connection;

/// Tells when the display's power management switched the screens off: `changed(true)`, and on
/// again. It tells of itself by no event, so it is asked every five seconds where there is one.
/// Lives as long as the main loop's timers.
class X11Dpms {
public:
    X11Dpms(X11Connection& x11, MainLoop& mainLoop, std::function<void(bool)> changed);

private:
    bool wasOff = false;
};

} // namespace quillbrook
