#include "platform/linux/LinuxAppearance.h"

#include "platform/MainLoop.h"
#include "platform/linux/appearance/KdeGlobals.h"
#include "platform/linux/appearance/ThemeName.h"
#include "platform/linux/bus/Bus.h"
#include "platform/linux/bus/PortalAppearance.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/XSettingsTheme.h"
#include "platform/linux/x11/XcbReply.h"

#include <QStringList>

#include <utility>

namespace quillbrook {

namespace {

constexpr double kPatienceSec = 1;

bool isKde()
{
    return qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(QLatin1Char(':')).contains("KDE")
        || qEnvironmentVariable("KDE_FULL_SESSION") == "true";
}

} // namespace

LinuxAppearance::LinuxAppearance(Bus& sessionBus, X11Connection& x11, MainLoop& mainLoop)
    : sessionBus(sessionBus)
    , x11(x11)
    , mainLoop(mainLoop)
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

void LinuxAppearance::whenKnown(std::function<void()> body)
{
    if (!portal) {
        ask();
    }
    knownBodies.push_back(std::move(body));
    if (portal->hasAnswered()) {
        tellKnown();
        return;
    }
    mainLoop.runAfter(kPatienceSec, lifetime.whileAlive([this] { tellKnown(); }));
    sessionBus.whenKnown([this, watch = lifetime.watch()](bool isThere) {
        if (!isThere && !watch.isOver()) {
            tellKnown();
        }
    });
}

void LinuxAppearance::tellKnown()
{
    for (const auto& body : std::exchange(knownBodies, {})) {
        body();
    }
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
    if (portal->hasAnswered()) {
        tellKnown();
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
