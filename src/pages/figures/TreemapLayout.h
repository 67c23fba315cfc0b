#pragma once

#include "base/Color.h"
#include "base/SystemColor.h"
#include "pages/marks/Geometry.h"
#include "report/ReportRecords.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quillbrook {

/// One application's place in the treemap.
struct Cell {
    Rect rect{};
    AppUsage app{};
    SystemColor color = SystemColor::blue; // by rank; one colour for one name
};

/// Divides `size` among `apps`, with areas in proportion to `totalSeconds`: the largest first,
/// equal seconds in the order of `apps`. One cell for each application, in drawing order, without
/// area where the seconds are 0. Empty when `apps` is empty, `size` has no area, or all seconds
/// are 0.
std::vector<Cell> computeCells(std::span<const AppUsage> apps, Size size);

/// "<1m", "42m", "1h5m": minutes cut off. Fatal when `seconds` is not finite.
std::string fmtMin(double seconds);

/// Whether a cell is large enough for the application's name, and for the time under it.
bool hasRoomForName(const Rect& rect);
bool hasRoomForTime(const Rect& rect);

/// The first cell, in drawing order, that holds `point`; empty when there is none.
std::optional<std::size_t> cellAt(std::span<const Cell> cells, Point point);

/// The first cell of that application name; empty when there is none.
std::optional<std::size_t> cellNamed(std::span<const Cell> cells, std::string_view appName);

/// The centre of the tooltip over a cell in a treemap of `treemapWidth`.
Point tooltipCenter(const Rect& cell, double treemapWidth);

/// The colour of the category with this label; a gray when there is none.
Color categoryColor(std::string_view label);

/// What the treemap and its legend show of the applications of a period: the first twenty.
std::span<const AppUsage> treemapSet(std::span<const AppUsage> appUsage);

/// The help text of an application in the legend.
std::string legendHelp(const AppUsage& app);

} // namespace quillbrook
