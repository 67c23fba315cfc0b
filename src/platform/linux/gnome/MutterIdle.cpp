#include "platform/linux/gnome/MutterIdle.h"

#include "platform/linux/bus/Bus.h"
#include "platform/linux/bus/Calls.h"

#include <QDBusMessage>

namespace quillbrook {

namespace {

const auto kService = QStringLiteral("org.gnome.Mutter.IdleMonitor");
const auto kPath = QStringLiteral("/org/gnome/Mutter/IdleMonitor/Core");

constexpr IdleTime::Seat kSeat = 0; // those of a compositor's protocols begin at 1
constexpr qulonglong kNoticeMs = static_cast<qulonglong>(kIdleNoticeSec * 1000);

} // namespace

MutterIdle::MutterIdle(Bus& bus, IdleTime& idle)
    : sessionBus(bus)
    , idle(idle)
    , mutter(kService, [this] { ownerChanged(); })
{
    bus.whenThere([this](QDBusConnection connection) {
        connection.connect(QString(), kPath, kService, QStringLiteral("WatchFired"), this,
            SLOT(watchFired(uint, QDBusMessage)));
    });
    mutter.follow(bus);
}

void MutterIdle::ownerChanged()
{
    idle.gone(kSeat);
    idleWatch = activeWatch = 0;
    isResting = false;
    if (!mutter.owner().isEmpty()) {
        addWatch("AddIdleWatch", {kNoticeMs}, idleWatch);
    }
}

void MutterIdle::addWatch(const char* method, const QList<QVariant>& arguments, uint& watch)
{
    auto call = QDBusMessage::createMethodCall(
        mutter.owner(), kPath, kService, QString::fromLatin1(method));
    call.setArguments(arguments);
    callLater(sessionBus.connection(), call, this,
        [this, &watch, owner = mutter.owner()](const QDBusMessage& reply) {
            const uint number = reply.arguments().value(0).toUInt();
            if (reply.type() != QDBusMessage::ReplyMessage || owner != mutter.owner()) {
                return;
            }
            watch = number;
            if (&watch == &idleWatch) {
                idle.asked(kSeat);
            }
        });
}

void MutterIdle::watchFired(uint watch, const QDBusMessage& signal)
{
    if (signal.service() != mutter.owner() || watch == 0) {
        return;
    }
    if (watch == idleWatch) {
        if (isResting) {
            idle.resumed(kSeat); // between the last notice and our next watch
        }
        isResting = true;
        idle.idled(kSeat);
        addWatch("AddUserActiveWatch", {}, activeWatch);
    } else if (watch == activeWatch) {
        isResting = false;
        idle.resumed(kSeat);
    }
}

} // namespace quillbrook
