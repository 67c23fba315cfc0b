#pragma once

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QSet>
#include <QString>

#include <functional>

class QDBusMessage;

namespace quillbrook {

class Bus;

/// Tells when a desktop's screen saver covers the screens, by whatever of the common names it
/// speaks on the session bus. A saver that starts later is heard too, and one that dies no longer
/// covers anything. Main thread only.
class ScreenSaverSignals final : public QObject {
    Q_OBJECT

public:
    ScreenSaverSignals(Bus& sessionBus, std::function<void(bool)> changed);

private Q_SLOTS:
    void activeChanged(bool isActive, const QDBusMessage& signal);

private:
    void setUp(QDBusConnection bus);
    void ask(const QDBusConnection& bus, const QString& interface);
    void set(const QString& saver, bool isActive);

    std::function<void(bool)> changed;
    QDBusServiceWatcher watcher{}; // of the savers that are active: one that dies covers nothing
    QSet<QString> activeSavers{}; // their names on the bus
};

} // namespace quillbrook
