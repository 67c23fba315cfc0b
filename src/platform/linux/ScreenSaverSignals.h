#pragma once

#include <QDBusConnection>
#include <QObject>

#include <functional>

namespace quillbrook {

class Bus;

/// Tells when a desktop's screen saver covers the screens, by whatever of the common names it
/// speaks on the session bus. A saver that starts later is heard too. Main thread only.
class ScreenSaverSignals final : public QObject {
    Q_OBJECT

public:
    ScreenSaverSignals(Bus& sessionBus, std::function<void(bool)> changed);

private Q_SLOTS:
    void activeChanged(bool isActive);

private:
    void setUp(QDBusConnection bus);

    std::function<void(bool)> changed;
};

} // namespace quillbrook
