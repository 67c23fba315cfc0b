#include "engine/MonitorLog.h"

#include "base/Fatal.h"
#include "base/IsoTime.h"
#include "base/Text.h"
#include "platform/Clock.h"

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

void MonitorLog::log(std::string_view message)
{
    const std::string line = filled("[{}] {}\n", {isoTime(clock.now()), validUtf8(message)});
    file.append(line);
    std::fwrite(line.data(), 1, line.size(), stdout);
    std::fflush(stdout);
}

} // namespace quillbrook
