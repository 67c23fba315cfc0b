#include "engine/MonitorLog.h"

#include "base/Fatal.h"
#include "base/IsoTime.h"
#include "base/Text.h"
#include "platform/Clock.h"

#include <fcntl.h>
#include <sys/types.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>

namespace quillbrook {

namespace {

constexpr double kInt64Limit = 9223372036854775808.0;

} // namespace

std::string fmtDuration(double seconds)
{
    if (!(seconds >= -kInt64Limit && seconds < kInt64Limit)) {
        fatal("fmtDuration: not a span of time");
    }
    const auto whole = static_cast<std::int64_t>(seconds);
    if (whole < 60) {
        return std::to_string(whole) + "s";
    }
    if (whole < 3600) {
        return std::to_string(whole / 60) + "m" + std::to_string(whole % 60) + "s";
    }
    return std::to_string(whole / 3600) + "h" + std::to_string(whole % 3600 / 60) + "m";
}

void MonitorLog::openFile(const std::filesystem::path& path)
{
    closeFile();
    file = open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0644);
}

void MonitorLog::closeFile()
{
    if (file >= 0) {
        close(file);
        file = -1;
    }
}

void MonitorLog::log(std::string_view message)
{
    const std::string line = filled("[{}] {}\n", {isoTime(clock.now()), validUtf8(message)});
    if (file >= 0) {
        appendToFile(line);
    }
    std::fwrite(line.data(), 1, line.size(), stdout);
    std::fflush(stdout);
}

void MonitorLog::appendToFile(std::string_view line) const
{
    if (lseek(file, 0, SEEK_END) < 0) {
        return;
    }
    while (!line.empty()) {
        const ssize_t written = write(file, line.data(), line.size());
        if (written <= 0) {
            return;
        }
        line.remove_prefix(static_cast<std::size_t>(written));
    }
}

} // namespace quillbrook
