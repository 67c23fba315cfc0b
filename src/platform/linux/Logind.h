#pragma once

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QDBusUnixFileDescriptor>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <functional>

namespace quillbrook {

class Bus;

/// What logind tells of the machine and of the user's session on it. Holds logind back until the
/// handlers of a sleep or shutdown have run. Main thread only.
class Logind final : public QObject {
    Q_OBJECT

public:
    struct Handlers {
        std::function<void()> willSleep;
        std::function<void()> didWake;
        std::function<void()> willShutDown;
        std::function<void(bool)> lockedChanged;
    };

    Logind(Bus& systemBus, Handlers handlers);

private Q_SLOTS:
    void prepareForSleep(bool isBeginning);
    void prepareForShutdown(bool isBeginning);
    void sessionChanged(
        const QString& interface, const QVariantMap& changed, const QStringList& invalidated);

private:
    void setUp(QDBusConnection bus);
    void inhibit();
    void findSession();
    void findDisplaySession();
    void followSession(const QString& path);
    void askWhetherLocked();

    Bus& systemBus;
    Handlers handlers;
    QDBusServiceWatcher watcher{};
    QDBusUnixFileDescriptor inhibitor{}; // logind waits while it is open
    QString sessionPath{};
};

} // namespace quillbrook
