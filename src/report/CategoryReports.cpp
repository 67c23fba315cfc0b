#include "report/CategoryReports.h"

#include "base/Text.h"
#include "base/Utc8Day.h"
#include "categories/CategoryStore.h"
#include "report/PeriodFilters.h"
#include "report/StoreQuery.h"
#include "report/TrendQuery.h"

#include <algorithm>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <unordered_map>
#include <utility>

namespace quillbrook {

namespace {

/// Classifies sessions, each identifier once, as the name has no influence on the category.
class Classifier {
public:
    explicit Classifier(const RuleSet& rules) : rules(rules) {}

    /// An empty `bundleId` is none.
    const CategoryName& categoryOf(const std::string& bundleId, const std::string& appName)
    {
        const auto known = names.find(bundleId);
        if (known != names.end()) {
            return known->second;
        }
        return names
            .emplace(bundleId,
                CategoryStore::classify(
                    rules, bundleId.empty() ? std::nullopt : std::optional(bundleId), appName))
            .first->second;
    }

private:
    const RuleSet& rules;
    std::unordered_map<std::string, CategoryName> names{};
};

struct CategoryTotals {
    std::string label{};
    double seconds = 0;
    std::int64_t sessions = 0;
    std::set<std::string> apps{};
};

using TotalsByKey = std::map<std::string, CategoryTotals>;

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

    Classifier classifier(rules);
    TotalsByKey totals;
    while (query.next()) {
        auto name = query.text(appName);
        const auto seconds = query.real(durationSec);
        if (!name || !seconds || !query.real(startedAt) || !query.real(endedAt)) {
            continue;
        }
        const CategoryName& category
            = classifier.categoryOf(query.text(bundleId).value_or(std::string()), *name);
        CategoryTotals& entry
            = totals.try_emplace(category.key, CategoryTotals{.label = category.label})
                  .first->second;
        entry.seconds += *seconds;
        ++entry.sessions;
        entry.apps.insert(*std::move(name));
    }
    return totals;
}

struct DayHours {
    std::string label{};
    double hours = 0;
};

/// By number of the day and category key.
using HoursByDay = std::map<std::pair<std::int64_t, std::string>, DayHours>;

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

    Classifier classifier(rules);
    HoursByDay hours;
    while (query.next()) {
        const auto name = query.text(appName);
        const auto start = query.number(startedAt);
        const auto seconds = query.number(durationSec);
        if (!name || !start || !seconds) {
            continue;
        }
        const CategoryName& category
            = classifier.categoryOf(query.text(bundleId).value_or(std::string()), *name);
        hours.try_emplace({utc8DayNumber(*start), category.key}, DayHours{.label = category.label})
            .first->second.hours
            += *seconds / 3600;
    }
    return hours;
}

} // namespace

CategoryData queryCategoryData(sqlite3* db, const std::string& dateFilter, const RuleSet& rules)
{
    const TotalsByKey totals = categoryTotals(db, dateFilter, rules);
    CategoryData data;
    for (const auto& [key, entry] : totals) {
        data.totalSeconds += entry.seconds;
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
