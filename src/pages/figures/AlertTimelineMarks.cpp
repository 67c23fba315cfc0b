#include "pages/figures/AlertTimelineMarks.h"

#include "base/Text.h"

#include <algorithm>
#include <set>
#include <string>
#include <utility>

namespace quillbrook {

namespace {

constexpr double kSidePadding = 24; // around a row
constexpr double kAbove = 8; // and below a row
constexpr double kPadding = 10; // within a row
constexpr double kRowRadius = 8;
constexpr double kAxisHeight = 44;
constexpr double kRowHeight = kAxisHeight + 2 * kPadding;
constexpr double kDivider = 1; // between two rows
constexpr double kDividerIndent = 100;
constexpr double kStride = kRowHeight + 2 * kAbove + kDivider;

constexpr double kColumnWidth = 72; // of the kind
constexpr double kColumnSpacing = 3;
constexpr double kBehindColumn = 16;
constexpr double kPillPadding = 8;
constexpr double kPillAbove = 3;
constexpr double kPillRadius = 4;
constexpr TextFace kPillFace{.pixels = 10, .weight = TextWeight::semibold};
constexpr TextFace kNumberFace{TextFamily::monospaced, 9};
constexpr TextFace kHourFace{TextFamily::monospaced, 8};
constexpr double kPillHeight = 19; // a line of its face, and the padding
constexpr double kNumberHeight = 12;

// Heights along the axis, from its top.
constexpr double kHourY = 5;
constexpr double kTickY = 14;
constexpr double kLineY = 22;
constexpr double kTimeY = 34;
constexpr double kLineThickness = 2;
constexpr double kTickHeight = 5;
constexpr double kDotRadius = 4.5;
constexpr double kRingWidth = 1.5;
constexpr double kHourWidth = 20; // of a label's place
constexpr double kTimeWidth = 32; // twice what lies between the column and the axis

/// Nearer to one that is painted, a dot would only hide it: it is found and read, not painted.
constexpr double kDotDistance = 2;

TextLine centeredLine(Point middle, double width, std::string text, const TextFace& face, Tint tint)
{
    const double height = lineHeight(face);
    return {.place = {middle.x - width / 2, middle.y - height / 2, width, height},
        .text = std::move(text),
        .face = face,
        .tint = tint,
        .alignment = TextAlignment::center};
}

/// One row of the picture.
class RowMarks {
public:
    RowMarks(std::vector<Mark>& marks, const AlertTimelineRow& row, const Rect& place)
        : marks(marks)
        , row(row)
        , label(typeLabel(row.type))
        , color(severityColor(row.severity))
        , column{place.x + kPadding, place.y + kPadding, kColumnWidth, kAxisHeight}
        , axis{right(column) + kBehindColumn, column.y,
              std::max(right(place) - kPadding - right(column) - kBehindColumn, 0.0), kAxisHeight}
    {
        marks.push_back(boxMark(place, {color, 0.025}, kRowRadius));
    }

    void addKind(const TextWidth& textWidth)
    {
        const double most = kColumnWidth - 2 * kPillPadding;
        const double width = std::min(textWidth(label, kPillFace), most) + 2 * kPillPadding;
        const double top
            = column.y + (kAxisHeight - kPillHeight - kColumnSpacing - kNumberHeight) / 2;
        const Rect pill{center(column).x - width / 2, top, width, kPillHeight};
        Mark kind = textMark({.place = inset(pill, kPillPadding, kPillAbove),
            .text = label,
            .face = kPillFace,
            .tint = primaryTint(),
            .alignment = TextAlignment::center});
        kind.shape = Box{pill, kPillRadius};
        kind.fills = {{color, 0.12}};
        marks.push_back(std::move(kind));
        marks.push_back(textMark(
            {.place = {column.x, bottom(pill) + kColumnSpacing, kColumnWidth, kNumberHeight},
                .text = std::to_string(row.times.size()) + " 次",
                .face = kNumberFace,
                .tint = secondaryTint(),
                .alignment = TextAlignment::center}));
    }

    void addAxis()
    {
        marks.push_back(
            boxMark({axis.x, axis.y + kLineY - kLineThickness / 2, axis.width, kLineThickness},
                {color}, kLineThickness / 2));
        for (const HourTick& tick : hourTicks) {
            const Point at = pointAt(tick.frac, kTickY);
            marks.push_back(lineMark({at.x, at.y - kTickHeight / 2}, {at.x, at.y + kTickHeight / 2},
                secondaryTint(0.3)));
            marks.push_back(textMark(centeredLine(pointAt(tick.frac, kHourY), kHourWidth,
                std::string(tick.label), kHourFace, secondaryTint())));
        }
    }

    void addDots()
    {
        std::vector<double> fractions;
        fractions.reserve(row.times.size());
        for (const Date time : row.times) {
            fractions.push_back(timeFraction(time));
        }
        const std::vector<std::size_t> labelled = labelIndicesToShow(fractions, axis.width);
        marks.reserve(marks.size() + fractions.size() + labelled.size());
        auto nextLabel = labelled.begin();
        std::set<double> painted; // the years of a day follow each other, each from its morning on
        for (std::size_t index = 0; index < fractions.size(); ++index) {
            const std::string time = timeString(row.times[index]);
            const Point at = pointAt(fractions[index], kLineY);
            const auto near = painted.upper_bound(at.x - kDotDistance);
            const bool isPainted = near == painted.end() || *near >= at.x + kDotDistance;
            if (isPainted) {
                painted.insert(near, at.x);
            }
            marks.push_back(dot(at, time, fractions[index], isPainted));
            if (nextLabel != labelled.end() && *nextLabel == index) {
                ++nextLabel;
                marks.push_back(textMark(centeredLine(pointAt(fractions[index], kTimeY), kTimeWidth,
                    time, kNumberFace, secondaryTint())));
            }
        }
    }

private:
    Point pointAt(double fraction, double y) const
    {
        return {axis.x + fraction * axis.width, axis.y + y};
    }

    Mark dot(Point at, const std::string& time, double fraction, bool isPainted) const
    {
        Mark mark{.shape = Circle{at, kDotRadius},
            .role = MarkRole::mark,
            .name = label + " " + time,
            .value = shortestText(fraction)};
        mark.help = mark.name;
        if (isPainted) {
            mark.fills = {{color}};
            mark.stroke = Stroke{{InterfaceColor::controlBackground}, kRingWidth};
        }
        return mark;
    }

    std::vector<Mark>& marks;
    const AlertTimelineRow& row;
    std::string label;
    SystemColor color;
    Rect column;
    Rect axis;
};

} // namespace

double alertTimelineHeight(std::size_t rows)
{
    return rows == 0 ? 0 : static_cast<double>(rows) * kStride - kDivider;
}

std::vector<Mark> alertTimelineMarks(
    std::span<const AlertTimelineRow> rows, double width, const TextWidth& textWidth)
{
    std::vector<Mark> marks;
    double top = 0;
    for (const AlertTimelineRow& row : rows) {
        if (top > 0) {
            const double y = top - kDivider / 2;
            marks.push_back(
                lineMark({kDividerIndent, y}, {width, y}, {InterfaceColor::separator}, kDivider));
        }
        RowMarks picture(
            marks, row, {kSidePadding, top + kAbove, width - 2 * kSidePadding, kRowHeight});
        picture.addKind(textWidth);
        picture.addAxis();
        picture.addDots();
        top += kStride;
    }
    return marks;
}

} // namespace quillbrook
