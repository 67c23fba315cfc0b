#include "pages/marks/LineMarks.h"

#include <iterator>
#include <utility>

namespace quillbrook {

namespace {

constexpr double kDotRadius = 2.5;
constexpr double kHitRadius = 6;

Point placeOf(const LinePoint& point, const ChartFrame& frame)
{
    return {pointOf(frame.x, clampedTo(frame.x, point.at)),
        pointOf(frame.y, clampedTo(frame.y, point.amount))};
}

Mark strokedLine(const LineSeries& series, const ChartFrame& frame, double width)
{
    Path path;
    for (const LinePoint& point : series.points) {
        const Point place = placeOf(point, frame);
        path.push_back(path.empty() ? moveTo(place) : lineTo(place));
    }
    return {.shape = std::move(path), .stroke = Stroke{series.tint, width}};
}

} // namespace

std::vector<Mark> lineMarks(const LineChart& chart, Size size, const TextWidth& textWidth)
{
    ChartAxes axes = chart.axes;
    for (const LineSeries& series : chart.series) {
        axes.legend.push_back({series.label, series.tint});
    }
    ChartFrame frame = chartFrame(axes, size, textWidth);
    std::vector<Mark> marks = std::move(frame.behind);
    for (const LineSeries& series : chart.series) {
        if (series.points.size() > 1) {
            marks.push_back(strokedLine(series, frame, chart.width));
        }
        for (const LinePoint& point : series.points) {
            marks.push_back(
                {.shape = Circle{placeOf(point, frame), kDotRadius}, .fills = {series.tint}});
        }
    }
    for (const LineSeries& series : chart.series) {
        for (const LinePoint& point : series.points) {
            marks.push_back(dataMark(Circle{placeOf(point, frame), kHitRadius}, point.datum));
        }
    }
    marks.insert(marks.end(), std::make_move_iterator(frame.around.begin()),
        std::make_move_iterator(frame.around.end()));
    return marks;
}

} // namespace quillbrook
