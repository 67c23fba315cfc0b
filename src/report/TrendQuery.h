#pragma once

#include "base/Sqlite.h"

#include <optional>
#include <string>
#include <string_view>

namespace quillbrook {

/// The rows of the trend's query, read one at a time: as `StoreQuery`, but an integer is a number
/// like any other, and a column without a name is passed over. Not one with it on purpose: the rows
/// of each caller are typed for its own reader.
class TrendQuery {
public:
    TrendQuery(sqlite3* db, std::string_view sql);

    /// Goes to the next row; false when there is none.
    bool next() { return statement && sqlite3_step(statement.get()) == SQLITE_ROW; }

    /// The number by which a column is read: the last of that name, -1 when there is none.
    int column(std::string_view name) const;

    /// Absent when it is not finite.
    std::optional<double> number(int column) const;

    /// A text as it is stored, well formed or not, up to its first NUL. Valid until `next`.
    std::optional<std::string_view> bytes(int column) const;

private:
    /// Asked for its type and content without a look into the statement for each. SQLite leaves
    /// such a value without a lock, and one thread has the statement.
    sqlite3_value* value(int column) const;

    Statement statement;
};

} // namespace quillbrook
