#include "pages/marks/RingMarks.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

namespace quillbrook {

namespace {

constexpr double kWhole = 2 * std::numbers::pi;

struct Ring {
    Point middle{};
    double inner = 0;
    double outer = 0;
};

/// Angles in radians, clockwise from the top.
struct Sweep {
    double from = 0;
    double to = 0;

    double length() const { return to - from; }
    double middle() const { return (from + to) / 2; }
};

Point pointAt(const Ring& ring, double radius, double angle)
{
    return {ring.middle.x + radius * std::sin(angle), ring.middle.y - radius * std::cos(angle)};
}

/// Goes on along the ring, in arcs of at most a quarter, each a cubic curve.
void addArc(Path& path, const Ring& ring, double radius, Sweep sweep)
{
    const double quarters = std::abs(sweep.length()) / (std::numbers::pi / 2);
    const int pieces = std::max(1, static_cast<int>(std::ceil(quarters - 1e-9)));
    const double piece = sweep.length() / pieces;
    const double reach = radius * 4 / 3 * std::tan(piece / 4);
    for (int i = 0; i < pieces; ++i) {
        const double from = sweep.from + i * piece;
        const double to = sweep.from + (i + 1) * piece;
        const Point start = pointAt(ring, radius, from);
        const Point end = pointAt(ring, radius, to);
        path.push_back(cubicTo({start.x + reach * std::cos(from), start.y + reach * std::sin(from)},
            {end.x - reach * std::cos(to), end.y - reach * std::sin(to)}, end));
    }
}

Path wholeRing(const Ring& ring)
{
    Path path{moveTo(pointAt(ring, ring.outer, 0))};
    addArc(path, ring, ring.outer, {0, kWhole});
    path.push_back(moveTo(pointAt(ring, ring.inner, 0)));
    addArc(path, ring, ring.inner, {kWhole, 0});
    return path;
}

/// A sector whose straight sides lie `side` points within those of `sweep`, in parallel.
Path sectorOutline(const Ring& ring, Sweep sweep, double side)
{
    const double outerTurn = std::asin(std::min(1.0, side / ring.outer));
    const Sweep outside{sweep.from + outerTurn, sweep.to - outerTurn};
    Path path{moveTo(pointAt(ring, ring.outer, outside.from))};
    addArc(path, ring, ring.outer, outside);

    const double innerTurn = ring.inner > 0 ? std::asin(std::min(1.0, side / ring.inner)) : kWhole;
    if (sweep.length() > 2 * innerTurn) {
        const Sweep inside{sweep.to - innerTurn, sweep.from + innerTurn};
        path.push_back(lineTo(pointAt(ring, ring.inner, inside.from)));
        addArc(path, ring, ring.inner, inside);
    } else {
        // The sides meet before they reach the inner edge.
        const double half = std::min(sweep.length() / 2, std::numbers::pi / 2);
        path.push_back(lineTo(pointAt(ring, side / std::sin(half), sweep.middle())));
    }
    return path;
}

Path outlineOf(const Ring& ring, Sweep sweep, double gap)
{
    if (ring.outer <= 0 || sweep.length() <= 0) {
        return {moveTo(pointAt(ring, (ring.inner + ring.outer) / 2, sweep.from))};
    }
    if (sweep.length() >= kWhole) {
        return wholeRing(ring);
    }
    return sectorOutline(ring, sweep, std::min(gap / 2, ring.outer * sweep.length() / 4));
}

/// How much of the ring each sector has, all together 1; all 0 when there is nothing to divide.
std::vector<double> sharesOf(const std::vector<RingSector>& sectors)
{
    std::vector<double> shares;
    double largest = 0;
    for (const RingSector& sector : sectors) {
        shares.push_back(std::isfinite(sector.amount) ? std::max(0.0, sector.amount) : 0);
        largest = std::max(largest, shares.back());
    }
    if (largest <= 0) {
        return shares;
    }
    double sum = 0;
    for (double& share : shares) {
        share /= largest; // huge amounts have no sum
        sum += share;
    }
    for (double& share : shares) {
        share /= sum;
    }
    return shares;
}

Mark textOn(const Ring& ring, Sweep sweep, const std::string& text, const TextFace& face)
{
    const Point place = pointAt(ring, (ring.inner + ring.outer) / 2, sweep.middle());
    const double width = ring.outer - ring.inner;
    const double height = lineHeight(face);
    return textMark({.place = {place.x - width / 2, place.y - height / 2, width, height},
        .text = text,
        .face = face,
        .tint = {kWhite},
        .alignment = TextAlignment::center,
        .isOnColor = true});
}

} // namespace

std::vector<Mark> ringMarks(const RingChart& chart, Size size)
{
    const double radius = std::max(0.0, std::min(size.width, size.height) / 2);
    const Ring ring{{size.width / 2, size.height / 2}, radius * chart.innerRatio, radius};
    const std::vector<double> shares = sharesOf(chart.sectors);
    std::vector<Mark> marks;
    double before = 0;
    for (std::size_t i = 0; i < shares.size(); ++i) {
        const RingSector& sector = chart.sectors[i];
        const Sweep sweep{before * kWhole, (before + shares[i]) * kWhole};
        Mark mark = dataMark(outlineOf(ring, sweep, chart.angularInset), sector.datum);
        mark.fills = {sector.tint};
        marks.push_back(std::move(mark));
        if (!sector.text.empty()) {
            marks.push_back(textOn(ring, sweep, sector.text, chart.face));
        }
        before += shares[i];
    }
    return marks;
}

} // namespace quillbrook
