#include "platform/linux/wayland/WaylandConnection.h"

#include "platform/MainLoop.h"
#include "platform/linux/session/WaitlessSocket.h"
#include "platform/linux/words/Notice.h"

#include <QSocketNotifier>

#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <utility>

namespace quillbrook {

namespace {

constexpr double kRetrySec = 5;

std::string environment(const char* name)
{
    const char* value = std::getenv(name);
    return value != nullptr ? value : "";
}

} // namespace

WaylandConnection::WaylandConnection(MainLoop& mainLoop, std::string socketPath)
    : mainLoop(mainLoop)
    , socketPath(std::move(socketPath))
{
}

WaylandConnection::~WaylandConnection()
{
    readable.reset();
    writable.reset();
    if (isUsable()) {
        end();
    }
}

std::string WaylandConnection::socketOfSession()
{
    const std::string name = environment("WAYLAND_DISPLAY");
    const std::string folder = environment("XDG_RUNTIME_DIR");
    if (name.empty() || name.starts_with('/')) {
        return name;
    }
    return folder.empty() ? std::string() : folder + "/" + name;
}

bool WaylandConnection::isCompositorThere()
{
    const int socket = connectWithoutWaiting(socketOfSession());
    if (socket < 0) {
        return false;
    }
    close(socket);
    return true;
}

bool WaylandConnection::connect()
{
    static constexpr wl_registry_listener kRegistryListener{
        .global = globalAdded, .global_remove = globalRemoved};
    static constexpr wl_callback_listener kListingListener{.done = listingDone};

    const int socket = connectWithoutWaiting(socketPath);
    if (socket < 0) {
        return false;
    }
    display = wl_display_connect_to_fd(socket); // which closes it, too, when that fails
    if (display == nullptr) {
        return false;
    }
    registry.reset(wl_display_get_registry(display));
    wl_registry_add_listener(registry.get(), &kRegistryListener, this);
    listing.reset(wl_display_sync(display));
    wl_callback_add_listener(listing.get(), &kListingListener, this);
    readable = std::make_unique<QSocketNotifier>(socket, QSocketNotifier::Read);
    writable = std::make_unique<QSocketNotifier>(socket, QSocketNotifier::Write);
    QObject::connect(
        readable.get(), &QSocketNotifier::activated, readable.get(), [this] { read(); });
    QObject::connect(
        writable.get(), &QSocketNotifier::activated, writable.get(), [this] { flush(); });
    writable->setEnabled(false);
    flush();
    return true;
}

void WaylandConnection::flush()
{
    if (!isUsable()) {
        return;
    }
    // A compositor that takes nothing more for now is sent the rest when it does. That it is gone
    // is seen when there is nothing to read, with what it said last.
    const bool isFull = wl_display_flush(display) < 0 && errno == EAGAIN;
    writable->setEnabled(isFull);
}

void WaylandConnection::read()
{
    while (wl_display_prepare_read(display) != 0) {
        wl_display_dispatch_pending(display);
    }
    const bool isBroken = wl_display_read_events(display) < 0 && errno != EAGAIN;
    wl_display_dispatch_pending(display);
    if (isBroken || wl_display_get_error(display) != 0) {
        lose();
    } else {
        flush();
    }
}

void WaylandConnection::lose()
{
    for (WaylandUser* user : users) {
        user->lost();
    }
    // The notifier may be the one that is calling: it is left to the event loop.
    for (auto* notifier : {readable.release(), writable.release()}) {
        notifier->setEnabled(false);
        notifier->deleteLater();
    }
    end();
    notice("与 Wayland 合成器的连接已断开，暂不知道前台应用和闲置时间");
    retryLater();
}

void WaylandConnection::end()
{
    listing.reset();
    registry.reset();
    wl_display_disconnect(std::exchange(display, nullptr));
}

void WaylandConnection::retryLater()
{
    mainLoop.runAfter(kRetrySec, lifetime.whileAlive([this] {
        if (connect()) {
            notice("已重新连接 Wayland 合成器");
        } else {
            retryLater();
        }
    }));
}

void WaylandConnection::globalAdded(void* data, wl_registry* registry, std::uint32_t name,
    const char* interface, std::uint32_t version)
{
    const WaylandGlobal global{.name = name, .interface = interface, .version = version};
    for (WaylandUser* user : static_cast<WaylandConnection*>(data)->users) {
        user->offered(*registry, global);
    }
}

void WaylandConnection::globalRemoved(void* data, wl_registry*, std::uint32_t name)
{
    for (WaylandUser* user : static_cast<WaylandConnection*>(data)->users) {
        user->withdrawn(name);
    }
}

void WaylandConnection::listingDone(void* data, wl_callback*, std::uint32_t)
{
    auto* connection = static_cast<WaylandConnection*>(data);
    connection->listing.reset();
    for (WaylandUser* user : connection->users) {
        user->listed();
    }
}

} // namespace quillbrook
