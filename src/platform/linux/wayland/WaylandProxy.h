#pragma once

#include <desktop-protocol.h>
#include <wayland-client.h>

#include <memory>

namespace quillbrook {

/// Ends an object of the compositor's as its interface wants it.
struct EndProxy {
    void operator()(wl_registry* proxy) const;
    void operator()(wl_callback* proxy) const;
    void operator()(wl_seat* proxy) const;
    void operator()(wl_output* proxy) const;
    void operator()(zwlr_foreign_toplevel_manager_v1* proxy) const;
    void operator()(zwlr_foreign_toplevel_handle_v1* proxy) const;
    void operator()(zwlr_output_power_manager_v1* proxy) const;
    void operator()(zwlr_output_power_v1* proxy) const;
    void operator()(org_kde_kwin_dpms_manager* proxy) const;
    void operator()(org_kde_kwin_dpms* proxy) const;
    void operator()(ext_idle_notifier_v1* proxy) const;
    void operator()(ext_idle_notification_v1* proxy) const;
    void operator()(org_kde_kwin_idle* proxy) const;
    void operator()(org_kde_kwin_idle_timeout* proxy) const;
};

/// An object of the compositor's that is ended with its owner. It has to go before the connection.
template <typename Proxy>
using WaylandProxy = std::unique_ptr<Proxy, EndProxy>;

} // namespace quillbrook
