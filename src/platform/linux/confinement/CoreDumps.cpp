#include "platform/linux/confinement/CoreDumps.h"

#include <sys/resource.h>

namespace quillbrook {

void forbidCoreDumps()
{
    // A crash service that the kernel starts by itself gets the memory whatever the limit in bytes,
    // but for this number, which ends every dump. The switch that makes a process undumpable would
    // take /proc/self from us, too, and with it the desktop's portals, which look at their callers
    // there.
    constexpr rlimit kNone{.rlim_cur = 1, .rlim_max = 1};
    if (setrlimit(RLIMIT_CORE, &kNone) != 0) {
        constexpr rlimit kNoFile{.rlim_cur = 0, .rlim_max = 0}; // below a limit of nothing at all
        setrlimit(RLIMIT_CORE, &kNoFile);
    }
}

} // namespace quillbrook
