#include "engine/MonitorLog.h"

#include "base/Fatal.h"
#include "base/Text.h"
#include "platform/Clock.h"

#include <fcntl.h>
#include <sys/types.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdio>

namespace quillbrook {

namespace {

constexpr double kInt64Limit = 9223372036854775808.0;

/// ISO 8601 in UTC, seconds cut off. Times outside the years 0 to 9999 read as the nearest in.
std::string isoTime(double unixSeconds)
{
    constexpr double kEarliest = -62167219200.0;
    constexpr double kLatest = 253402300799.0;
    const std::chrono::sys_seconds time{std::chrono::seconds(
        static_cast<std::int64_t>(std::floor(std::clamp(unixSeconds, kEarliest, kLatest))))};
    const auto day = std::chrono::floor<std::chrono::days>(time);
    const std::chrono::year_month_day date{day};
    const std::chrono::hh_mm_ss clockTime{time - day};
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02u-%02uT%02d:%02d:%02dZ",
        static_cast<int>(date.year()), static_cast<unsigned>(date.month()),
        static_cast<unsigned>(date.day()), static_cast<int>(clockTime.hours().count()),
        static_cast<int>(clockTime.minutes().count()),
        static_cast<int>(clockTime.seconds().count()));
    return text.data();
}

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
