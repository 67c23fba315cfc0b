#include "tests/faults/DiskFaults.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>

namespace quillbrook {

namespace {

std::array<char, PATH_MAX> folder{};

DiskFaults* sharedFaults()
{
    const char* path = std::getenv("DISK_FAULTS");
    if (path == nullptr) {
        static DiskFaults own{};
        return &own;
    }
    const auto file = static_cast<int>(syscall(SYS_openat, AT_FDCWD, path, O_RDWR | O_CLOEXEC));
    const long place = syscall(
        SYS_mmap, nullptr, sizeof(DiskFaults), PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
    if (place == -1) {
        std::abort();
    }
    syscall(SYS_close, file);
    return reinterpret_cast<DiskFaults*>(place);
}

/// The folder of the faults, "" for none.
std::string_view faultyFolder()
{
    if (folder[0] == '\0') {
        const char* name = std::getenv("DISK_FAULTS_FOLDER");
        setDiskFaultsFolder(name != nullptr ? name : "/nowhere");
    }
    return folder.data();
}

bool isBelowFolder(int file)
{
    std::array<char, 32> link{};
    std::snprintf(link.data(), link.size(), "/proc/self/fd/%d", file);
    std::array<char, PATH_MAX> path{};
    const ssize_t length = readlink(link.data(), path.data(), path.size() - 1);
    if (length <= 0) {
        return false;
    }
    const std::string_view name(path.data(), static_cast<std::size_t>(length));
    return name.starts_with(faultyFolder()) && name.size() > faultyFolder().size()
        && name[faultyFolder().size()] == '/';
}

/// A number that follows from the seed and the count of calls alone.
std::uint64_t randomNumber(std::uint32_t call)
{
    std::uint64_t x
        = (std::uint64_t{diskFaults().seed} << 32U | call) * 0x9E3779B97F4A7C15U + 0x7F4A7C15U;
    x = (x ^ (x >> 30U)) * 0xBF58476D1CE4E5B9U;
    x = (x ^ (x >> 27U)) * 0x94D049BB133111EBU;
    return x ^ (x >> 31U);
}

/// A random number when this call for `file` fails, else 0.
std::uint64_t misfortune(int file)
{
    DiskFaults& faults = diskFaults();
    if (faults.perMille == 0 || file < 0 || !isBelowFolder(file)) {
        return 0;
    }
    const std::uint64_t random = randomNumber(faults.calls++);
    if (random % 1000 >= faults.perMille) {
        return 0;
    }
    ++faults.faults;
    return (random >> 10U) | 1U;
}

long failed(std::uint64_t random, std::initializer_list<int> errors)
{
    errno = *(errors.begin() + (random >> 1U) % errors.size());
    return -1;
}

/// A write of `count` bytes through `really`, which is given how many of them to write.
template <typename Write>
ssize_t perhapsWritten(int file, std::size_t count, Write really)
{
    const std::uint64_t random = misfortune(file);
    if (random == 0) {
        return really(count);
    }
    if ((random >> 8U) % 5 == 0 && count > 1) {
        return really(count / 2);
    }
    return failed(random, {ENOSPC, EIO, EDQUOT, EINTR});
}

int perhapsKept(int file, long call)
{
    const std::uint64_t random = misfortune(file);
    return static_cast<int>(
        random == 0 ? syscall(call, file) : failed(random, {EIO, ENOSPC, EDQUOT, EINTR}));
}

int perhapsCut(int file, off_t length)
{
    const std::uint64_t random = misfortune(file);
    return static_cast<int>(
        random == 0 ? syscall(SYS_ftruncate, file, length) : failed(random, {EIO, ENOSPC, EINTR}));
}

void* perhapsMapped(void* place, std::size_t length, int access, int flags, int file, off_t offset)
{
    const std::uint64_t random = (flags & MAP_ANONYMOUS) == 0 ? misfortune(file) : 0;
    if (random != 0) {
        errno = (random & 2U) != 0 ? ENOMEM : EIO;
        return MAP_FAILED;
    }
    return reinterpret_cast<void*>(syscall(SYS_mmap, place, length, access, flags, file, offset));
}

} // namespace

DiskFaults& diskFaults()
{
    static DiskFaults* const faults = sharedFaults();
    return *faults;
}

/// Before the program gives up writing anywhere but in its data directory, the switch included.
__attribute__((constructor)) static void openSwitch()
{
    diskFaults();
}

void setDiskFaultsFolder(const char* name)
{
    if (realpath(name, folder.data()) == nullptr) {
        std::snprintf(folder.data(), folder.size(), "%s", name);
    }
}

} // namespace quillbrook

// The system's own calls, under the names and for the files that they have everywhere.
extern "C" {

ssize_t write(int file, const void* bytes, size_t count)
{
    return quillbrook::perhapsWritten(
        file, count, [=](size_t part) { return syscall(SYS_write, file, bytes, part); });
}

ssize_t writev(int file, const iovec* parts, int count)
{
    // Whole or not at all: for a part of it the parts would have to be cut.
    return quillbrook::perhapsWritten(
        file, 1, [=](size_t) { return syscall(SYS_writev, file, parts, count); });
}

ssize_t pwrite(int file, const void* bytes, size_t count, off_t offset)
{
    return quillbrook::perhapsWritten(
        file, count, [=](size_t part) { return syscall(SYS_pwrite64, file, bytes, part, offset); });
}

ssize_t pwrite64(int file, const void* bytes, size_t count, off_t offset)
{
    return pwrite(file, bytes, count, offset);
}

int fsync(int file)
{
    return quillbrook::perhapsKept(file, SYS_fsync);
}

int fdatasync(int file)
{
    return quillbrook::perhapsKept(file, SYS_fdatasync);
}

int ftruncate(int file, off_t length) noexcept
{
    return quillbrook::perhapsCut(file, length);
}

int ftruncate64(int file, off_t length) noexcept
{
    return quillbrook::perhapsCut(file, length);
}

void* mmap(void* place, size_t length, int access, int flags, int file, off_t offset) noexcept
{
    return quillbrook::perhapsMapped(place, length, access, flags, file, offset);
}

void* mmap64(void* place, size_t length, int access, int flags, int file, off_t offset) noexcept
{
    return quillbrook::perhapsMapped(place, length, access, flags, file, offset);
}
}
