#include "report/PeriodFilters.h"

#include "base/Text.h"
#include "base/Utc8Day.h"
#include "base/WholeNumber.h"

#include <cmath>

namespace quillbrook {

namespace {

constexpr const char* kEverything = "1=1";

std::string today(std::string_view column)
{
    return filled("{} >= {}", {column, dayStartSql});
}

std::string yesterday(std::string_view column)
{
    return filled("{} >= {} - 86400 AND {} < {}", {column, dayStartSql, column, dayStartSql});
}

std::string startedDaysBack(std::string_view days)
{
    return filled("started_at >= {} - {}*86400", {dayStartSql, days});
}

std::string startedSecondsBack(double now, std::int64_t seconds)
{
    return filled("started_at >= {}", {std::to_string(wholeNumber(now) - seconds)});
}

} // namespace

std::string dateFilter(HistoryPeriod period)
{
    switch (period) {
    case HistoryPeriod::today:
        return today("started_at");
    case HistoryPeriod::yesterday:
        return yesterday("started_at");
    case HistoryPeriod::week:
        return startedDaysBack("7");
    case HistoryPeriod::month:
        return startedDaysBack("30");
    case HistoryPeriod::year:
        return startedDaysBack("365");
    case HistoryPeriod::all:
        break;
    }
    return kEverything;
}

std::string dateFilter(FocusPeriod period)
{
    switch (period) {
    case FocusPeriod::today:
        return today("started_at");
    case FocusPeriod::yesterday:
        return yesterday("started_at");
    case FocusPeriod::week:
        return startedDaysBack("7");
    case FocusPeriod::month:
        return startedDaysBack("30");
    case FocusPeriod::all:
        break;
    }
    return kEverything;
}

std::string dateFilter(HabitPeriod period)
{
    switch (period) {
    case HabitPeriod::today:
        return today("started_at");
    case HabitPeriod::yesterday:
        return yesterday("started_at");
    case HabitPeriod::week:
        return startedDaysBack("7");
    case HabitPeriod::month:
        break;
    }
    return startedDaysBack("30");
}

std::string dateFilter(TodayPeriod period)
{
    return period == TodayPeriod::today ? today("started_at") : yesterday("started_at");
}

std::string dateFilter(SessionsPeriod period, double now)
{
    switch (period) {
    case SessionsPeriod::hour1:
        return startedSecondsBack(now, 3600);
    case SessionsPeriod::hour6:
        return startedSecondsBack(now, 21600);
    case SessionsPeriod::today:
        return today("started_at");
    case SessionsPeriod::yesterday:
        break;
    }
    return yesterday("started_at");
}

std::string dateFilter(IdlesPeriod period, double now)
{
    switch (period) {
    case IdlesPeriod::hour1:
        return "(" + startedSecondsBack(now, 3600) + " OR ended_at IS NULL)";
    case IdlesPeriod::hour6:
        return "(" + startedSecondsBack(now, 21600) + " OR ended_at IS NULL)";
    case IdlesPeriod::today:
        return today("started_at");
    case IdlesPeriod::yesterday:
        break;
    }
    return yesterday("started_at");
}

std::string dateFilter(KeylogPeriod period, int zoneSeconds)
{
    // A zone west of Greenwich gives the modifier '+-18000 seconds', which SQLite refuses, so that
    // the page stays empty there. That is meant: the text is what other readers of the store use.
    const std::string zone = std::to_string(zoneSeconds);
    std::string sinceToday
        = filled("timestamp >= strftime('%s', datetime('now', '+{} seconds', 'start of day')) - {}",
            {zone, zone});
    switch (period) {
    case KeylogPeriod::today:
        return sinceToday;
    case KeylogPeriod::week:
        return sinceToday + " - 7*86400";
    case KeylogPeriod::month:
        break;
    }
    return sinceToday + " - 30*86400";
}

std::string keystrokeFilter(TodayPeriod period)
{
    return period == TodayPeriod::today ? today("timestamp") : yesterday("timestamp");
}

std::string bootFilter(std::string filter)
{
    constexpr std::string_view kFrom = "started_at";
    constexpr std::string_view kTo = "timestamp";
    for (auto at = filter.find(kFrom); at != std::string::npos; at = filter.find(kFrom, at)) {
        filter.replace(at, kFrom.size(), kTo);
    }
    return filter;
}

std::int64_t alertDays(AlertsPeriod period)
{
    switch (period) {
    case AlertsPeriod::week:
        return 7;
    case AlertsPeriod::month:
        return 30;
    case AlertsPeriod::all:
        break;
    }
    return 3650;
}

double bjTodayStartUTC(double now)
{
    // Not by the day's number, whose whole part is a day too late before 1970.
    constexpr auto kOffset = static_cast<double>(kUtc8OffsetSec);
    constexpr auto kDay = static_cast<double>(kDaySec);
    return std::floor((now + kOffset) / kDay) * kDay - kOffset;
}

std::int64_t maxHour(FocusPeriod period, double now)
{
    if (period != FocusPeriod::today) {
        return 23;
    }
    return wholeNumber((now - bjTodayStartUTC(now)) / 3600);
}

} // namespace quillbrook
