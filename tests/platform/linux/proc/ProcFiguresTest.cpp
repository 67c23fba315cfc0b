#include "platform/linux/proc/ProcFigures.h"

#include "platform/linux/proc/ProcKernelFigures.h"
#include "platform/linux/proc/Processes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <unistd.h>

#include <filesystem>

namespace quillbrook {
namespace {

constexpr const char* kStat = "cpu  100 5 50 800 20 3 4 6 9 9\ncpu0 1 2 3 4\nctxt 9\n"
                              "btime 1767222000\nprocesses 77\n";

TEST(ProcStat, GivesTheBootTime)
{
    EXPECT_EQ(bootTimeOf(kStat), 1767222000);
    EXPECT_EQ(bootTimeOf("btime\n"), std::nullopt);
    EXPECT_EQ(bootTimeOf("btime x\n"), std::nullopt);
    EXPECT_EQ(bootTimeOf(""), std::nullopt);
}

TEST(ProcStat, GivesTheSumsOfTheProcessors)
{
    const auto ticks = cpuTicksOf(kStat);
    ASSERT_TRUE(ticks);
    EXPECT_EQ(ticks->user, 100);
    EXPECT_EQ(ticks->nice, 5);
    EXPECT_EQ(ticks->system, 63);
    EXPECT_EQ(ticks->idle, 820);
}

TEST(ProcStat, OfAnOldKernelHasFourNumbers)
{
    const auto ticks = cpuTicksOf("cpu 1 2 3 4\n");
    ASSERT_TRUE(ticks);
    EXPECT_EQ(ticks->system, 3);
    EXPECT_EQ(ticks->idle, 4);
    EXPECT_FALSE(cpuTicksOf("cpu 1 2 3\n"));
    EXPECT_FALSE(cpuTicksOf("cpu 1 -2 3 4\n"));
    EXPECT_FALSE(cpuTicksOf("intr 1 2 3 4\n"));
}

constexpr const char* kMeminfo = "MemTotal:       1000 kB\nMemFree: 1 kB\nMemAvailable:  400 kB\n"
                                 "Zswap: 8 kB\nSUnreclaim: 40 kB\nKernelStack: 4 kB\n"
                                 "PageTables: 12 kB\nPercpu: 16 kB\nSwapTotal: 200 kB\n"
                                 "SwapFree: 150 kB\n";

TEST(ProcMeminfo, MakesUpAllThatIsNotAvailable)
{
    const auto memory = memoryOf(kMeminfo, 4096);
    ASSERT_TRUE(memory);
    EXPECT_EQ(memory->physicalBytes, 1024000);
    EXPECT_EQ(memory->pageSize, 4096);
    EXPECT_EQ(memory->compressorPages, 2);
    EXPECT_EQ(memory->wiredPages, 18);
    EXPECT_EQ(memory->activePages, 130);
}

TEST(ProcMeminfo, WithoutDetailsTheUseIsTheSame)
{
    const auto memory = memoryOf("MemTotal: 1000 kB\nMemAvailable: 400 kB\n", 4096);
    ASSERT_TRUE(memory);
    EXPECT_EQ(memory->activePages, 150);
    EXPECT_EQ(memory->wiredPages, 0);
}

TEST(ProcMeminfo, NoPagesAreFewerThanNone)
{
    const auto memory
        = memoryOf("MemTotal: 100 kB\nMemAvailable: 100 kB\nSUnreclaim: 40 kB\n", 4096);
    ASSERT_TRUE(memory);
    EXPECT_EQ(memory->activePages, 0);
}

TEST(ProcMeminfo, WithoutTotalOrAvailableThereIsNoReading)
{
    EXPECT_FALSE(memoryOf("MemTotal: 1000 kB\n", 4096));
    EXPECT_FALSE(memoryOf("MemAvailable: 1000 kB\n", 4096));
    EXPECT_FALSE(memoryOf("MemTotal: x kB\nMemAvailable: 4 kB\n", 4096));
    EXPECT_FALSE(memoryOf("", 4096));
}

TEST(ProcMeminfo, GivesTheSwapSpace)
{
    const auto swap = swapOf(kMeminfo);
    ASSERT_TRUE(swap);
    EXPECT_EQ(swap->totalBytes, 204800);
    EXPECT_EQ(swap->usedBytes, 51200);
    EXPECT_FALSE(swapOf("SwapTotal: 1 kB\n"));
}

TEST(ProcKernelFigures, ReadsThisMachine)
{
    const ProcKernelFigures figures;
    EXPECT_GT(figures.bootTime().value_or(0), 1'000'000'000);
    EXPECT_GT(figures.cpuTicks()->user, 0);
    const auto memory = figures.memory();
    ASSERT_TRUE(memory);
    const double used
        = (memory->activePages + memory->wiredPages + memory->compressorPages) * memory->pageSize;
    EXPECT_GT(used, 0);
    EXPECT_LT(used, memory->physicalBytes);
    EXPECT_TRUE(figures.swap());
    EXPECT_GE(figures.processTableBytes(), 648);
}

TEST(Processes, KnowThisOne)
{
    EXPECT_THAT(runningProcesses(), testing::Contains(getpid()));
    EXPECT_EQ(executableOf(getpid()), std::filesystem::read_symlink("/proc/self/exe").string());
    EXPECT_EQ(executableOf(0), "");
}

} // namespace
} // namespace quillbrook
