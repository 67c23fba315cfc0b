#pragma once

#include "categories/RuleSet.h"
#include "report/ReportRecords.h"

#include <sqlite3.h>

#include <string>
#include <vector>

namespace quillbrook {

/// The categories of a period.
struct CategoryData {
    std::vector<CategoryUsage> usage{}; // most seconds first
    std::vector<CategorySession> sessions{}; // always empty
    double totalSeconds = 0;
};

/// The categories of the sessions that a filter lets pass. Empty when the query fails.
CategoryData queryCategoryData(sqlite3* db, const std::string& dateFilter, const RuleSet& rules);

/// Each category's hours on each of the 15 days of UTC+8 up to that of `now`, by date. A day or
/// category without sessions has no point; a session counts whole on the day that it began.
std::vector<CategoryTrendPoint> computeTrend(sqlite3* db, const RuleSet& rules, double now);

} // namespace quillbrook
