#pragma once

#include "base/Lifetime.h"
#include "platform/linux/wayland/WaylandProxy.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

class QSocketNotifier;

namespace quillbrook {

class MainLoop;

/// Something that the compositor offers, for as long as it does.
struct WaylandGlobal {
    std::uint32_t name = 0; // its number
    std::string interface {
    };
    std::uint32_t version = 0;
};

/// Somebody who uses what a compositor offers.
class WaylandUser {
public:
    virtual ~WaylandUser() = default;

    virtual void offered(wl_registry& registry, const WaylandGlobal& global) = 0;

    virtual void withdrawn(std::uint32_t name) = 0;

    /// The compositor has told of all that it offers.
    virtual void listed() {}

    /// The compositor is gone: every object of its has to be ended now.
    virtual void lost() = 0;
};

/// The recorder's own connection to the compositor of $WAYLAND_DISPLAY, beside the one of its
/// windows.
///
/// Nothing here waits for the compositor: what it tells is read when it comes. When it goes away
/// that is one notice, and one that comes in its place is found again. Main thread only.
class WaylandConnection {
public:
    /// `socketPath` is where the compositor listens.
    WaylandConnection(MainLoop& mainLoop, std::string socketPath);
    ~WaylandConnection();

    WaylandConnection(const WaylandConnection&) = delete;
    WaylandConnection& operator=(const WaylandConnection&) = delete;

    /// Where the compositor of the session listens, by the environment, which may name none; then
    /// empty.
    static std::string socketOfSession();

    /// Whether somebody listens there.
    static bool isCompositorThere();

    /// Connects; false when nobody listens. To be called once all users are there.
    bool connect();

    /// Adds a user, which is there as long as the connection is read, and goes before it ends.
    void add(WaylandUser& user) { users.push_back(&user); }

    bool isUsable() const { return display != nullptr; }

    /// Sends what was requested since. To be called after requests outside of a user's handlers.
    void flush();

private:
    void read();
    void lose();
    void end();
    void retryLater();

    static void globalAdded(void* data, wl_registry* registry, std::uint32_t name,
        const char* interface, std::uint32_t version);
    static void globalRemoved(void* data, wl_registry* registry, std::uint32_t name);
    static void listingDone(void* data, wl_callback* callback, std::uint32_t serial);

    MainLoop& mainLoop;
    std::string socketPath;
    std::vector<WaylandUser*> users{};
    wl_display* display = nullptr;
    WaylandProxy<wl_registry> registry{};
    WaylandProxy<wl_callback> listing{};
    std::unique_ptr<QSocketNotifier> readable{};
    std::unique_ptr<QSocketNotifier> writable{};

    Lifetime lifetime{};
};

} // namespace quillbrook
