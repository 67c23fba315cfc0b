#pragma once

#include "platform/linux/gnome/GnomeInputSources.h"
#include "platform/linux/gnome/MutterIdle.h"
#include "platform/linux/session/DisplaySession.h"
#include "platform/linux/session/IdleTime.h"
#include "platform/linux/session/SessionFront.h"
#include "platform/linux/session/UntoldFacts.h"
#include "platform/linux/shells/KWinScript.h"
#include "platform/linux/shells/KdeLayout.h"
#include "platform/linux/shells/Sway.h"
#include "platform/linux/sleep/ScreensAsleep.h"
#include "platform/linux/wayland/CompositorIdle.h"
#include "platform/linux/wayland/CompositorOutputs.h"
#include "platform/linux/wayland/WaylandConnection.h"
#include "platform/linux/wayland/WlrToplevels.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quillbrook {

class Bus;
class ShellExtension;

/// The session on a Wayland compositor, which answers little by itself: what it offers, and who
/// stands beside it on the session bus, is asked together. Who comes later is taken up.
class WaylandSession final : public DisplaySession {
public:
    /// `screens` learns which of them the desktop has switched off.
    WaylandSession(DesktopEntries& entries, MainLoop& mainLoop, ScreensAsleep& screens,
        Bus& sessionBus, ShellExtension& extension);

    WaylandSession(const WaylandSession&) = delete;
    WaylandSession& operator=(const WaylandSession&) = delete;

    std::optional<RunningApplication> frontmostApplication() override { return front.current(); }
    double secondsSinceLastInput() const override { return idle.secondsSinceLastInput(); }
    std::optional<std::string> layoutIdentifier() const override;

    /// With `startupId`, an activation token, the toolkit's own way brings the window; without one
    /// only a desktop that takes the wish of a program.
    bool bring(std::uint64_t window, std::string_view startupId) override;

private:
    void frontChanged();

    IdleTime idle;
    SessionFront front;
    UntoldFacts untold;
    Sway sway;
    WaylandConnection compositor;
    WlrToplevels toplevels;
    SwayFront swayFront;
    CompositorIdle compositorIdle;
    CompositorOutputs outputs;
    KWinScript kwin;
    KdeLayout kdeLayout;
    MutterIdle mutterIdle;
    GnomeInputSources gnomeSources;
};

} // namespace quillbrook
