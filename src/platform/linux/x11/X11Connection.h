#pragma once

#include <xcb/xcb.h>

#include <functional>
#include <memory>
#include <vector>

class QSocketNotifier;

namespace quillbrook {

class WindowWatch;

/// Whether a connection is opened at all. Where X programs are guests of another display, opening
/// one would start a server that nobody needs.
enum class OpensX11 : bool { no, yes };

/// The recorder's own connection to the X server of $DISPLAY. Qt keeps one of its own, whose event
/// masks stay untouched.
///
/// Which events of a window come is said with a `WindowWatch`.
///
/// When there is no server, or it goes away, the connection is unusable; all that asks it then
/// answers as if nothing were known. Its going away is one notice. Main thread only.
class X11Connection {
public:
    using EventHandler = std::function<void(const xcb_generic_event_t&)>;

    explicit X11Connection(OpensX11 opens = OpensX11::yes);
    ~X11Connection();

    X11Connection(const X11Connection&) = delete;
    X11Connection& operator=(const X11Connection&) = delete;

    bool isUsable() const { return usable; }

    /// The connection for requests; never null, and in an error state when unusable.
    xcb_connection_t* get() const { return connection; }

    /// The root window of the screen; 0 when unusable.
    xcb_window_t root() const { return rootWindow; }

    /// The atom of `name`; 0 when unusable. Waits for the server.
    xcb_atom_t atom(const char* name);

    /// The major opcode of an extension; 0 when the server has none such.
    std::uint8_t majorOpcode(xcb_extension_t& extension) const;

    /// The first event number of an extension; 0 when the server has none such.
    std::uint8_t firstEvent(xcb_extension_t& extension) const;

    /// Whether the server has an extension.
    bool has(xcb_extension_t& extension) const { return majorOpcode(extension) != 0; }

    /// Calls `handler` with each event that comes, errors left out. It may send requests and wait
    /// for replies.
    void addHandler(EventHandler handler) { handlers.push_back(std::move(handler)); }

    /// Hands out all events that are there. To be called after each wait for a reply outside a
    /// handler: events that came with it wake nobody.
    void drain();

private:
    friend class WindowWatch;

    void add(WindowWatch& watch) { watches.push_back(&watch); }
    void remove(const WindowWatch& watch) { std::erase(watches, &watch); }
    void selectEvents(xcb_window_t window);
    void lose();

    xcb_connection_t* connection = nullptr;
    xcb_window_t rootWindow = 0;
    bool usable = false;
    bool isDraining = false;
    std::vector<EventHandler> handlers{};
    std::vector<const WindowWatch*> watches{};
    std::unique_ptr<QSocketNotifier> notifier;
};

} // namespace quillbrook
