#include "platform/virtual/VirtualTimeVfs.h"

#include "base/Fatal.h"

#include <cmath>

namespace quillbrook {

namespace {

constexpr sqlite3_int64 kUnixEpochJulianMs = 210'866'760'000'000;
constexpr double kDayMs = 86'400'000;

} // namespace

VirtualTimeVfs::VirtualTimeVfs(const Clock& clock)
    : systemVfs(sqlite3_vfs_find(nullptr))
    , vfs{.base = *systemVfs, .clock = &clock}
{
    vfs.base.zName = "quillbrook-virtual-time";
    vfs.base.pNext = nullptr;
    vfs.base.xCurrentTime = &VirtualTimeVfs::currentTime;
    vfs.base.xCurrentTimeInt64 = &VirtualTimeVfs::currentTimeInt64;
    if (sqlite3_vfs_register(&vfs.base, 1) != SQLITE_OK) {
        fatal("the virtual time can't be registered with SQLite");
    }
}

VirtualTimeVfs::~VirtualTimeVfs()
{
    sqlite3_vfs_unregister(&vfs.base);
    sqlite3_vfs_register(systemVfs, 1);
}

int VirtualTimeVfs::currentTimeInt64(sqlite3_vfs* base, sqlite3_int64* julianMilliseconds)
{
    const auto* ours = reinterpret_cast<const Vfs*>(base);
    const double unixMs = std::floor(ours->clock->now() * 1000);
    *julianMilliseconds = kUnixEpochJulianMs + static_cast<sqlite3_int64>(unixMs);
    return SQLITE_OK;
}

int VirtualTimeVfs::currentTime(sqlite3_vfs* base, double* julianDays)
{
    sqlite3_int64 julianMilliseconds = 0;
    const int result = currentTimeInt64(base, &julianMilliseconds);
    *julianDays = static_cast<double>(julianMilliseconds) / kDayMs;
    return result;
}

} // namespace quillbrook
