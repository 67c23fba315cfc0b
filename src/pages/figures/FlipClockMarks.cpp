#include "pages/figures/FlipClockMarks.h"

#include "base/IsoTime.h"

namespace quillbrook {

namespace {

constexpr double kWidth = 220; // of the clock; its ground is as wide as its content
constexpr double kSidePadding = 10;
constexpr double kEdgePadding = 6;
constexpr double kRadius = 8;
constexpr double kSpacing = 2;
constexpr double kSeparatorWidth = 6;
constexpr double kTileWidth = 20;
constexpr double kTilePadding = 4; // above and below the digit
constexpr double kTileRadius = 4;
constexpr TextFace kFace{TextFamily::system, 20, TextWeight::bold};
constexpr Tint kGround{InterfaceColor::controlBackground};

constexpr double kTileHeight = lineHeight(kFace) + 2 * kTilePadding;
constexpr double kGroundWidth
    = 6 * kTileWidth + 2 * kSeparatorWidth + 7 * kSpacing + 2 * kSidePadding;

constexpr bool isSeparator(std::size_t place)
{
    return place == 2 || place == 5;
}

} // namespace

ClockItems clockItems(double unixSeconds, int zoneSeconds)
{
    const CivilTime time = civilTime(unixSeconds, zoneSeconds);
    return {time.hour / 10, time.hour % 10, kClockSeparator, time.minute / 10, time.minute % 10,
        kClockSeparator, time.second / 10, time.second % 10};
}

std::string clockText(const ClockItems& items)
{
    std::string text;
    for (const int item : items) {
        text += item == kClockSeparator ? ":" : std::to_string(item);
    }
    return text;
}

Size flipClockSize()
{
    return {kWidth, kTileHeight + 2 * kEdgePadding};
}

Rect clockItemRect(std::size_t place)
{
    double x = (kWidth - kGroundWidth) / 2 + kSidePadding;
    for (std::size_t before = 0; before < place; ++before) {
        x += (isSeparator(before) ? kSeparatorWidth : kTileWidth) + kSpacing;
    }
    return {x, kEdgePadding, isSeparator(place) ? kSeparatorWidth : kTileWidth, kTileHeight};
}

std::vector<Mark> flipClockMarks(const ClockItems& items)
{
    std::vector<Mark> marks{boxMark(
        {(kWidth - kGroundWidth) / 2, 0, kGroundWidth, flipClockSize().height}, kGround, kRadius)};
    for (std::size_t place = 0; place < items.size(); ++place) {
        if (items[place] == kClockSeparator) {
            marks.push_back(textMark({.place = clockItemRect(place),
                .text = ":",
                .face = kFace,
                .tint = secondaryTint(),
                .alignment = TextAlignment::center}));
        }
    }
    return marks;
}

std::vector<Mark> flipDigitMarks(int digit)
{
    const Rect rect{0, 0, kTileWidth, kTileHeight};
    return {{.shape = Box{rect, kTileRadius},
        .fills = {kGround},
        .stroke = Stroke{secondaryTint(0.3), 0.5},
        .texts = {{.place = rect,
            .text = std::to_string(digit),
            .face = kFace,
            .alignment = TextAlignment::center}}}};
}

} // namespace quillbrook
