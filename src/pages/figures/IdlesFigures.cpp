#include "pages/figures/IdlesFigures.h"

#include "pages/figures/PeriodCells.h"
#include "pages/figures/RunningFirst.h"

#include <string_view>

namespace quillbrook {

namespace {

constexpr TextFace kNumberFace{.pixels = 10};

/// What led to an idle period.
struct Source {
    std::string_view label{};
    Tint tint{};
};

Source sourceOf(std::int64_t sourceType)
{
    switch (sourceType) {
    case 1:
        return {"HID超时", {SystemColor::orange}};
    case 2:
        return {"睡眠", {SystemColor::blue}};
    case 3:
        return {"锁屏", {SystemColor::purple}};
    case 4:
        return {"进程退出", {SystemColor::red}};
    default:
        return {"未知", secondaryTint()};
    }
}

TableCell sourceCell(std::int64_t sourceType)
{
    const Source source = sourceOf(sourceType);
    return labelCell(std::string(source.label), source.tint);
}

TableCell stateCell(const IdleRecord& idle)
{
    const bool isOpen = !idle.endedAt.has_value();
    TableCell cell = isOpen ? labelCell("进行中", {SystemColor::green})
                            : labelCell("已结束", secondaryTint(0.6));
    cell.dot
        = TableDot{.diameter = 6, .tint = isOpen ? Tint{SystemColor::green} : secondaryTint(0.4)};
    return cell;
}

} // namespace

std::vector<IdleRecord> sortedIdles(const std::vector<IdleRecord>& idles)
{
    return runningFirst(idles);
}

double totalDuration(std::span<const IdleRecord> idles)
{
    double total = 0;
    for (const IdleRecord& idle : idles) {
        total += idle.durationSec;
    }
    return total;
}

std::string totalDurationText(std::span<const IdleRecord> idles)
{
    return durationText(IdleRecord{.durationSec = totalDuration(idles)});
}

std::string idleCountText(std::size_t count)
{
    return std::to_string(count) + " 条空闲记录";
}

std::vector<TableColumn> idleColumns()
{
    return {{.title = "#", .width = 36, .alignment = TextAlignment::trailing, .namesTheRow = true},
        {.title = "日期", .width = 45}, {.title = "开始", .width = 70},
        {.title = "结束", .width = 70},
        {.title = "时长", .width = 80, .alignment = TextAlignment::trailing},
        {.title = "来源", .width = 55, .alignment = TextAlignment::center},
        {.title = "状态", .width = 60, .alignment = TextAlignment::center}};
}

TableCell idleCell(const IdleRow& row, int column, const LocalCalendar& calendar)
{
    const IdleRecord& idle = row.idle;
    switch (column) {
    case 0:
        return {
            .text = std::to_string(idle.rowId), .face = kNumberFace, .tint = secondaryTint(0.6)};
    case 1:
        return dateCell(idle.startedAt, calendar);
    case 2:
        return startCell(idle.startedAt);
    case 3:
        return endCell(idle.endedAt);
    case 4:
        return durationCell(durationText(idle));
    case 5:
        return sourceCell(idle.sourceType);
    default:
        return stateCell(idle);
    }
}

} // namespace quillbrook
