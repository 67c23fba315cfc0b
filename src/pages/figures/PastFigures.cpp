#include "pages/figures/PastFigures.h"

#include "base/Text.h"

namespace quillbrook {

std::array<FigureContent, 4> metricCards(const HistoryOverview& overview)
{
    const SystemColor bootColor = overview.bootCount < 2 ? SystemColor::green : SystemColor::red;
    return {{
        {"clock.fill", SystemColor::blue, fixedText(overview.totalActiveHours, 1) + " h",
            "活跃时长"},
        {"app.badge.fill", SystemColor::orange, std::to_string(overview.activeAppCount) + " 个",
            "活跃应用"},
        {"arrow.left.arrow.right", SystemColor::purple, std::to_string(overview.appSwitchCount),
            "切换次数"},
        {"power", bootColor, std::to_string(overview.bootCount) + " 次", "开关机"},
    }};
}

} // namespace quillbrook
