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
    const int type = typeOf(column);
    if (type != SQLITE_FLOAT && type != SQLITE_INTEGER) {
        return std::nullopt;
    }
    return sqlite3_column_double(statement.get(), column);
}

std::optional<std::string_view> TrendQuery::bytes(int column) const
{
    if (typeOf(column) != SQLITE_TEXT) {
        return std::nullopt;
    }
    return storedText(statement, column);
}

int TrendQuery::typeOf(int column) const
{
    return column < 0 ? SQLITE_NULL : sqlite3_column_type(statement.get(), column);
}

} // namespace quillbrook
