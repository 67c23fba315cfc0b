#include "platform/linux/gnome/MutterIdle.h"

#include "platform/MainLoop.h"
#include "platform/linux/bus/Bus.h"
#include "platform/linux/bus/Calls.h"

#include <QDBusMessage>

#include <utility>

namespace quillbrook {

namespace {

const auto kService = QStringLiteral("org.gnome.Mutter.IdleMonitor");
const auto kPath = QStringLiteral("/org/gnome/Mutter/IdleMonitor/Core");

constexpr IdleTime::Seat kSeat = 0; // those of a compositor's protocols begin at 1
constexpr double kAskingSec = 30;
constexpr qulonglong kNoticeMs = static_cast<qulonglong>(kIdleNoticeSec * 1000);

} // namespace

MutterIdle::MutterIdle(Bus& bus, MainLoop& mainLoop, IdleTime& idle)
    : sessionBus(bus)
    , idle(idle)
    , mutter(kService, [this] { ownerChanged(); })
{
    bus.whenThere([this](QDBusConnection connection) {
        connection.connect(QString(), kPath, kService, QStringLiteral("WatchFired"), this,
            SLOT(watchFired(uint, QDBusMessage)));
    });
    mutter.follow(bus);
    mainLoop.repeatEvery(kAskingSec, lifetime.whileAlive([this] { askWhetherResting(); }));
}

void MutterIdle::ownerChanged()
{
    idle.gone(kSeat);
    idleWatch = activeWatch = 0;
    rest = Rest::none;
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

void MutterIdle::askWhetherResting()
{
    if (idleWatch == 0 || rest != Rest::none) {
        return;
    }
    const auto call = QDBusMessage::createMethodCall(
        mutter.owner(), kPath, kService, QStringLiteral("GetIdletime"));
    callLater(sessionBus.connection(), call, this,
        [this, owner = mutter.owner()](const QDBusMessage& reply) {
            const qulonglong restMs = reply.arguments().value(0).toULongLong();
            if (reply.type() == QDBusMessage::ReplyMessage && owner == mutter.owner()
                && rest == Rest::none && restMs >= kNoticeMs) {
                restFound(restMs);
            }
        });
}

void MutterIdle::restFound(qulonglong restMs)
{
    constexpr double kMillisecond = 0.001;
    rest = Rest::asked;
    idle.rested(kSeat, static_cast<double>(restMs) * kMillisecond);
    addWatch("AddUserActiveWatch", {}, activeWatch);
}

void MutterIdle::watchFired(uint watch, const QDBusMessage& signal)
{
    if (signal.service() != mutter.owner() || watch == 0) {
        return;
    }
    if (watch == idleWatch) {
        const Rest before = std::exchange(rest, Rest::told);
        if (before == Rest::asked) {
            return; // the same rest, which may be told by now
        }
        if (before == Rest::told) {
            idle.resumed(kSeat); // between the last notice and our next watch
        }
        idle.idled(kSeat);
        addWatch("AddUserActiveWatch", {}, activeWatch);
    } else if (watch == activeWatch) {
        rest = Rest::none;
        idle.resumed(kSeat);
    }
}

} // namespace quillbrook
