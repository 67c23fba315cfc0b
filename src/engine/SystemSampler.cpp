#include "engine/SystemSampler.h"

#include "base/Text.h"
#include "platform/ChildProcess.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string>
#include <string_view>
#include <vector>

namespace quillbrook {

namespace {

constexpr double kFailed = -1.0;
constexpr double kProcessRecordBytes = 648;
constexpr double kMegabytesPerKilobyte = 0.0009765625;

/// The pieces between spaces and tabs, without empty ones. Line breaks are part of a piece.
std::vector<std::string_view> pieces(std::string_view text)
{
    constexpr std::string_view kBlanks = " \t";
    std::vector<std::string_view> found;
    for (auto begin = text.find_first_not_of(kBlanks); begin != std::string_view::npos;
         begin = text.find_first_not_of(kBlanks)) {
        text.remove_prefix(begin);
        const auto end = std::min(text.find_first_of(kBlanks), text.size());
        found.push_back(text.substr(0, end));
        text.remove_prefix(end);
    }
    return found;
}

/// The number that the whole of `piece` is.
std::optional<double> number(std::string_view piece)
{
    if (piece.size() > 1 && piece[0] == '+' && piece[1] != '-') {
        piece.remove_prefix(1);
    }
    double value = 0;
    const auto* end = piece.data() + piece.size();
    const auto result = std::from_chars(piece.data(), end, value);
    if (result.ec != std::errc() || result.ptr != end || !std::isfinite(value)) {
        return std::nullopt;
    }
    return value;
}

} // namespace

SystemSample SystemSampler::sample()
{
    // The processors' load and the number of processes are read at each sample, and no rule asks
    // for them.
    getCPULoad();
    const double memPercent = getMemoryPercent();
    const double swapPercent = getSwapPercent();
    const LoadAvg load = platform.kernelFigures.loadAverages();
    getProcessCount();
    return {.load = load,
        .memPercent = memPercent,
        .swapPercent = swapPercent,
        .wsCPU = getWindowServerInfo().cpu};
}

double SystemSampler::getCPULoad()
{
    const auto ticks = platform.kernelFigures.cpuTicks();
    if (!ticks) {
        return kFailed;
    }
    const auto before = prevCPUTicks;
    prevCPUTicks = ticks;
    if (!before) {
        return kFailed;
    }
    const double user = ticks->user - before->user;
    const double system = ticks->system - before->system;
    const double idle = ticks->idle - before->idle;
    const double nice = ticks->nice - before->nice;
    const double total = user + system + idle + nice;
    return total > 0 ? (user + system + nice) / total * 100 : 0.0;
}

double SystemSampler::getMemoryPercent() const
{
    const auto memory = platform.kernelFigures.memory();
    if (!memory || memory->physicalBytes == 0) {
        return kFailed;
    }
    const double usedPages = memory->activePages + memory->wiredPages + memory->compressorPages;
    return std::min(usedPages * memory->pageSize / memory->physicalBytes * 100, 100.0);
}

double SystemSampler::getSwapPercent() const
{
    const auto swap = platform.kernelFigures.swap();
    if (!swap || swap->totalBytes == 0) {
        return kFailed;
    }
    return swap->usedBytes / swap->totalBytes * 100;
}

std::int64_t SystemSampler::getProcessCount() const
{
    return static_cast<std::int64_t>(
        platform.kernelFigures.processTableBytes() / kProcessRecordBytes);
}

WindowServerInfo SystemSampler::getWindowServerInfo() const
{
    const auto outcome = platform.childProcess.run(
        "/bin/bash", {"-c", "ps -p $(pgrep -x WindowServer) -o %cpu=,rss= 2>/dev/null"});
    const auto* finished = std::get_if<FinishedProcess>(&outcome);
    if (finished == nullptr || validUtf8(finished->standardOutput) != finished->standardOutput) {
        return {};
    }
    // Two numbers that are the whole output: a line break behind the second makes it no number,
    // and the reading fails. That is meant to stay so.
    const auto fields = pieces(finished->standardOutput);
    if (fields.size() < 2) {
        return {};
    }
    const auto cpu = number(fields[0]);
    const auto residentKilobytes = number(fields[1]);
    if (!cpu || !residentKilobytes) {
        return {};
    }
    return {.cpu = *cpu, .memoryMB = *residentKilobytes * kMegabytesPerKilobyte};
}

} // namespace quillbrook
