#include "platform/linux/x11/X11Connection.h"

#include "platform/linux/words/Notice.h"
#include "platform/linux/x11/WindowWatch.h"
#include "platform/linux/x11/XcbReply.h"

#include <QSocketNotifier>

#include <cstring>

namespace quillbrook {

namespace {

/// No name of a display: the connection fails without anybody being asked.
constexpr const char* kNoDisplay = "-";

} // namespace

X11Connection::X11Connection(OpensX11 opens)
{
    int screenNumber = 0;
    connection = xcb_connect(opens == OpensX11::yes ? nullptr : kNoDisplay, &screenNumber);
    if (xcb_connection_has_error(connection) != 0) {
        return;
    }
    usable = true;
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (; screenNumber > 0 && screens.rem > 1; --screenNumber) {
        xcb_screen_next(&screens);
    }
    rootWindow = screens.data->root;
    notifier = std::make_unique<QSocketNotifier>(
        xcb_get_file_descriptor(connection), QSocketNotifier::Read);
    QObject::connect(
        notifier.get(), &QSocketNotifier::activated, notifier.get(), [this] { drain(); });
}

X11Connection::~X11Connection()
{
    notifier.reset();
    xcb_disconnect(connection);
}

xcb_atom_t X11Connection::atom(const char* name)
{
    if (!usable) {
        return XCB_ATOM_NONE;
    }
    const auto cookie
        = xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(std::strlen(name)), name);
    const XcbReply<xcb_intern_atom_reply_t> reply(
        xcb_intern_atom_reply(connection, cookie, nullptr));
    drain();
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

std::uint8_t X11Connection::majorOpcode(xcb_extension_t& extension) const
{
    if (!usable) {
        return 0;
    }
    const auto* data = xcb_get_extension_data(connection, &extension);
    return data != nullptr && data->present != 0 ? data->major_opcode : std::uint8_t{0};
}

std::uint8_t X11Connection::firstEvent(xcb_extension_t& extension) const
{
    if (majorOpcode(extension) == 0) {
        return 0;
    }
    return xcb_get_extension_data(connection, &extension)->first_event;
}

void X11Connection::drain()
{
    // A handler that waits for a reply comes back here: the outer round goes on with what came.
    if (isDraining || !usable) {
        return;
    }
    isDraining = true;
    while (const XcbKeyReply<xcb_generic_event_t> event{xcb_poll_for_event(connection)}) {
        if (event->response_type != 0) {
            for (const EventHandler& handler : handlers) {
                handler(*event);
            }
        }
    }
    isDraining = false;
    if (xcb_connection_has_error(connection) != 0) {
        lose();
    }
}

void X11Connection::selectEvents(xcb_window_t window)
{
    if (window == XCB_WINDOW_NONE || !usable) {
        return;
    }
    std::uint32_t events = XCB_EVENT_MASK_NO_EVENT;
    for (const WindowWatch* watch : watches) {
        if (watch->window() == window) {
            events |= watch->events();
        }
    }
    // A window that is gone gives an error, which nobody waits for.
    xcb_change_window_attributes(connection, window, XCB_CW_EVENT_MASK, &events);
    xcb_flush(connection);
}

void X11Connection::lose()
{
    usable = false;
    notifier->setEnabled(false);
    notice("与 X 服务器的连接已断开");
}

} // namespace quillbrook
