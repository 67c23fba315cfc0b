#pragma once

#include "platform/linux/session/DisplaySession.h"
#include "platform/linux/sleep/ScreensAsleep.h"
#include "platform/linux/x11/FrontApplication.h"
#include "platform/linux/x11/X11Dpms.h"
#include "platform/linux/x11/X11HumanInput.h"
#include "platform/linux/x11/X11ScreenLocker.h"
#include "platform/linux/x11/X11ScreenSaver.h"
#include "platform/linux/x11/X11WindowActivation.h"
#include "platform/linux/x11/XScreenSaverStatus.h"
#include "platform/linux/x11/XkbLayout.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quillbrook {

/// The session on an X server, which answers everything itself.
class X11Session final : public DisplaySession {
public:
    /// `screens` learns what the server and programs on it do with the screens.
    X11Session(
        X11Connection& x11, DesktopEntries& entries, MainLoop& mainLoop, ScreensAsleep& screens);

    std::optional<RunningApplication> frontmostApplication() override { return front.current(); }
    double secondsSinceLastInput() const override { return input.secondsSinceLastInput(); }
    std::optional<std::string> layoutIdentifier() const override
    {
        return layout.currentIdentifier();
    }
    bool bring(std::uint64_t window, std::string_view startupId) override
    {
        return activation.bring(window, startupId);
    }

private:
    FrontApplication front;
    X11HumanInput input;
    XkbLayout layout;
    X11WindowActivation activation;
    X11ScreenSaver serverSaver;
    XScreenSaverStatus saverProgram;
    X11ScreenLocker locker;
    X11Dpms powerManagement;
};

} // namespace quillbrook
