#include "report/NarrowedTable.h"

#include "base/Text.h"
#include "report/StoreQuery.h"

namespace quillbrook {

namespace {

bool exec(sqlite3* db, const std::string& sql)
{
    return sqlite3_exec(db, sql.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK;
}

/// Times have an index each, so that asking first is nearly free, and the usual store is spared a
/// look at each row.
bool hasInfinity(sqlite3* db, std::string_view table, std::string_view column)
{
    StoreQuery query(db,
        filled(
            "SELECT EXISTS(SELECT 1 FROM {} WHERE {} IN (9e999, -9e999)) found", {table, column}));
    return query.next() && query.integer(query.column("found")).value_or(0) != 0;
}

std::string soundSessionTimes(sqlite3* db)
{
    const bool areSound = !hasInfinity(db, "app_sessions", "started_at")
        && !hasInfinity(db, "app_sessions", "ended_at");
    return areSound ? "" : " AND started_at * 0 = 0 AND (ended_at IS NULL OR ended_at * 0 = 0)";
}

} // namespace

NarrowedTable::NarrowedTable(sqlite3* db, std::string_view table, std::string_view condition)
    : db(db)
    , table(table)
    , isMade(exec(db,
          filled("CREATE TEMP VIEW {} AS SELECT * FROM main.{}\n    WHERE {}",
              {table, table, condition})))
{
}

NarrowedTable::~NarrowedTable()
{
    if (isMade) {
        exec(db, "DROP VIEW temp." + table);
    }
}

std::string soundSessions(sqlite3* db)
{
    return "duration_sec * 0 = 0" + soundSessionTimes(db);
}

std::string soundLongSessions(sqlite3* db)
{
    return "duration_sec IS NOT 9e999" + soundSessionTimes(db);
}

std::string soundTimes(sqlite3* db, std::string_view table, std::string_view column)
{
    return hasInfinity(db, table, column) ? filled("{} * 0 = 0", {column}) : "1";
}

std::string soundKeystrokes(sqlite3* db)
{
    return "keystroke_count * 0 = 0 AND " + soundTimes(db, "keystrokes", "timestamp");
}

} // namespace quillbrook
