#include "base/Sqlite.h"

#include "base/Fatal.h"

#include <cstddef>

namespace quillbrook {

OpenedConnection openConnection(const std::string& path, int flags)
{
    sqlite3* connection = nullptr;
    const int result = sqlite3_open_v2(path.c_str(), &connection, flags, nullptr);
    return {Connection(connection), result};
}

Statement prepare(sqlite3* connection, std::string_view sql)
{
    sqlite3_stmt* statement = nullptr;
    if (connection != nullptr) {
        sqlite3_prepare_v2(
            connection, sql.data(), static_cast<int>(sql.size()), &statement, nullptr);
    }
    return Statement(statement);
}

int columnNumber(const Statement& statement, std::string_view name)
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

std::string_view storedText(sqlite3_value* value)
{
    // Taken as a blob, a text needs no NUL behind it, for which SQLite would copy it. The length
    // comes first, as asking for it turns a text of 16-bit units into UTF-8.
    const auto length = static_cast<std::size_t>(sqlite3_value_bytes(value));
    const auto* bytes = static_cast<const char*>(sqlite3_value_blob(value));
    if (length == 0) {
        return {};
    }
    if (bytes == nullptr) {
        fatal("storedText: a text without bytes");
    }
    const std::string_view text(bytes, length);
    return text.substr(0, text.find('\0'));
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
