#include "platform/linux/sleep/SleepWatch.h"

#include "platform/linux/sleep/WatchedMainLoop.h"
#include "support/EngineFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

namespace quillbrook {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

/// The real engine on a virtual machine, whose workspace hears of sleep through the watch.
class SleepWatchTest : public EngineFixture {
protected:
    SleepWatchTest()
    {
        const Platform plain = machine.platform();
        engine = std::make_unique<MonitorEngine>(Platform{.clock = clock,
            .mainLoop = mainLoop,
            .workQueues = plain.workQueues,
            .workspace = plain.workspace,
            .humanInput = plain.humanInput,
            .accessibility = plain.accessibility,
            .keyCounting = plain.keyCounting,
            .inputSource = plain.inputSource,
            .kernelFigures = plain.kernelFigures,
            .childProcess = plain.childProcess,
            .userDefaults = plain.userDefaults,
            .bundleValues = plain.bundleValues,
            .localeText = plain.localeText,
            .directories = plain.directories,
            .loginItem = plain.loginItem,
            .timeZone = plain.timeZone,
            .hostFacts = plain.hostFacts,
            .appearance = plain.appearance,
            .idleMemory = plain.idleMemory,
            .notices = plain.notices,
            .windowActivation = plain.windowActivation,
            .systemSound = plain.systemSound,
            .permissionGuide = plain.permissionGuide,
            .panelItem = plain.panelItem,
            .desktopExtension = plain.desktopExtension});
        startWorkingIn("Editor"); // its session begins at 60
        machine.runFor(40.5);
    }

    /// Nothing runs for so long, and the kernel doesn't count it as sleep.
    void stopFor(double seconds) { machine.mainLoop.jumpTo(machine.clock.now() + seconds); }

    void sleepFor(double seconds)
    {
        slept += seconds;
        stopFor(seconds);
    }

    KernelTime kernelTime() const
    {
        return {.sinceBoot = machine.clock.now() - kStart,
            .sleptAtLeast = slept - 0.01,
            .sleptAtMost = slept + 0.01};
    }

    /// "name|start|length|close type"; the starts are in tenths of seconds.
    std::vector<std::string> lengths() const
    {
        return store().rows(
            "SELECT app_name, CAST(round(10 * (started_at - 1767225600)) AS INTEGER), "
            "CAST(round(10 * duration_sec) AS INTEGER), close_type FROM app_sessions ORDER BY id");
    }

    std::vector<std::string> idleLengths() const
    {
        return store().rows(
            "SELECT CAST(round(10 * (started_at - 1767225600)) AS INTEGER), "
            "CAST(round(10 * duration_sec) AS INTEGER), source_type FROM idle_periods ORDER BY id");
    }

    double slept = 0;
    BelatedClock clock{machine.clock};
    SleepWatch watch{clock, [this] { return kernelTime(); },
        {.willSleep = [this] { machine.workspace.notify(WorkspaceNotification::willSleep); },
            .didWake = [this] { machine.workspace.notify(WorkspaceNotification::didWake); }}};
    WatchedMainLoop mainLoop{machine.mainLoop, watch};
};

TEST_F(SleepWatchTest, TheWakingComesBeforeTheFirstLookAfterTheSleep)
{
    watch.sleepAnnounced();
    sleepFor(3600);
    machine.runFor(0);
    EXPECT_THAT(lengths(), ElementsAre("Editor|600|405|1", "Editor|37005|NULL|5"));
    EXPECT_THAT(idleLengths(), ElementsAre("1005|36000|2"));
    watch.wakingAnnounced(); // as always, too late
    machine.runFor(10);
    EXPECT_THAT(lengths(), ElementsAre("Editor|600|405|1", "Editor|37005|NULL|5"));
    EXPECT_THAT(logText(), HasSubstr("☀️ 系统已唤醒"));
}

TEST_F(SleepWatchTest, ASecondNightIsLikeTheFirst)
{
    for (int i = 0; i < 2; ++i) {
        watch.sleepAnnounced();
        sleepFor(3600);
        machine.runFor(0);
        watch.wakingAnnounced();
        machine.runFor(10);
    }
    EXPECT_THAT(
        lengths(), ElementsAre("Editor|600|405|1", "Editor|37005|100|5", "Editor|73105|NULL|5"));
    EXPECT_THAT(idleLengths(), ElementsAre("1005|36000|2", "37105|36000|2"));
}

TEST_F(SleepWatchTest, RowsThatWereFinishedBeforeTheSleepStayAsTheyAre)
{
    watch.sleepAnnounced();
    machine.runFor(1);
    EXPECT_THAT(lengths(), ElementsAre("Editor|600|410|1"));
    sleepFor(3600);
    machine.runFor(0);
    EXPECT_THAT(lengths(), ElementsAre("Editor|600|410|1", "Editor|37015|NULL|2"));
    EXPECT_THAT(idleLengths(), ElementsAre("1010|36005|2"));
}

TEST_F(SleepWatchTest, ASleepThatNobodyAnnouncedBeganAtTheLastLook)
{
    sleepFor(3600);
    machine.runFor(0);
    EXPECT_THAT(lengths(), ElementsAre("Editor|600|400|1", "Editor|37005|NULL|5"));
    EXPECT_THAT(idleLengths(), ElementsAre("1000|36005|2"));
    EXPECT_THAT(logText(), HasSubstr("[2026-01-01T00:01:40Z] 💤 系统即将睡眠"));
    // Both announcements come after all.
    watch.sleepAnnounced();
    watch.wakingAnnounced();
    machine.runFor(10);
    EXPECT_EQ(lengths().size(), 3U);
    EXPECT_THAT(idleLengths(), ElementsAre("1000|36005|2", "37005|0|2"));
}

TEST_F(SleepWatchTest, AnAnnouncementThatIsHeardAfterTheSleepIsNoNewSleep)
{
    sleepFor(3600);
    watch.sleepAnnounced();
    watch.wakingAnnounced();
    machine.runFor(0);
    EXPECT_THAT(lengths(), ElementsAre("Editor|600|400|1", "Editor|37005|NULL|5"));
    EXPECT_THAT(idleLengths(), ElementsAre("1000|36005|2"));
}

TEST_F(SleepWatchTest, ASecondIsNoSleep)
{
    slept += 0.9;
    machine.runFor(10);
    EXPECT_THAT(idleLengths(), IsEmpty());
    slept += 1.1;
    machine.runFor(1);
    EXPECT_EQ(idleLengths().size(), 1U);
}

TEST_F(SleepWatchTest, AProcessThatWasStoppedHearsOfTheWakingFirst)
{
    watch.sleepAnnounced();
    stopFor(40);
    machine.runFor(0.1); // what is due waits for the bus
    EXPECT_THAT(lengths(), ElementsAre("Editor|600|NULL|1"));
    watch.wakingAnnounced();
    machine.runFor(2);
    EXPECT_THAT(lengths(), ElementsAre("Editor|600|405|1", "Editor|1407|NULL|5"));
    EXPECT_THAT(idleLengths(), ElementsAre("1005|401|2"));
}

TEST_F(SleepWatchTest, AStoppedProcessThatHearsNothingGoesOn)
{
    watch.sleepAnnounced();
    stopFor(40);
    machine.runFor(0.3);
    EXPECT_EQ(idleLengths().size(), 1U);
    machine.runFor(3);
    EXPECT_EQ(lengths().size(), 1U);
    EXPECT_THAT(logText(), Not(HasSubstr("☀️")));
}

TEST_F(SleepWatchTest, WithoutAnAnnouncementAStopHoldsNothingUp)
{
    stopFor(40);
    machine.bringToFront("Mail", "org.example.Mail");
    machine.runFor(3);
    EXPECT_EQ(sessionNames().back(), "Mail");
}

TEST_F(SleepWatchTest, WithTheAnnouncerGoneTheMachineIsAwake)
{
    watch.sleepAnnounced();
    machine.runFor(5);
    EXPECT_THAT(lengths(), ElementsAre("Editor|600|410|1"));
    watch.announcerGone();
    machine.runFor(1);
    EXPECT_THAT(lengths(), ElementsAre("Editor|600|410|1", "Editor|1060|NULL|2"));
    // It comes back, and the sleep that it prepared happens after all.
    sleepFor(3600);
    watch.wakingAnnounced();
    machine.runFor(1);
    EXPECT_THAT(
        lengths(), ElementsAre("Editor|600|410|1", "Editor|1060|0|2", "Editor|37065|NULL|5"));
}

TEST_F(SleepWatchTest, AnAnnouncerThatGoesWithoutAWordChangesNothing)
{
    watch.announcerGone();
    EXPECT_THAT(logText(), Not(HasSubstr("☀️")));
}

TEST_F(SleepWatchTest, AWakingWithoutASleepIsPassedOn)
{
    watch.wakingAnnounced();
    EXPECT_THAT(logText(), HasSubstr("☀️"));
}

TEST(KernelTime, GoesOnAndKnowsItsSleepWell)
{
    const KernelTime first = kernelTime();
    const KernelTime second = kernelTime();
    EXPECT_GT(first.sinceBoot, 0);
    EXPECT_GE(second.sinceBoot, first.sinceBoot);
    EXPECT_LE(first.sleptAtLeast, first.sleptAtMost);
    EXPECT_LE(second.sleptAtLeast, first.sleptAtMost) << "nobody slept meanwhile";
}

} // namespace
} // namespace quillbrook
