#include "platform/linux/surroundings/OpenFiles.h"

#include "base/Text.h"
#include "platform/linux/words/Notice.h"

#include <sys/resource.h>

#include <algorithm>
#include <string>

namespace quillbrook {

bool mayOpenEnoughFiles()
{
    rlimit limit{};
    if (getrlimit(RLIMIT_NOFILE, &limit) != 0 || limit.rlim_cur >= kNeededFiles) {
        return true;
    }
    limit.rlim_cur = std::min<rlim_t>(limit.rlim_max, kNeededFiles);
    setrlimit(RLIMIT_NOFILE, &limit);
    if (limit.rlim_cur >= kNeededFiles) {
        return true;
    }
    notice(filled("只允许打开 {} 个文件，至少需要 {} 个: 无法启动，什么都不记录",
        {std::to_string(limit.rlim_cur), std::to_string(kNeededFiles)}));
    return false;
}

} // namespace quillbrook
