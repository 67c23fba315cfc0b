#include "report/CategoryReports.h"

#include "base/Text.h"
#include "base/Utc8Day.h"
#include "categories/CategoryStore.h"
#include "report/ByApplication.h"
#include "report/PeriodFilters.h"
#include "report/StoreQuery.h"
#include "report/TrendQuery.h"

#include <algorithm>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string_view>
#include <utility>

namespace quillbrook {

namespace {

struct CategoryTotals {
    std::string label{};
    double seconds = 0;
    std::int64_t sessions = 0;
    std::set<std::string> apps{};
};

using TotalsByKey = std::map<std::string, CategoryTotals>;

/// The category of an application whose texts are as a row has them. An empty identifier is none.
CategoryName categoryOf(const RuleSet& rules, std::string_view appName, std::string_view bundleId)
{
    return CategoryStore::classify(rules,
        bundleId.empty() ? std::nullopt : std::optional(validUtf8(bundleId)), validUtf8(appName));
}

/// The totals of an application's category, with the application counted in.
CategoryTotals* enter(TotalsByKey& totals, const CategoryName& category, std::string_view appName)
{
    CategoryTotals& entry
        = totals.try_emplace(category.key, CategoryTotals{.label = category.label}).first->second;
    entry.apps.insert(validUtf8(appName));
    return &entry;
}

TotalsByKey categoryTotals(sqlite3* db, const std::string& dateFilter, const RuleSet& rules)
{
    StoreQuery query(db,
        filled(R"(    SELECT app_name, bundle_id, started_at, ended_at, duration_sec
    FROM app_sessions
    WHERE duration_sec IS NOT NULL
      AND started_at IS NOT NULL AND ended_at IS NOT NULL
      AND {}{}
    ORDER BY started_at)",
            {dateFilter, excludeSystemFull}));
    const int appName = query.column("app_name");
    const int bundleId = query.column("bundle_id");
    const int startedAt = query.column("started_at");
    const int endedAt = query.column("ended_at");
    const int durationSec = query.column("duration_sec");

    TotalsByKey totals;
    ByApplication<CategoryTotals*> totalsOf;
    while (query.next()) {
        const auto name = query.bytes(appName);
        const auto seconds = query.real(durationSec);
        if (!name || !seconds || !query.isReal(startedAt) || !query.isReal(endedAt)) {
            continue;
        }
        const std::string_view bundle = query.bytes(bundleId).value_or(std::string_view());
        CategoryTotals& entry = *totalsOf.of(
            *name, bundle, [&] { return enter(totals, categoryOf(rules, *name, bundle), *name); });
        entry.seconds = shownSeconds(entry.seconds + *seconds);
        ++entry.sessions;
    }
    return totals;
}

struct DayHours {
    std::string label{};
    double hours = 0;
};

/// By number of the day and category key.
using HoursByDay = std::map<std::pair<std::int64_t, std::string>, DayHours>;

/// An application's category, with its hours on the day of the application's last row.
struct AppCategory {
    CategoryName name{};
    std::int64_t day = 0;
    DayHours* hours = nullptr; // none before the first row
};

HoursByDay trendHours(sqlite3* db, const RuleSet& rules)
{
    TrendQuery query(db,
        filled(R"(    SELECT app_name, bundle_id, started_at, duration_sec
    FROM app_sessions
    WHERE duration_sec IS NOT NULL
      AND started_at IS NOT NULL
      AND started_at >= {} - 15*86400{}
    ORDER BY started_at)",
            {dayStartSql, excludeSystemFull}));
    const int appName = query.column("app_name");
    const int bundleId = query.column("bundle_id");
    const int startedAt = query.column("started_at");
    const int durationSec = query.column("duration_sec");

    HoursByDay hours;
    ByApplication<AppCategory> categories;
    while (query.next()) {
        const auto name = query.bytes(appName);
        const auto start = query.number(startedAt);
        const auto seconds = query.number(durationSec);
        if (!name || !start || !seconds) {
            continue;
        }
        const std::string_view bundle = query.bytes(bundleId).value_or(std::string_view());
        AppCategory& category = categories.of(
            *name, bundle, [&] { return AppCategory{.name = categoryOf(rules, *name, bundle)}; });
        const std::int64_t day = utc8DayNumber(*start);
        if (category.hours == nullptr || category.day != day) {
            category.day = day;
            category.hours = &hours
                                  .try_emplace({day, category.name.key},
                                      DayHours{.label = category.name.label})
                                  .first->second;
        }
        category.hours->hours = shownSeconds(category.hours->hours + *seconds / 3600);
    }
    return hours;
}

} // namespace

CategoryData queryCategoryData(sqlite3* db, const std::string& dateFilter, const RuleSet& rules)
{
    const TotalsByKey totals = categoryTotals(db, dateFilter, rules);
    CategoryData data;
    for (const auto& [key, entry] : totals) {
        data.totalSeconds = shownSeconds(data.totalSeconds + entry.seconds);
    }
    for (const auto& [key, entry] : totals) {
        data.usage.push_back({.category = key,
            .label = entry.label,
            .totalSeconds = entry.seconds,
            .sessionCount = entry.sessions,
            .appCount = static_cast<std::int64_t>(entry.apps.size()),
            .pct = data.totalSeconds > 0 ? entry.seconds / data.totalSeconds : 0});
    }
    std::ranges::stable_sort(data.usage, std::greater<>(), &CategoryUsage::totalSeconds);
    return data;
}

std::vector<CategoryTrendPoint> computeTrend(sqlite3* db, const RuleSet& rules, double now)
{
    // The statement reaches one day further back than the page; that day's rows are dropped here.
    const std::int64_t today = utc8DayNumber(now);
    std::vector<CategoryTrendPoint> points;
    for (const auto& [key, entry] : trendHours(db, rules)) {
        const auto& [day, category] = key;
        if (day >= today - 14 && day <= today) {
            points.push_back({.date = utc8DayStart(day),
                .category = category,
                .label = entry.label,
                .hours = entry.hours});
        }
    }
    return points;
}

} // namespace quillbrook
