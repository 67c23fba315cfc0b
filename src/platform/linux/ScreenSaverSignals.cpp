#include "platform/linux/ScreenSaverSignals.h"

#include "platform/linux/Bus.h"

#include <utility>

namespace quillbrook {

ScreenSaverSignals::ScreenSaverSignals(Bus& sessionBus, std::function<void(bool)> changed)
    : changed(std::move(changed))
{
    sessionBus.whenThere([this](const QDBusConnection& bus) { setUp(bus); });
}

void ScreenSaverSignals::setUp(QDBusConnection bus)
{
    for (const char* interface : {"org.freedesktop.ScreenSaver", "org.gnome.ScreenSaver",
             "org.cinnamon.ScreenSaver", "org.mate.ScreenSaver", "org.xfce.ScreenSaver"}) {
        bus.connect(QString(), QString(), QString::fromLatin1(interface),
            QStringLiteral("ActiveChanged"), this, SLOT(activeChanged(bool)));
    }
}

void ScreenSaverSignals::activeChanged(bool isActive)
{
    changed(isActive);
}

} // namespace quillbrook
