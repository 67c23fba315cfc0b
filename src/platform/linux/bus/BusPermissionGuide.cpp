#include "platform/linux/bus/BusPermissionGuide.h"

#include "platform/linux/bus/Bus.h"
#include "platform/linux/words/Notice.h"
#include "platform/linux/words/OutsideName.h"
#include "platform/qt/QtText.h"

#include <QDBusPendingCallWatcher>
#include <QUrl>

#include <utility>

namespace quillbrook {

namespace {

const auto kCounterUnit = QStringLiteral("quillbrook-keycounter.service");

// Until somebody has typed an administrator's password.
constexpr int kPatienceMs = 600'000;

QDBusMessage callOfSystemd(const char* method, const QVariantList& arguments)
{
    auto call = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.systemd1"),
        QStringLiteral("/org/freedesktop/systemd1"),
        QStringLiteral("org.freedesktop.systemd1.Manager"), QLatin1String(method));
    call.setInteractiveAuthorizationAllowed(true);
    call.setArguments(arguments);
    return call;
}

} // namespace

BusPermissionGuide::BusPermissionGuide(
    const Bus& sessionBus, const Bus& systemBus, std::string program)
    : sessionBus(sessionBus)
    , systemBus(systemBus)
    , program(std::move(program))
{
}

void BusPermissionGuide::openSettings()
{
    constexpr bool kForThisRunOnly = false;
    constexpr bool kReplacesOthers = false;
    const auto enable = callOfSystemd(
        "EnableUnitFiles", {QStringList{kCounterUnit}, kForThisRunOnly, kReplacesOthers});
    send(systemBus, enable, [this] {
        send(systemBus, callOfSystemd("StartUnit", {kCounterUnit, QStringLiteral("replace")}),
            [] {});
    });
}

void BusPermissionGuide::revealProgram()
{
    const QString place = QUrl::fromLocalFile(toQString(program)).toString(QUrl::FullyEncoded);
    const QString noStartupId;
    auto call = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.FileManager1"),
        QStringLiteral("/org/freedesktop/FileManager1"),
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("ShowItems"));
    call.setArguments({QStringList{place}, noStartupId});
    send(sessionBus, call, [] {});
}

void BusPermissionGuide::send(
    const Bus& bus, const QDBusMessage& call, const std::function<void()>& succeeded)
{
    if (!bus.isThere()) {
        notice("没有总线，无法调用 " + call.service().toStdString());
        return;
    }
    auto* watcher
        = new QDBusPendingCallWatcher(bus.connection().asyncCall(call, kPatienceMs), this);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, this,
        [succeeded](QDBusPendingCallWatcher* finished) {
            finished->deleteLater();
            const QDBusMessage reply = finished->reply();
            if (reply.type() == QDBusMessage::ErrorMessage) {
                notice(outsideName(reply.errorMessage().toStdString()));
            } else {
                succeeded();
            }
        });
}

} // namespace quillbrook
