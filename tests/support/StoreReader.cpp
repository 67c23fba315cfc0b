#include "support/StoreReader.h"

#include "base/Fatal.h"

#include <utility>

namespace quillbrook {

StoreReader::StoreReader(const std::filesystem::path& path)
    : connection(
        openConnection(path.string(), SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE).connection)
{
    sqlite3_busy_timeout(connection.get(), 5000);
}

void StoreReader::exec(const std::string& sql) const
{
    if (sqlite3_exec(connection.get(), sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) {
        fatal(std::string(sqlite3_errmsg(connection.get())) + ": " + sql);
    }
}

std::vector<std::string> StoreReader::rows(const std::string& sql) const
{
    const Statement statement = prepare(connection.get(), sql);
    if (!statement) {
        fatal(std::string(sqlite3_errmsg(connection.get())) + ": " + sql);
    }
    std::vector<std::string> rows;
    while (sqlite3_step(statement.get()) == SQLITE_ROW) {
        std::string row;
        for (int column = 0; column < sqlite3_column_count(statement.get()); ++column) {
            const bool isNull = sqlite3_column_type(statement.get(), column) == SQLITE_NULL;
            row.append(column == 0 ? "" : "|")
                .append(isNull ? std::string_view("NULL") : columnText(statement, column));
        }
        rows.push_back(std::move(row));
    }
    return rows;
}

std::string StoreReader::value(const std::string& sql) const
{
    const auto all = rows(sql);
    return all.empty() ? std::string() : all.front();
}

} // namespace quillbrook
