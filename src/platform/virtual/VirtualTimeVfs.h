#pragma once

#include "platform/Clock.h"

#include <sqlite3.h>

namespace quillbrook {

/// Lets SQLite's 'now' follow a clock: while one lives it is SQLite's default VFS, and connections
/// opened meanwhile take the time from it, cut to whole milliseconds, and all else from the VFS
/// that was the default before. They must be closed before it goes. One at a time.
class VirtualTimeVfs {
public:
    explicit VirtualTimeVfs(const Clock& clock);
    ~VirtualTimeVfs();

    VirtualTimeVfs(const VirtualTimeVfs&) = delete;
    VirtualTimeVfs& operator=(const VirtualTimeVfs&) = delete;

private:
    /// SQLite hands `base` back to each of its functions, and the clock stands behind it.
    struct Vfs {
        sqlite3_vfs base;
        const Clock* clock;
    };

    static int currentTimeInt64(sqlite3_vfs* base, sqlite3_int64* julianMilliseconds);
    static int currentTime(sqlite3_vfs* base, double* julianDays);

    sqlite3_vfs* systemVfs;
    Vfs vfs;
};

} // namespace quillbrook
