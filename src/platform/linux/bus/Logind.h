#pragma once

#include "base/Lifetime.h"

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QDBusUnixFileDescriptor>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVariantMap>

#include <functional>

class QDBusMessage;

namespace quillbrook {

class Bus;
class MainLoop;

/// The path of a session in the property `Display` of a user; empty in a value of another form.
QString sessionPathIn(const QVariant& display);

/// What logind tells of the machine and of the user's session on it. Holds logind back until the
/// handlers of a sleep or shutdown have run, and before a sleep also everything that was due within
/// the next second. Main thread only.
class Logind final : public QObject {
    Q_OBJECT

public:
    struct Handlers {
        std::function<void()> willSleep;
        std::function<void()> didWake;
        std::function<void()> isGone; ///< and can't announce any waking
        std::function<void()> willShutDown;
        std::function<void(bool)> lockedChanged;
    };

    Logind(Bus& systemBus, MainLoop& mainLoop, Handlers handlers);

private Q_SLOTS:
    void prepareForSleep(bool isBeginning, const QDBusMessage& signal);
    void prepareForShutdown(bool isBeginning, const QDBusMessage& signal);
    void sessionChanged(const QString& interface, const QVariantMap& changed,
        const QStringList& invalidated, const QDBusMessage& signal);

private:
    void setUp(QDBusConnection bus);
    void came(const QString& name);
    void went();
    void inhibit(int tries);
    void inhibitAgain(int tries);
    void letSleepSoon();
    void findSession();
    void findDisplaySession();
    void followSession(const QString& path);
    void askWhetherLocked();

    Bus& systemBus;
    MainLoop& mainLoop;
    Handlers handlers;
    QDBusServiceWatcher watcher{};
    QString owner{}; // logind's own name on the bus; empty while it isn't there
    int announcements = 0; // of a sleep or a waking
    QDBusUnixFileDescriptor inhibitor{}; // logind waits while it is open
    QString sessionPath{};

    Lifetime lifetime{};
};

} // namespace quillbrook
