#include "platform/linux/shells/Sway.h"

#include "platform/MainLoop.h"
#include "platform/linux/session/WaitlessSocket.h"
#include "platform/linux/shells/SwayJson.h"

#include <QSocketNotifier>

#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <utility>

namespace quillbrook {

namespace {

constexpr double kRetrySec = 30;

} // namespace

Sway::Sway(MainLoop& mainLoop, std::string socketPath, std::function<void()> changed)
    : mainLoop(mainLoop)
    , socketPath(std::move(socketPath))
    , changed(std::move(changed))
{
    if (!this->socketPath.empty()) {
        connect();
    }
}

Sway::~Sway()
{
    readable.reset();
    if (socket >= 0) {
        close(socket);
    }
}

std::string Sway::socketOfSession()
{
    const char* path = std::getenv("SWAYSOCK");
    return path != nullptr ? path : "";
}

bool Sway::focusOwnWindow()
{
    if (!isThere()) {
        return false;
    }
    send(SwayMessageType::runCommand, "[pid=" + std::to_string(getpid()) + "] focus");
    return isThere();
}

void Sway::connect()
{
    socket = connectWithoutWaiting(socketPath);
    if (socket < 0) {
        retryLater();
        return;
    }
    readable = std::make_unique<QSocketNotifier>(socket, QSocketNotifier::Read);
    QObject::connect(
        readable.get(), &QSocketNotifier::activated, readable.get(), [this] { read(); });
    send(SwayMessageType::subscribe, R"(["window","input"])");
    send(SwayMessageType::getTree, {});
    send(SwayMessageType::getInputs, {});
}

void Sway::retryLater()
{
    mainLoop.runAfter(kRetrySec, lifetime.whileAlive([this] { connect(); }));
}

/// The few short requests always find room, or nobody takes them out at the other end.
void Sway::send(SwayMessageType type, std::string_view payload)
{
    const std::string bytes = swayMessage(type, payload);
    const auto sent = ::send(socket, bytes.data(), bytes.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
    if (sent != static_cast<ssize_t>(bytes.size()) && isThere()) {
        lose();
    }
}

void Sway::read()
{
    std::array<char, 65536> bytes; // NOLINT(cppcoreguidelines-pro-type-member-init): is filled
    const auto count = recv(socket, bytes.data(), bytes.size(), MSG_DONTWAIT);
    if (count < 0 && (errno == EAGAIN || errno == EINTR)) {
        return;
    }
    reader.append({bytes.data(), static_cast<std::size_t>(std::max<ssize_t>(count, 0))});
    while (const auto message = reader.next()) {
        handle(*message);
    }
    if (count <= 0 || reader.isBroken()) {
        lose();
    }
}

void Sway::handle(const SwayMessage& message)
{
    if (message.is(SwayMessageType::inputEvent) || message.is(SwayMessageType::getInputs)) {
        auto layout = message.is(SwayMessageType::inputEvent) ? layoutOfEvent(message.payload)
                                                              : layoutOfInputs(message.payload);
        if (layout) {
            lastLayout = std::move(layout);
        }
    } else if (message.is(SwayMessageType::windowEvent) || message.is(SwayMessageType::getTree)) {
        auto window = message.is(SwayMessageType::windowEvent)
            ? focusedWindowOfEvent(message.payload)
            : focusedWindowOfTree(message.payload);
        if (window) {
            lastWindow = std::move(window);
            changed();
        }
    }
}

void Sway::lose()
{
    // It may be the one that is calling: it is left to the event loop.
    readable->setEnabled(false);
    readable.release()->deleteLater();
    close(std::exchange(socket, -1));
    reader = {};
    lastWindow.reset();
    lastLayout.reset();
    changed();
    retryLater();
}

std::optional<FrontWindow> SwayFront::front() const
{
    auto front = source.front();
    const auto& known = sway.window();
    // Two sockets tell of one change, one after the other.
    const bool isSame = front && known && front->traits.className == known->traits.className;
    return isSame ? known : front;
}

} // namespace quillbrook
