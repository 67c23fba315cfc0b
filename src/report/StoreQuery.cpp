#include "report/StoreQuery.h"

#include "base/Fatal.h"
#include "base/Text.h"

#include <algorithm>
#include <cmath>

namespace quillbrook {

StoreQuery::StoreQuery(sqlite3* db, std::string_view sql) : statement(prepare(db, sql))
{
    for (int i = 0; i < sqlite3_column_count(statement.get()); ++i) {
        if (sqlite3_column_name(statement.get(), i) == nullptr) {
            fatal("StoreQuery: a column without a name");
        }
    }
}

int StoreQuery::column(std::string_view name) const
{
    return columnNumber(statement, name);
}

std::optional<std::int64_t> StoreQuery::integer(int column) const
{
    sqlite3_value* const its = value(column);
    if (sqlite3_value_type(its) != SQLITE_INTEGER) {
        return std::nullopt;
    }
    return sqlite3_value_int64(its);
}

std::optional<double> StoreQuery::real(int column) const
{
    sqlite3_value* const its = value(column);
    const double number = sqlite3_value_double(its);
    if (sqlite3_value_type(its) != SQLITE_FLOAT || !std::isfinite(number)) {
        return std::nullopt;
    }
    return number;
}

std::optional<double> StoreQuery::seconds(int column) const
{
    sqlite3_value* const its = value(column);
    if (sqlite3_value_type(its) != SQLITE_FLOAT) {
        return std::nullopt;
    }
    return shownSeconds(sqlite3_value_double(its));
}

double shownSeconds(double seconds)
{
    constexpr double kMost = 9e18; // a whole number of 64 bits, as seconds and as minutes
    return std::clamp(seconds, -kMost, kMost);
}

std::optional<std::string_view> StoreQuery::bytes(int column) const
{
    sqlite3_value* const its = value(column);
    if (sqlite3_value_type(its) != SQLITE_TEXT) {
        return std::nullopt;
    }
    return storedText(its);
}

std::optional<std::string> StoreQuery::text(int column) const
{
    const auto stored = bytes(column);
    return stored ? std::optional(validUtf8(*stored)) : std::nullopt;
}

sqlite3_value* StoreQuery::value(int column) const
{
    return sqlite3_column_value(statement.get(), column);
}

} // namespace quillbrook
