#pragma once

#include "platform/linux/bus/NameOwner.h"

#include <QDBusVariant>
#include <QObject>
#include <QString>
#include <QVariant>

#include <optional>
#include <string>

class QDBusMessage;

namespace quillbrook {

class Bus;

/// The identifier of the first source in a list of them, within any number of variants; empty when
/// there is none.
std::optional<std::string> firstInputSourceIn(QVariant value);

/// The input source that GNOME's settings say is in use: the one used last, else the first. The
/// settings portal of the session bus tells them. Main thread only.
class GnomeInputSources final : public QObject {
    Q_OBJECT

public:
    explicit GnomeInputSources(Bus& sessionBus);

    /// Of a keyboard layout or an engine of IBus; empty where the settings aren't told.
    std::optional<std::string> identifier() const
    {
        return lastUsed.first ? lastUsed.first : sources.first;
    }

private Q_SLOTS:
    void settingChanged(const QString& space, const QString& key, const QDBusVariant& value,
        const QDBusMessage& signal);

private:
    /// A list of sources in the settings.
    struct Sources {
        QString key{};
        std::optional<std::string> first{};
        int tellings = 0; // of it, asked or not
    };

    void ask(Sources& list);
    static void take(Sources& list, const QVariant& value);

    Bus& sessionBus;
    Sources sources{.key = QStringLiteral("sources")};
    Sources lastUsed{.key = QStringLiteral("mru-sources")};
    NameOwner portal;
};

} // namespace quillbrook
