#pragma once

#include <sqlite3.h>

#include <string>
#include <string_view>

namespace quillbrook {

/// While it lives, the statements of a connection see only those rows of a table for which a
/// condition is true, by a temporary view in front of it. The statements stay as they are, and the
/// planner goes along the same indexes. Where the view can't be made, they see the whole table.
class NarrowedTable {
public:
    NarrowedTable(sqlite3* db, std::string_view table, std::string_view condition);
    ~NarrowedTable();

    NarrowedTable(const NarrowedTable&) = delete;
    NarrowedTable& operator=(const NarrowedTable&) = delete;

private:
    sqlite3* db;
    std::string table;
    bool isMade;
};

// A damaged store can hold infinities. They count as absent: these are the conditions that keep
// rows with them out of counts and sums. A product with 0 is 0 for whatever else a column holds.

/// Sessions whose times and length are finite.
std::string soundSessions(sqlite3* db);

/// The same for statements that ask for a length above 0 themselves, which costs them less.
std::string soundLongSessions(sqlite3* db);

/// Rows whose time is finite.
std::string soundTimes(sqlite3* db, std::string_view table, std::string_view column);

/// Minutes of keys with a finite time and count.
std::string soundKeystrokes(sqlite3* db);

} // namespace quillbrook
