#include "platform/linux/FrontApplication.h"

#include "base/Text.h"
#include "platform/MainLoop.h"
#include "platform/linux/DesktopEntries.h"
#include "platform/linux/KnownApplications.h"
#include "platform/linux/Notice.h"
#include "platform/linux/Processes.h"
#include "platform/linux/X11Connection.h"
#include "platform/linux/XcbReply.h"

#include <array>
#include <string_view>

namespace quillbrook {

namespace {

constexpr double kHoldSec = 0.5;
constexpr std::uint32_t kMaxPropertyWords = 4096; // 16 KiB

/// The bytes of a property, empty when the window has none such.
std::string_view bytesOf(const xcb_get_property_reply_t& reply)
{
    const auto size = static_cast<std::size_t>(xcb_get_property_value_length(&reply));
    return {static_cast<const char*>(xcb_get_property_value(&reply)), size};
}

std::optional<std::uint32_t> numberOf(const xcb_get_property_reply_t& reply)
{
    if (reply.format != 32 || reply.value_len < 1) {
        return std::nullopt;
    }
    return *static_cast<const std::uint32_t*>(xcb_get_property_value(&reply));
}

/// The first of `texts` that isn't empty.
std::string firstText(std::initializer_list<std::string_view> texts)
{
    for (const std::string_view text : texts) {
        if (!text.empty()) {
            return std::string(text);
        }
    }
    return {};
}

} // namespace

RunningApplication applicationOf(const WindowTraits& traits, DesktopEntries& entries)
{
    const DesktopEntry* entry = entries.find(traits);
    const std::string entryId = entry != nullptr ? entry->id : std::string();
    // A window without any trait is somebody's window all the same, and its user is at work.
    return {.localizedName = firstText({entry != nullptr ? entry->name : std::string(),
                traits.className, traits.instance, traits.executable, "未知应用"}),
        .bundleIdentifier = firstText({knownBundleIdentifier(entryId),
            knownBundleIdentifier(traits.className), knownBundleIdentifier(traits.executable),
            entryId, traits.className, traits.instance, traits.executable, "unknown"})};
}

FrontApplication::FrontApplication(X11Connection& x11, DesktopEntries& entries, MainLoop& mainLoop)
    : x11(x11)
    , entries(entries)
    , mainLoop(mainLoop)
    , activeWindowAtom(x11.atom("_NET_ACTIVE_WINDOW"))
    , gtkApplicationIdAtom(x11.atom("_GTK_APPLICATION_ID"))
    , kdeDesktopFileAtom(x11.atom("_KDE_NET_WM_DESKTOP_FILE"))
    , pidAtom(x11.atom("_NET_WM_PID"))
{
    if (!x11.isUsable()) {
        return;
    }
    x11.addHandler([this](const xcb_generic_event_t& event) { handle(event); });
    const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(x11.get(), x11.root(), XCB_CW_EVENT_MASK, &mask);

    if (!hasWindowManager()) {
        notice("没有窗口管理器，前台应用暂记为桌面");
    }
    update();
    x11.drain();
}

void FrontApplication::handle(const xcb_generic_event_t& event)
{
    const int type = event.response_type & 0x7f;
    if (type == XCB_PROPERTY_NOTIFY) {
        const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(event);
        if (change.window == x11.root() && change.atom == activeWindowAtom) {
            update();
        }
    } else if (type == XCB_DESTROY_NOTIFY) {
        const auto& end = reinterpret_cast<const xcb_destroy_notify_event_t&>(event);
        if (end.window == watched) {
            watched = 0;
            update();
        }
    }
}

void FrontApplication::update()
{
    ++changes;
    const xcb_window_t window = windowNamedBy(x11.root(), activeWindowAtom).value_or(0);
    const auto traits = window != 0 ? traitsOf(window) : std::nullopt;
    if (!traits) {
        hold();
        return;
    }
    application = applicationOf(*traits, entries);
}

void FrontApplication::hold()
{
    if (!x11.isUsable()) {
        return;
    }
    mainLoop.runAfter(kHoldSec, lifetime.whileAlive([this, changesThen = changes] {
        if (changes == changesThen) {
            application = RunningApplication{
                .localizedName = "桌面", .bundleIdentifier = "com.apple.finder"};
        }
    }));
}

std::optional<xcb_window_t> FrontApplication::windowNamedBy(
    xcb_window_t window, xcb_atom_t property)
{
    const auto cookie = xcb_get_property(x11.get(), 0, window, property, XCB_ATOM_WINDOW, 0, 1);
    const XcbReply<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(x11.get(), cookie, nullptr));
    return reply ? numberOf(*reply) : std::nullopt;
}

bool FrontApplication::hasWindowManager()
{
    // It names a window of its own, which names itself; what a dead one left names nothing.
    const xcb_atom_t check = x11.atom("_NET_SUPPORTING_WM_CHECK");
    const auto window = windowNamedBy(x11.root(), check);
    return window && windowNamedBy(*window, check) == window;
}

std::optional<WindowTraits> FrontApplication::traitsOf(xcb_window_t window)
{
    // The window may be gone, and even stay the active one for some window managers: then the
    // first request fails, and there is no such application.
    xcb_connection_t* connection = x11.get();
    const std::uint32_t mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    const auto watchCookie
        = xcb_change_window_attributes_checked(connection, window, XCB_CW_EVENT_MASK, &mask);
    const std::array atoms
        = {xcb_atom_t{XCB_ATOM_WM_CLASS}, gtkApplicationIdAtom, kdeDesktopFileAtom, pidAtom};
    std::array<xcb_get_property_cookie_t, atoms.size()> cookies{};
    for (std::size_t i = 0; i < atoms.size(); ++i) {
        cookies[i] = xcb_get_property(
            connection, 0, window, atoms[i], XCB_GET_PROPERTY_TYPE_ANY, 0, kMaxPropertyWords);
    }
    const XcbReply<xcb_generic_error_t> failure(xcb_request_check(connection, watchCookie));
    std::array<XcbReply<xcb_get_property_reply_t>, atoms.size()> replies;
    bool isAlive = !failure;
    for (std::size_t i = 0; i < atoms.size(); ++i) {
        replies[i].reset(xcb_get_property_reply(connection, cookies[i], nullptr));
        isAlive = isAlive && replies[i];
    }
    if (!isAlive) {
        return std::nullopt;
    }
    watch(window);

    WindowTraits traits;
    readWmClass(bytesOf(*replies[0]), traits);
    traits.gtkApplicationId = propertyText(bytesOf(*replies[1]));
    traits.kdeDesktopFile = propertyText(bytesOf(*replies[2]));
    if (const auto pid = numberOf(*replies[3])) {
        const std::string path = executableOf(static_cast<pid_t>(*pid));
        traits.executable = validUtf8(path.substr(path.rfind('/') + 1));
    }
    return traits;
}

void FrontApplication::watch(xcb_window_t window)
{
    if (watched != 0 && watched != window) {
        const std::uint32_t nothing = XCB_EVENT_MASK_NO_EVENT;
        xcb_change_window_attributes(x11.get(), watched, XCB_CW_EVENT_MASK, &nothing);
        xcb_flush(x11.get());
    }
    watched = window;
}

} // namespace quillbrook
