#pragma once

#include "platform/DesktopAppearance.h"

#include <functional>
#include <memory>

namespace quillbrook {

class Bus;
class KdeGlobals;
class PortalAppearance;
class X11Connection;
class XSettingsTheme;

/// What the settings portal tells, and where it has no wish, or there is none, KDE's colours or the
/// theme of the other desktops. They are asked at the first observer, as only windows want to
/// know.
class LinuxAppearance final : public DesktopAppearance {
public:
    LinuxAppearance(Bus& sessionBus, X11Connection& x11);
    ~LinuxAppearance() override;

    LinuxAppearance(const LinuxAppearance&) = delete;
    LinuxAppearance& operator=(const LinuxAppearance&) = delete;

    Subscription observe(std::function<void(const Appearance&)> changed) override;
    /// Asks the X server for its compositor, which may come and go.
    bool canBlendWindows() const override;

private:
    void ask();
    void update();
    Appearance present() const;

    Bus& sessionBus;
    X11Connection& x11;
    std::unique_ptr<PortalAppearance> portal{};
    std::unique_ptr<KdeGlobals> kde{}; // on KDE only: elsewhere its file is of another time
    std::unique_ptr<XSettingsTheme> theme{};
    Property<Appearance> appearance{};
};

} // namespace quillbrook
