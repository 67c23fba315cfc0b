#pragma once

#include "platform/linux/session/FrontSource.h"
#include "platform/linux/session/Toplevels.h"
#include "platform/linux/wayland/WaylandConnection.h"

#include <functional>
#include <map>

namespace quillbrook {

/// The window in front by `zwlr_foreign_toplevel_manager_v1`, which tells the application's id, or
/// the class of a program of X11, and no process. Main thread only.
class WlrToplevels final : public WaylandUser, public FrontSource {
public:
    /// `changed` runs after each change.
    explicit WlrToplevels(std::function<void()> changed) : changed(std::move(changed)) {}

    void offered(wl_registry& registry, const WaylandGlobal& global) override;
    void withdrawn(std::uint32_t name) override;
    void lost() override;

    bool isThere() const override { return manager != nullptr; }
    std::optional<FrontWindow> front() const override;

private:
    using Manager = zwlr_foreign_toplevel_manager_v1;
    using Handle = zwlr_foreign_toplevel_handle_v1;

    static const zwlr_foreign_toplevel_manager_v1_listener& managerListener();
    static const zwlr_foreign_toplevel_handle_v1_listener& handleListener();

    void open(Handle* handle);
    void commit(Handle* handle);
    void close(Handle* handle);

    std::function<void()> changed;
    Toplevels toplevels{};
    std::uint32_t managerName = 0;
    WaylandProxy<Manager> manager{};
    std::map<Handle*, WaylandProxy<Handle>> handles{};
};

} // namespace quillbrook
