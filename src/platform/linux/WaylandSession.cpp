#include "platform/linux/WaylandSession.h"

#include "platform/MainLoop.h"
#include "platform/linux/gnome/ShellExtension.h"
#include "platform/linux/session/LayoutNames.h"
#include "platform/linux/sleep/KernelTime.h"
#include "platform/linux/words/Notice.h"

#include <QByteArray>

#include <fstream>
#include <iterator>

namespace quillbrook {

namespace {

/// By then whoever is there at the start has told so.
constexpr double kAnswersSec = 10;

double secondsSinceBoot()
{
    return kernelTime().sinceBoot;
}

/// The list of layouts that comes with them.
const std::string& layoutRules()
{
    static const std::string text = [] {
        std::ifstream stream("/usr/share/X11/xkb/rules/evdev.lst", std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(stream), {});
    }();
    return text;
}

} // namespace

WaylandSession::WaylandSession(DesktopEntries& entries, MainLoop& mainLoop, ScreensAsleep& screens,
    Bus& sessionBus, ShellExtension& extension)
    : idle(secondsSinceBoot)
    , front(entries, secondsSinceBoot)
    , sway(mainLoop, Sway::socketOfSession(), [this] { front.sourceChanged(); })
    , compositor(mainLoop, WaylandConnection::socketOfSession())
    , toplevels([this] { front.sourceChanged(); })
    , swayFront(toplevels, sway)
    , compositorIdle(idle)
    , outputs(screens.teller(ScreenSource::compositorOutputs))
    , kwin(sessionBus, [this] { front.sourceChanged(); })
    , kdeLayout(sessionBus)
    , mutterIdle(sessionBus, mainLoop, idle)
    , gnomeSources(sessionBus)
{
    front.add(kwin.front());
    front.add(swayFront);
    front.add(extension);
    extension.whenFrontChanges([this] { front.sourceChanged(); });
    compositor.add(toplevels);
    compositor.add(compositorIdle);
    compositor.add(outputs);
    compositor.connect();
    mainLoop.runAfter(kAnswersSec, lifetime.whileAlive([this] { tellWhatIsMissing(); }));
}

std::optional<std::string> WaylandSession::layoutIdentifier() const
{
    const auto layout = sway.layout() ? sway.layout() : kdeLayout.description();
    return layout ? layoutIdentifierOf(*layout, layoutRules()) : gnomeSources.identifier();
}

bool WaylandSession::bring(std::uint64_t, std::string_view startupId)
{
    if (!startupId.empty()) {
        // The toolkit hands it on with the next window that is to be activated.
        qputenv("XDG_ACTIVATION_TOKEN", QByteArray(startupId.data(), qsizetype(startupId.size())));
        return false;
    }
    return sway.focusOwnWindow() || kwin.focusOwnWindow();
}

void WaylandSession::tellWhatIsMissing() const
{
    if (!front.isKnown()) {
        notice("此桌面没有告诉前台应用，暂不记录应用的使用时间");
    }
    if (!idle.isKnown()) {
        notice("此桌面没有告诉闲置时间，无法判断人是否在场，一小时后不再记录");
    }
}

} // namespace quillbrook
