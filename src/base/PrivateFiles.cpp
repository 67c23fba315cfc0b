#include "base/PrivateFiles.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <optional>
#include <system_error>

namespace quillbrook {

namespace fs = std::filesystem;

namespace {

constexpr mode_t kNothingForOthers = S_IRWXG | S_IRWXO;

/// The mask that the process was started with; nothing until `makeFilesPrivate`.
std::optional<mode_t>& usualMask()
{
    static std::optional<mode_t> mask;
    return mask;
}

/// Narrows one entry; `flags` says whether a link is followed.
void narrow(const fs::path& path, int flags)
{
    struct stat status {};
    if (fstatat(AT_FDCWD, path.c_str(), &status, flags) != 0 || status.st_uid != geteuid()
        || S_ISLNK(status.st_mode)) {
        return;
    }
    const mode_t wanted = status.st_mode & ALLPERMS & ~kNothingForOthers;
    if (wanted != (status.st_mode & ALLPERMS)) {
        fchmodat(AT_FDCWD, path.c_str(), wanted, flags);
    }
}

} // namespace

void makeFilesPrivate()
{
    usualMask() = umask(kNothingForOthers);
}

UsualFileModes::UsualFileModes() : before(umask(0))
{
    umask(usualMask().value_or(before));
}

UsualFileModes::~UsualFileModes()
{
    umask(before);
}

void takeFromOthers(const fs::path& folder)
{
    std::error_code failure;
    if (!fs::is_directory(folder, failure)) {
        return;
    }
    // The folder itself may be a link: people move it to another disk.
    narrow(folder, 0);
    fs::recursive_directory_iterator entry(folder, failure);
    while (!failure && entry != fs::recursive_directory_iterator()) {
        narrow(entry->path(), AT_SYMLINK_NOFOLLOW);
        entry.increment(failure);
    }
}

} // namespace quillbrook
