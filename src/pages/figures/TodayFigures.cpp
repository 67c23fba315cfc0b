#include "pages/figures/TodayFigures.h"

#include "base/Text.h"
#include "base/Utc8Text.h"
#include "pages/figures/Formatting.h"
#include "report/KeystrokeReports.h"

namespace quillbrook {

std::string activeMinutesStr(double totalActiveHours)
{
    return hoursAndMinutes(truncated(totalActiveHours * 60.0));
}

std::string longestFocusStr(double longestSessionMinutes)
{
    return hoursAndMinutes(truncated(longestSessionMinutes));
}

std::string firstActivityString(const std::optional<double>& firstActivity)
{
    return firstActivity ? utc8HourMinute(*firstActivity) : "--:--";
}

std::string formatCount(std::int64_t count)
{
    if (count >= 10000) {
        return fixedText(static_cast<double>(count) / 10000.0, 1) + " 万";
    }
    if (count < 1000) {
        return std::to_string(count);
    }
    const std::string rest = std::to_string(count % 1000);
    return std::to_string(count / 1000) + "," + std::string(3 - rest.size(), '0') + rest;
}

std::array<FigureContent, 4> overviewCards(
    const TodayOverview& overview, std::int64_t appCount, std::int64_t keystrokeCount)
{
    return {{
        {"arrow.up.right", SystemColor::teal, firstActivityString(overview.firstActivity),
            std::to_string(overview.sessionCount) + " 个会话"},
        {"clock.fill", SystemColor::blue, activeMinutesStr(overview.totalActiveHours),
            "单次最长 " + longestFocusStr(overview.longestSessionMinutes)},
        {"app.badge.fill", SystemColor::orange, std::to_string(appCount) + " 个",
            "切换 " + std::to_string(overview.appSwitchCount) + " 次"},
        // The wording stays while the period is yesterday, as on all the cards.
        {"hand.point.up.braille", SystemColor::cyan, formatCount(keystrokeCount), "今日键盘输入"},
    }};
}

std::array<InfoItem, 4> kpiInfoItems()
{
    return {{
        {"arrow.up.right", SystemColor::teal, "活跃时长",
            "今日所有应用会话 duration 的总分钟数。首次活跃时间为今天最早的 started_at 时刻。"},
        {"clock.fill", SystemColor::blue, "最长专注",
            "今日单次 session 的最长 duration，反映最专注的工作时段。"},
        {"app.badge.fill", SystemColor::orange, "应用",
            "今日使用过的不同应用数量。\"切换 N 次\"等于会话数，即前台应用变更的次数。"},
        {"hand.point.up.braille", SystemColor::cyan, "击键次数",
            filled("来自 keylog 工具采集的全局 keyDown 事件计数。Token "
                   "换算按输入法类型：英文≈{}/键，双拼≈{}/键，其他≈{}/键。",
                {shortestText(tokenRate("english")), shortestText(tokenRate("shuangpin")),
                    shortestText(tokenRate("other"))})},
    }};
}

} // namespace quillbrook
