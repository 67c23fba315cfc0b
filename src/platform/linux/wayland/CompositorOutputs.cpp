#include "platform/linux/wayland/CompositorOutputs.h"

#include <utility>

namespace quillbrook {

void CompositorOutputs::offered(wl_registry& registry, const WaylandGlobal& global)
{
    if (global.interface == wl_output_interface.name) {
        Output& output = outputs[global.name];
        output.owner = this;
        output.number = global.name;
        output.output.reset(static_cast<wl_output*>(
            wl_registry_bind(&registry, global.name, &wl_output_interface, 1)));
        ask(output);
    } else if (global.interface == zwlr_output_power_manager_v1_interface.name && !wlrManager) {
        wlrManager.reset(static_cast<WlrManager*>(
            wl_registry_bind(&registry, global.name, &zwlr_output_power_manager_v1_interface, 1)));
        askAll();
    } else if (global.interface == org_kde_kwin_dpms_manager_interface.name && !kdeManager) {
        kdeManager.reset(static_cast<KdeManager*>(
            wl_registry_bind(&registry, global.name, &org_kde_kwin_dpms_manager_interface, 1)));
        askAll();
    }
}

void CompositorOutputs::withdrawn(std::uint32_t name)
{
    if (outputs.erase(name) > 0) {
        power.remove(name);
        tell();
    }
}

void CompositorOutputs::lost()
{
    outputs.clear();
    wlrManager.reset();
    kdeManager.reset();
    power.clear();
    tell();
}

void CompositorOutputs::askAll()
{
    for (auto& [name, output] : outputs) {
        ask(output);
    }
}

void CompositorOutputs::ask(Output& output)
{
    static constexpr zwlr_output_power_v1_listener kWlrListener{
        .mode = wlrMode, .failed = wlrFailed};
    static constexpr org_kde_kwin_dpms_listener kKdeListener{
        .supported = [](void*, KdePower*, std::uint32_t) {},
        .mode = kdeMode,
        .done = [](void*, KdePower*) {}};
    if (output.wlrPower || output.kdePower) {
        return;
    }
    if (wlrManager) {
        output.wlrPower.reset(
            zwlr_output_power_manager_v1_get_output_power(wlrManager.get(), output.output.get()));
        zwlr_output_power_v1_add_listener(output.wlrPower.get(), &kWlrListener, &output);
    } else if (kdeManager) {
        output.kdePower.reset(org_kde_kwin_dpms_manager_get(kdeManager.get(), output.output.get()));
        org_kde_kwin_dpms_add_listener(output.kdePower.get(), &kKdeListener, &output);
    }
}

void CompositorOutputs::wlrMode(void* data, WlrPower*, std::uint32_t mode)
{
    const auto& output = *static_cast<Output*>(data);
    output.owner->power.set(output.number, mode == ZWLR_OUTPUT_POWER_V1_MODE_OFF);
    output.owner->tell();
}

/// Nobody tells of this output: that of the others counts.
void CompositorOutputs::wlrFailed(void* data, WlrPower*)
{
    auto& output = *static_cast<Output*>(data);
    output.wlrPower.reset();
    output.owner->power.remove(output.number);
    output.owner->tell();
}

void CompositorOutputs::kdeMode(void* data, KdePower*, std::uint32_t mode)
{
    const auto& output = *static_cast<Output*>(data);
    output.owner->power.set(output.number, mode != ORG_KDE_KWIN_DPMS_MODE_ON);
    output.owner->tell();
}

void CompositorOutputs::tell()
{
    const bool areOff = power.areAllOff();
    if (areOff != std::exchange(wasOff, areOff)) {
        changed(areOff);
    }
}

} // namespace quillbrook
