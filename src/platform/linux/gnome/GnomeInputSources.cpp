#include "platform/linux/gnome/GnomeInputSources.h"

#include "platform/linux/bus/Bus.h"
#include "platform/linux/bus/Calls.h"
#include "platform/linux/bus/InputMethodNames.h"
#include "platform/linux/session/LayoutNames.h"
#include "platform/linux/words/OutsideName.h"

#include <QDBusArgument>
#include <QDBusMessage>

namespace quillbrook {

namespace {

const auto kPortal = QStringLiteral("org.freedesktop.portal.Desktop");
const auto kPath = QStringLiteral("/org/freedesktop/portal/desktop");
const auto kSettings = QStringLiteral("org.freedesktop.portal.Settings");
const auto kSpace = QStringLiteral("org.gnome.desktop.input-sources");

/// The identifier of a source as ("xkb", "us+dvorak") or ("ibus", "libpinyin").
std::optional<std::string> identifierOf(const QString& kind, const QString& name)
{
    const std::string text = outsideName(name.toStdString());
    if (kind == QLatin1String("ibus")) {
        return ibusIdentifier(text);
    }
    if (kind != QLatin1String("xkb")) {
        return std::nullopt;
    }
    const auto plus = text.find('+');
    return layoutIdentifier(
        text.substr(0, plus), plus != std::string::npos ? text.substr(plus + 1) : std::string());
}

} // namespace

std::optional<std::string> firstInputSourceIn(QVariant value)
{
    while (value.canConvert<QDBusVariant>()) {
        value = value.value<QDBusVariant>().variant();
    }
    const auto argument = value.value<QDBusArgument>();
    if (argument.currentSignature() != QLatin1String("a(ss)")) {
        return std::nullopt;
    }
    std::optional<std::string> identifier;
    argument.beginArray();
    if (!argument.atEnd()) {
        QString kind;
        QString name;
        argument.beginStructure();
        argument >> kind >> name;
        argument.endStructure();
        identifier = identifierOf(kind, name);
    }
    argument.endArray();
    return identifier;
}

GnomeInputSources::GnomeInputSources(Bus& bus)
    : sessionBus(bus)
    , portal(kPortal, [this] {
        ask(sources);
        ask(lastUsed);
    })
{
    bus.whenThere([this](QDBusConnection connection) {
        connection.connect(QString(), kPath, kSettings, QStringLiteral("SettingChanged"), this,
            SLOT(settingChanged(QString, QString, QDBusVariant, QDBusMessage)));
    });
    portal.follow(bus);
}

void GnomeInputSources::ask(Sources& list)
{
    take(list, {});
    if (portal.owner().isEmpty()) {
        return;
    }
    auto call
        = QDBusMessage::createMethodCall(portal.owner(), kPath, kSettings, QStringLiteral("Read"));
    call << kSpace << list.key;
    callLater(sessionBus.connection(), call, this,
        [&list, asked = list.tellings](const QDBusMessage& reply) {
            const bool isAnswer = reply.type() == QDBusMessage::ReplyMessage;
            if (isAnswer && list.tellings == asked) { // else a change was told meanwhile
                take(list, reply.arguments().value(0));
            }
        });
}

void GnomeInputSources::settingChanged(
    const QString& space, const QString& key, const QDBusVariant& value, const QDBusMessage& signal)
{
    if (space != kSpace || signal.service() != portal.owner()) {
        return;
    }
    for (Sources* list : {&sources, &lastUsed}) {
        if (key == list->key) {
            take(*list, value.variant());
        }
    }
}

void GnomeInputSources::take(Sources& list, const QVariant& value)
{
    ++list.tellings;
    list.first = firstInputSourceIn(value);
}

} // namespace quillbrook
