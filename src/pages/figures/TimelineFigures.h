#pragma once

#include "base/SystemColor.h"
#include "pages/marks/Geometry.h"
#include "report/ReportRecords.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quillbrook {

/// Applications and their colours, by their seconds over the whole day, largest first.
using AppColorMap = std::vector<std::pair<std::string, SystemColor>>;

AppColorMap appColorMap(std::span<const HourlyTimelineEntry> timeline);

/// The colour of an application; gray when it isn't in the map.
SystemColor colorFor(std::string_view name, const AppColorMap& map);

/// What has a chip in the legend: the first ten.
std::span<const AppColorMap::value_type> legendApps(const AppColorMap& map);

/// "59s", "59min", "1.0h".
std::string formatDur(double seconds);

/// "09:00".
std::string hourText(std::int64_t hour);

/// The minutes behind a row, cut off: "42m"; empty when there are no seconds.
std::string durationLabel(double totalSeconds);

/// One application's block in the row of an hour.
struct HourBlock {
    std::string appName{};
    double seconds = 0;
    double x = 0; // from the row's left edge
    double width = 0; // as drawn, at least 1
    double radius = 1;
    SystemColor color = SystemColor::gray;
    std::string label{}; // empty where there is no room for it
};

/// The blocks of an hour in a row of `rowWidth`, in the order of its applications. Empty when the
/// row is an empty cell.
std::vector<HourBlock> hourBlocks(
    const HourlyTimelineEntry& hour, const AppColorMap& colors, double rowWidth);

/// The tooltip of a block.
std::string blockHelp(const HourBlock& block);

/// How strong an application is drawn while `highlightedApp` is picked: 1 or 0.2.
double dimFactor(const std::optional<std::string>& highlightedApp, std::string_view appName);

/// The day as comma-separated text with a header line. Quotes in names stand as they are.
std::string generateCSV(std::span<const HourlyTimelineEntry> timeline);

} // namespace quillbrook
