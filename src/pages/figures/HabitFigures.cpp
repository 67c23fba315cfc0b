#include "pages/figures/HabitFigures.h"

#include "base/Color.h"
#include "base/Text.h"
#include "base/Utc8Day.h"
#include "base/Utc8Text.h"
#include "categories/SeedTables.h"
#include "pages/figures/AppTreemapMarks.h"
#include "pages/figures/SliceLayout.h"
#include "pages/figures/TreemapLayout.h"
#include "pages/marks/AreaMarks.h"
#include "pages/marks/BarMarks.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <utility>

namespace quillbrook {

namespace {

constexpr std::string_view kUnknownColor = "#9CA3AF";
constexpr double kHourSec = 3600;
constexpr double kPadding = 4;
constexpr double kBetweenLines = 1;
constexpr TextFace kLabelFace{TextFamily::system, 10, TextWeight::semibold};
constexpr TextFace kHoursFace{TextFamily::monospaced, 8};

Tint tintOf(std::string_view colorHex)
{
    return {colorFromHex(colorHex)};
}

std::string hoursText(double seconds)
{
    return fixedText(seconds / kHourSec, 1) + "h";
}

std::string percentText(double share)
{
    return fixedText(share * 100, 0) + "%";
}

TextLine cellText(const Rect& place, std::string text, const TextFace& face, double opacity)
{
    return {.place = place,
        .text = std::move(text),
        .face = face,
        .tint = {kWhite, opacity},
        .alignment = TextAlignment::center,
        .isOnColor = true};
}

/// The label alone in a low cell, with the hours under it in a higher one.
std::vector<TextLine> cellTexts(const CategoryCell& cell)
{
    if (!hasRoomForName(cell.rect)) {
        return {};
    }
    const Rect inside = inset(cell.rect, kPadding, 0);
    if (!hasRoomForTime(cell.rect)) {
        return {cellText(inside, cell.cat.label, kLabelFace, 1)};
    }
    const double labelHeight = lineHeight(kLabelFace);
    const double hoursHeight = lineHeight(kHoursFace);
    const double top = center(inside).y - (labelHeight + kBetweenLines + hoursHeight) / 2;
    return {
        cellText({inside.x, top, inside.width, labelHeight}, cell.cat.label, kLabelFace, 1),
        cellText({inside.x, top + labelHeight + kBetweenLines, inside.width, hoursHeight},
            hoursText(cell.cat.totalSeconds), kHoursFace, 0.85),
    };
}

double dayTotal(std::span<const CategoryTrendPoint> points, double date)
{
    double sum = 0;
    for (const CategoryTrendPoint& point : points) {
        sum += point.date == date ? point.hours : 0;
    }
    return sum;
}

AreaSeries areaOf(const TrendSeries& series)
{
    AreaSeries area{.label = series.label, .tint = tintOf(series.colorHex)};
    for (const CategoryTrendPoint& point : series.points) {
        const std::string name = series.label + " " + utc8DashedDate(point.date);
        area.points.push_back({.at = static_cast<double>(utc8DayNumber(point.date)),
            .amount = point.hours,
            .datum = {.name = name,
                .value = shortestText(point.hours),
                .help = name + ": " + percentText(point.hours)}});
    }
    return area;
}

Axis shareAxis()
{
    Axis axis{.from = 0, .to = 1};
    for (int fifth = 0; fifth <= 5; ++fifth) {
        axis.marks.push_back({fifth / 5.0, percentText(fifth / 5.0)});
    }
    return axis;
}

} // namespace

std::string categoryColorHex(std::string_view category)
{
    const auto found = categoryColors().find(category);
    return std::string(found == categoryColors().end() ? kUnknownColor : found->second);
}

std::vector<CategoryCell> computeCategoryCells(std::span<const CategoryUsage> items, Size size)
{
    std::vector<CategoryUsage> sorted(items.begin(), items.end());
    std::stable_sort(sorted.begin(), sorted.end(),
        [](const auto& a, const auto& b) { return a.totalSeconds > b.totalSeconds; });
    std::vector<double> seconds;
    for (const CategoryUsage& item : sorted) {
        seconds.push_back(item.totalSeconds);
    }
    std::vector<CategoryCell> cells;
    for (const Rect& rect : sliceLayout(seconds, size)) {
        const CategoryUsage& item = sorted[cells.size()];
        cells.push_back({rect, item, categoryColorHex(item.category)});
    }
    return cells;
}

std::vector<Mark> categoryTreemapMarks(std::span<const CategoryUsage> items, Size size)
{
    std::vector<Mark> marks;
    for (const CategoryCell& cell : computeCategoryCells(items, size)) {
        Mark mark = treemapCell(cell.rect, tintOf(cell.colorHex));
        mark.texts = cellTexts(cell);
        mark.name = cell.cat.label;
        mark.value = hoursText(cell.cat.totalSeconds);
        marks.push_back(std::move(mark));
    }
    marks.push_back(treemapOutline(size));
    return marks;
}

std::vector<Mark> categoryBarMarks(
    std::span<const CategoryUsage> items, Size size, const TextWidth& textWidth)
{
    HorizontalBarChart chart;
    double most = 0;
    for (const CategoryUsage& item : items) {
        const double hours = item.totalSeconds / kHourSec;
        most = std::max(most, hours);
        chart.bars.push_back({.label = item.label,
            .amount = hours,
            .annotation = hoursText(item.totalSeconds),
            .tint = tintOf(categoryColorHex(item.category)),
            .datum = {.name = item.label,
                .value = shortestText(hours),
                .help = item.label + ": " + hoursText(item.totalSeconds)}});
    }
    chart.amounts = amountAxis(most, "小时");
    return horizontalBarMarks(chart, size, textWidth);
}

std::vector<CategoryTrendPoint> trendShares(std::span<const CategoryTrendPoint> points)
{
    std::vector<CategoryTrendPoint> shares(points.begin(), points.end());
    for (CategoryTrendPoint& point : shares) {
        const double total = dayTotal(points, point.date);
        const double share = total > 0 ? point.hours / total : 0;
        point.hours = std::isfinite(share) ? share : 0;
    }
    return shares;
}

std::vector<std::string> uniqueCategories(std::span<const CategoryTrendPoint> points)
{
    std::set<std::string> keys;
    for (const CategoryTrendPoint& point : points) {
        keys.insert(point.category);
    }
    return {keys.begin(), keys.end()};
}

std::vector<TrendSeries> trendSeries(std::span<const CategoryTrendPoint> points)
{
    const std::vector<CategoryTrendPoint> shares = trendShares(points);
    std::vector<TrendSeries> all;
    for (const std::string& key : uniqueCategories(shares)) {
        TrendSeries series{.key = key, .colorHex = categoryColorHex(key)};
        std::copy_if(shares.begin(), shares.end(), std::back_inserter(series.points),
            [&key](const CategoryTrendPoint& point) { return point.category == key; });
        series.label = series.points.front().label;
        all.push_back(std::move(series));
    }
    return all;
}

std::vector<Mark> categoryTrendMarks(
    std::span<const CategoryTrendPoint> points, Size size, const TextWidth& textWidth)
{
    if (points.empty()) {
        return {};
    }
    AreaChart chart;
    for (const TrendSeries& series : trendSeries(points)) {
        chart.series.push_back(areaOf(series));
    }
    const auto [first, last] = std::minmax_element(
        points.begin(), points.end(), [](const auto& a, const auto& b) { return a.date < b.date; });
    chart.axes
        = {.x = dayAxis(utc8DayNumber(first->date), utc8DayNumber(last->date)), .y = shareAxis()};
    return areaMarks(chart, size, textWidth);
}

} // namespace quillbrook
