#include "pages/figures/SessionsFigures.h"

#include "pages/figures/PeriodCells.h"
#include "pages/figures/RunningFirst.h"

#include <algorithm>
#include <set>
#include <utility>

namespace quillbrook {

namespace {

constexpr TextFace kNameFace{.pixels = 13};

Tint statusTint(const std::string& status)
{
    if (status == "active") {
        return {SystemColor::green};
    }
    return status == "recover" ? Tint{SystemColor::orange} : secondaryTint(0.6);
}

TableCell appCell(const SessionDetail& session)
{
    const Tint dot = session.endedAt ? secondaryTint(0.5) : Tint{SystemColor::green};
    return {.text = session.appName,
        .face = kNameFace,
        .tint = primaryTint(),
        .dot = TableDot{.diameter = 8, .tint = dot}};
}

} // namespace

std::vector<SessionDetail> mergedSessions(const std::vector<SessionDetail>& sessions)
{
    return runningFirst(sessions);
}

std::vector<SessionDetail> filteredSessions(const std::vector<SessionDetail>& sessions,
    const SessionsFilter& filter, const ContainsText& containsText)
{
    std::vector<SessionDetail> passing = mergedSessions(sessions);
    std::erase_if(passing, [&](const SessionDetail& session) {
        const bool passes = (filter.closeType.empty() || session.closeType == filter.closeType)
            && (filter.status.empty() || session.status == filter.status)
            && (filter.app.empty() || containsText(session.appName, filter.app));
        return !passes;
    });
    return passing;
}

std::vector<std::string> uniqueApps(std::span<const SessionDetail> sessions)
{
    std::set<std::string> names;
    for (const SessionDetail& session : sessions) {
        names.insert(session.appName);
    }
    return {names.begin(), names.end()};
}

std::string sessionCountText(std::size_t count)
{
    return std::to_string(count) + " 个会话";
}

std::vector<TableColumn> sessionColumns()
{
    return {{.title = "日期", .width = 45}, {.title = "应用", .width = 150, .namesTheRow = true},
        {.title = "开始", .width = 70}, {.title = "结束", .width = 70},
        {.title = "时长", .width = 65, .alignment = TextAlignment::trailing},
        {.title = "关闭", .width = 110, .alignment = TextAlignment::center},
        {.title = "状态", .width = 55, .alignment = TextAlignment::center}};
}

Tint closeTypeColor(const SessionRow& row)
{
    static constexpr auto kColors = std::to_array<std::pair<SystemColor, std::string_view>>({
        {SystemColor::green, "—"},
        {SystemColor::orange, "idle_recover"},
        {SystemColor::blue, "sleep_recover"},
        {SystemColor::purple, "lock_recover"},
        {SystemColor::teal, "startup"},
    });
    const auto* const found = std::find_if(kColors.begin(), kColors.end(),
        [&](const auto& entry) { return entry.second == row.session.closeType; });
    return found == kColors.end() ? secondaryTint() : Tint{found->first};
}

TableCell sessionCell(const SessionRow& row, int column, const LocalCalendar& calendar)
{
    const SessionDetail& session = row.session;
    switch (column) {
    case 0:
        return dateCell(session.startedAt, calendar);
    case 1:
        return appCell(session);
    case 2:
        return startCell(session.startedAt);
    case 3:
        return endCell(session.endedAt);
    case 4:
        return durationCell(durationText(session));
    case 5:
        return labelCell(session.closeType, closeTypeColor(row));
    default:
        return labelCell(session.status, statusTint(session.status));
    }
}

} // namespace quillbrook
