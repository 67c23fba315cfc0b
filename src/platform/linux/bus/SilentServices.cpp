#include "platform/linux/bus/SilentServices.h"

#include "platform/MainLoop.h"
#include "platform/WorkQueues.h"
#include "platform/linux/bus/BusConnecting.h"
#include "platform/linux/bus/BusConversation.h"
#include "platform/linux/bus/IBusAddress.h"
#include "platform/linux/bus/SessionManagerGreeting.h"
#include "platform/linux/words/Notice.h"

#include <QByteArray>

#include <future>
#include <string>
#include <utility>

namespace quillbrook {

namespace {

constexpr double kRetrySec = 5;

constexpr const char* kManagerVariable = "SESSION_MANAGER";
constexpr const char* kReaderVariable = "AT_SPI_BUS_ADDRESS";

/// What the toolkit asks and waits for when it makes an icon in the tray.
constexpr BusCall kTrayCall{.service = "org.kde.StatusNotifierWatcher",
    .path = "/StatusNotifierWatcher",
    .interface = "org.freedesktop.DBus.Introspectable",
    .member = "Introspect"};

/// What it asks when it gets ready for screen readers.
constexpr BusCall kReaderCall{.service = "org.a11y.Bus",
    .path = "/org/a11y/bus",
    .interface = "org.a11y.Bus",
    .member = "GetAddress"};

/// Whom it asks for an input context where IBus stands behind a portal.
constexpr BusCall kInputPortalCall{.service = "org.freedesktop.portal.IBus",
    .path = "/org/freedesktop/IBus",
    .interface = "org.freedesktop.DBus.Introspectable",
    .member = "Introspect"};

/// Who on the session's bus, or the bus itself, keeps those waiting who ask.
struct Silence {
    bool isBus = false;
    bool isTray = false;
    bool isReaderBus = false;
    bool isInputPortal = false;
};

/// Whether the tray kept us waiting at the start.
bool isTraySilent = false;

bool isSilent(const std::string& address)
{
    if (address.empty()) {
        return false;
    }
    const BusConversation conversation(address);
    return !conversation.isAnswered() && !conversation.isRefused();
}

bool isCallUnanswered(const std::string& address, const BusCall& call)
{
    return !BusConversation(address).answerTo(call);
}

bool isReaderBusSilent(const std::string& address)
{
    const auto readerAddress = BusConversation(address).answerTo(kReaderCall);
    return !readerAddress || isSilent(*readerAddress);
}

/// Asks side by side, so that silence costs the time of one and not of all.
Silence silenceOn(const std::string& address)
{
    if (address.empty()) {
        return {};
    }
    const BusConversation bus(address);
    if (!bus.isAnswered()) {
        return {.isBus = !bus.isRefused()};
    }
    auto tray = std::async(std::launch::async, isCallUnanswered, address, kTrayCall);
    auto portal = std::async(std::launch::async, isCallUnanswered, address, kInputPortalCall);
    const bool isReaderBus = isReaderBusSilent(address);
    return {.isTray = tray.get(), .isReaderBus = isReaderBus, .isInputPortal = portal.get()};
}

void hideReaderBus()
{
    qputenv(kReaderVariable, kNoBus);
}

/// Asks again and again, until `body` may run.
void askTrayLater(MainLoop& mainLoop, WorkQueues& workQueues, std::function<void()> body)
{
    mainLoop.runAfter(kRetrySec, [&mainLoop, &workQueues, body = std::move(body)] {
        workQueues.runDefault(
            [&mainLoop, &workQueues, body, address = sessionBusAddress().toStdString()] {
                const bool isSilent = isCallUnanswered(address, kTrayCall);
                mainLoop.post([&mainLoop, &workQueues, body, isSilent] {
                    if (isSilent) {
                        askTrayLater(mainLoop, workQueues, body);
                    } else {
                        body();
                    }
                });
            });
    });
}

} // namespace

void hideSilentServices()
{
    const bool usesIBus
        = qgetenv("QT_IM_MODULE") == "ibus" || qgetenv("QT_IM_MODULES").split(';').contains("ibus");
    auto ibusAnswer = std::async(
        std::launch::async, isSilent, usesIBus ? ibusAddress().toStdString() : std::string());
    auto readerAnswer
        = std::async(std::launch::async, isSilent, qgetenv(kReaderVariable).toStdString());
    auto managerAnswer = std::async(
        std::launch::async, isSessionManagerAnswering, qgetenv(kManagerVariable).toStdString());
    const Silence silence = silenceOn(sessionBusAddress().toStdString());
    const bool isIBusSilent = ibusAnswer.get() || (usesIBus && silence.isInputPortal);
    const bool isManagerSilent = !managerAnswer.get();
    const bool isReaderBusHidden = readerAnswer.get() || silence.isReaderBus;

    hideSessionBus(silence.isBus);
    if (silence.isBus) {
        notice("会话总线没有应答，窗口不使用它");
    }
    isTraySilent = silence.isTray;
    if (isTraySilent) {
        notice("托盘没有应答，暂无托盘图标");
    }
    if (isManagerSilent) {
        notice("会话管理器没有应答，不使用它");
        qunsetenv(kManagerVariable);
    }
    if (isReaderBusHidden) {
        hideReaderBus();
    }
    if (isIBusSilent) {
        notice("IBus 没有应答，窗口不使用它");
        qputenv("QT_IM_MODULE", "compose");
        qunsetenv("QT_IM_MODULES");
    }
}

void whenTrayAnswers(MainLoop& mainLoop, WorkQueues& workQueues, std::function<void()> body)
{
    if (isTraySilent) {
        askTrayLater(mainLoop, workQueues, std::move(body));
    } else {
        body();
    }
}

} // namespace quillbrook
