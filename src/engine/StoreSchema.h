#pragma once

#include "categories/CategoryStore.h"

#include <sqlite3.h>

#include <string>
#include <string_view>

namespace quillbrook {

/// Whether the table has a column of exactly that name.
bool hasColumn(sqlite3* store, const std::string& table, std::string_view column);

/// Brings the tables and indexes up to date and seeds the categories. Every step runs each time; a
/// store that is up to date stays as it is. Writes by `dbExec` alone.
void createSchema(sqlite3* store, const CategoryStore::Exec& dbExec);

} // namespace quillbrook
