#include "platform/linux/shells/KdeLayout.h"

#include "base/Text.h"
#include "platform/linux/bus/Bus.h"
#include "platform/linux/bus/Calls.h"

#include <QDBusArgument>
#include <QDBusConnection>

namespace quillbrook {

namespace {

const QString kService = QStringLiteral("org.kde.keyboard");
const QString kPath = QStringLiteral("/Layouts");
const QString kInterface = QStringLiteral("org.kde.KeyboardLayouts");

constexpr qsizetype kMostLayouts = 64;

} // namespace

QStringList layoutDescriptionsIn(const QDBusMessage& reply)
{
    const QVariant list = reply.arguments().value(0);
    QStringList descriptions;
    if (reply.signature() != QStringLiteral("a(sss)") || !list.canConvert<QDBusArgument>()) {
        return descriptions;
    }
    const auto rows = qvariant_cast<QDBusArgument>(list);
    rows.beginArray();
    while (!rows.atEnd() && descriptions.size() < kMostLayouts) {
        QString shortName;
        QString shownName;
        QString longName;
        rows.beginStructure();
        rows >> shortName >> shownName >> longName;
        rows.endStructure();
        descriptions.append(longName); // what a person reads
    }
    rows.endArray();
    return descriptions;
}

KdeLayout::KdeLayout(Bus& bus) : sessionBus(bus), keyboard(kService, [this] { ask(); })
{
    // A service's name in these would be looked up by the library, which waits for the answer: the
    // slots compare the sender.
    bus.whenThere([this](QDBusConnection connection) {
        connection.connect(QString(), kPath, kInterface, QStringLiteral("layoutChanged"), this,
            SLOT(layoutChanged(uint, QDBusMessage)));
        connection.connect(QString(), kPath, kInterface, QStringLiteral("layoutListChanged"), this,
            SLOT(layoutListChanged(QDBusMessage)));
    });
    keyboard.follow(bus);
}

std::optional<std::string> KdeLayout::description() const
{
    const auto index = static_cast<qsizetype>(present);
    return index < descriptions.size() ? std::optional(validUtf8(descriptions[index].toStdString()))
                                       : std::nullopt;
}

void KdeLayout::layoutChanged(uint index, const QDBusMessage& signal)
{
    if (signal.service() == keyboard.owner()) {
        present = index;
    }
}

void KdeLayout::layoutListChanged(const QDBusMessage& signal)
{
    if (signal.service() == keyboard.owner()) {
        ask();
    }
}

void KdeLayout::ask()
{
    if (keyboard.owner().isEmpty()) {
        descriptions.clear();
        return;
    }
    callLater(sessionBus.connection(), call("getLayoutsList"), this,
        [this, owner = keyboard.owner()](const QDBusMessage& reply) {
            if (owner == keyboard.owner()) {
                descriptions = layoutDescriptionsIn(reply);
            }
        });
    callLater(sessionBus.connection(), call("getLayout"), this,
        [this, owner = keyboard.owner()](const QDBusMessage& reply) {
            if (reply.type() == QDBusMessage::ReplyMessage && owner == keyboard.owner()) {
                present = reply.arguments().value(0).toUInt();
            }
        });
}

QDBusMessage KdeLayout::call(const char* member) const
{
    return QDBusMessage::createMethodCall(
        keyboard.owner(), kPath, kInterface, QString::fromLatin1(member));
}

} // namespace quillbrook
