#pragma once

#include "base/Color.h"

#include <QDBusVariant>
#include <QObject>

#include <functional>
#include <optional>

namespace quillbrook {

/// Whether the desktop is dark, and its accent colour, as the settings portal of the session bus
/// tells. Without a portal nothing is ever told. Main thread only.
class PortalAppearance final : public QObject {
    Q_OBJECT

public:
    /// What the desktop tells of its look; empty where it has no preference.
    struct Appearance {
        std::optional<bool> isDark{};
        std::optional<Color> accent{};
    };

    /// Calls `changed` when the portal has answered and at each change.
    explicit PortalAppearance(std::function<void(const Appearance&)> changed);

private Q_SLOTS:
    void settingChanged(const QString& space, const QString& key, const QDBusVariant& value);

private:
    void ask(const QString& key);
    void take(const QString& key, const QVariant& value);

    Appearance appearance{};
    std::function<void(const Appearance&)> changed;
};

} // namespace quillbrook
