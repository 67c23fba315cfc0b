#pragma once

#include "platform/DesktopAppearance.h"

#include <QDBusVariant>
#include <QObject>

#include <functional>

namespace quillbrook {

class X11Connection;

/// What the settings portal of the session bus tells; it is asked at the first observer, as only
/// windows want to know. Without a portal nothing is ever told.
class PortalAppearance final : public QObject, public DesktopAppearance {
    Q_OBJECT

public:
    explicit PortalAppearance(X11Connection& x11) : x11(x11) {}

    Subscription observe(std::function<void(const Appearance&)> changed) override;
    /// Asks the X server for its compositor, which may come and go.
    bool canBlendWindows() const override;

private Q_SLOTS:
    void settingChanged(const QString& space, const QString& key, const QDBusVariant& value);

private:
    void connectToPortal();
    void ask(const QString& key);
    void take(const QString& key, const QVariant& value);

    X11Connection& x11;
    bool isConnected = false;
    Property<Appearance> appearance{};
};

} // namespace quillbrook
