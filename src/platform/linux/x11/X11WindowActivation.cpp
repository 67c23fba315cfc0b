#include "platform/linux/x11/X11WindowActivation.h"

#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/XcbReply.h"

#include <QGuiApplication>

#include <algorithm>
#include <array>
#include <charconv>
#include <span>

namespace quillbrook {

namespace {

constexpr std::uint32_t kRequestOfTheUser = 2; // not of a program, which would have to wait
constexpr std::uint32_t kAllWorkspaces = 0xFFFFFFFF;
constexpr xcb_timestamp_t kLongestLaunchMs = 30'000;

/// The connection that made our windows: what is asked over it comes behind their mapping.
xcb_connection_t* windowsConnection()
{
    const auto* application = qobject_cast<QGuiApplication*>(QCoreApplication::instance());
    const auto* x11 = application == nullptr
        ? nullptr
        : application->nativeInterface<QNativeInterface::QX11Application>();
    return x11 == nullptr ? nullptr : x11->connection();
}

struct RootMessage {
    xcb_window_t root = XCB_WINDOW_NONE;
    xcb_window_t window = XCB_WINDOW_NONE;
    xcb_atom_t type = XCB_ATOM_NONE;
    std::array<std::uint32_t, 3> numbers{};
};

void send(xcb_connection_t* connection, const RootMessage& message)
{
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = message.window;
    event.type = message.type;
    std::ranges::copy(message.numbers, event.data.data32);
    xcb_send_event(connection, 0, message.root,
        XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
        reinterpret_cast<const char*>(&event));
}

} // namespace

std::optional<xcb_timestamp_t> startupTime(std::string_view startupId)
{
    constexpr std::string_view kMark = "_TIME";
    const auto mark = startupId.rfind(kMark);
    if (mark == std::string_view::npos) {
        return std::nullopt;
    }
    startupId.remove_prefix(mark + kMark.size());
    xcb_timestamp_t time = 0;
    const char* end = startupId.data() + startupId.size();
    const auto read = std::from_chars(startupId.data(), end, time);
    const bool isTold = read.ec == std::errc() && read.ptr == end && time != XCB_CURRENT_TIME;
    return isTold ? std::optional(time) : std::nullopt;
}

xcb_timestamp_t requestTime(std::string_view startupId, xcb_timestamp_t now)
{
    const auto told = startupTime(startupId);
    // The difference holds across the clock's turn after 49 days.
    return told && now - *told <= kLongestLaunchMs ? *told : now;
}

X11WindowActivation::X11WindowActivation(X11Connection& x11) : x11(x11)
{
    x11.addHandler([this](const xcb_generic_event_t& event) {
        if ((event.response_type & 0x7f) != XCB_PROPERTY_NOTIFY) {
            return;
        }
        const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(event);
        if (clockWindow != XCB_WINDOW_NONE && change.window == clockWindow) {
            lastTime = change.time;
        }
    });
}

bool X11WindowActivation::bring(std::uint64_t window, std::string_view startupId)
{
    xcb_connection_t* connection = windowsConnection();
    if (connection == nullptr || !canBeAsked()) {
        return false;
    }
    const auto number = static_cast<xcb_window_t>(window);
    const xcb_timestamp_t time = requestTime(startupId, serverTime());
    const xcb_window_t timeKeeper = numberOf(number, "_NET_WM_USER_TIME_WINDOW").value_or(number);
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, timeKeeper,
        x11.atom("_NET_WM_USER_TIME"), XCB_ATOM_CARDINAL, 32, 1, &time);

    const auto workspace = numberOf(number, "_NET_WM_DESKTOP");
    const auto present = numberOf(x11.root(), "_NET_CURRENT_DESKTOP");
    if (workspace && present && *workspace != *present && *workspace != kAllWorkspaces) {
        send(connection,
            {.root = x11.root(),
                .window = number,
                .type = x11.atom("_NET_WM_DESKTOP"),
                .numbers = {*present, kRequestOfTheUser}});
    }
    send(connection,
        {.root = x11.root(),
            .window = number,
            .type = x11.atom("_NET_ACTIVE_WINDOW"),
            .numbers = {kRequestOfTheUser, time}});
    xcb_flush(connection);
    return true;
}

/// Whether a window manager is there that takes requests.
bool X11WindowActivation::canBeAsked()
{
    if (!x11.isUsable()) {
        return false;
    }
    constexpr std::uint32_t kMostWords = 1024;
    const auto cookie = xcb_get_property(
        x11.get(), 0, x11.root(), x11.atom("_NET_SUPPORTED"), XCB_ATOM_ATOM, 0, kMostWords);
    const XcbReply<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(x11.get(), cookie, nullptr));
    const xcb_atom_t wanted = x11.atom("_NET_ACTIVE_WINDOW");
    if (!reply || reply->format != 32) {
        return false;
    }
    const std::span atoms(static_cast<const xcb_atom_t*>(xcb_get_property_value(reply.get())),
        static_cast<std::size_t>(xcb_get_property_value_length(reply.get())) / sizeof(xcb_atom_t));
    return std::ranges::find(atoms, wanted) != atoms.end();
}

/// Changes a window of our own: the event of it tells when.
xcb_timestamp_t X11WindowActivation::serverTime()
{
    xcb_connection_t* connection = x11.get();
    if (clockWindow == XCB_WINDOW_NONE) {
        constexpr std::uint32_t kMask = XCB_EVENT_MASK_PROPERTY_CHANGE;
        clockWindow = xcb_generate_id(connection);
        xcb_create_window(connection, XCB_COPY_FROM_PARENT, clockWindow, x11.root(), -1, -1, 1, 1,
            0, XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &kMask);
    }
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, clockWindow, XCB_ATOM_WM_NAME,
        XCB_ATOM_STRING, 8, 0, nullptr);
    // With the answer to any later question the event has come, too.
    const XcbReply<xcb_get_input_focus_reply_t> answer(
        xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
    x11.drain();
    return lastTime;
}

std::optional<std::uint32_t> X11WindowActivation::numberOf(
    xcb_window_t window, const char* property)
{
    const auto cookie = xcb_get_property(
        x11.get(), 0, window, x11.atom(property), XCB_GET_PROPERTY_TYPE_ANY, 0, 1);
    const XcbReply<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(x11.get(), cookie, nullptr));
    x11.drain();
    if (!reply || reply->format != 32 || xcb_get_property_value_length(reply.get()) != 4) {
        return std::nullopt;
    }
    return *static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
}

} // namespace quillbrook
