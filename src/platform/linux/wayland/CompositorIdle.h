#pragma once

#include "platform/linux/session/IdleTime.h"
#include "platform/linux/wayland/WaylandConnection.h"

#include <map>

namespace quillbrook {

/// Lets a compositor tell of the rest and use of its seats: by the input notices of
/// `ext_idle_notifier_v1` version 2, else by its older ones, else by `org_kde_kwin_idle`. Main
/// thread only.
class CompositorIdle final : public WaylandUser {
public:
    /// `idle` learns what the compositor tells.
    explicit CompositorIdle(IdleTime& idle) : idle(idle) {}

    void offered(wl_registry& registry, const WaylandGlobal& global) override;
    void withdrawn(std::uint32_t name) override;
    void lost() override;

private:
    using Notifier = ext_idle_notifier_v1;
    using Notification = ext_idle_notification_v1;
    using KdeIdle = org_kde_kwin_idle;
    using KdeTimeout = org_kde_kwin_idle_timeout;

    /// A person's place at the machine, and the notice that was asked of it.
    struct Seat {
        CompositorIdle* owner = nullptr;
        IdleTime::Seat number = 0;
        WaylandProxy<wl_seat> seat{};
        WaylandProxy<Notification> notification{};
        WaylandProxy<KdeTimeout> timeout{};
    };

    void ask(Seat& seat);
    void askAll();
    void forget(Seat& seat);

    IdleTime& idle;
    std::uint32_t notifierName = 0;
    std::uint32_t kdeIdleName = 0;
    WaylandProxy<Notifier> notifier{};
    WaylandProxy<KdeIdle> kdeIdle{};
    std::map<std::uint32_t, Seat> seats{}; // by the names of their globals
};

} // namespace quillbrook
