#pragma once

#include "base/Sqlite.h"

#include <filesystem>
#include <string>
#include <vector>

namespace quillbrook {

/// A store as a test reads and prepares it, on a connection of its own.
class StoreReader {
public:
    /// Makes the file when it is missing.
    explicit StoreReader(const std::filesystem::path& path);

    /// Runs statements; fatal when one fails.
    void exec(const std::string& sql) const;

    /// The rows of a query, each as its columns' texts joined by "|", with NULL for NULL.
    std::vector<std::string> rows(const std::string& sql) const;

    /// The first column of the first row, as a text; empty when there is no row.
    std::string value(const std::string& sql) const;

    sqlite3* handle() const { return connection.get(); }

private:
    Connection connection;
};

} // namespace quillbrook
