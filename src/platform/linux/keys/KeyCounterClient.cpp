#include "platform/linux/keys/KeyCounterClient.h"

#include "keycounter/keyboards/KeyCounterNames.h"
#include "platform/MainLoop.h"
#include "platform/linux/bus/Bus.h"
#include "platform/linux/bus/Calls.h"
#include "platform/linux/words/Notice.h"
#include "platform/linux/words/OutsideName.h"

#include <QDBusConnection>
#include <QDBusMessage>

#include <unistd.h>

#include <algorithm>
#include <array>
#include <system_error>
#include <utility>

namespace quillbrook {

namespace {

const QString kService = QString::fromLatin1(KeyCounterNames::kService);
const QString kPath = QString::fromLatin1(KeyCounterNames::kPath);
const QString kInterface = QString::fromLatin1(KeyCounterNames::kInterface);

constexpr std::array kRetryDelaysSec = {1, 10, 60};
constexpr double kAskAgainSec = 30;

QDBusMessage serviceCall(const char* method)
{
    return QDBusMessage::createMethodCall(kService, kPath, kInterface, QString::fromLatin1(method));
}

/// Whether a process of that user may speak for the service: those of the system, and our own user,
/// who could deceive nobody but himself. No other person's.
bool mayCountForUs(uint user)
{
    constexpr uint kLastSystemUser = 999;
    constexpr uint kFirstDynamicUser = 61184;
    constexpr uint kLastDynamicUser = 65519;
    return user <= kLastSystemUser || (user >= kFirstDynamicUser && user <= kLastDynamicUser)
        || user == getuid();
}

} // namespace

KeyCounterClient::KeyCounterClient(
    Surroundings surroundings, std::function<void(std::uint32_t)> counted)
    : surroundings(std::move(surroundings))
    , counted(std::move(counted))
{
    watcher.addWatchedService(kService);
    connect(&watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
        [this](const QString&, const QString&, const QString& name) { ownerChanged(name); });
    Bus& bus = this->surroundings.systemBus;
    bus.whenThere([this](const QDBusConnection& connection) { setUp(connection); });
    bus.whenGone([this] { forget(State::missing); });
    bus.whenKnown([this](bool isThere) {
        if (!isThere) {
            forget(State::missing);
        }
    });
}

std::vector<std::filesystem::path> KeyCounterClient::standardInstallations()
{
    const std::string file = std::string(KeyCounterNames::kService) + ".service";
    std::vector<std::filesystem::path> files;
    for (const std::filesystem::path folder : {"/usr/share", "/usr/local/share", "/etc", "/lib"}) {
        files.push_back(folder / "dbus-1/system-services" / file);
    }
    return files;
}

bool KeyCounterClient::isInstalled() const
{
    return std::ranges::any_of(surroundings.installations, [](const auto& file) {
        std::error_code failure;
        return std::filesystem::exists(file, failure);
    });
}

void KeyCounterClient::setWanted(bool isOn)
{
    if (isWanted == isOn) {
        return;
    }
    isWanted = isOn;
    if (isOn) {
        subscribe();
        return;
    }
    if (!owner.isEmpty()) {
        callLater(surroundings.systemBus.connection(), serviceCall(KeyCounterNames::kUnsubscribe),
            this, [](const QDBusMessage&) {});
    }
    forget(State::asking);
}

bool KeyCounterClient::isPossible()
{
    if (state == State::missing && isInstalled()
        && surroundings.now() - lastAskedAt >= kAskAgainSec) {
        subscribe();
    }
    return state == State::telling || (state == State::asking && isInstalled());
}

void KeyCounterClient::setUp(QDBusConnection bus)
{
    // A service's name in this would be looked up by the library, which waits for the answer: the
    // slot compares the sender.
    bus.connect(QString(), kPath, kInterface, QString::fromLatin1(KeyCounterNames::kKeysPressed),
        this, SLOT(keysPressed(uint, QDBusMessage)));
    watcher.setConnection(bus);
    forget(State::asking);
    failures = 0;
    subscribe();
}

void KeyCounterClient::forget(State next)
{
    ++conversation;
    owner.clear();
    state = next;
}

void KeyCounterClient::ownerChanged(const QString& name)
{
    if (!isWanted || name == owner) {
        return;
    }
    forget(State::asking);
    if (name.isEmpty()) {
        failed("the service ended");
    } else {
        subscribe();
    }
}

void KeyCounterClient::subscribe()
{
    if (!isWanted) {
        return;
    }
    lastAskedAt = surroundings.now();
    callLater(
        surroundings.systemBus.connection(), serviceCall(KeyCounterNames::kSubscribe), this,
        [this, asked = ++conversation](const QDBusMessage& reply) {
            if (asked == conversation) {
                answered(reply);
            }
        },
        StartsService::yes);
}

void KeyCounterClient::answered(const QDBusMessage& reply)
{
    if (reply.type() == QDBusMessage::ErrorMessage) {
        failed(reply.errorMessage().toStdString());
        return;
    }
    checkUserOf(reply.service());
}

void KeyCounterClient::checkUserOf(const QString& name)
{
    auto call = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"),
        QStringLiteral("/org/freedesktop/DBus"), QStringLiteral("org.freedesktop.DBus"),
        QStringLiteral("GetConnectionUnixUser"));
    call.setArguments({name});
    callLater(surroundings.systemBus.connection(), call, this,
        [this, name, asked = conversation](const QDBusMessage& reply) {
            if (asked != conversation) {
                return;
            }
            if (reply.type() == QDBusMessage::ErrorMessage) {
                failed(reply.errorMessage().toStdString());
                return;
            }
            if (!mayCountForUs(reply.arguments().value(0).toUInt())) {
                tellOnce(isImpostorTold, "按键计数服务属于另一个用户，不采用它的数字");
                forget(State::missing);
                return;
            }
            owner = name;
            failures = 0;
            state = State::telling;
            isMissingTold = false;
        });
}

void KeyCounterClient::failed(const std::string& reason)
{
    // One failure may be that of a service that starts anew.
    if (failures > 0) {
        state = State::missing;
        tellOnce(isMissingTold, "按键计数服务不可用，暂不统计按键: " + outsideName(reason));
    }
    if (failures == kRetryDelaysSec.size()) {
        return;
    }
    const int delaySec = kRetryDelaysSec.at(failures++);
    surroundings.mainLoop.runAfter(delaySec, lifetime.whileAlive([this, asked = conversation] {
        if (asked == conversation) {
            subscribe();
        }
    }));
}

void KeyCounterClient::keysPressed(uint keys, const QDBusMessage& signal)
{
    if (owner.isEmpty() || signal.service() != owner) {
        if (isWanted && state == State::telling) {
            tellOnce(isImpostorTold, "有程序冒充按键计数服务，不采用它的数字");
        }
        return;
    }
    if (!plausible.areBelieved(keys, surroundings.now())) {
        tellOnce(isAbsurdityTold, "按键计数服务的数字不可信，不采用");
        return;
    }
    counted(keys);
}

void KeyCounterClient::tellOnce(bool& isTold, const std::string& text)
{
    if (!std::exchange(isTold, true)) {
        notice(text);
    }
}

} // namespace quillbrook
