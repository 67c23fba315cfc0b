#include "engine/LogFile.h"

#include "base/OlderThread.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

namespace quillbrook {

namespace fs = std::filesystem;

void LogFile::open(const fs::path& itsPath)
{
    close();
    path = itsPath;
    openAnew();
}

void LogFile::close()
{
    if (file >= 0) {
        ::close(file);
        file = -1;
    }
}

void LogFile::append(std::string_view line)
{
    if (file < 0) {
        return;
    }
    if (!isInPlace()) {
        openAnew();
    }
    if (isFull(line.size())) {
        turnOver();
    }
    // A disk that was full took a part of the line before, which stays a line of its own.
    if (!isLineOpen || writeAll("\n")) {
        writeAll(line);
    }
}

bool LogFile::writeAll(std::string_view text)
{
    while (!text.empty()) {
        const ssize_t written = write(file, text.data(), text.size());
        if (written > 0) {
            text.remove_prefix(static_cast<std::size_t>(written));
            isLineOpen = true;
        } else if (written == 0 || errno != EINTR) {
            return false;
        }
    }
    isLineOpen = false;
    return true;
}

bool LogFile::isFull(std::size_t lineBytes) const
{
    struct stat status {};
    return fstat(file, &status) == 0 && status.st_size > 0
        && status.st_size + static_cast<off_t>(lineBytes) > kMostBytes;
}

bool LogFile::isInPlace() const
{
    struct stat ours {};
    struct stat present {};
    return fstat(file, &ours) == 0 && stat(path.c_str(), &present) == 0
        && ours.st_dev == present.st_dev && ours.st_ino == present.st_ino;
}

void LogFile::turnOver()
{
    // Who renames holds the lock of the very file that is renamed: of two that find it full, the
    // second would put a fresh one in the place of the older. The lock goes with the descriptor.
    if (flock(file, LOCK_EX | LOCK_NB) != 0) {
        return;
    }
    std::error_code failure;
    if (isInPlace()) {
        fs::path older = path;
        older += ".1";
        onOlderThread([&] { fs::rename(path, older, failure); });
    }
    if (!failure) {
        openAnew();
    }
    flock(file, LOCK_UN);
}

/// Takes the file at the path in the place of the present one, which stays when that fails. The
/// folder may be another than the one in which the process may write, as somebody has replaced it.
void LogFile::openAnew()
{
    int next = -1;
    onOlderThread(
        [&] { next = ::open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0644); });
    if (next >= 0) {
        close();
        file = next;
        isLineOpen = false;
    }
}

} // namespace quillbrook
