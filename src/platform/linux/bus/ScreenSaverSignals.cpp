#include "platform/linux/bus/ScreenSaverSignals.h"

#include "platform/linux/bus/Bus.h"
#include "platform/linux/bus/Calls.h"

#include <QDBusMessage>

#include <array>
#include <utility>

namespace quillbrook {

namespace {

/// Under one name each saver is a service, an interface and, with slashes, a path.
constexpr std::array kSavers = {"org.freedesktop.ScreenSaver", "org.gnome.ScreenSaver",
    "org.cinnamon.ScreenSaver", "org.mate.ScreenSaver", "org.xfce.ScreenSaver"};

} // namespace

ScreenSaverSignals::ScreenSaverSignals(Bus& sessionBus, std::function<void(bool)> changed)
    : changed(std::move(changed))
{
    watcher.setWatchMode(QDBusServiceWatcher::WatchForUnregistration);
    connect(&watcher, &QDBusServiceWatcher::serviceUnregistered, this,
        [this](const QString& saver) { set(saver, false); });
    sessionBus.whenThere([this](const QDBusConnection& bus) { setUp(bus); });
    sessionBus.whenGone([this] {
        activeSavers.clear();
        this->changed(false);
    });
}

void ScreenSaverSignals::setUp(QDBusConnection bus)
{
    watcher.setConnection(bus);
    for (const char* saver : kSavers) {
        const QString interface = QString::fromLatin1(saver);
        bus.connect(QString(), QString(), interface, QStringLiteral("ActiveChanged"), this,
            SLOT(activeChanged(bool, QDBusMessage)));
        ask(bus, interface);
    }
}

void ScreenSaverSignals::ask(const QDBusConnection& bus, const QString& interface)
{
    QString path = interface;
    path.replace(QLatin1Char('.'), QLatin1Char('/'));
    const auto call = QDBusMessage::createMethodCall(
        interface, QLatin1Char('/') + path, interface, QStringLiteral("GetActive"));
    callLater(bus, call, this, [this](const QDBusMessage& reply) {
        if (reply.type() == QDBusMessage::ReplyMessage && reply.arguments().value(0).toBool()) {
            set(reply.service(), true);
        }
    });
}

void ScreenSaverSignals::activeChanged(bool isActive, const QDBusMessage& signal)
{
    set(signal.service(), isActive);
}

void ScreenSaverSignals::set(const QString& saver, bool isActive)
{
    if (isActive) {
        activeSavers.insert(saver);
        watcher.addWatchedService(saver);
    } else {
        activeSavers.remove(saver);
        watcher.removeWatchedService(saver);
    }
    changed(!activeSavers.isEmpty());
}

} // namespace quillbrook
