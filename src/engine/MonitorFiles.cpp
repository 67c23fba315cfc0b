#include "engine/MonitorFiles.h"

#include "base/Fatal.h"
#include "platform/Directories.h"

#include <system_error>

namespace quillbrook {

namespace fs = std::filesystem;

const fs::path& MonitorFiles::dataDir()
{
    if (!dir) {
        dir = directories.dataDirectory();
        if (!dir) {
            fatal("the system names no application support directory");
        }
        std::error_code ignored;
        fs::create_directories(*dir, ignored);
        fs::permissions(
            *dir, fs::perms::group_all | fs::perms::others_all, fs::perm_options::remove, ignored);
    }
    return *dir;
}

const fs::path& MonitorFiles::dbPath()
{
    return db ? *db : db.emplace(storePath(dataDir()));
}

const fs::path& MonitorFiles::logPath()
{
    return log ? *log : log.emplace(quillbrook::logPath(dataDir()));
}

const fs::path& MonitorFiles::pidPath()
{
    return pid ? *pid : pid.emplace(dataDir() / "monitor.pid");
}

} // namespace quillbrook
