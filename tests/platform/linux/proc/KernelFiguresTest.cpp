#include "platform/linux/proc/ProcKernelFigures.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <iterator>
#include <memory>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace quillbrook {
namespace {

/// What the system's own tools say of this machine.
std::string outputOf(const std::string& command)
{
    const std::unique_ptr<FILE, int (*)(FILE*)> pipe(
        popen(("LC_ALL=C TZ=UTC " + command).c_str(), "r"), pclose);
    std::string output;
    for (int c = std::fgetc(pipe.get()); c != EOF; c = std::fgetc(pipe.get())) {
        output += static_cast<char>(c);
    }
    return output;
}

std::vector<double> numbersBehind(const std::string& label, const std::string& text)
{
    const auto at = text.find(label);
    std::vector<double> numbers;
    if (at == std::string::npos) {
        ADD_FAILURE() << "no " << label << " in " << text;
        return numbers;
    }
    std::istringstream stream(text.substr(at + label.size()));
    for (double number = 0; stream >> number;) {
        numbers.push_back(number);
        if (stream.peek() == ',') {
            stream.get();
        }
    }
    return numbers;
}

std::set<int> processesOfPs()
{
    std::istringstream numbers(outputOf("exec ps -e -o pid="));
    return {std::istream_iterator<int>(numbers), {}};
}

/// Other programs are at work meanwhile: whether one of the readings within a minute agrees.
bool agreesOnce(const std::function<bool()>& agrees)
{
    const auto end = std::chrono::steady_clock::now() + std::chrono::minutes(1);
    while (!agrees()) {
        if (std::chrono::steady_clock::now() > end) {
            return false;
        }
    }
    return true;
}

constexpr double kMegabyte = 1024.0 * 1024.0;

TEST(KernelFigures, MemoryIsThatOfFree)
{
    const ProcKernelFigures figures;
    EXPECT_TRUE(agreesOnce([&figures] {
        const auto row = numbersBehind("Mem:", outputOf("free -b"));
        const auto memory = figures.memory();
        const double total = row.at(0);
        const double available = row.at(5);
        const double used = (memory->activePages + memory->wiredPages + memory->compressorPages)
            * memory->pageSize;
        return memory->physicalBytes == total
            && std::abs(used - (total - available)) < 8 * kMegabyte;
    }));
}

TEST(KernelFigures, SwapIsThatOfFree)
{
    const ProcKernelFigures figures;
    EXPECT_TRUE(agreesOnce([&figures] {
        const auto row = numbersBehind("Swap:", outputOf("free -b"));
        const auto swap = figures.swap();
        return swap->totalBytes == row.at(0)
            && std::abs(swap->usedBytes - row.at(1)) < 8 * kMegabyte;
    }));
}

TEST(KernelFigures, LoadsAreThoseOfUptime)
{
    const ProcKernelFigures figures;
    EXPECT_TRUE(agreesOnce([&figures] {
        const auto loads = numbersBehind("load average: ", outputOf("uptime"));
        const LoadAvg ours = figures.loadAverages();
        return std::abs(ours.oneMinute - loads.at(0)) < 0.011
            && std::abs(ours.fiveMinutes - loads.at(1)) < 0.011
            && std::abs(ours.fifteenMinutes - loads.at(2)) < 0.011;
    }));
}

TEST(KernelFigures, TheBootTimeIsThatOfUptime)
{
    const ProcKernelFigures figures;
    std::tm broken{};
    ASSERT_NE(strptime(outputOf("uptime -s").c_str(), "%Y-%m-%d %H:%M:%S", &broken), nullptr);
    EXPECT_NEAR(static_cast<double>(*figures.bootTime()), static_cast<double>(timegm(&broken)), 2);
}

TEST(KernelFigures, ProcessesAreThoseOfPs)
{
    const ProcKernelFigures figures;
    double mayPass = 0;
    EXPECT_TRUE(agreesOnce([&figures, &mayPass] {
        const std::set<int> before = processesOfPs();
        const double ours = figures.processTableBytes() / 648;
        const std::set<int> after = processesOfPs();
        const auto lasting = static_cast<double>(std::ranges::count_if(
            before, [&after](int process) { return after.contains(process); }));
        const double passing // but for the tool itself
            = static_cast<double>(before.size() + after.size()) - 2 * (lasting + 1);
        mayPass += 1; // a machine that is never quiet is asked less sharply in the end
        return passing <= mayPass && ours >= lasting && ours <= lasting + passing;
    }));
}

TEST(KernelFigures, TicksLieBetweenThoseThatVmstatSaysBeforeAndAfter)
{
    struct Kind {
        std::vector<const char*> labels;
        double CpuTicks::*ours;
    };
    const auto sumOf = [](const std::string& text, const std::vector<const char*>& labels) {
        double sum = 0;
        std::istringstream lines(text);
        for (std::string line; std::getline(lines, line);) {
            for (const char* label : labels) {
                if (line.ends_with(label)) {
                    sum += std::strtod(line.c_str(), nullptr);
                }
            }
        }
        return sum;
    };
    const ProcKernelFigures figures;
    const std::string before = outputOf("vmstat -s");
    const auto ticks = figures.cpuTicks();
    const std::string after = outputOf("vmstat -s");
    for (const Kind& kind :
        {Kind{{" non-nice user cpu ticks"}, &CpuTicks::user},
            Kind{{" nice user cpu ticks"}, &CpuTicks::nice},
            Kind{{" system cpu ticks", " IRQ cpu ticks", " softirq cpu ticks", " stolen cpu ticks"},
                &CpuTicks::system},
            Kind{{" idle cpu ticks", " IO-wait cpu ticks"}, &CpuTicks::idle}}) {
        // The kernel takes some waiting back at times.
        EXPECT_GE(*ticks.*kind.ours, sumOf(before, kind.labels) - 5) << kind.labels.front();
        EXPECT_LE(*ticks.*kind.ours, sumOf(after, kind.labels) + 5) << kind.labels.front();
    }
}

} // namespace
} // namespace quillbrook
