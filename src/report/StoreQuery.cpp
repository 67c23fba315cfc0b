#include "report/StoreQuery.h"

#include "base/Fatal.h"
#include "base/Text.h"

namespace quillbrook {

StoreQuery::StoreQuery(sqlite3* db, const std::string& sql) : statement(prepare(db, sql)) {}

int StoreQuery::column(std::string_view name) const
{
    if (!statement) {
        return -1;
    }
    for (int i = sqlite3_column_count(statement.get()) - 1; i >= 0; --i) {
        const char* itsName = sqlite3_column_name(statement.get(), i);
        if (itsName == nullptr) {
            fatal("StoreQuery: a column without a name");
        }
        if (name == itsName) {
            return i;
        }
    }
    return -1;
}

std::optional<std::int64_t> StoreQuery::integer(int column) const
{
    if (typeOf(column) != SQLITE_INTEGER) {
        return std::nullopt;
    }
    return sqlite3_column_int64(statement.get(), column);
}

std::optional<double> StoreQuery::real(int column) const
{
    if (typeOf(column) != SQLITE_FLOAT) {
        return std::nullopt;
    }
    return sqlite3_column_double(statement.get(), column);
}

std::optional<std::string_view> StoreQuery::bytes(int column) const
{
    if (typeOf(column) != SQLITE_TEXT) {
        return std::nullopt;
    }
    return storedText(statement, column);
}

std::optional<std::string> StoreQuery::text(int column) const
{
    const auto stored = bytes(column);
    return stored ? std::optional(validUtf8(*stored)) : std::nullopt;
}

int StoreQuery::typeOf(int column) const
{
    return column < 0 ? SQLITE_NULL : sqlite3_column_type(statement.get(), column);
}

} // namespace quillbrook
