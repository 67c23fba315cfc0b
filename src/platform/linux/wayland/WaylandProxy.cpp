#include "platform/linux/wayland/WaylandProxy.h"

namespace quillbrook {

void EndProxy::operator()(wl_registry* proxy) const
{
    wl_registry_destroy(proxy);
}

void EndProxy::operator()(wl_callback* proxy) const
{
    wl_callback_destroy(proxy);
}

void EndProxy::operator()(wl_seat* proxy) const
{
    wl_seat_destroy(proxy);
}

void EndProxy::operator()(wl_output* proxy) const
{
    wl_output_destroy(proxy);
}

void EndProxy::operator()(zwlr_foreign_toplevel_manager_v1* proxy) const
{
    zwlr_foreign_toplevel_manager_v1_destroy(proxy);
}

void EndProxy::operator()(zwlr_foreign_toplevel_handle_v1* proxy) const
{
    zwlr_foreign_toplevel_handle_v1_destroy(proxy);
}

void EndProxy::operator()(zwlr_output_power_manager_v1* proxy) const
{
    zwlr_output_power_manager_v1_destroy(proxy);
}

void EndProxy::operator()(zwlr_output_power_v1* proxy) const
{
    zwlr_output_power_v1_destroy(proxy);
}

void EndProxy::operator()(org_kde_kwin_dpms_manager* proxy) const
{
    org_kde_kwin_dpms_manager_destroy(proxy);
}

void EndProxy::operator()(org_kde_kwin_dpms* proxy) const
{
    org_kde_kwin_dpms_release(proxy);
}

void EndProxy::operator()(ext_idle_notifier_v1* proxy) const
{
    ext_idle_notifier_v1_destroy(proxy);
}

void EndProxy::operator()(ext_idle_notification_v1* proxy) const
{
    ext_idle_notification_v1_destroy(proxy);
}

void EndProxy::operator()(org_kde_kwin_idle* proxy) const
{
    org_kde_kwin_idle_destroy(proxy);
}

void EndProxy::operator()(org_kde_kwin_idle_timeout* proxy) const
{
    org_kde_kwin_idle_timeout_release(proxy);
}

} // namespace quillbrook
