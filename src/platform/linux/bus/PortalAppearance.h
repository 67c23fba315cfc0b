#pragma once

#include "platform/DesktopAppearance.h"

#include <QDBusVariant>
#include <QObject>
#include <QString>
#include <QVariant>

#include <functional>
#include <memory>

class QDBusConnection;
class QDBusServiceWatcher;

namespace quillbrook {

class Bus;

/// The portal's accent colour, within any number of variants; empty when there is none.
std::optional<Color> accentColorIn(const QVariant& value);

/// What the settings portal of the session bus tells. The bus may start it, and it may come later.
/// Main thread only.
class PortalAppearance final : public QObject {
    Q_OBJECT

public:
    /// Calls `changed` at each answer of the portal, also when it has none, and at each change.
    PortalAppearance(Bus& sessionBus, std::function<void()> changed);
    ~PortalAppearance() override;

    PortalAppearance(const PortalAppearance&) = delete;
    PortalAppearance& operator=(const PortalAppearance&) = delete;

    const Appearance& appearance() const { return told; }

    /// Whether the portal was asked, and has answered all or isn't there.
    bool hasAnswered() const { return comings != nullptr && openQuestions == 0; }

private Q_SLOTS:
    void settingChanged(const QString& space, const QString& key, const QDBusVariant& value);

private:
    void listen(const QDBusConnection& bus);
    void askAll();
    void ask(const QString& key);
    void take(const QString& key, const QVariant& value);

    Bus& sessionBus;
    std::function<void()> changed;
    std::unique_ptr<QDBusServiceWatcher> comings{}; // of portals
    int openQuestions = 0;
    Appearance told{};
};

} // namespace quillbrook
