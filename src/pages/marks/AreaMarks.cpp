#include "pages/marks/AreaMarks.h"

#include "pages/marks/StackedCurves.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <utility>

namespace quillbrook {

namespace {

/// The places of all points, ascending, each once.
std::vector<double> placesOf(const std::vector<AreaSeries>& series, const Scale& x)
{
    std::vector<double> places;
    for (const AreaSeries& each : series) {
        for (const AreaPoint& point : each.points) {
            places.push_back(clampedTo(x, point.at));
        }
    }
    std::sort(places.begin(), places.end());
    places.erase(std::unique(places.begin(), places.end()), places.end());
    return places;
}

std::size_t indexOf(const std::vector<double>& places, double place)
{
    return static_cast<std::size_t>(
        std::lower_bound(places.begin(), places.end(), place) - places.begin());
}

std::vector<double> thicknessesOf(
    const AreaSeries& series, const std::vector<double>& places, const ChartFrame& frame)
{
    std::vector<double> thicknesses(places.size(), 0);
    for (const AreaPoint& point : series.points) {
        const double amount = std::max(0.0, clampedTo(frame.y, point.amount));
        thicknesses[indexOf(places, clampedTo(frame.x, point.at))] = amount * unitLength(frame.y);
    }
    return thicknesses;
}

/// The areas as they lie in the plot.
class Areas {
public:
    Areas(const std::vector<AreaSeries>& series, const ChartFrame& frame)
        : places(placesOf(series, frame.x))
        , base(bottom(frame.plot))
    {
        std::vector<double> x;
        for (const double place : places) {
            x.push_back(pointOf(frame.x, place));
        }
        for (const AreaSeries& each : series) {
            thicknesses.push_back(thicknessesOf(each, places, frame));
        }
        if (places.size() == 1) {
            const double half = unitLength(frame.x) / 2;
            x = {std::max(x[0] - half, frame.plot.x), std::min(x[0] + half, right(frame.plot))};
            for (std::vector<double>& area : thicknesses) {
                area.push_back(area[0]);
            }
        }
        curves = stackedCurves(std::move(x), thicknesses, frame.plot.height);
    }

    /// From the upper edge of an area down to the base line, where the area has thickness.
    Path downToBase(std::size_t area) const
    {
        Path path;
        bool isOpen = false;
        for (std::size_t place = 0; place + 1 < curves.x.size(); ++place) {
            const bool isThick = thicknesses[area][place] > 0 || thicknesses[area][place + 1] > 0;
            const Curve edge = curveOf(curves, area + 1, place, base);
            if (isOpen && !isThick) {
                path.push_back(lineTo({curves.x[place], base}));
            }
            if (isThick && !isOpen) {
                path.push_back(moveTo({curves.x[place], base}));
                path.push_back(lineTo(edge.from));
            }
            if (isThick) {
                path.push_back(edge.step);
            }
            isOpen = isThick;
        }
        if (isOpen) {
            path.push_back(lineTo({curves.x.back(), base}));
        }
        return path;
    }

    /// An area's part around a place.
    Path slice(std::size_t area, double at) const
    {
        const std::vector<Curve> lower = around(area, indexOf(places, at));
        const std::vector<Curve> upper = around(area + 1, indexOf(places, at));
        Path path{moveTo(lower.front().from), lineTo(upper.front().from)};
        for (const Curve& curve : upper) {
            path.push_back(curve.step);
        }
        path.push_back(lineTo(lower.back().step.to));
        for (auto curve = lower.rbegin(); curve != lower.rend(); ++curve) {
            path.push_back(reversed(*curve).step);
        }
        return path;
    }

private:
    /// An edge from halfway to the place before to halfway to the next.
    std::vector<Curve> around(std::size_t edge, std::size_t place) const
    {
        if (places.size() == 1) {
            return {curveOf(curves, edge, 0, base)};
        }
        std::vector<Curve> pieces;
        if (place > 0) {
            pieces.push_back(halvesOf(curveOf(curves, edge, place - 1, base)).second);
        }
        if (place + 1 < places.size()) {
            pieces.push_back(halvesOf(curveOf(curves, edge, place, base)).first);
        }
        return pieces;
    }

    std::vector<double> places;
    std::vector<std::vector<double>> thicknesses{};
    StackedCurves curves{};
    double base;
};

Tint faded(const Tint& tint, double opacity)
{
    return {tint.color, tint.opacity * opacity};
}

void addAreas(std::vector<Mark>& marks, const AreaChart& chart, const Areas& areas)
{
    for (std::size_t area = chart.series.size(); area-- > 0;) {
        marks.push_back({.shape = areas.downToBase(area),
            .fills = {faded(chart.series[area].tint, chart.opacity)},
            .ground = chart.ground});
    }
}

} // namespace

std::vector<Mark> areaMarks(const AreaChart& chart, Size size, const TextWidth& textWidth)
{
    ChartAxes axes = chart.axes;
    for (const AreaSeries& series : chart.series) {
        axes.legend.push_back({series.label, series.tint});
    }
    ChartFrame frame = chartFrame(axes, size, textWidth);
    std::vector<Mark> marks = std::move(frame.behind);
    const Areas areas(chart.series, frame);
    addAreas(marks, chart, areas);
    for (std::size_t area = 0; area < chart.series.size(); ++area) {
        for (const AreaPoint& point : chart.series[area].points) {
            marks.push_back(dataMark(areas.slice(area, clampedTo(frame.x, point.at)), point.datum));
        }
    }
    marks.insert(marks.end(), std::make_move_iterator(frame.around.begin()),
        std::make_move_iterator(frame.around.end()));
    return marks;
}

} // namespace quillbrook
