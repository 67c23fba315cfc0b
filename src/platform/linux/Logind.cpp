#include "platform/linux/Logind.h"

#include "platform/linux/Bus.h"
#include "platform/linux/Calls.h"
#include "platform/linux/Notice.h"

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

QString pathIn(const QDBusMessage& reply)
{
    return reply.arguments().value(0).value<QDBusObjectPath>().path();
}

} // namespace

Logind::Logind(Bus& systemBus, Handlers handlers)
    : systemBus(systemBus)
    , handlers(std::move(handlers))
{
    watcher.addWatchedService(kService);
    connect(&watcher, &QDBusServiceWatcher::serviceRegistered, this, [this] {
        inhibit();
        findSession();
    });
    // Without logind nobody knows of a lock.
    connect(&watcher, &QDBusServiceWatcher::serviceUnregistered, this,
        [this] { this->handlers.lockedChanged(false); });
    systemBus.whenThere([this](const QDBusConnection& bus) { setUp(bus); });
    systemBus.whenGone([this] { this->handlers.lockedChanged(false); });
}

void Logind::setUp(QDBusConnection bus)
{
    bus.connect(kService, kPath, kManager, QStringLiteral("PrepareForSleep"), this,
        SLOT(prepareForSleep(bool)));
    bus.connect(kService, kPath, kManager, QStringLiteral("PrepareForShutdown"), this,
        SLOT(prepareForShutdown(bool)));
    watcher.setConnection(bus);
    inhibit();
    findSession();
}

void Logind::inhibit()
{
    const auto call = managerCall("Inhibit",
        {QStringLiteral("shutdown:sleep"), QStringLiteral("Quillbrook"),
            QStringLiteral("保存使用记录"), QStringLiteral("delay")});
    callLater(systemBus.connection(), call, this, [this](const QDBusMessage& reply) {
        if (reply.type() == QDBusMessage::ErrorMessage) {
            notice("logind 不可用，暂无睡眠和锁屏信息: " + reply.errorMessage().toStdString());
            return;
        }
        inhibitor = reply.arguments().value(0).value<QDBusUnixFileDescriptor>();
    });
}

void Logind::prepareForSleep(bool isBeginning)
{
    if (isBeginning) {
        handlers.willSleep();
        inhibitor = {};
    } else {
        handlers.didWake();
        inhibit();
    }
}

void Logind::prepareForShutdown(bool isBeginning)
{
    if (isBeginning) {
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
                if (!value.canConvert<QDBusArgument>()) {
                    return;
                }
                const auto pair = value.value<QDBusArgument>();
                QString id;
                QDBusObjectPath path;
                pair.beginStructure();
                pair >> id >> path;
                pair.endStructure();
                followSession(path.path());
            });
    });
}

void Logind::followSession(const QString& path)
{
    auto bus = systemBus.connection();
    if (!sessionPath.isEmpty()) {
        bus.disconnect(kService, sessionPath, kProperties, QStringLiteral("PropertiesChanged"),
            this, SLOT(sessionChanged(QString, QVariantMap, QStringList)));
    }
    sessionPath = path;
    bus.connect(kService, sessionPath, kProperties, QStringLiteral("PropertiesChanged"), this,
        SLOT(sessionChanged(QString, QVariantMap, QStringList)));
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

void Logind::sessionChanged(
    const QString& interface, const QVariantMap& changed, const QStringList& invalidated)
{
    if (interface != kSession) {
        return;
    }
    if (const auto locked = changed.find(kLockedHint); locked != changed.end()) {
        handlers.lockedChanged(locked->toBool());
    } else if (invalidated.contains(kLockedHint)) {
        askWhetherLocked();
    }
}

} // namespace quillbrook
