#include "platform/linux/proc/Processes.h"

#include "base/OlderThread.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <system_error>

namespace quillbrook {

namespace fs = std::filesystem;

namespace {

fs::path directoryOf(pid_t process)
{
    return fs::path("/proc") / std::to_string(process);
}

/// The kernel's number of the login session that a process came from.
std::string loginSessionOf(pid_t process)
{
    std::ifstream stream(directoryOf(process) / "sessionid");
    std::string session;
    std::getline(stream, session);
    return session;
}

bool isOurs(pid_t process)
{
    struct stat status {};
    return stat(directoryOf(process).c_str(), &status) == 0 && status.st_uid == getuid();
}

} // namespace

std::vector<pid_t> runningProcesses()
{
    std::vector<pid_t> processes;
    std::error_code failure;
    for (fs::directory_iterator item("/proc", failure), end; !failure && item != end;
         item.increment(failure)) {
        const std::string name = item->path().filename().string();
        pid_t process = 0;
        const auto result = std::from_chars(name.data(), name.data() + name.size(), process);
        if (result.ec == std::errc() && result.ptr == name.data() + name.size()) {
            processes.push_back(process);
        }
    }
    return processes;
}

std::string executableOf(pid_t process)
{
    std::string path;
    onOlderThread([&] {
        std::error_code failure;
        path = fs::read_symlink(directoryOf(process) / "exe", failure).string();
    });
    constexpr std::string_view kDeleted = " (deleted)";
    if (path.ends_with(kDeleted)) {
        path.resize(path.size() - kDeleted.size());
    }
    return path;
}

bool knowsItselfAs(pid_t process, pid_t number)
{
    std::ifstream stream(directoryOf(process) / "status");
    for (std::string line; std::getline(stream, line);) {
        if (line.starts_with("NSpid:")) {
            const std::string_view numbers = line;
            return numbers.substr(numbers.find_last_of("\t ") + 1) == std::to_string(number);
        }
    }
    return process == number; // no containers here
}

int instancesOfThisProgram()
{
    const std::string executable = executableOf(getpid());
    const std::string loginSession = loginSessionOf(getpid());
    const auto processes = runningProcesses();
    const auto isAnother = [&](pid_t process) {
        return process != getpid() && isOurs(process) && executableOf(process) == executable
            && loginSessionOf(process) == loginSession;
    };
    int count = 1;
    onOlderThread([&] { // once for all of them
        count += static_cast<int>(std::ranges::count_if(processes, isAnother));
    });
    return count;
}

} // namespace quillbrook
