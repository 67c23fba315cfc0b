#include "platform/linux/bus/Logind.h"

#include "platform/MainLoop.h"
#include "platform/linux/bus/Bus.h"
#include "platform/linux/bus/Calls.h"
#include "platform/linux/words/Notice.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>

#include <unistd.h>

#include <utility>

namespace quillbrook {

namespace {

const QString kService = QStringLiteral("org.freedesktop.login1");
const QString kPath = QStringLiteral("/org/freedesktop/login1");
const QString kManager = QStringLiteral("org.freedesktop.login1.Manager");
const QString kSession = QStringLiteral("org.freedesktop.login1.Session");
const QString kUser = QStringLiteral("org.freedesktop.login1.User");
const QString kProperties = QStringLiteral("org.freedesktop.DBus.Properties");
const QString kLockedHint = QStringLiteral("LockedHint");

constexpr double kLastWorkSec = 1.5;
constexpr int kInhibitTries = 3;
constexpr double kBetweenTriesSec = 1;

QDBusMessage managerCall(const QString& method, const QVariantList& arguments)
{
    auto message = QDBusMessage::createMethodCall(kService, kPath, kManager, method);
    message.setArguments(arguments);
    return message;
}

QDBusMessage propertyCall(const QString& path, const QString& interface, const QString& property)
{
    auto message = QDBusMessage::createMethodCall(kService, path, kProperties, "Get");
    message.setArguments({interface, property});
    return message;
}

void tellMissing(const QDBusMessage& error)
{
    notice("logind 不可用，暂无睡眠和锁屏信息: " + error.errorMessage().toStdString());
}

QString pathIn(const QDBusMessage& reply)
{
    return reply.arguments().value(0).value<QDBusObjectPath>().path();
}

} // namespace

QString sessionPathIn(const QVariant& display)
{
    if (!display.canConvert<QDBusArgument>()) {
        return {};
    }
    const auto pair = display.value<QDBusArgument>();
    if (pair.currentSignature() != QLatin1String("(so)")) {
        return {};
    }
    QString id;
    QDBusObjectPath path;
    pair.beginStructure();
    pair >> id >> path;
    pair.endStructure();
    return path.path();
}

Logind::Logind(Bus& systemBus, MainLoop& mainLoop, Handlers handlers)
    : systemBus(systemBus)
    , mainLoop(mainLoop)
    , handlers(std::move(handlers))
{
    watcher.addWatchedService(kService);
    connect(&watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
        [this](const QString&, const QString&, const QString& name) {
            if (name.isEmpty()) {
                went();
            } else {
                came(name);
            }
        });
    systemBus.whenThere([this](const QDBusConnection& bus) { setUp(bus); });
    systemBus.whenGone([this] { went(); });
}

void Logind::setUp(QDBusConnection bus)
{
    // A service's name in these would be looked up by the library, which waits for the answer: the
    // slots compare the sender.
    bus.connect(QString(), kPath, kManager, QStringLiteral("PrepareForSleep"), this,
        SLOT(prepareForSleep(bool, QDBusMessage)));
    bus.connect(QString(), kPath, kManager, QStringLiteral("PrepareForShutdown"), this,
        SLOT(prepareForShutdown(bool, QDBusMessage)));
    watcher.setConnection(bus);
    auto call = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"),
        QStringLiteral("/org/freedesktop/DBus"), QStringLiteral("org.freedesktop.DBus"),
        QStringLiteral("GetNameOwner"));
    call.setArguments({kService});
    callLater(bus, call, this, [this](const QDBusMessage& reply) {
        if (reply.type() == QDBusMessage::ErrorMessage) {
            tellMissing(reply);
        } else {
            came(reply.arguments().value(0).toString());
        }
    });
}

void Logind::came(const QString& name)
{
    if (owner == name) {
        return;
    }
    owner = name;
    ++announcements; // what the one before announced lets this one sleep no sooner
    inhibit(kInhibitTries);
    findSession();
}

void Logind::went()
{
    owner.clear();
    handlers.lockedChanged(false); // without logind nobody knows of a lock
    handlers.isGone();
}

void Logind::inhibit(int tries)
{
    const auto call = managerCall("Inhibit",
        {QStringLiteral("shutdown:sleep"), QStringLiteral("Quillbrook"),
            QStringLiteral("保存使用记录"), QStringLiteral("delay")});
    callLater(systemBus.connection(), call, this, [this, tries](const QDBusMessage& reply) {
        if (reply.type() == QDBusMessage::ErrorMessage) {
            tries > 1 ? inhibitAgain(tries - 1) : tellMissing(reply);
            return;
        }
        inhibitor = reply.arguments().value(0).value<QDBusUnixFileDescriptor>();
    });
}

void Logind::inhibitAgain(int tries)
{
    // One that has just come may have its name before it takes calls.
    mainLoop.runAfter(kBetweenTriesSec, lifetime.whileAlive([this, tries, asked = owner] {
        if (owner == asked && !owner.isEmpty()) {
            inhibit(tries);
        }
    }));
}

void Logind::prepareForSleep(bool isBeginning, const QDBusMessage& signal)
{
    if (signal.service() != owner) {
        return;
    }
    ++announcements;
    if (isBeginning) {
        handlers.willSleep();
        letSleepSoon();
    } else {
        handlers.didWake();
        inhibit(kInhibitTries);
    }
}

void Logind::letSleepSoon()
{
    // What finishes the records runs every second, and has run by then. Logind waits for five.
    mainLoop.runAfter(kLastWorkSec, lifetime.whileAlive([this, announcement = announcements] {
        if (announcement == announcements) {
            inhibitor = {};
        }
    }));
}

void Logind::prepareForShutdown(bool isBeginning, const QDBusMessage& signal)
{
    if (isBeginning && signal.service() == owner) {
        handlers.willShutDown();
        inhibitor = {};
    }
}

void Logind::findSession()
{
    const QString id = qEnvironmentVariable("XDG_SESSION_ID");
    const auto call = id.isEmpty() ? managerCall("GetSessionByPID", {static_cast<uint>(getpid())})
                                   : managerCall("GetSession", {id});
    callLater(systemBus.connection(), call, this, [this](const QDBusMessage& reply) {
        if (reply.type() == QDBusMessage::ErrorMessage) {
            findDisplaySession();
            return;
        }
        followSession(pathIn(reply));
    });
}

void Logind::findDisplaySession()
{
    // A program that the user's service manager started belongs to no session: the user's
    // graphical one is meant then.
    const auto call = managerCall("GetUser", {static_cast<uint>(getuid())});
    callLater(systemBus.connection(), call, this, [this](const QDBusMessage& user) {
        if (user.type() == QDBusMessage::ErrorMessage) {
            return;
        }
        callLater(systemBus.connection(), propertyCall(pathIn(user), kUser, "Display"), this,
            [this](const QDBusMessage& display) {
                const auto value = display.arguments().value(0).value<QDBusVariant>().variant();
                if (const QString path = sessionPathIn(value); !path.isEmpty()) {
                    followSession(path);
                }
            });
    });
}

void Logind::followSession(const QString& path)
{
    auto bus = systemBus.connection();
    if (!sessionPath.isEmpty()) {
        bus.disconnect(QString(), sessionPath, kProperties, QStringLiteral("PropertiesChanged"),
            this, SLOT(sessionChanged(QString, QVariantMap, QStringList, QDBusMessage)));
    }
    sessionPath = path;
    bus.connect(QString(), sessionPath, kProperties, QStringLiteral("PropertiesChanged"), this,
        SLOT(sessionChanged(QString, QVariantMap, QStringList, QDBusMessage)));
    askWhetherLocked();
}

void Logind::askWhetherLocked()
{
    callLater(systemBus.connection(), propertyCall(sessionPath, kSession, kLockedHint), this,
        [this](const QDBusMessage& reply) {
            const auto value = reply.arguments().value(0).value<QDBusVariant>().variant();
            if (reply.type() != QDBusMessage::ErrorMessage && value.isValid()) {
                handlers.lockedChanged(value.toBool());
            }
        });
}

void Logind::sessionChanged(const QString& interface, const QVariantMap& changed,
    const QStringList& invalidated, const QDBusMessage& signal)
{
    if (interface != kSession || signal.service() != owner) {
        return;
    }
    if (const auto locked = changed.find(kLockedHint); locked != changed.end()) {
        handlers.lockedChanged(locked->toBool());
    } else if (invalidated.contains(kLockedHint)) {
        askWhetherLocked();
    }
}

} // namespace quillbrook
