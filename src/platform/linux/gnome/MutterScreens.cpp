#include "platform/linux/gnome/MutterScreens.h"

#include "platform/linux/bus/Bus.h"
#include "platform/linux/bus/Calls.h"

#include <QDBusMessage>
#include <QDBusVariant>

#include <utility>

namespace quillbrook {

namespace {

const auto kService = QStringLiteral("org.gnome.Mutter.DisplayConfig");
const auto kPath = QStringLiteral("/org/gnome/Mutter/DisplayConfig");
const auto kProperties = QStringLiteral("org.freedesktop.DBus.Properties");
const auto kMode = QStringLiteral("PowerSaveMode");

} // namespace

MutterScreens::MutterScreens(Bus& bus, std::function<void(bool)> whenChanged)
    : sessionBus(bus)
    , changed(std::move(whenChanged))
    , mutter(kService, [this] { ownerChanged(); })
{
    bus.whenThere([this](QDBusConnection connection) {
        connection.connect(QString(), kPath, kProperties, QStringLiteral("PropertiesChanged"), this,
            SLOT(propertiesChanged(QString, QVariantMap, QStringList, QDBusMessage)));
    });
    mutter.follow(bus);
}

void MutterScreens::ownerChanged()
{
    if (mutter.owner().isEmpty()) {
        changed(false);
        return;
    }
    auto call
        = QDBusMessage::createMethodCall(mutter.owner(), kPath, kProperties, QStringLiteral("Get"));
    call << kService << kMode;
    callLater(sessionBus.connection(), call, this,
        [this, owner = mutter.owner()](const QDBusMessage& reply) {
            if (reply.type() == QDBusMessage::ReplyMessage && owner == mutter.owner()) {
                take(reply.arguments().value(0).value<QDBusVariant>().variant());
            }
        });
}

void MutterScreens::propertiesChanged(const QString& interface, const QVariantMap& values,
    const QStringList&, const QDBusMessage& signal)
{
    if (interface == kService && signal.service() == mutter.owner() && values.contains(kMode)) {
        take(values.value(kMode));
    }
}

void MutterScreens::take(const QVariant& mode)
{
    changed(mode.toInt() > 0); // 0 is on, less is unknown
}

} // namespace quillbrook
