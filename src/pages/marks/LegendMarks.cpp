#include "pages/marks/LegendMarks.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace quillbrook {

namespace {

constexpr double kDot = 8;
constexpr double kAfterDot = 4;
constexpr double kBetween = 12;
constexpr double kBetweenRows = 2;
constexpr double kRounding = 1e-6;

struct Row {
    std::vector<std::size_t> entries{};
    std::vector<double> widths{};
    double width = 0;
};

std::vector<Row> rowsOf(std::span<const LegendEntry> entries, const TextFace& face, double width,
    const TextWidth& textWidth)
{
    std::vector<Row> rows;
    for (std::size_t place = 0; place < entries.size(); ++place) {
        const double wanted
            = std::min(kDot + kAfterDot + textWidth(entries[place].text, face), width);
        if (rows.empty() || rows.back().width + kBetween + wanted > width + kRounding) {
            rows.emplace_back();
        } else {
            rows.back().width += kBetween;
        }
        rows.back().entries.push_back(place);
        rows.back().widths.push_back(wanted);
        rows.back().width += wanted;
    }
    return rows;
}

double heightOf(double rows, const TextFace& face)
{
    return rows * lineHeight(face) + std::max(0.0, rows - 1) * kBetweenRows;
}

} // namespace

double legendHeight(std::span<const LegendEntry> entries, const TextFace& face, double width,
    const TextWidth& textWidth, int mostRows)
{
    const auto rows = static_cast<double>(rowsOf(entries, face, width, textWidth).size());
    return heightOf(std::min(rows, static_cast<double>(mostRows)), face);
}

std::vector<Mark> legendMarks(std::span<const LegendEntry> entries, const TextFace& face,
    const Tint& tint, const Rect& place, const TextWidth& textWidth)
{
    std::vector<Mark> marks;
    double y = place.y;
    for (const Row& row : rowsOf(entries, face, place.width, textWidth)) {
        if (y + lineHeight(face) > bottom(place) + kRounding) {
            break;
        }
        double x = place.x + (place.width - row.width) / 2;
        for (std::size_t i = 0; i < row.entries.size(); ++i) {
            const LegendEntry& entry = entries[row.entries[i]];
            const Point dot{x + kDot / 2, y + lineHeight(face) / 2};
            marks.push_back({.shape = Circle{dot, kDot / 2}, .fills = {entry.tint}});
            const double before = kDot + kAfterDot;
            marks.push_back(textMark(
                {.place = {x + before, y, std::max(0.0, row.widths[i] - before), lineHeight(face)},
                    .text = entry.text,
                    .face = face,
                    .tint = tint}));
            x += row.widths[i] + kBetween;
        }
        y += lineHeight(face) + kBetweenRows;
    }
    return marks;
}

} // namespace quillbrook
