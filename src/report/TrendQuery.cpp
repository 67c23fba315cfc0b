#include "report/TrendQuery.h"

namespace quillbrook {

TrendQuery::TrendQuery(sqlite3* db, const std::string& sql) : statement(prepare(db, sql)) {}

int TrendQuery::column(std::string_view name) const
{
    if (!statement) {
        return -1;
    }
    for (int i = sqlite3_column_count(statement.get()) - 1; i >= 0; --i) {
        const char* itsName = sqlite3_column_name(statement.get(), i);
        if (itsName != nullptr && name == itsName) {
            return i;
        }
    }
    return -1;
}

std::optional<double> TrendQuery::number(int column) const
{
    sqlite3_value* const its = value(column);
    const int type = sqlite3_value_type(its);
    if (type != SQLITE_FLOAT && type != SQLITE_INTEGER) {
        return std::nullopt;
    }
    return sqlite3_value_double(its);
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
