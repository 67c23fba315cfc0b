#include "platform/linux/WaylandSession.h"

#include "platform/linux/gnome/ShellExtension.h"
#include "platform/linux/session/LayoutNames.h"
#include "platform/linux/sleep/KernelTime.h"

#include <QByteArray>

#include <fstream>
#include <iterator>

namespace quillbrook {

namespace {

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
    , untold(mainLoop, front, idle, screens)
    , sway(mainLoop, Sway::socketOfSession(), [this] { frontChanged(); })
    , compositor(mainLoop, WaylandConnection::socketOfSession())
    , toplevels([this] { frontChanged(); })
    , swayFront(toplevels, sway)
    , compositorIdle(idle)
    , outputs(screens.teller(ScreenSource::compositorOutputs))
    , kwin(sessionBus, [this] { frontChanged(); })
    , kdeLayout(sessionBus)
    , mutterIdle(sessionBus, mainLoop, idle)
    , gnomeSources(sessionBus)
{
    front.add(kwin.front());
    front.add(swayFront);
    front.add(extension);
    extension.whenFrontChanges([this] { frontChanged(); });
    compositor.add(toplevels);
    compositor.add(compositorIdle);
    compositor.add(outputs);
    compositor.connect();
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

void WaylandSession::frontChanged()
{
    front.sourceChanged();
    untold.frontSourceChanged();
}

} // namespace quillbrook
