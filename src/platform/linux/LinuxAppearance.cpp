#include "platform/linux/LinuxAppearance.h"

#include "platform/linux/appearance/KdeGlobals.h"
#include "platform/linux/appearance/ThemeName.h"
#include "platform/linux/bus/PortalAppearance.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/XSettingsTheme.h"
#include "platform/linux/x11/XcbReply.h"

#include <QStringList>

#include <utility>

namespace quillbrook {

namespace {

bool isKde()
{
    return qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(QLatin1Char(':')).contains("KDE")
        || qEnvironmentVariable("KDE_FULL_SESSION") == "true";
}

} // namespace

LinuxAppearance::LinuxAppearance(Bus& sessionBus, X11Connection& x11)
    : sessionBus(sessionBus)
    , x11(x11)
{
}

LinuxAppearance::~LinuxAppearance() = default;

Subscription LinuxAppearance::observe(std::function<void(const Appearance&)> changed)
{
    if (!portal) {
        ask();
    }
    changed(appearance.get());
    return appearance.observe(std::move(changed));
}

bool LinuxAppearance::canBlendWindows() const
{
    if (!x11.isUsable()) {
        return true;
    }
    const auto cookie = xcb_get_selection_owner(x11.get(), x11.atom("_NET_WM_CM_S0"));
    const XcbReply<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(x11.get(), cookie, nullptr));
    x11.drain();
    return reply && reply->owner != XCB_NONE;
}

void LinuxAppearance::ask()
{
    portal = std::make_unique<PortalAppearance>(sessionBus, [this] { update(); });
    if (isKde()) {
        kde = std::make_unique<KdeGlobals>(KdeGlobals::pathOfThisUser(), [this] { update(); });
    } else {
        theme = std::make_unique<XSettingsTheme>(x11, [this] { update(); });
    }
    appearance.set(present());
}

void LinuxAppearance::update()
{
    if (const Appearance next = present(); next != appearance.get()) {
        appearance.set(next);
    }
}

Appearance LinuxAppearance::present() const
{
    Appearance wish = portal->appearance();
    if (kde) {
        const Appearance& desktop = kde->appearance();
        wish.isDark = wish.isDark ? wish.isDark : desktop.isDark;
        wish.accent = wish.accent ? wish.accent : desktop.accent;
    } else if (!wish.isDark && theme->name()) {
        wish.isDark = isDarkTheme(*theme->name());
    }
    return wish;
}

} // namespace quillbrook
