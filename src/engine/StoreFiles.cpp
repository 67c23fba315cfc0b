#include "engine/StoreFiles.h"

#include "base/IsoTime.h"
#include "base/Utc8Day.h"

#include <sys/stat.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <string>
#include <system_error>

namespace quillbrook {

namespace fs = std::filesystem;

namespace {

fs::path beside(fs::path path, const char* suffix)
{
    path += suffix;
    return path;
}

std::int64_t nanoseconds(const struct stat& found)
{
#ifdef __APPLE__
    const timespec& written = found.st_mtimespec;
#else
    const timespec& written = found.st_mtim;
#endif
    return std::int64_t{written.tv_sec} * 1'000'000'000 + written.tv_nsec;
}

/// "monitor-damaged-20260131-160509", in the program's day.
std::string datedName(double now)
{
    const CivilTime time = civilTime(now, static_cast<int>(kUtc8OffsetSec));
    std::array<char, 64> name{};
    std::snprintf(name.data(), name.size(), "monitor-damaged-%04d%02d%02d-%02d%02d%02d", time.year,
        time.month, time.day, time.hour, time.minute, time.second);
    return name.data();
}

bool isTaken(const fs::path& path)
{
    std::error_code ignored;
    return fs::exists(fs::symlink_status(path, ignored))
        || fs::exists(fs::symlink_status(beside(path, "-wal"), ignored));
}

} // namespace

void StoreFiles::remember(const fs::path& dbPath)
{
    path = dbPath;
    logPath = beside(dbPath, "-wal");
    indexPath = beside(dbPath, "-shm");
    store = lookAt(path);
    log = lookAt(logPath);
    index = lookAt(indexPath);
}

std::optional<StoreFiles::Look> StoreFiles::lookAt(const fs::path& path)
{
    struct stat found {};
    if (stat(path.c_str(), &found) != 0) {
        return std::nullopt;
    }
    return Look{.device = found.st_dev,
        .inode = found.st_ino,
        .size = found.st_size,
        .writtenAtNs = nanoseconds(found)};
}

void StoreFiles::noteOwnWrite()
{
    if (!store) {
        return;
    }
    const auto note = [](std::optional<Look>& known, const fs::path& where) {
        const auto now = lookAt(where);
        if (now && (!known || now->isSameFile(*known))) {
            known = now;
        }
    };
    note(store, path);
    note(log, logPath);
    if (!index) {
        note(index, indexPath);
    }
}

StoreFilesState StoreFiles::look() const
{
    if (!store) {
        return StoreFilesState::untouched;
    }
    const auto storeNow = lookAt(path);
    if (!storeNow) {
        // A folder that can't be looked into now may still have it.
        return errno == ENOENT || errno == ENOTDIR ? StoreFilesState::gone
                                                   : StoreFilesState::untouched;
    }
    if (!storeNow->isSameFile(*store)) {
        return StoreFilesState::replaced;
    }
    const auto logNow = lookAt(logPath);
    const auto isLost = [](const std::optional<Look>& known, const std::optional<Look>& now) {
        return known && (!now || !now->isSameFile(*known));
    };
    if (isLost(log, logNow) || (index && isLost(index, lookAt(indexPath)))) {
        return StoreFilesState::logLost;
    }
    // The store itself is written to when the log is brought home, which we do ourselves; to the
    // log others may add.
    const bool isTouched = storeNow->size != store->size
        || storeNow->writtenAtNs != store->writtenAtNs || (log && logNow->size < log->size);
    return isTouched ? StoreFilesState::touched : StoreFilesState::untouched;
}

void StoreFiles::letLogBeWritten() const
{
    std::error_code ignored;
    const fs::perms mode = fs::status(path, ignored).permissions();
    if (mode != fs::perms::unknown) {
        fs::permissions(logPath, mode, ignored);
        fs::permissions(indexPath, mode, ignored);
    }
}

std::optional<fs::path> StoreFiles::setAside(double now)
{
    const fs::path folder = path.parent_path();
    const std::string name = datedName(now);
    fs::path target = folder / (name + ".db");
    for (int again = 2; isTaken(target); ++again) {
        target = folder / (name + "-" + std::to_string(again) + ".db");
    }
    std::error_code failure;
    fs::rename(path, target, failure);
    if (failure) {
        return std::nullopt;
    }
    // SQLite finds the log by the store's name, so that the two can be opened together.
    fs::rename(logPath, beside(target, "-wal"), failure);
    fs::remove(indexPath, failure);
    return target;
}

void StoreFiles::removeRests()
{
    // A file that came with the new store is another than ours, and its own.
    const auto removeOurs = [](const std::optional<Look>& known, const fs::path& where) {
        const auto now = lookAt(where);
        if (known && now && now->isSameFile(*known)) {
            std::error_code ignored;
            fs::remove(where, ignored);
        }
    };
    removeOurs(log, logPath);
    removeOurs(index, indexPath);
}

} // namespace quillbrook
