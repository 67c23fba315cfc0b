#pragma once

#include <sqlite3.h>

#include <memory>
#include <string>
#include <string_view>

namespace quillbrook {

struct CloseConnection {
    void operator()(sqlite3* connection) const { sqlite3_close(connection); }
};

struct FinalizeStatement {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};

/// A connection that closes itself. Used by one thread at a time.
using Connection = std::unique_ptr<sqlite3, CloseConnection>;

/// A prepared statement that finalizes itself; empty when `prepare` failed.
using Statement = std::unique_ptr<sqlite3_stmt, FinalizeStatement>;

/// What `sqlite3_open_v2` gave: the connection (also after most failures, to ask it for the
/// message) and the result code.
struct OpenedConnection {
    Connection connection;
    int result = SQLITE_OK;
};

/// Opens the file at `path` with the `SQLITE_OPEN_...` flags and the default VFS.
OpenedConnection openConnection(const std::string& path, int flags);

/// Prepares `sql`; empty when SQLite refuses it or `connection` is null.
Statement prepare(sqlite3* connection, std::string_view sql);

/// The number by which a column of the result is read: the last of that name; -1 when there is
/// none, or no statement.
int columnNumber(const Statement& statement, std::string_view name);

/// The text in a value that holds one, up to its first NUL, well formed or not. Valid as long as
/// the value.
std::string_view storedText(sqlite3_value* value);

/// The text of a column of the present row, empty for NULL. Valid until the next step.
std::string_view columnText(const Statement& statement, int column);

} // namespace quillbrook
