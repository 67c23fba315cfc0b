#include "platform/linux/shells/KdeLayout.h"

#include "base/Text.h"
#include "platform/linux/bus/Bus.h"
#include "platform/linux/bus/Calls.h"

#include <QDBusArgument>

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
    return descriptions;
}

KdeLayout::KdeLayout(Bus& sessionBus) : sessionBus(sessionBus)
{
    watcher.addWatchedService(kService);
    connect(&watcher, &QDBusServiceWatcher::serviceRegistered, this, [this] { ask(); });
    connect(&watcher, &QDBusServiceWatcher::serviceUnregistered, this,
        [this] { descriptions.clear(); });
    sessionBus.whenThere([this](const QDBusConnection& bus) { setUp(bus); });
    sessionBus.whenGone([this] { descriptions.clear(); });
}

std::optional<std::string> KdeLayout::description() const
{
    const auto index = static_cast<qsizetype>(present);
    return index < descriptions.size() ? std::optional(validUtf8(descriptions[index].toStdString()))
                                       : std::nullopt;
}

void KdeLayout::setUp(QDBusConnection bus)
{
    watcher.setConnection(bus);
    bus.connect(kService, kPath, kInterface, QStringLiteral("layoutChanged"), this,
        SLOT(layoutChanged(unsigned int)));
    bus.connect(kService, kPath, kInterface, QStringLiteral("layoutListChanged"), this,
        SLOT(layoutListChanged()));
    ask();
}

void KdeLayout::ask()
{
    callLater(sessionBus.connection(), call("getLayoutsList"), this,
        [this](const QDBusMessage& reply) { descriptions = layoutDescriptionsIn(reply); });
    callLater(sessionBus.connection(), call("getLayout"), this, [this](const QDBusMessage& reply) {
        if (reply.type() == QDBusMessage::ReplyMessage) {
            present = reply.arguments().value(0).toUInt();
        }
    });
}

QDBusMessage KdeLayout::call(const char* member) const
{
    return QDBusMessage::createMethodCall(kService, kPath, kInterface, QString::fromLatin1(member));
}

} // namespace quillbrook
