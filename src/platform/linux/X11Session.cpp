#include "platform/linux/X11Session.h"

#include "platform/linux/words/Notice.h"
#include "platform/linux/x11/X11Connection.h"

namespace quillbrook {

X11Session::X11Session(
    X11Connection& x11, DesktopEntries& entries, MainLoop& mainLoop, ScreensAsleep& screens)
    : front(x11, entries, mainLoop)
    , input(x11)
    , layout(x11)
    , activation(x11)
    , serverSaver(x11, screens.teller(ScreenSource::serverSaver))
    , saverProgram(x11, screens.teller(ScreenSource::xscreensaver))
    , locker(x11, mainLoop, screens.teller(ScreenSource::displayLocker))
    , powerManagement(x11, mainLoop, screens.teller(ScreenSource::powerManagement))
{
    if (!x11.isUsable()) {
        notice("没有 X 服务器，无法得知前台应用和键盘输入");
    }
}

} // namespace quillbrook
