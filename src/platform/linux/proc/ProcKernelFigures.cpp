#include "platform/linux/proc/ProcKernelFigures.h"

#include "platform/linux/proc/ProcFigures.h"
#include "platform/linux/proc/Processes.h"

#include <unistd.h>

#include <array>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>

namespace quillbrook {

namespace {

constexpr double kProcessRecordBytes = 648;

std::string textOf(const char* path)
{
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

} // namespace

std::optional<std::int64_t> ProcKernelFigures::bootTime() const
{
    return bootTimeOf(textOf("/proc/stat"));
}

std::optional<CpuTicks> ProcKernelFigures::cpuTicks() const
{
    return cpuTicksOf(textOf("/proc/stat"));
}

std::optional<MemoryFigures> ProcKernelFigures::memory() const
{
    return memoryOf(textOf("/proc/meminfo"), getpagesize());
}

std::optional<SwapFigures> ProcKernelFigures::swap() const
{
    return swapOf(textOf("/proc/meminfo"));
}

LoadAvg ProcKernelFigures::loadAverages() const
{
    std::array<double, 3> averages{};
    if (getloadavg(averages.data(), 3) != 3) {
        return {};
    }
    return {.oneMinute = averages[0], .fiveMinutes = averages[1], .fifteenMinutes = averages[2]};
}

double ProcKernelFigures::processTableBytes() const
{
    return static_cast<double>(runningProcesses().size()) * kProcessRecordBytes;
}

} // namespace quillbrook
