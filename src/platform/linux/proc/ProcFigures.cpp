#include "platform/linux/proc/ProcFigures.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <system_error>

namespace quillbrook {

namespace {

constexpr double kBytesPerKilobyte = 1024;

/// What stands behind `key` in the line that begins with it; empty when there is no such line.
std::optional<std::string_view> lineBehind(std::string_view text, std::string_view key)
{
    while (!text.empty()) {
        const auto end = std::min(text.find('\n'), text.size());
        const std::string_view line = text.substr(0, end);
        if (line.starts_with(key)) {
            return line.substr(key.size());
        }
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return std::nullopt;
}

/// Takes the next whole number off the front of `text`, blanks before it too.
std::optional<std::int64_t> takeNumber(std::string_view& text)
{
    text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
    std::int64_t value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec != std::errc() || value < 0) {
        return std::nullopt;
    }
    text.remove_prefix(static_cast<std::size_t>(result.ptr - text.data()));
    return value;
}

/// The value of a line of /proc/meminfo, in bytes.
std::optional<double> bytesAt(std::string_view meminfo, std::string_view key)
{
    auto rest = lineBehind(meminfo, key);
    const auto kilobytes = rest ? takeNumber(*rest) : std::nullopt;
    if (!kilobytes) {
        return std::nullopt;
    }
    return static_cast<double>(*kilobytes) * kBytesPerKilobyte;
}

} // namespace

std::optional<std::int64_t> bootTimeOf(std::string_view stat)
{
    auto rest = lineBehind(stat, "btime ");
    return rest ? takeNumber(*rest) : std::nullopt;
}

std::optional<CpuTicks> cpuTicksOf(std::string_view stat)
{
    auto rest = lineBehind(stat, "cpu ");
    if (!rest) {
        return std::nullopt;
    }
    // user, nice, system, idle, and in later kernels waiting, interrupts, soft ones, stolen
    std::array<double, 8> ticks{};
    for (std::size_t i = 0; i < ticks.size(); ++i) {
        const auto value = takeNumber(*rest);
        if (!value) {
            if (i < 4) {
                return std::nullopt;
            }
            break;
        }
        ticks.at(i) = static_cast<double>(*value);
    }
    return CpuTicks{.user = ticks[0],
        .system = ticks[2] + ticks[5] + ticks[6] + ticks[7],
        .idle = ticks[3] + ticks[4],
        .nice = ticks[1]};
}

std::optional<MemoryFigures> memoryOf(std::string_view meminfo, double pageSize)
{
    const auto total = bytesAt(meminfo, "MemTotal:");
    const auto available = bytesAt(meminfo, "MemAvailable:");
    if (!total || !available || pageSize <= 0) {
        return std::nullopt;
    }
    const auto pages
        = [&](std::string_view key) { return bytesAt(meminfo, key).value_or(0) / pageSize; };
    MemoryFigures memory{.pageSize = pageSize, .physicalBytes = *total};
    memory.compressorPages = pages("Zswap:");
    memory.wiredPages
        = pages("SUnreclaim:") + pages("KernelStack:") + pages("PageTables:") + pages("Percpu:");
    const double usedPages = (*total - *available) / pageSize;
    memory.activePages = std::max(usedPages - memory.wiredPages - memory.compressorPages, 0.0);
    return memory;
}

std::optional<SwapFigures> swapOf(std::string_view meminfo)
{
    const auto total = bytesAt(meminfo, "SwapTotal:");
    const auto unused = bytesAt(meminfo, "SwapFree:");
    if (!total || !unused) {
        return std::nullopt;
    }
    return SwapFigures{.totalBytes = *total, .usedBytes = std::max(*total - *unused, 0.0)};
}

} // namespace quillbrook
