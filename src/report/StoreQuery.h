#pragma once

#include "base/Sqlite.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quillbrook {

/// How reports open the store. One thread alone has the connection, so that SQLite need not lock it
/// for each value of each row.
inline constexpr int kReaderFlags = SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX;

/// The rows of a query, read one at a time. A value is read as the one type asked for, and one of
/// another type counts as absent; integers and doubles don't convert. So does a double that is not
/// finite, as a damaged store can hold.
///
/// A statement that can't be prepared has no rows, and one that fails on its way has those up to
/// there; neither is reported. There are three readers like this one, one for each kind of caller,
/// whose rows are typed for it: the others turn integers into doubles for the trend, and serve the
/// category rules.
class StoreQuery {
public:
    StoreQuery(sqlite3* db, std::string_view sql);

    /// Goes to the next row; false when there is none.
    bool next() { return statement && sqlite3_step(statement.get()) == SQLITE_ROW; }

    /// The number by which a column is read: the last of that name, -1 when there is none.
    int column(std::string_view name) const;

    std::optional<std::int64_t> integer(int column) const;
    std::optional<double> real(int column) const;

    /// A length of time that the store worked out of several, bounded to what pages can show: the
    /// sum of finite numbers can lie beyond all.
    std::optional<double> seconds(int column) const;

    bool isReal(int column) const { return real(column).has_value(); }

    /// A text as it is stored, well formed or not, up to its first NUL. Valid until `next`.
    std::optional<std::string_view> bytes(int column) const;

    /// The text up to its first NUL, in well-formed UTF-8.
    std::optional<std::string> text(int column) const;

private:
    /// Asked for its type and content without a look into the statement for each. SQLite leaves
    /// such a value without a lock, and one thread has the statement.
    sqlite3_value* value(int column) const;

    Statement statement;
};

/// `seconds` bounded to what pages can show as a length of time.
double shownSeconds(double seconds);

} // namespace quillbrook
