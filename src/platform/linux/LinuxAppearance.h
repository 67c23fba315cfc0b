#pragma once

#include "base/Lifetime.h"
#include "platform/DesktopAppearance.h"

#include <functional>
#include <memory>
#include <vector>

namespace quillbrook {

class Bus;
class KdeGlobals;
class MainLoop;
class PortalAppearance;
class X11Connection;
class XSettingsTheme;

/// What the settings portal tells, and where it has no wish, or there is none, KDE's colours or the
/// theme of the other desktops. They are asked at the first observer, as only windows want to
/// know.
class LinuxAppearance final : public DesktopAppearance {
public:
    LinuxAppearance(Bus& sessionBus, X11Connection& x11, MainLoop& mainLoop);
    ~LinuxAppearance() override;

    LinuxAppearance(const LinuxAppearance&) = delete;
    LinuxAppearance& operator=(const LinuxAppearance&) = delete;

    Subscription observe(std::function<void(const Appearance&)> changed) override;
    /// Waits for the portal, for a second at most.
    void whenKnown(std::function<void()> body) override;
    /// Asks the X server for its compositor, which may come and go.
    bool canBlendWindows() const override;

private:
    void ask();
    void update();
    void tellKnown();
    Appearance present() const;

    Bus& sessionBus;
    X11Connection& x11;
    MainLoop& mainLoop;
    std::unique_ptr<PortalAppearance> portal{};
    std::unique_ptr<KdeGlobals> kde{}; // on KDE only: elsewhere its file is of another time
    std::unique_ptr<XSettingsTheme> theme{};
    Property<Appearance> appearance{};
    std::vector<std::function<void()>> knownBodies{};
    Lifetime lifetime{};
};

} // namespace quillbrook
