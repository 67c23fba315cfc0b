#include "pages/marks/BarMarks.h"

#include "pages/marks/LabelThinning.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <optional>
#include <utility>

namespace quillbrook {

namespace {

constexpr double kRadius = 2;
constexpr double kMostAnnotation = 0.3; // of the width
constexpr double kGreatestAmount = 1e300;

double radiusOf(const Rect& rect)
{
    return std::min({kRadius, rect.width / 2, rect.height / 2});
}

Mark barMark(const Rect& rect, const Tint& tint, const Datum& datum)
{
    Mark mark = dataMark(Box{rect, radiusOf(rect)}, datum);
    mark.fills = {tint};
    return mark;
}

void append(std::vector<Mark>& marks, std::vector<Mark> more)
{
    marks.insert(
        marks.end(), std::make_move_iterator(more.begin()), std::make_move_iterator(more.end()));
}

double greatestAmount(const std::vector<HorizontalBar>& bars)
{
    double greatest = 0;
    for (const HorizontalBar& bar : bars) {
        greatest = std::max(greatest, std::min(bar.amount, kGreatestAmount));
    }
    return greatest > 0 ? greatest : 1;
}

ChartAxes axesOf(const HorizontalBarChart& chart, Size size, const TextWidth& textWidth)
{
    ChartAxes axes{.x = chart.amounts, .look = chart.look};
    if (axes.x.to == axes.x.from) {
        axes.x.to = axes.x.from + greatestAmount(chart.bars);
    }
    std::vector<std::string> labels;
    double annotation = 0;
    for (const HorizontalBar& bar : chart.bars) {
        labels.push_back(bar.label);
        annotation = std::max(annotation, textWidth(bar.annotation, chart.annotations));
    }
    axes.y = slotAxis(labels);
    std::swap(axes.y.from, axes.y.to); // the first bar is the uppermost
    axes.reserveRight
        = annotation > 0 ? std::min(annotation, size.width * kMostAnnotation) + chart.look.gap : 0;
    return axes;
}

Rect rectOf(const ChartFrame& frame, double row, const HorizontalBarChart& chart)
{
    const double base = pointOf(frame.x, frame.x.from);
    const double end
        = pointOf(frame.x, clampedTo(frame.x, chart.bars[static_cast<std::size_t>(row)].amount));
    const double thickness = unitLength(frame.y) * chart.thickness;
    return {base, pointOf(frame.y, row) - thickness / 2, end - base, thickness};
}

/// The heights at which annotations stand, by row; none for a row without one or without room.
std::vector<std::optional<Extent>> annotationRows(
    const ChartFrame& frame, const HorizontalBarChart& chart, double height)
{
    std::vector<Extent> extents;
    for (std::size_t row = 0; row < chart.bars.size(); ++row) {
        extents.push_back(extentAround(
            pointOf(frame.y, static_cast<double>(row)), lineHeight(chart.annotations), height));
    }
    std::vector<std::optional<Extent>> rows(chart.bars.size());
    for (const std::size_t row : labelsThatFit(extents, 0)) {
        if (!chart.bars[row].annotation.empty()) {
            rows[row] = extents[row];
        }
    }
    return rows;
}

Mark annotationMark(const HorizontalBar& bar, double x, const Extent& row, double width,
    const HorizontalBarChart& chart)
{
    return textMark({.place = {x, row.start, std::max(0.0, width - x), row.end - row.start},
        .text = bar.annotation,
        .face = chart.annotations,
        .tint = chart.look.text});
}

} // namespace

std::vector<Mark> verticalBarMarks(
    const VerticalBarChart& chart, Size size, const TextWidth& textWidth)
{
    ChartFrame frame = chartFrame(chart.axes, size, textWidth);
    std::vector<Mark> marks = std::move(frame.behind);
    const double thickness = unitLength(frame.x) * chart.thickness;
    for (const VerticalBar& bar : chart.bars) {
        if (clampedTo(frame.x, bar.at) != bar.at) {
            continue;
        }
        const double top = pointOf(frame.y, clampedTo(frame.y, bar.amount));
        const double base = pointOf(frame.y, frame.y.from);
        marks.push_back(
            barMark({pointOf(frame.x, bar.at) - thickness / 2, top, thickness, base - top},
                bar.tint, bar.datum));
    }
    append(marks, std::move(frame.around));
    return marks;
}

std::vector<Mark> horizontalBarMarks(
    const HorizontalBarChart& chart, Size size, const TextWidth& textWidth)
{
    ChartFrame frame = chartFrame(axesOf(chart, size, textWidth), size, textWidth);
    std::vector<Mark> marks = std::move(frame.behind);
    const auto annotated = annotationRows(frame, chart, size.height);
    for (std::size_t row = 0; row < chart.bars.size(); ++row) {
        const HorizontalBar& bar = chart.bars[row];
        const Rect rect = rectOf(frame, static_cast<double>(row), chart);
        marks.push_back(barMark(rect, bar.tint, bar.datum));
        if (annotated[row]) {
            marks.push_back(annotationMark(
                bar, right(rect) + chart.look.gap, *annotated[row], size.width, chart));
        }
    }
    append(marks, std::move(frame.around));
    return marks;
}

} // namespace quillbrook
