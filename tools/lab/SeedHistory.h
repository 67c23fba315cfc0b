#pragma once

#include <sqlite3.h>

#include <cstdint>

namespace quillbrook::lab {

/// How much history is wanted.
struct SeedPlan {
    std::int64_t days = 1;
    double now = 0; // the end of the history, seconds since 1970
    std::uint64_t seed = 1;
    std::int64_t sessionsPerDay = 200;
};

/// Fills an empty store with days of plausible work up to `plan.now`: in the day of UTC+8 with
/// lunch, nights and weekends, some thirty applications of all categories, idle periods of every
/// source, keys by the minute in all four methods, alerts of all types, and boots. Equal plans give
/// equal rows. False when a statement failed.
bool seedHistory(sqlite3* db, const SeedPlan& plan);

} // namespace quillbrook::lab
