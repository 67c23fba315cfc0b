#include "pages/figures/TreemapLayout.h"

#include "categories/SeedTables.h"
#include "pages/figures/AppPalette.h"
#include "pages/figures/Formatting.h"
#include "pages/figures/SliceLayout.h"

#include <algorithm>

namespace quillbrook {

namespace {

constexpr std::size_t kShownApps = 20;
constexpr std::string_view kUnknownCategoryColor = "#9CA3AF";

/// The place of the first application of that name, else 0.
std::size_t rankOf(const std::vector<AppUsage>& sorted, const std::string& appName)
{
    const auto found = std::find_if(
        sorted.begin(), sorted.end(), [&](const AppUsage& app) { return app.appName == appName; });
    return found == sorted.end() ? 0 : static_cast<std::size_t>(found - sorted.begin());
}

} // namespace

std::vector<Cell> computeCells(std::span<const AppUsage> apps, Size size)
{
    std::vector<AppUsage> sorted(apps.begin(), apps.end());
    std::stable_sort(sorted.begin(), sorted.end(),
        [](const AppUsage& a, const AppUsage& b) { return a.totalSeconds > b.totalSeconds; });
    std::vector<double> seconds;
    for (const AppUsage& app : sorted) {
        seconds.push_back(app.totalSeconds);
    }

    std::vector<Cell> cells;
    for (const Rect& rect : sliceLayout(seconds, size)) {
        const AppUsage& app = sorted[cells.size()];
        cells.push_back({rect, app, paletteColor(rankOf(sorted, app.appName))});
    }
    return cells;
}

std::string fmtMin(double seconds)
{
    const double minutes = seconds / 60;
    const std::int64_t whole = truncated(minutes);
    return minutes < 1 ? "<1m" : hoursAndMinutes(whole);
}

bool hasRoomForName(const Rect& rect)
{
    return rect.width > 50 && rect.height > 18;
}

bool hasRoomForTime(const Rect& rect)
{
    return hasRoomForName(rect) && rect.height > 32;
}

std::optional<std::size_t> cellAt(std::span<const Cell> cells, Point point)
{
    const auto found = std::find_if(
        cells.begin(), cells.end(), [&](const Cell& cell) { return contains(cell.rect, point); });
    return found == cells.end() ? std::nullopt
                                : std::optional(static_cast<std::size_t>(found - cells.begin()));
}

std::optional<std::size_t> cellNamed(std::span<const Cell> cells, std::string_view appName)
{
    const auto found = std::find_if(
        cells.begin(), cells.end(), [&](const Cell& cell) { return cell.app.appName == appName; });
    return found == cells.end() ? std::nullopt
                                : std::optional(static_cast<std::size_t>(found - cells.begin()));
}

Point tooltipCenter(const Rect& cell, double treemapWidth)
{
    const double x = std::min(std::max(cell.x + cell.width / 2, 60.0), treemapWidth - 60);
    return {x, std::max(cell.y - 12, 18.0)};
}

Color categoryColor(std::string_view label)
{
    const auto* const found = std::find_if(categorySeedTable.begin(), categorySeedTable.end(),
        [&](const CategorySeed& category) { return category.label == label; });
    return colorFromHex(found == categorySeedTable.end() ? kUnknownCategoryColor : found->color);
}

std::span<const AppUsage> treemapSet(std::span<const AppUsage> appUsage)
{
    return appUsage.first(std::min(appUsage.size(), kShownApps));
}

std::string legendHelp(const AppUsage& app)
{
    return app.appName + " — " + app.categoryLabel;
}

} // namespace quillbrook
