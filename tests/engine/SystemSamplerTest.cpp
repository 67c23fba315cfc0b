#include "engine/SystemSampler.h"
#include "platform/virtual/VirtualMachine.h"
#include "support/TemporaryDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quillbrook {
namespace {

class SystemSamplerTest : public testing::Test {
protected:
    WindowServerInfo afterPrinting(const std::string& output)
    {
        machine.childProcess.install("/bin/bash", FinishedProcess{.standardOutput = output});
        return sampler.getWindowServerInfo();
    }

    static constexpr WindowServerInfo kFailed{.cpu = -1.0, .memoryMB = -1.0};

    TemporaryDirectory directory{};
    VirtualMachine machine{directory.path(), 1767225600};
    SystemSampler sampler{machine.platform()};
};

TEST_F(SystemSamplerTest, TheFirstProcessorReadingIsNone)
{
    machine.kernelFigures.setCpuTicks(CpuTicks{100, 50, 800, 50});
    EXPECT_EQ(sampler.getCPULoad(), -1.0);
}

TEST_F(SystemSamplerTest, NoTicksElapsedIsNoLoad)
{
    sampler.getCPULoad();
    EXPECT_EQ(sampler.getCPULoad(), 0.0);
}

TEST_F(SystemSamplerTest, TheLoadIsThatSinceTheReadingBefore)
{
    machine.kernelFigures.setCpuTicks(CpuTicks{.user = 100, .system = 50, .idle = 800, .nice = 50});
    sampler.getCPULoad();
    machine.kernelFigures.setCpuTicks(CpuTicks{.user = 120, .system = 60, .idle = 860, .nice = 60});
    EXPECT_EQ(sampler.getCPULoad(), 40.0);
    machine.kernelFigures.setCpuTicks(CpuTicks{.user = 120, .system = 60, .idle = 960, .nice = 60});
    EXPECT_EQ(sampler.getCPULoad(), 0.0);
}

TEST_F(SystemSamplerTest, AFailedProcessorReadingKeepsTheOneBefore)
{
    sampler.getCPULoad();
    machine.kernelFigures.setCpuTicks(std::nullopt);
    EXPECT_EQ(sampler.getCPULoad(), -1.0);
    machine.kernelFigures.setCpuTicks(CpuTicks{.user = 30, .idle = 70});
    EXPECT_EQ(sampler.getCPULoad(), 30.0);
}

TEST_F(SystemSamplerTest, UsedMemoryIsActiveWiredAndCompressed)
{
    machine.kernelFigures.setMemory(MemoryFigures{.activePages = 100,
        .wiredPages = 50,
        .compressorPages = 25,
        .pageSize = 4096,
        .physicalBytes = 4096 * 700});
    EXPECT_EQ(sampler.getMemoryPercent(), 25.0);
}

TEST_F(SystemSamplerTest, MemoryIsNeverAboveAHundred)
{
    machine.kernelFigures.setMemory(
        MemoryFigures{.activePages = 300, .pageSize = 4096, .physicalBytes = 4096 * 299});
    EXPECT_EQ(sampler.getMemoryPercent(), 100.0);
}

TEST_F(SystemSamplerTest, UnreadableMemoryIsTheSentinel)
{
    machine.kernelFigures.setMemory(MemoryFigures{.activePages = 300, .pageSize = 4096});
    EXPECT_EQ(sampler.getMemoryPercent(), -1.0);
    machine.kernelFigures.setMemory(std::nullopt);
    EXPECT_EQ(sampler.getMemoryPercent(), -1.0);
}

TEST_F(SystemSamplerTest, SwapIsAShareAndNoSwapIsTheSentinel)
{
    machine.kernelFigures.setSwap(SwapFigures{.totalBytes = 2048, .usedBytes = 512});
    EXPECT_EQ(sampler.getSwapPercent(), 25.0);
    machine.kernelFigures.setSwap(SwapFigures{.totalBytes = 2048});
    EXPECT_EQ(sampler.getSwapPercent(), 0.0);
    machine.kernelFigures.setSwap(SwapFigures{});
    EXPECT_EQ(sampler.getSwapPercent(), -1.0);
    machine.kernelFigures.setSwap(std::nullopt);
    EXPECT_EQ(sampler.getSwapPercent(), -1.0);
}

TEST_F(SystemSamplerTest, ProcessesAreWholeRecordsOfTheTable)
{
    machine.kernelFigures.setProcessTableBytes(648 * 500);
    EXPECT_EQ(sampler.getProcessCount(), 500);
    machine.kernelFigures.setProcessTableBytes(648 * 500 + 647);
    EXPECT_EQ(sampler.getProcessCount(), 500);
    machine.kernelFigures.setProcessTableBytes(0);
    EXPECT_EQ(sampler.getProcessCount(), 0);
}

TEST_F(SystemSamplerTest, TheDisplayServersLineIsAskedThroughAShell)
{
    sampler.getWindowServerInfo();
    ASSERT_EQ(machine.calls.all().size(), 1U);
    EXPECT_EQ(std::get<LaunchCall>(machine.calls.all().front().what),
        (LaunchCall{.path = "/bin/bash",
            .arguments = {"-c", "ps -p $(pgrep -x WindowServer) -o %cpu=,rss= 2>/dev/null"},
            .isWaitedFor = true}));
}

TEST_F(SystemSamplerTest, TwoNumbersWithoutALineBreakAreRead)
{
    const WindowServerInfo info = afterPrinting("12.5 345678");
    EXPECT_EQ(info.cpu, 12.5);
    EXPECT_EQ(info.memoryMB, 345678 * 0.0009765625);
    EXPECT_EQ(afterPrinting(" \t 312.0\t 1024 \t"), (WindowServerInfo{312.0, 1.0}));
    EXPECT_EQ(afterPrinting("+12.5 +1024"), (WindowServerInfo{12.5, 1.0}));
    EXPECT_EQ(afterPrinting("+-12.5 1024"), kFailed);
    EXPECT_EQ(afterPrinting("12.5 1024 words"), (WindowServerInfo{12.5, 1.0}));
}

TEST_F(SystemSamplerTest, ALineBreakAtTheEndFailsTheReading)
{
    EXPECT_EQ(afterPrinting("12.5 345678\n"), kFailed);
    EXPECT_EQ(afterPrinting("12.5 345678 \n"), (WindowServerInfo{12.5, 345678 * 0.0009765625}));
    EXPECT_EQ(afterPrinting("\n12.5 345678"), kFailed);
}

TEST_F(SystemSamplerTest, OtherOutputFailsTheReading)
{
    EXPECT_EQ(afterPrinting(""), kFailed);
    EXPECT_EQ(afterPrinting(" \t"), kFailed);
    EXPECT_EQ(afterPrinting("12.5"), kFailed);
    EXPECT_EQ(afterPrinting("12.5% 345678"), kFailed);
    EXPECT_EQ(afterPrinting("12.5 345678K"), kFailed);
    EXPECT_EQ(afterPrinting("much 345678"), kFailed);
    EXPECT_EQ(afterPrinting("12.5 345678 \xff"), kFailed);
}

TEST_F(SystemSamplerTest, AShellThatIsMissingFailsTheReading)
{
    machine.childProcess.uninstall("/bin/bash");
    EXPECT_EQ(sampler.getWindowServerInfo(), kFailed);
}

TEST_F(SystemSamplerTest, ASampleHoldsWhatTheRulesAskFor)
{
    machine.kernelFigures.setLoadAverages({1.0, 2.0, 3.0});
    machine.kernelFigures.setSwap(SwapFigures{.totalBytes = 100, .usedBytes = 10});
    machine.kernelFigures.setMemory(
        MemoryFigures{.activePages = 1, .pageSize = 4096, .physicalBytes = 8192});
    machine.childProcess.install("/bin/bash", FinishedProcess{.standardOutput = "7.5 10"});
    machine.kernelFigures.setCpuTicks(CpuTicks{.user = 0, .idle = 50});
    const SystemSample sample = sampler.sample();
    EXPECT_EQ(sample.load.fiveMinutes, 2.0);
    EXPECT_EQ(sample.memPercent, 50.0);
    EXPECT_EQ(sample.swapPercent, 10.0);
    EXPECT_EQ(sample.wsCPU, 7.5);
    machine.kernelFigures.setCpuTicks(CpuTicks{.user = 50, .idle = 100});
    EXPECT_EQ(sampler.getCPULoad(), 50.0) << "each sample moves the processors' sums on";
}

} // namespace
} // namespace quillbrook
