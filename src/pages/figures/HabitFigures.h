#pragma once

#include "pages/marks/Mark.h"
#include "report/ReportRecords.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quillbrook {

/// The colour text of a category key; a gray for a key that is unknown.
std::string categoryColorHex(std::string_view category);

/// One category's place in the treemap.
struct CategoryCell {
    Rect rect{};
    CategoryUsage cat{};
    std::string colorHex{};
};

/// Divides `size` among the categories in proportion to their seconds, as the applications' treemap
/// does.
std::vector<CategoryCell> computeCategoryCells(std::span<const CategoryUsage> items, Size size);

/// The treemap of categories: a cell for each, and the outline around them.
std::vector<Mark> categoryTreemapMarks(std::span<const CategoryUsage> items, Size size);

/// The categories' hours as lying bars, in their order.
std::vector<Mark> categoryBarMarks(
    std::span<const CategoryUsage> items, Size size, const TextWidth& textWidth);

/// The same points with their share of their day, 0 to 1, in place of hours.
std::vector<CategoryTrendPoint> trendShares(std::span<const CategoryTrendPoint> points);

/// The category keys that occur, ascending.
std::vector<std::string> uniqueCategories(std::span<const CategoryTrendPoint> points);

/// One band of the trend.
struct TrendSeries {
    std::string key{};
    std::string label{};
    std::vector<CategoryTrendPoint> points{}; // whose hours are shares
    std::string colorHex{};
};

/// A series for each category that occurs, ascending by key.
std::vector<TrendSeries> trendSeries(std::span<const CategoryTrendPoint> points);

/// The shares of each day as stacked areas.
std::vector<Mark> categoryTrendMarks(
    std::span<const CategoryTrendPoint> points, Size size, const TextWidth& textWidth);

} // namespace quillbrook
