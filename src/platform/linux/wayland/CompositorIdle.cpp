#include "platform/linux/wayland/CompositorIdle.h"

#include <algorithm>

namespace quillbrook {

namespace {

constexpr std::uint32_t kNoticeMs = static_cast<std::uint32_t>(kIdleNoticeSec * 1000);

} // namespace

void CompositorIdle::offered(wl_registry& registry, const WaylandGlobal& global)
{
    if (global.interface == wl_seat_interface.name) {
        Seat& seat = seats[global.name];
        seat.owner = this;
        seat.number = global.name;
        seat.seat.reset(
            static_cast<wl_seat*>(wl_registry_bind(&registry, global.name, &wl_seat_interface, 1)));
        ask(seat);
    } else if (global.interface == ext_idle_notifier_v1_interface.name && !notifier) {
        const std::uint32_t version = std::min(global.version, 2U);
        notifierName = global.name;
        notifier.reset(static_cast<Notifier*>(
            wl_registry_bind(&registry, global.name, &ext_idle_notifier_v1_interface, version)));
        askAll();
    } else if (global.interface == org_kde_kwin_idle_interface.name && !kdeIdle) {
        kdeIdleName = global.name;
        kdeIdle.reset(static_cast<KdeIdle*>(
            wl_registry_bind(&registry, global.name, &org_kde_kwin_idle_interface, 1)));
        askAll();
    }
}

void CompositorIdle::withdrawn(std::uint32_t name)
{
    if (const auto seat = seats.find(name); seat != seats.end()) {
        forget(seat->second);
        seats.erase(seat);
    } else if (notifier && name == notifierName) {
        notifier.reset();
        askAll();
    } else if (kdeIdle && name == kdeIdleName) {
        kdeIdle.reset();
        askAll();
    }
}

void CompositorIdle::lost()
{
    for (auto& [name, seat] : seats) {
        forget(seat);
    }
    seats.clear();
    notifier.reset();
    kdeIdle.reset();
}

void CompositorIdle::askAll()
{
    for (auto& [name, seat] : seats) {
        ask(seat);
    }
}

/// By the best of the means that are there now.
void CompositorIdle::ask(Seat& seat)
{
    static constexpr ext_idle_notification_v1_listener kNotificationListener{.idled
        =
            [](void* data, Notification*) {
                static_cast<Seat*>(data)->owner->idle.idled(static_cast<Seat*>(data)->number);
            },
        .resumed =
            [](void* data, Notification*) {
                static_cast<Seat*>(data)->owner->idle.resumed(static_cast<Seat*>(data)->number);
            }};
    static constexpr org_kde_kwin_idle_timeout_listener kTimeoutListener{.idle
        =
            [](void* data, KdeTimeout*) {
                static_cast<Seat*>(data)->owner->idle.idled(static_cast<Seat*>(data)->number);
            },
        .resumed =
            [](void* data, KdeTimeout*) {
                static_cast<Seat*>(data)->owner->idle.resumed(static_cast<Seat*>(data)->number);
            }};
    forget(seat);
    if (notifier) {
        const bool heedsInputAlone = ext_idle_notifier_v1_get_version(notifier.get()) >= 2;
        seat.notification.reset(heedsInputAlone ? ext_idle_notifier_v1_get_input_idle_notification(
                                    notifier.get(), kNoticeMs, seat.seat.get())
                                                : ext_idle_notifier_v1_get_idle_notification(
                                                    notifier.get(), kNoticeMs, seat.seat.get()));
        ext_idle_notification_v1_add_listener(
            seat.notification.get(), &kNotificationListener, &seat);
    } else if (kdeIdle) {
        seat.timeout.reset(
            org_kde_kwin_idle_get_idle_timeout(kdeIdle.get(), seat.seat.get(), kNoticeMs));
        org_kde_kwin_idle_timeout_add_listener(seat.timeout.get(), &kTimeoutListener, &seat);
    } else {
        return;
    }
    idle.asked(seat.number);
}

void CompositorIdle::forget(Seat& seat)
{
    seat.notification.reset();
    seat.timeout.reset();
    idle.gone(seat.number);
}

} // namespace quillbrook
