#include "pages/marks/AxisMarks.h"

#include "base/Text.h"
#include "base/Utc8Day.h"
#include "base/Utc8Text.h"
#include "pages/marks/LabelThinning.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace quillbrook {

namespace {

constexpr double kOverhangShare = 0.125; // of the width, at most, kept free for half a label
constexpr double kGreatestAmount = 1e300; // an axis has an end
constexpr double kLeastPlot = 1; // points, so that each number has a place of its own
constexpr double kLegendShare = 0.4; // of the height, at most

/// "09/5".
std::string monthAndPlainDay(std::int64_t dayNumber)
{
    std::string date = utc8SlashedDate(utc8DayStart(dayNumber));
    if (const std::size_t day = date.find('/') + 1; date[day] == '0') {
        date.erase(day, 1);
    }
    return date;
}

/// How far labels stick out of their axis.
struct Overhang {
    double before = 0;
    double after = 0;
};

/// Works on one chart's measures, so that the steps of the lay-out need not hand them on.
class FrameLayout {
public:
    FrameLayout(const ChartAxes& chartAxes, Size pictureSize, const TextWidth& measure)
        : axes(chartAxes)
        , look(chartAxes.look)
        , size{std::max(0.0, pictureSize.width), std::max(0.0, pictureSize.height)}
        , textWidth(measure)
    {
    }

    ChartFrame frame()
    {
        placeRows();
        placeColumns();
        result.x = columnScale(result.plot.x, right(result.plot));
        result.y = {axes.y.from, axes.y.to, bottom(result.plot), result.plot.y};
        addGrid();
        addLabelsAtLeft();
        addLabelsBelow();
        addTitles();
        addLegend();
        return std::move(result);
    }

private:
    double labelLine() const { return lineHeight(look.labels); }
    double titleLine() const { return lineHeight(look.titles); }

    /// The x axis on a plot that runs from `left` to `end`.
    Scale columnScale(double left, double end) const
    {
        const double units = axes.x.to - axes.x.from + 2 * axes.x.margin;
        const double inset = units > 0 ? (end - left) * axes.x.margin / units : 0;
        return {axes.x.from, axes.x.to, left + inset, end - inset};
    }

    void placeRows()
    {
        const int rows = static_cast<int>(size.height * kLegendShare / lineHeight(look.legend));
        const double legend = legendHeight(axes.legend, look.legend, size.width, textWidth, rows);
        legendTop = size.height - legend;
        double low = legend > 0 ? legendTop - look.legendGap : size.height;
        if (!axes.x.title.empty()) {
            low -= titleLine();
            titleTop = low;
        }
        const double half = axes.y.marks.empty() ? 0 : labelLine() / 2;
        if (!axes.x.marks.empty()) {
            low -= labelLine();
            labelsTop = low;
            low -= look.gap;
        }
        double high = axes.y.title.empty() ? 0 : titleLine() + look.gap;
        Overhang over;
        for (const AxisMark& mark : axes.y.marks) {
            const double point = pointOf({axes.y.from, axes.y.to, low, high}, mark.at);
            over.before = std::max(over.before, high + half - point);
            over.after = std::max(over.after, point + half - low);
        }
        // The labels below keep clear of half a label at the left.
        low -= axes.x.marks.empty() ? over.after : std::max(0.0, over.after - look.gap);
        high += over.before;
        result.plot.y = std::min(high, size.height);
        result.plot.height = std::max(0.0, low - result.plot.y);
    }

    void placeColumns()
    {
        for (const AxisMark& mark : axes.y.marks) {
            labelColumn = std::max(labelColumn, textWidth(mark.text, look.labels));
        }
        labelColumn = std::min(labelColumn, size.width * look.labelShare);
        double left = labelColumn > 0 ? labelColumn + look.gap : 0;
        double end = std::max(left, size.width - axes.reserveRight);
        Overhang over;
        for (const AxisMark& mark : axes.x.marks) {
            const double point = pointOf(columnScale(left, end), mark.at);
            const double half = textWidth(mark.text, look.labels) / 2;
            over.before = std::max(over.before, half - point);
            over.after = std::max(over.after, point + half - size.width);
        }
        const double most = size.width * kOverhangShare;
        left += std::min(over.before, most);
        end -= std::min(over.after, most);
        result.plot.x = left;
        result.plot.width = std::max(kLeastPlot, end - left);
    }

    void addGrid()
    {
        const Rect& plot = result.plot;
        if (axes.x.hasGrid) {
            for (const AxisMark& mark : axes.x.marks) {
                const double x = pointOf(result.x, mark.at);
                result.behind.push_back(lineMark({x, plot.y}, {x, bottom(plot)}, look.grid));
            }
        }
        if (axes.y.hasGrid) {
            for (const AxisMark& mark : axes.y.marks) {
                const double y = pointOf(result.y, mark.at);
                result.behind.push_back(lineMark({plot.x, y}, {right(plot), y}, look.grid));
            }
        }
    }

    Mark label(const AxisMark& mark, const Rect& place, TextAlignment alignment) const
    {
        return text(mark.text, place, look.labels, alignment);
    }

    Mark text(const std::string& words, const Rect& place, const TextFace& face,
        TextAlignment alignment) const
    {
        Mark mark = textMark({.place = place,
            .text = words,
            .face = face,
            .tint = look.text,
            .alignment = alignment});
        if (textWidth(words, face) > place.width) {
            mark.help = words;
        }
        return mark;
    }

    void addLabelsAtLeft()
    {
        std::vector<const AxisMark*> written;
        std::vector<Extent> extents;
        for (const AxisMark& mark : axes.y.marks) {
            if (!mark.text.empty()) {
                written.push_back(&mark);
                extents.push_back(
                    extentAround(pointOf(result.y, mark.at), labelLine(), size.height));
            }
        }
        for (const std::size_t i : labelsThatFit(extents, 0)) {
            result.behind.push_back(label(*written[i],
                {0, extents[i].start, labelColumn, extents[i].end - extents[i].start},
                TextAlignment::trailing));
        }
    }

    void addLabelsBelow()
    {
        std::vector<const AxisMark*> written;
        double widest = 0;
        for (const AxisMark& mark : axes.x.marks) {
            if (!mark.text.empty()) {
                written.push_back(&mark);
                widest = std::max(widest, textWidth(mark.text, look.labels));
            }
        }
        std::vector<Extent> extents;
        for (const AxisMark* mark : written) {
            const double own = textWidth(mark->text, look.labels);
            extents.push_back(extentAround(
                pointOf(result.x, mark->at), axes.x.hasEvenLabels ? widest : own, size.width));
        }
        for (const std::size_t i : labelsThatFit(extents, look.labelGap)) {
            result.around.push_back(label(*written[i],
                {extents[i].start, labelsTop, extents[i].end - extents[i].start, labelLine()},
                TextAlignment::center));
        }
    }

    void addTitles()
    {
        if (!axes.x.title.empty()) {
            const double middle = result.plot.x + result.plot.width / 2;
            const Extent extent
                = extentAround(middle, textWidth(axes.x.title, look.titles), size.width);
            result.around.push_back(
                text(axes.x.title, {extent.start, titleTop, extent.end - extent.start, titleLine()},
                    look.titles, TextAlignment::center));
        }
        if (!axes.y.title.empty()) {
            result.around.push_back(text(axes.y.title, {0, 0, size.width, titleLine()}, look.titles,
                TextAlignment::leading));
        }
    }

    void addLegend()
    {
        for (Mark& mark : legendMarks(axes.legend, look.legend, look.text,
                 {0, legendTop, size.width, size.height - legendTop}, textWidth)) {
            result.around.push_back(std::move(mark));
        }
    }

    const ChartAxes& axes;
    const ChartLook& look;
    Size size;
    const TextWidth& textWidth;
    double legendTop = 0;
    double titleTop = 0;
    double labelsTop = 0;
    double labelColumn = 0;
    ChartFrame result{};
};

} // namespace

Axis amountAxis(double most, std::string title)
{
    const double to = most > 0 ? std::min(most, kGreatestAmount) : 1;
    Axis axis{.from = 0, .to = to, .hasGrid = true, .title = std::move(title)};
    for (const double at : automaticMarks(axis.to)) {
        axis.marks.push_back({at, shortestText(at)});
    }
    return axis;
}

Axis slotAxis(const std::vector<std::string>& labels, std::string title)
{
    Axis axis{
        .from = -0.5, .to = static_cast<double>(labels.size()) - 0.5, .title = std::move(title)};
    for (std::size_t i = 0; i < labels.size(); ++i) {
        axis.marks.push_back({static_cast<double>(i), labels[i]});
    }
    return axis;
}

Axis dayAxis(std::int64_t first, std::int64_t last)
{
    const double margin = first == last ? 0.5 : 0;
    Axis axis{.from = static_cast<double>(first) - margin,
        .to = static_cast<double>(last) + margin,
        .hasEvenLabels = true};
    for (std::int64_t day = first; day <= last; ++day) {
        axis.marks.push_back({static_cast<double>(day), monthAndPlainDay(day)});
    }
    return axis;
}

ChartFrame chartFrame(const ChartAxes& axes, Size size, const TextWidth& textWidth)
{
    return FrameLayout(axes, size, textWidth).frame();
}

} // namespace quillbrook
