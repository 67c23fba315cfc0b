#include "platform/linux/wayland/WlrToplevels.h"

#include <algorithm>
#include <cstring>

namespace quillbrook {

namespace {

Toplevels::Window windowOf(const zwlr_foreign_toplevel_handle_v1* handle)
{
    return reinterpret_cast<Toplevels::Window>(handle);
}

/// Whether the numbers in `states` have the one for the window with the keys.
bool hasActivated(const wl_array& states)
{
    const auto* bytes = static_cast<const char*>(states.data);
    for (std::size_t at = 0; at + sizeof(std::uint32_t) <= states.size;
         at += sizeof(std::uint32_t)) {
        std::uint32_t state = 0;
        std::memcpy(&state, bytes + at, sizeof state);
        if (state == ZWLR_FOREIGN_TOPLEVEL_HANDLE_V1_STATE_ACTIVATED) {
            return true;
        }
    }
    return false;
}

} // namespace

const zwlr_foreign_toplevel_manager_v1_listener& WlrToplevels::managerListener()
{
    static constexpr zwlr_foreign_toplevel_manager_v1_listener kListener{
        .toplevel = [](void* data, Manager*,
                        Handle* handle) { static_cast<WlrToplevels*>(data)->open(handle); },
        .finished = [](void* data, Manager*) { static_cast<WlrToplevels*>(data)->lost(); }};
    return kListener;
}

const zwlr_foreign_toplevel_handle_v1_listener& WlrToplevels::handleListener()
{
    static constexpr zwlr_foreign_toplevel_handle_v1_listener kListener{
        .title = [](void*, Handle*, const char*) {},
        .app_id =
            [](void* data, Handle* handle, const char* id) {
                static_cast<WlrToplevels*>(data)->toplevels.setAppId(windowOf(handle), id);
            },
        .output_enter = [](void*, Handle*, wl_output*) {},
        .output_leave = [](void*, Handle*, wl_output*) {},
        .state =
            [](void* data, Handle* handle, wl_array* states) {
                static_cast<WlrToplevels*>(data)->toplevels.setActivated(
                    windowOf(handle), hasActivated(*states));
            },
        .done
        = [](void* data, Handle* handle) { static_cast<WlrToplevels*>(data)->commit(handle); },
        .closed
        = [](void* data, Handle* handle) { static_cast<WlrToplevels*>(data)->close(handle); }};
    return kListener;
}

void WlrToplevels::offered(wl_registry& registry, const WaylandGlobal& global)
{
    if (manager || global.interface != zwlr_foreign_toplevel_manager_v1_interface.name) {
        return;
    }
    managerName = global.name;
    manager.reset(static_cast<Manager*>(
        wl_registry_bind(&registry, global.name, &zwlr_foreign_toplevel_manager_v1_interface, 1)));
    zwlr_foreign_toplevel_manager_v1_add_listener(manager.get(), &managerListener(), this);
}

void WlrToplevels::withdrawn(std::uint32_t name)
{
    if (manager && name == managerName) {
        lost();
    }
}

void WlrToplevels::lost()
{
    handles.clear();
    manager.reset();
    toplevels.clear();
    changed();
}

std::optional<FrontWindow> WlrToplevels::front() const
{
    const std::string* appId = toplevels.activeAppId();
    if (appId == nullptr) {
        return std::nullopt;
    }
    // It names the desktop entry, or is like the class of an X11 window.
    return FrontWindow{.traits = {.className = *appId, .applicationId = *appId}};
}

void WlrToplevels::open(Handle* handle)
{
    handles[handle].reset(handle);
    zwlr_foreign_toplevel_handle_v1_add_listener(handle, &handleListener(), this);
}

void WlrToplevels::commit(Handle* handle)
{
    if (toplevels.commit(windowOf(handle))) {
        changed();
    }
}

void WlrToplevels::close(Handle* handle)
{
    if (toplevels.close(windowOf(handle))) {
        changed();
    }
    handles.erase(handle);
}

} // namespace quillbrook
