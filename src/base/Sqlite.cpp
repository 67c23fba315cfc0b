#include "base/Sqlite.h"

#include <cstddef>

namespace quillbrook {

OpenedConnection openConnection(const std::string& path, int flags)
{
    sqlite3* connection = nullptr;
    const int result = sqlite3_open_v2(path.c_str(), &connection, flags, nullptr);
    return {Connection(connection), result};
}

Statement prepare(sqlite3* connection, const std::string& sql)
{
    sqlite3_stmt* statement = nullptr;
    if (connection != nullptr) {
        sqlite3_prepare_v2(connection, sql.c_str(), -1, &statement, nullptr);
    }
    return Statement(statement);
}

std::string_view columnText(const Statement& statement, int column)
{
    const auto* text = sqlite3_column_text(statement.get(), column);
    if (text == nullptr) {
        return {};
    }
    const auto length = static_cast<std::size_t>(sqlite3_column_bytes(statement.get(), column));
    return {reinterpret_cast<const char*>(text), length};
}

} // namespace quillbrook
