#include "support/EngineFixture.h"

namespace quillbrook {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// A machine under strain, sampled once a minute.
class AlertEngineTest : public EngineFixture {
protected:
    void SetUp() override { start(); }

    void sampleWithLoad(double fiveMinutes)
    {
        machine.kernelFigures.setLoadAverages({.fiveMinutes = fiveMinutes});
        machine.runFor(60);
    }

    void sampleLoads(double fiveMinutes, int samples)
    {
        for (int i = 0; i < samples; ++i) {
            sampleWithLoad(fiveMinutes);
        }
    }

    void setMemoryPercent(double percent)
    {
        machine.kernelFigures.setMemory(
            MemoryFigures{.activePages = percent, .pageSize = 1, .physicalBytes = 100});
    }

    void setSwapPercent(double percent)
    {
        machine.kernelFigures.setSwap(SwapFigures{.totalBytes = 100, .usedBytes = percent});
    }

    void printForWindowServer(const std::string& output)
    {
        machine.childProcess.install("/bin/bash", FinishedProcess{.standardOutput = output});
    }

    /// The samples, counted from 1, at which alerts of a type were raised.
    std::vector<int> firings(const std::string& alertType) const
    {
        std::vector<int> samples;
        for (const std::string& sample :
            store().rows("SELECT CAST((timestamp - 1767225600) / 60 AS INTEGER) FROM alerts "
                         "WHERE alert_type = '"
                + alertType + "' ORDER BY id")) {
            samples.push_back(std::stoi(sample));
        }
        return samples;
    }

    std::vector<std::string> alerts() const
    {
        return store().rows(
            "SELECT alert_type, severity, message, metrics_json FROM alerts ORDER BY id");
    }
};

TEST_F(AlertEngineTest, ALoadAboveTwentyForFourHours)
{
    sampleLoads(25, 240);
    EXPECT_THAT(firings("high_load"), ElementsAre(10, 41, 72, 103, 134, 165, 196, 227));
    EXPECT_THAT(firings("critical_load"), IsEmpty());
}

TEST_F(AlertEngineTest, ALoadAboveFiftyForThreeHoursRaisesBoth)
{
    sampleLoads(50.5, 180);
    EXPECT_THAT(
        firings("critical_load"), ElementsAre(5, 21, 37, 53, 69, 85, 101, 117, 133, 149, 165));
    EXPECT_THAT(firings("high_load"), ElementsAre(10, 41, 72, 103, 134, 165));
    EXPECT_THAT(alerts(),
        testing::Contains("critical_load|critical|5分钟负载达到 50.5！系统即将不可用，请立即关闭"
                          "部分应用或重启|{\"load_5m\":50.5}"));
}

TEST_F(AlertEngineTest, ALoadOfExactlyTheThresholdCountsForNothing)
{
    sampleLoads(20, 120);
    EXPECT_THAT(alerts(), IsEmpty());
    sampleLoads(50, 120);
    EXPECT_THAT(firings("critical_load"), IsEmpty());
    EXPECT_THAT(firings("high_load"), ElementsAre(130, 161, 192, 223));
}

TEST_F(AlertEngineTest, ExactlyTheThresholdDecays)
{
    sampleLoads(25, 9);
    sampleLoads(20, 1);
    sampleLoads(25, 1);
    EXPECT_THAT(alerts(), IsEmpty());
    sampleLoads(25, 1);
    EXPECT_THAT(firings("high_load"), ElementsAre(12));
}

TEST_F(AlertEngineTest, OneGoodSampleUndoesOneBadOne)
{
    sampleLoads(25, 9);
    sampleLoads(10, 1);
    sampleLoads(25, 2);
    EXPECT_THAT(firings("high_load"), ElementsAre(12));
}

TEST_F(AlertEngineTest, EverySecondSampleForFourHoursIsNoAlert)
{
    for (int i = 0; i < 120; ++i) {
        sampleLoads(99, 1);
        sampleLoads(1, 1);
    }
    EXPECT_THAT(alerts(), IsEmpty());
}

TEST_F(AlertEngineTest, TwoBadSamplesInThreeForTwoHours)
{
    // The count rises by one in three samples. The second time it is full at 53, within the
    // cool-down of the first, and waits there, falling and rising.
    for (int i = 0; i < 22; ++i) {
        sampleLoads(30, 2);
        sampleLoads(3, 1);
    }
    EXPECT_THAT(firings("high_load"), ElementsAre(26, 58));
}

TEST_F(AlertEngineTest, ACountNeverFallsBelowZero)
{
    sampleLoads(1, 240);
    sampleLoads(25, 9);
    EXPECT_THAT(alerts(), IsEmpty());
    sampleLoads(25, 1);
    EXPECT_THAT(firings("high_load"), ElementsAre(250));
}

TEST_F(AlertEngineTest, ACountGoesOnRisingAndFallingWithinTheCoolDown)
{
    // After the first alert the count rises to 20 and falls to 5; five bad samples fill it.
    sampleLoads(25, 30);
    sampleLoads(10, 15);
    sampleLoads(25, 4);
    EXPECT_THAT(firings("high_load"), ElementsAre(10));
    sampleLoads(25, 100);
    EXPECT_THAT(firings("high_load"), ElementsAre(10, 50, 81, 112, 143));
}

TEST_F(AlertEngineTest, NineBadAndNineGoodInTurnForThreeHours)
{
    for (int i = 0; i < 10; ++i) {
        sampleLoads(40, 9);
        sampleLoads(0, 9);
    }
    EXPECT_THAT(alerts(), IsEmpty());
}

TEST_F(AlertEngineTest, MemoryAboveEightyFiveForThreeHours)
{
    setMemoryPercent(90.4);
    machine.runFor(180 * 60);
    EXPECT_THAT(firings("high_memory"), ElementsAre(5, 36, 67, 98, 129, 160));
    EXPECT_THAT(alerts(),
        testing::Each(
            "high_memory|warning|内存使用率达到 90%，可能导致应用崩溃|{\"memory_percent\":90.4}"));
}

TEST_F(AlertEngineTest, MemoryOfExactlyEightyFiveOrUnreadableForHoursIsNoAlert)
{
    setMemoryPercent(85);
    machine.runFor(120 * 60);
    machine.kernelFigures.setMemory(std::nullopt);
    machine.runFor(120 * 60);
    setMemoryPercent(86);
    machine.runFor(4 * 60);
    EXPECT_THAT(alerts(), IsEmpty());
    machine.runFor(60);
    EXPECT_THAT(firings("high_memory"), ElementsAre(245));
}

TEST_F(AlertEngineTest, AnUnreadableSampleDecays)
{
    setMemoryPercent(95);
    machine.runFor(4 * 60);
    machine.kernelFigures.setMemory(std::nullopt);
    machine.runFor(2 * 60);
    setMemoryPercent(95);
    machine.runFor(3 * 60);
    EXPECT_THAT(firings("high_memory"), ElementsAre(9));
}

TEST_F(AlertEngineTest, SwapAboveEightyForAnHourAndMore)
{
    setSwapPercent(90);
    machine.runFor(2 * 3600);
    EXPECT_THAT(firings("high_swap"), ElementsAre(1, 17, 33, 49, 65, 81, 97, 113));
    EXPECT_THAT(alerts(),
        testing::Each("high_swap|critical|Swap 使用率达 90%，系统可能强制终止应用|"
                      "{\"swap_percent\":90}"));
}

TEST_F(AlertEngineTest, SwapNeedsOneSampleAndNoRun)
{
    setSwapPercent(80);
    machine.runFor(3600);
    EXPECT_THAT(alerts(), IsEmpty());
    setSwapPercent(80.1);
    machine.runFor(60);
    setSwapPercent(10);
    machine.runFor(14 * 60);
    setSwapPercent(99);
    machine.runFor(60);
    EXPECT_THAT(firings("high_swap"), ElementsAre(61)) << "15 minutes are not more than 900 s";
    machine.runFor(60);
    EXPECT_THAT(firings("high_swap"), ElementsAre(61, 77));
}

TEST_F(AlertEngineTest, ADisplayServerAboveThirtyForTwoHours)
{
    printForWindowServer("35.6 1000");
    machine.runFor(2 * 3600);
    EXPECT_THAT(firings("windowserver_high"), ElementsAre(5, 21, 37, 53, 69, 85, 101, 117));
    EXPECT_THAT(alerts(),
        testing::Each("windowserver_high|warning|WindowServer CPU 达到 36%，图形系统可能不稳定|"
                      "{\"windowserver_cpu\":35.6}"));
}

TEST_F(AlertEngineTest, ADisplayServersLineWithItsLineBreakRaisesNothing)
{
    printForWindowServer("95.0 1000\n");
    machine.runFor(2 * 3600);
    EXPECT_THAT(alerts(), IsEmpty());
}

TEST_F(AlertEngineTest, AllRulesInTheirOrderInOneCall)
{
    machine.kernelFigures.setLoadAverages({.fiveMinutes = 1});
    setMemoryPercent(1);
    machine.runFor(60);
    machine.kernelFigures.setLoadAverages({.fiveMinutes = 60});
    machine.runFor(5 * 60);
    machine.kernelFigures.setLoadAverages({.fiveMinutes = 21});
    setMemoryPercent(88);
    printForWindowServer("31 1");
    machine.runFor(4 * 60);
    store().exec("DELETE FROM alerts");
    machine.kernelFigures.setLoadAverages({.fiveMinutes = 60});
    setSwapPercent(81);
    machine.runFor(60);
    EXPECT_THAT(store().rows("SELECT alert_type FROM alerts ORDER BY id"),
        ElementsAre("high_load", "high_memory", "high_swap", "windowserver_high"));
}

TEST_F(AlertEngineTest, AFiringIsARowANotificationAndALine)
{
    sampleLoads(25.25, 10);
    EXPECT_THAT(store().rows("SELECT timestamp, typeof(timestamp), alert_type, severity, message, "
                             "metrics_json FROM alerts"),
        ElementsAre("1767226200.0|real|high_load|warning|5分钟负载达到 25.2，建议减少同时运行的"
                    "应用|{\"load_5m\":25.25}"));
    EXPECT_THAT(notifications(),
        ElementsAre(
            "display notification \"5分钟负载达到 25.2，建议减少同时运行的应用\" with title "
            "\"⚠️ 系统高负载\""));
    EXPECT_THAT(logText(),
        HasSubstr("[2026-01-01T00:10:00Z] ⚠️ [告警] 5分钟负载达到 "
                  "25.2，建议减少同时运行的应用\n"));
}

TEST_F(AlertEngineTest, EachAlertHasItsTitle)
{
    machine.kernelFigures.setLoadAverages({.fiveMinutes = 60});
    setMemoryPercent(100);
    setSwapPercent(100);
    printForWindowServer("250 1");
    machine.runFor(10 * 60);
    EXPECT_THAT(notifications(),
        ElementsAre(HasSubstr("with title \"🔴 Swap 严重不足\""),
            HasSubstr("with title \"🔴 系统极高负载\""),
            HasSubstr("with title \"⚠️ 内存不足\""),
            HasSubstr("with title \"⚠️ 图形系统异常\""),
            HasSubstr("with title \"⚠️ 系统高负载\"")));
    EXPECT_THAT(logText(), HasSubstr("🔴 [严重告警] Swap 使用率达 100%，系统可能强制终止应用\n"));
    EXPECT_THAT(logText(), HasSubstr("🔴 [严重告警] 5分钟负载达到 60.0！系统即将不可用"));
    EXPECT_THAT(logText(),
        HasSubstr("⚠️ [告警] WindowServer CPU 达到 250%，图形系统可能不稳定\n"));
}

TEST_F(AlertEngineTest, ARowThatFailsDoesNotHoldTheRestBack)
{
    store().exec("ALTER TABLE alerts RENAME TO elsewhere");
    setSwapPercent(90);
    machine.runFor(60);
    EXPECT_THAT(notifications(), testing::SizeIs(1));
    EXPECT_THAT(logText(), HasSubstr("no such table: alerts"));
    EXPECT_THAT(logText(), HasSubstr("🔴 [严重告警] Swap"));
    store().exec("ALTER TABLE elsewhere RENAME TO alerts");
    machine.runFor(15 * 60);
    EXPECT_THAT(alerts(), IsEmpty());
    machine.runFor(60);
    EXPECT_THAT(firings("high_swap"), ElementsAre(17));
}

TEST_F(AlertEngineTest, ANotificationThatCannotBeLaunchedIsALine)
{
    machine.childProcess.uninstall("/usr/bin/osascript");
    setSwapPercent(90);
    machine.runFor(60);
    EXPECT_THAT(firings("high_swap"), ElementsAre(1));
    EXPECT_THAT(logText(), HasSubstr("⚠️ 通知发送失败: not found: /usr/bin/osascript\n"));
}

TEST_F(AlertEngineTest, ARestartForgetsCountsAndCoolDowns)
{
    setSwapPercent(90);
    sampleLoads(25, 9);
    stop();
    start();
    sampleLoads(25, 9);
    EXPECT_THAT(firings("high_load"), IsEmpty());
    EXPECT_THAT(firings("high_swap"), ElementsAre(1, 10));
}

TEST_F(AlertEngineTest, SamplingGoesOnWhileTheScreensSleep)
{
    machine.workspace.notify(WorkspaceNotification::screensDidSleep);
    sampleLoads(25, 10);
    EXPECT_THAT(firings("high_load"), ElementsAre(10));
}

} // namespace
} // namespace quillbrook
