#include "engine/StoreCheck.h"

#include "base/Sqlite.h"

#include <system_error>

namespace quillbrook {

bool isStoreSound(const std::filesystem::path& path)
{
    // An empty file would be a sound store without tables; SQLite removes its log at a look.
    std::error_code ignored;
    if (std::filesystem::file_size(path, ignored) == 0) {
        return false;
    }
    const OpenedConnection opened = openConnection(path.string(), SQLITE_OPEN_READONLY);
    sqlite3* reader = opened.connection.get();
    if (!prepare(reader, "SELECT 1 FROM app_sessions") && sqlite3_errcode(reader) == SQLITE_ERROR) {
        return false;
    }
    const Statement check = prepare(reader, "PRAGMA quick_check(1)");
    if (check && sqlite3_step(check.get()) == SQLITE_ROW) {
        return columnText(check, 0) == "ok";
    }
    const int result = sqlite3_extended_errcode(reader);
    return (result & 0xFF) != SQLITE_CORRUPT && (result & 0xFF) != SQLITE_NOTADB
        && result != SQLITE_IOERR_SHORT_READ;
}

} // namespace quillbrook
