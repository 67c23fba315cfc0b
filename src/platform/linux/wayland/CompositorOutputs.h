#pragma once

#include "platform/linux/session/OutputPower.h"
#include "platform/linux/wayland/WaylandConnection.h"

#include <functional>
#include <map>

namespace quillbrook {

/// Tells when a compositor has switched all screens off: `changed(true)`, and on again; by
/// `zwlr_output_power_manager_v1` or `org_kde_kwin_dpms_manager`. Only listens. Main thread only.
class CompositorOutputs final : public WaylandUser {
public:
    explicit CompositorOutputs(std::function<void(bool)> changed) : changed(std::move(changed)) {}

    void offered(wl_registry& registry, const WaylandGlobal& global) override;
    void withdrawn(std::uint32_t name) override;
    void lost() override;

private:
    using WlrManager = zwlr_output_power_manager_v1;
    using WlrPower = zwlr_output_power_v1;
    using KdeManager = org_kde_kwin_dpms_manager;
    using KdePower = org_kde_kwin_dpms;

    struct Output {
        CompositorOutputs* owner = nullptr;
        OutputPower::Output number = 0;
        WaylandProxy<wl_output> output{};
        WaylandProxy<WlrPower> wlrPower{};
        WaylandProxy<KdePower> kdePower{};
    };

    void ask(Output& output);
    void askAll();
    void tell();

    static void wlrMode(void* data, WlrPower* power, std::uint32_t mode);
    static void wlrFailed(void* data, WlrPower* power);
    static void kdeMode(void* data, KdePower* power, std::uint32_t mode);

    std::function<void(bool)> changed;
    OutputPower power{};
    bool wasOff = false;
    WaylandProxy<WlrManager> wlrManager{};
    WaylandProxy<KdeManager> kdeManager{};
    std::map<std::uint32_t, Output> outputs{}; // by the names of their globals
};

} // namespace quillbrook
