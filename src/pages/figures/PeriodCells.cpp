#include "pages/figures/PeriodCells.h"

#include "base/Utc8Text.h"

#include <utility>

namespace quillbrook {

namespace {

constexpr TextFace kDateFace{.pixels = 10};
constexpr TextFace kFigureFace{TextFamily::monospaced, 10};
constexpr TextFace kLabelFace{.pixels = 10, .weight = TextWeight::medium};

} // namespace

TableCell dateCell(Date startedAt, const LocalCalendar& calendar)
{
    return {.text = dateLabel(startedAt, calendar),
        .face = kDateFace,
        .tint = isToday(startedAt, calendar) ? secondaryTint() : Tint{SystemColor::orange, 0.6}};
}

TableCell startCell(Date startedAt)
{
    return {.text = utc8HourMinuteSecond(startedAt), .face = kFigureFace, .tint = secondaryTint()};
}

TableCell endCell(std::optional<Date> endedAt)
{
    if (!endedAt) {
        return {.text = "--:--:--", .face = kFigureFace, .tint = secondaryTint(0.4)};
    }
    return startCell(*endedAt);
}

TableCell durationCell(std::string text)
{
    return {.text = std::move(text), .face = kFigureFace, .tint = primaryTint()};
}

TableCell labelCell(std::string text, Tint tint)
{
    return {.text = std::move(text), .face = kLabelFace, .tint = tint};
}

} // namespace quillbrook
