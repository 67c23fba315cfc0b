#include "platform/linux/confinement/ReplacedFolder.h"

#include "base/OlderThread.h"

#include <fcntl.h>
#include <sqlite3.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <string>
#include <string_view>
#include <system_error>

namespace quillbrook {

namespace fs = std::filesystem;

namespace {

/// The folder under the name that it was given and under its true one.
std::array<std::string, 2>& foldersOfStores()
{
    static auto& ofThisProcess = *new std::array<std::string, 2>; // stores are open up to the end
    return ofThisProcess;
}

bool isInFolder(std::string_view path)
{
    return std::ranges::any_of(foldersOfStores(), [path](const std::string& folder) {
        return path.starts_with(folder) && path.substr(folder.size()).starts_with('/');
    });
}

/// What `call` returns, here or, when it is refused here, on the older thread.
template <typename Call>
int tried(const char* path, const Call& call)
{
    int result = call();
    if (result < 0 && errno == EACCES && isInFolder(path)) {
        int failure = 0;
        onOlderThread([&] {
            result = call();
            failure = errno;
        });
        errno = failure;
    }
    return result;
}

int openFile(const char* path, int flags, int mode)
{
    return tried(path, [=] { return ::open(path, flags, mode); });
}

int unlinkFile(const char* path)
{
    return tried(path, [=] { return ::unlink(path); });
}

template <typename Call>
void replaceCall(sqlite3_vfs* system, const char* name, Call call)
{
    system->xSetSystemCall(system, name, reinterpret_cast<sqlite3_syscall_ptr>(call));
}

} // namespace

void openStoresInReplaced(const fs::path& folder)
{
    std::error_code failure;
    const fs::path truePath = fs::canonical(folder, failure);
    sqlite3_vfs* const system = sqlite3_vfs_find(nullptr);
    constexpr int kHasSystemCalls = 3;
    if (failure || system == nullptr || system->iVersion < kHasSystemCalls) {
        return;
    }
    foldersOfStores() = {folder.string(), truePath.string()};
    replaceCall(system, "open", openFile);
    replaceCall(system, "unlink", unlinkFile);
}

} // namespace quillbrook
