#include "report/TrendQuery.h"

#include <cmath>

namespace quillbrook {

TrendQuery::TrendQuery(sqlite3* db, std::string_view sql) : statement(prepare(db, sql)) {}

int TrendQuery::column(std::string_view name) const
{
    return columnNumber(statement, name);
}

std::optional<double> TrendQuery::number(int column) const
{
    sqlite3_value* const its = value(column);
    const int type = sqlite3_value_type(its);
    if (type != SQLITE_FLOAT && type != SQLITE_INTEGER) {
        return std::nullopt;
    }
    const double number = sqlite3_value_double(its);
    return std::isfinite(number) ? std::optional(number) : std::nullopt;
}

std::optional<std::string_view> TrendQuery::bytes(int column) const
{
    sqlite3_value* const its = value(column);
    if (sqlite3_value_type(its) != SQLITE_TEXT) {
        return std::nullopt;
    }
    return storedText(its);
}

sqlite3_value* TrendQuery::value(int column) const
{
    return sqlite3_column_value(statement.get(), column);
}

} // namespace quillbrook
