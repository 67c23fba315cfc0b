#include "pages/figures/TimelineFigures.h"

#include "base/Text.h"
#include "pages/figures/AppPalette.h"
#include "pages/figures/Formatting.h"

#include <algorithm>

namespace quillbrook {

namespace {

constexpr std::size_t kLegendApps = 10;
constexpr double kRowSeconds = 3800; // a full hour leaves a margin at the right on purpose
constexpr double kBlockLeading = 1;
constexpr double kDimmed = 0.2;

HourBlock blockOf(const HourUsage& app, const AppColorMap& colors, double rowWidth)
{
    const double width = app.seconds / kRowSeconds * rowWidth;
    HourBlock block{.appName = app.appName,
        .seconds = app.seconds,
        .width = std::max(width, 1.0),
        .radius = width > 4 ? 3.0 : 1.0,
        .color = colorFor(app.appName, colors)};
    if (width > 50 && app.seconds >= 300) {
        block.label = app.appName + " (" + std::to_string(truncated(app.seconds / 60)) + "min)";
    }
    return block;
}

} // namespace

AppColorMap appColorMap(std::span<const HourlyTimelineEntry> timeline)
{
    std::vector<std::pair<std::string, double>> totals;
    for (const HourlyTimelineEntry& hour : timeline) {
        for (const HourUsage& app : hour.apps) {
            const auto found = std::find_if(totals.begin(), totals.end(),
                [&](const auto& total) { return total.first == app.appName; });
            if (found == totals.end()) {
                totals.emplace_back(app.appName, app.seconds);
            } else {
                found->second += app.seconds;
            }
        }
    }
    std::stable_sort(totals.begin(), totals.end(),
        [](const auto& a, const auto& b) { return a.second > b.second; });

    AppColorMap map;
    for (const auto& [appName, seconds] : totals) {
        map.emplace_back(appName, paletteColor(map.size()));
    }
    return map;
}

SystemColor colorFor(std::string_view name, const AppColorMap& map)
{
    const auto found = std::find_if(
        map.begin(), map.end(), [&](const auto& entry) { return entry.first == name; });
    return found == map.end() ? SystemColor::gray : found->second;
}

std::span<const AppColorMap::value_type> legendApps(const AppColorMap& map)
{
    return std::span(map).first(std::min(map.size(), kLegendApps));
}

std::string formatDur(double seconds)
{
    if (seconds < 60) {
        return std::to_string(truncated(seconds)) + "s";
    }
    if (seconds < 3600) {
        return std::to_string(truncated(seconds / 60)) + "min";
    }
    return fixedText(seconds / 3600, 1) + "h";
}

std::string hourText(std::int64_t hour)
{
    return twoDigits(hour) + ":00";
}

std::string durationLabel(double totalSeconds)
{
    return totalSeconds > 0 ? std::to_string(truncated(totalSeconds / 60)) + "m" : std::string();
}

std::vector<HourBlock> hourBlocks(
    const HourlyTimelineEntry& hour, const AppColorMap& colors, double rowWidth)
{
    std::vector<HourBlock> blocks;
    if (hour.total <= 0) {
        return blocks;
    }
    double x = 0;
    for (const HourUsage& app : hour.apps) {
        if (app.seconds > 0) {
            HourBlock block = blockOf(app, colors, rowWidth);
            block.x = x + kBlockLeading;
            x = block.x + block.width;
            blocks.push_back(std::move(block));
        }
    }
    return blocks;
}

std::string blockHelp(const HourBlock& block)
{
    return block.appName + ": " + formatDur(block.seconds);
}

double dimFactor(const std::optional<std::string>& highlightedApp, std::string_view appName)
{
    return !highlightedApp || *highlightedApp == appName ? 1.0 : kDimmed;
}

std::string generateCSV(std::span<const HourlyTimelineEntry> timeline)
{
    std::vector<HourlyTimelineEntry> hours(timeline.begin(), timeline.end());
    std::stable_sort(
        hours.begin(), hours.end(), [](const auto& a, const auto& b) { return a.hour < b.hour; });
    std::string text = "Hour,App,Seconds,Minutes\n";
    for (HourlyTimelineEntry& hour : hours) {
        std::stable_sort(hour.apps.begin(), hour.apps.end(),
            [](const auto& a, const auto& b) { return a.seconds > b.seconds; });
        for (const HourUsage& app : hour.apps) {
            text += std::to_string(hour.hour) + ",\"" + app.appName + "\","
                + std::to_string(truncated(app.seconds)) + "," + fixedText(app.seconds / 60.0, 1)
                + "\n";
        }
    }
    return text;
}

} // namespace quillbrook
