#include "platform/linux/bus/Fcitx5InputMethod.h"

#include "platform/linux/bus/Bus.h"
#include "platform/linux/bus/Calls.h"
#include "platform/linux/bus/InputMethodNames.h"

#include <QDBusArgument>

namespace quillbrook {

namespace {

const QString kService = QStringLiteral("org.fcitx.Fcitx5");

QDBusMessage controllerCall(const char* method)
{
    return QDBusMessage::createMethodCall(kService, QStringLiteral("/controller"),
        QStringLiteral("org.fcitx.Fcitx.Controller1"), QString::fromLatin1(method));
}

} // namespace

QMap<QString, Fcitx5Names> fcitx5NamesIn(const QDBusMessage& reply)
{
    QMap<QString, Fcitx5Names> names;
    if (reply.signature() != QLatin1String("a(ssssssb)")) {
        return names;
    }
    const auto methods = reply.arguments().constFirst().value<QDBusArgument>();
    methods.beginArray();
    while (!methods.atEnd()) {
        QString id;
        Fcitx5Names found;
        methods.beginStructure();
        methods >> id >> found.name >> found.nativeName;
        methods.endStructure();
        names.insert(id, found);
    }
    methods.endArray();
    return names;
}

Fcitx5InputMethod::Fcitx5InputMethod(Bus& sessionBus) : sessionBus(sessionBus)
{
    watcher.addWatchedService(kService);
    connect(&watcher, &QDBusServiceWatcher::serviceRegistered, this, [this] { came(); });
    connect(&watcher, &QDBusServiceWatcher::serviceUnregistered, this, [this] { went(); });
    sessionBus.whenThere([this](const QDBusConnection& bus) { setUp(bus); });
    sessionBus.whenGone([this] { went(); });
}

void Fcitx5InputMethod::setUp(const QDBusConnection& bus)
{
    watcher.setConnection(bus);
    auto call = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"),
        QStringLiteral("/org/freedesktop/DBus"), QStringLiteral("org.freedesktop.DBus"),
        QStringLiteral("NameHasOwner"));
    call.setArguments({kService});
    callLater(bus, call, this, [this](const QDBusMessage& reply) {
        if (reply.type() == QDBusMessage::ReplyMessage && reply.arguments().value(0).toBool()
            && !running) {
            came();
        }
    });
}

void Fcitx5InputMethod::came()
{
    running = true;
    askForNames();
    refresh();
}

void Fcitx5InputMethod::went()
{
    running = false;
    current.clear();
    schema.clear();
    names.clear();
}

void Fcitx5InputMethod::refresh()
{
    if (!running) {
        return;
    }
    callLater(sessionBus.connection(), controllerCall("CurrentInputMethod"), this,
        [this](const QDBusMessage& reply) {
            // Without a focused program there is no answer; what was in use then still counts.
            const QString id = reply.arguments().value(0).toString();
            if (reply.type() == QDBusMessage::ErrorMessage || id.isEmpty()) {
                return;
            }
            current = id;
            if (current == QLatin1String("rime")) {
                askForSchema();
            }
        });
}

void Fcitx5InputMethod::askForNames()
{
    callLater(sessionBus.connection(), controllerCall("AvailableInputMethods"), this,
        [this](const QDBusMessage& reply) {
            if (reply.type() == QDBusMessage::ReplyMessage) {
                names = fcitx5NamesIn(reply);
            }
        });
}

void Fcitx5InputMethod::askForSchema()
{
    const auto call = QDBusMessage::createMethodCall(kService, QStringLiteral("/rime"),
        QStringLiteral("org.fcitx.Fcitx.Rime1"), QStringLiteral("GetCurrentSchema"));
    callLater(sessionBus.connection(), call, this, [this](const QDBusMessage& reply) {
        const QString answer = reply.arguments().value(0).toString();
        if (reply.type() != QDBusMessage::ErrorMessage && !answer.isEmpty()) {
            schema = answer;
        }
    });
}

std::optional<std::string> Fcitx5InputMethod::identifier() const
{
    if (current.isEmpty()) {
        return std::nullopt;
    }
    const Fcitx5Names known = names.value(current);
    std::string identifier = fcitxIdentifier(
        current.toStdString(), known.name.toStdString(), known.nativeName.toStdString());
    if (current == QLatin1String("rime") && isDoublePinyinSchema(schema.toStdString())) {
        identifier += kDoublePinyinMark;
    }
    return identifier;
}

} // namespace quillbrook
