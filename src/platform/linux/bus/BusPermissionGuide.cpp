#include "platform/linux/bus/BusPermissionGuide.h"

#include "platform/linux/bus/Bus.h"
#include "platform/linux/bus/Calls.h"
#include "platform/linux/words/Notice.h"
#include "platform/linux/words/OutsideName.h"
#include "platform/qt/QtText.h"

#include <QUrl>

#include <utility>

namespace quillbrook {

BusPermissionGuide::BusPermissionGuide(
    const Bus& sessionBus, const Bus& systemBus, std::string counterService, std::string program)
    : sessionBus(sessionBus)
    , systemBus(systemBus)
    , counterService(std::move(counterService))
    , program(std::move(program))
{
}

void BusPermissionGuide::openSettings()
{
    constexpr uint kNoFlags = 0;
    auto call = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"),
        QStringLiteral("/org/freedesktop/DBus"), QStringLiteral("org.freedesktop.DBus"),
        QStringLiteral("StartServiceByName"));
    call.setArguments({toQString(counterService), kNoFlags});
    send(systemBus, call);
}

void BusPermissionGuide::revealProgram()
{
    const QString place = QUrl::fromLocalFile(toQString(program)).toString(QUrl::FullyEncoded);
    const QString noStartupId;
    auto call = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.FileManager1"),
        QStringLiteral("/org/freedesktop/FileManager1"),
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("ShowItems"));
    call.setArguments({QStringList{place}, noStartupId});
    send(sessionBus, call);
}

void BusPermissionGuide::send(const Bus& bus, const QDBusMessage& call)
{
    if (!bus.isThere()) {
        notice("没有总线，无法调用 " + call.service().toStdString());
        return;
    }
    callLater(
        bus.connection(), call, this,
        [](const QDBusMessage& reply) {
            if (reply.type() == QDBusMessage::ErrorMessage) {
                notice(outsideName(reply.errorMessage().toStdString()));
            }
        },
        StartsService::yes);
}

} // namespace quillbrook
