#include "platform/linux/bus/IBusInputMethod.h"

#include "platform/linux/bus/BusConnecting.h"
#include "platform/linux/bus/Calls.h"
#include "platform/linux/bus/IBusAddress.h"
#include "platform/linux/bus/InputMethodNames.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QFileInfo>
#include <QProcess>

namespace quillbrook {

namespace {

const QString kService = QStringLiteral("org.freedesktop.IBus");
const QString kPath = QStringLiteral("/org/freedesktop/IBus");
const QString kLibpinyin = QStringLiteral("libpinyin");

constexpr qint64 kRetryMs = 60'000;

} // namespace

QString ibusEngineIn(const QVariant& property)
{
    // A variant in a variant, in it a structure of the type's name, attachments and the name.
    const auto outer = property.value<QDBusVariant>().variant();
    const auto inner
        = outer.canConvert<QDBusVariant>() ? outer.value<QDBusVariant>().variant() : outer;
    if (!inner.canConvert<QDBusArgument>()) {
        return {};
    }
    const auto description = inner.value<QDBusArgument>();
    if (!description.currentSignature().startsWith(QLatin1String("(sa{sv}s"))) {
        return {};
    }
    QString type;
    QVariantMap attachments;
    QString engine;
    description.beginStructure();
    description >> type >> attachments >> engine;
    description.endStructure();
    return engine;
}

IBusInputMethod::IBusInputMethod(MainLoop& mainLoop, WorkQueues& workQueues)
    : mainLoop(mainLoop)
    , workQueues(workQueues)
{
    // Where the daemon runs for the first time, the directory comes with it: keys lead to the
    // next look then.
    connect(&watcher, &QFileSystemWatcher::directoryChanged, this, [this] { refresh(); });
    refresh();
}

IBusInputMethod::~IBusInputMethod()
{
    QDBusConnection::disconnectFromBus(connectionName);
}

void IBusInputMethod::refresh()
{
    if (watcher.directories().isEmpty() && QFileInfo::exists(ibusAddressDirectory())) {
        watcher.addPath(ibusAddressDirectory());
    }
    // A daemon that starts anew has a new address. One that didn't answer is asked again at most
    // once a minute, as each attempt takes a thread for a while.
    const bool isDueAgain
        = !QDBusConnection(connectionName).isConnected() && lastAttempt.hasExpired(kRetryMs);
    if (ibusAddress() != connectedAddress || isDueAgain) {
        connectToDaemon();
    }
}

void IBusInputMethod::connectToDaemon()
{
    if (!connectionName.isEmpty()) {
        QDBusConnection::disconnectFromBus(connectionName);
    }
    current.clear();
    lastAttempt.start();
    connectedAddress = ibusAddress();
    if (connectedAddress.isEmpty()) {
        return;
    }
    connectionName = QStringLiteral("quillbrook-ibus-%1").arg(++attempts);
    connectLater(workQueues, mainLoop, connectedAddress, connectionName, this,
        [this, name = connectionName] {
            if (name == connectionName) {
                attemptEnded();
            } else {
                QDBusConnection::disconnectFromBus(name); // a newer attempt took its place
            }
        });
}

void IBusInputMethod::attemptEnded()
{
    QDBusConnection bus(connectionName);
    if (!bus.isConnected()) {
        return;
    }
    bus.connect(QString(), kPath, kService, QStringLiteral("GlobalEngineChanged"), this,
        SLOT(globalEngineChanged(QString)));
    askForEngine();
}

void IBusInputMethod::askForEngine()
{
    auto call = QDBusMessage::createMethodCall(
        kService, kPath, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    call.setArguments({kService, QStringLiteral("GlobalEngine")});
    callLater(QDBusConnection(connectionName), call, this, [this](const QDBusMessage& reply) {
        if (reply.type() != QDBusMessage::ErrorMessage) {
            setEngine(ibusEngineIn(reply.arguments().value(0)));
        }
    });
}

void IBusInputMethod::globalEngineChanged(const QString& engine)
{
    setEngine(engine);
}

void IBusInputMethod::setEngine(const QString& engine)
{
    current = engine;
    isDoublePinyin = false;
    if (current == kLibpinyin) {
        askForDoublePinyin();
    }
}

void IBusInputMethod::askForDoublePinyin()
{
    // The engine's name stays the same; only its settings know.
    auto* settings = new QProcess(this);
    connect(settings, &QProcess::finished, this, [this, settings] {
        isDoublePinyin
            = current == kLibpinyin && settings->readAllStandardOutput().trimmed() == "true";
        settings->deleteLater();
    });
    connect(settings, &QProcess::errorOccurred, settings, &QObject::deleteLater);
    settings->start(QStringLiteral("gsettings"),
        {QStringLiteral("get"), QStringLiteral("com.github.libpinyin.ibus-libpinyin.libpinyin"),
            QStringLiteral("double-pinyin")});
}

std::optional<std::string> IBusInputMethod::identifier() const
{
    if (current.isEmpty() || !QDBusConnection(connectionName).isConnected()) {
        return std::nullopt;
    }
    std::string identifier = ibusIdentifier(current.toStdString());
    if (isDoublePinyin) {
        identifier += kDoublePinyinMark;
    }
    return identifier;
}

} // namespace quillbrook
