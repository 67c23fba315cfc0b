#include "platform/linux/x11/WindowReader.h"

#include "base/Text.h"
#include "platform/linux/proc/Processes.h"
#include "platform/linux/x11/WindowProperties.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/XcbReply.h"

#include <xcb/res.h>

#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <vector>

namespace quillbrook {

namespace {

constexpr std::uint32_t kMaxPropertyWords = 4096; // 16 KiB

std::string nameOfThisMachine()
{
    std::array<char, 256> name{};
    gethostname(name.data(), name.size() - 1);
    return name.data();
}

bool knowsProcesses(X11Connection& x11)
{
    if (!x11.has(xcb_res_id)) {
        return false;
    }
    const XcbReply<xcb_res_query_version_reply_t> reply(
        xcb_res_query_version_reply(x11.get(), xcb_res_query_version(x11.get(), 1, 2), nullptr));
    x11.drain();
    return reply && (reply->server_major > 1 || reply->server_minor >= 2);
}

/// The process at the other end of the server's socket; 0 when the server can't tell.
std::uint32_t processIn(const xcb_res_query_client_ids_reply_t& reply)
{
    for (auto ids = xcb_res_query_client_ids_ids_iterator(&reply); ids.rem > 0;
         xcb_res_client_id_value_next(&ids)) {
        if ((ids.data->spec.mask & XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID) != 0
            && xcb_res_client_id_value_value_length(ids.data) > 0) {
            return *xcb_res_client_id_value_value(ids.data);
        }
    }
    return 0;
}

/// The last part of the path of the program that shows a window: that of the process `client`, if
/// it is the one that the window claims. In between may be another, as the end of a tunnel.
std::string executableOfClient(std::uint32_t client, std::uint32_t claimed)
{
    const auto process = static_cast<pid_t>(client);
    if (client == 0 || !knowsItselfAs(process, static_cast<pid_t>(claimed))) {
        return {};
    }
    const std::string path = executableOf(process);
    return validUtf8(path.substr(path.rfind('/') + 1));
}

} // namespace

WindowReader::WindowReader(X11Connection& x11)
    : x11(x11)
    , atoms{XCB_ATOM_WM_CLASS, x11.atom("_GTK_APPLICATION_ID"),
          x11.atom("_KDE_NET_WM_DESKTOP_FILE"), x11.atom("_NET_WM_PID"), XCB_ATOM_WM_CLIENT_MACHINE,
          x11.atom("_NET_WM_WINDOW_TYPE"), XCB_ATOM_WM_TRANSIENT_FOR}
    , desktopTypeAtom(x11.atom("_NET_WM_WINDOW_TYPE_DESKTOP"))
    , knowsClients(knowsProcesses(x11))
    , hostName(nameOfThisMachine())
{
}

bool WindowReader::reads(xcb_atom_t property) const
{
    return std::ranges::find(atoms, property) != atoms.end();
}

std::optional<SeenWindow> WindowReader::read(xcb_window_t window) const
{
    xcb_connection_t* connection = x11.get();
    std::array<xcb_get_property_cookie_t, std::tuple_size_v<decltype(atoms)>> cookies{};
    for (std::size_t i = 0; i < atoms.size(); ++i) {
        cookies[i] = xcb_get_property(
            connection, 0, window, atoms[i], XCB_GET_PROPERTY_TYPE_ANY, 0, kMaxPropertyWords);
    }
    const xcb_res_client_id_spec_t client{window, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
    const auto clientCookie = knowsClients ? xcb_res_query_client_ids(connection, 1, &client)
                                           : xcb_res_query_client_ids_cookie_t{};

    std::array<XcbReply<xcb_get_property_reply_t>, std::tuple_size_v<decltype(atoms)>> replies;
    bool isAlive = true;
    for (std::size_t i = 0; i < atoms.size(); ++i) {
        replies[i].reset(xcb_get_property_reply(connection, cookies[i], nullptr));
        isAlive = isAlive && replies[i];
    }
    const XcbReply<xcb_res_query_client_ids_reply_t> clientReply(
        knowsClients ? xcb_res_query_client_ids_reply(connection, clientCookie, nullptr) : nullptr);
    if (!isAlive) {
        return std::nullopt;
    }

    SeenWindow seen;
    readWmClass(bytesOf(*replies[wmClass]), seen.traits);
    seen.traits.applicationId = propertyText(bytesOf(*replies[gtkApplicationId]));
    seen.traits.kdeDesktopFile = propertyText(bytesOf(*replies[kdeDesktopFile]));
    const auto pids = numbersOf(*replies[pid]);
    if (clientReply && !pids.empty()
        && isThisMachine(propertyText(bytesOf(*replies[machine])), hostName)) {
        seen.traits.executable = executableOfClient(processIn(*clientReply), pids.front());
    }
    const auto types = numbersOf(*replies[windowType]);
    seen.isDesktop = std::ranges::find(types, desktopTypeAtom) != types.end();
    const auto served = numbersOf(*replies[transient]);
    seen.transientFor = served.empty() ? xcb_window_t{XCB_WINDOW_NONE} : served.front();
    return seen;
}

} // namespace quillbrook
