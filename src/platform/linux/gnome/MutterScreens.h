#pragma once

#include "platform/linux/bus/NameOwner.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <functional>

class QDBusMessage;

namespace quillbrook {

class Bus;

/// Tells when GNOME's Mutter has switched the screens off to save power. Main thread only.
class MutterScreens final : public QObject {
    Q_OBJECT

public:
    /// `changed` learns whether they are off.
    MutterScreens(Bus& sessionBus, std::function<void(bool)> changed);

private Q_SLOTS:
    void propertiesChanged(const QString& interface, const QVariantMap& changed,
        const QStringList& invalidated, const QDBusMessage& signal);

private:
    void ownerChanged();
    void take(const QVariant& mode);

    Bus& sessionBus;
    std::function<void(bool)> changed;
    NameOwner mutter;
};

} // namespace quillbrook
