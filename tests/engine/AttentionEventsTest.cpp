#include "support/EngineFixture.h"

namespace quillbrook {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;

using enum WorkspaceNotification;

/// What happens outside: locked screens, sleep, wake, quit.
class AttentionEventsTest : public EngineFixture {
protected:
    void notify(WorkspaceNotification notification) { machine.workspace.notify(notification); }
};

TEST_F(AttentionEventsTest, ALockIsWrittenByTheNextTick)
{
    startWorkingIn("Editor");
    notify(screensDidSleep);
    EXPECT_THAT(sessions(), ElementsAre("Editor|60|NULL|1"));
    EXPECT_THAT(logText(), EndsWith("🔒 屏幕已休眠 (锁屏/屏保)\n"));
    machine.runFor(1);
    EXPECT_THAT(sessions(), ElementsAre("Editor|60|61|1"));
    EXPECT_THAT(idlePeriods(), ElementsAre("61|NULL|3"));
}

TEST_F(AttentionEventsTest, AnUnlockRecoversAtTheFirstCleanTick)
{
    startWorkingIn("Editor");
    notify(screensDidSleep);
    machine.runFor(10);
    machine.bringToFront("loginwindow", "com.apple.loginwindow");
    notify(screensDidWake);
    EXPECT_THAT(logText(), EndsWith("🔓 屏幕已唤醒\n"));
    machine.runFor(5);
    EXPECT_THAT(sessions(), ElementsAre("Editor|60|61|1"));
    bringToFront("Mail");
    machine.runFor(1);
    EXPECT_THAT(sessions(), ElementsAre("Editor|60|61|1", "Mail|76|NULL|3"));
    EXPECT_THAT(idlePeriods(), ElementsAre("61|76|3"));
    EXPECT_THAT(logText(), EndsWith("🟢 Mail\n"));
}

TEST_F(AttentionEventsTest, ALockBetweenTwoTicksLeavesNoTrace)
{
    startWorkingIn("Editor");
    notify(screensDidSleep);
    notify(screensDidWake);
    machine.runFor(10);
    EXPECT_THAT(sessions(), ElementsAre("Editor|60|NULL|1"));
    EXPECT_THAT(idlePeriods(), IsEmpty());
}

TEST_F(AttentionEventsTest, ASleepThatATickSawIsWrittenAtThatTick)
{
    startWorkingIn("Editor");
    notify(willSleep);
    EXPECT_THAT(logText(), EndsWith("💤 系统即将睡眠\n"));
    machine.runFor(1);
    machine.mainLoop.jumpTo(kStart + 3600);
    notify(didWake);
    machine.runFor(1);
    EXPECT_THAT(sessions(), ElementsAre("Editor|60|61|1", "Editor|3600|NULL|2"));
    EXPECT_THAT(idlePeriods(), ElementsAre("61|3600|2"));
}

TEST_F(AttentionEventsTest, ASleepWithoutATickIsWrittenWholeAtWake)
{
    startWorkingIn("Editor");
    machine.runFor(30);
    notify(willSleep);
    machine.mainLoop.jumpTo(kStart + 7290);
    notify(didWake);
    EXPECT_THAT(sessions(), ElementsAre("Editor|60|90|1"));
    EXPECT_THAT(idlePeriods(), ElementsAre("90|7290|2"));
    EXPECT_EQ(store().value("SELECT duration_sec FROM idle_periods"), "7200.0");
    EXPECT_THAT(logText(), EndsWith("[2026-01-01T02:01:30Z] ☀️ 系统已唤醒\n"));
    machine.runFor(1);
    // The wake left no current session, so what follows counts as a startup.
    EXPECT_THAT(sessions(), ElementsAre("Editor|60|90|1", "Editor|7290|NULL|5"));
    EXPECT_THAT(logText(), HasSubstr("[2026-01-01T02:01:30Z] 🟢 Editor\n"));
}

TEST_F(AttentionEventsTest, AWakeWithoutAnAnnouncementAssumesFiveMinutes)
{
    startWorkingIn("Editor");
    machine.runFor(540);
    const auto before = idlePeriods();
    notify(didWake);
    ASSERT_EQ(idlePeriods().size(), before.size() + 1);
    EXPECT_EQ(idlePeriods().back(), "300|600|2");
}

TEST_F(AttentionEventsTest, AWakeWhileInactiveWritesNothing)
{
    start();
    machine.runFor(10);
    notify(didWake);
    EXPECT_THAT(sessions(), IsEmpty());
    EXPECT_THAT(idlePeriods(), IsEmpty());
    EXPECT_THAT(logText(), EndsWith("☀️ 系统已唤醒\n"));
}

TEST_F(AttentionEventsTest, AWakeCountsAsInput)
{
    bringToFront("Quillbrook");
    start();
    machine.runFor(3600); // input was last noted at the start
    notify(didWake);
    bringToFront("Editor");
    machine.runFor(60);
    EXPECT_THAT(sessions(), ElementsAre("Editor|3660|NULL|1"));
}

TEST_F(AttentionEventsTest, SleepWinsOverLock)
{
    startWorkingIn("Editor");
    notify(screensDidSleep);
    notify(willSleep);
    machine.runFor(1);
    EXPECT_THAT(idlePeriods(), ElementsAre("61|NULL|2"));
}

TEST_F(AttentionEventsTest, ASleepingMachineThatIsLockedToo)
{
    startWorkingIn("Editor");
    notify(willSleep);
    notify(screensDidSleep);
    machine.runFor(1);
    EXPECT_THAT(idlePeriods(), ElementsAre("61|NULL|2"));
    notify(didWake);
    machine.runFor(5);
    EXPECT_THAT(sessionNames(), ElementsAre("Editor")); // still locked
    notify(screensDidWake);
    machine.runFor(1);
    EXPECT_THAT(sessions(), ElementsAre("Editor|60|61|1", "Editor|67|NULL|2"));
}

TEST_F(AttentionEventsTest, AnAnnouncedSleepThatNeverComesKeepsItsCause)
{
    // The cause is pending already when our own window comes to the front.
    startWorkingIn("Editor");
    notify(willSleep);
    machine.runFor(0.5);
    notify(didWake); // active: the moment is written as a sleep
    machine.runFor(0.5);
    EXPECT_THAT(sessions(), ElementsAre("Editor|60|60|1", "Editor|61|NULL|5"));
}

TEST_F(AttentionEventsTest, AnIdleRowBeginsWithAPendingCause)
{
    start();
    notify(willSleep); // inactive: the cause becomes sleep
    notify(didWake);
    bringToFront("Editor");
    machine.runFor(1); // no session in this run yet: a startup
    EXPECT_THAT(sessions(), ElementsAre("Editor|1|NULL|5"));
}

TEST_F(AttentionEventsTest, ASleepAnnouncedWhileIdleByTimeoutTakesOverTheCause)
{
    startWorkingIn("Editor");
    machine.workspace.setFront(
        RunningApplication{.localizedName = "Editor", .bundleIdentifier = "org.example.Editor"});
    machine.humanInput.happenAgo(3600);
    machine.mainLoop.runBefore(kStart + 419.5);
    machine.workspace.setFront(RunningApplication{
        .localizedName = std::nullopt, .bundleIdentifier = "org.example.Editor"});
    machine.runFor(1); // idle at 420; without a name there is no recovery
    EXPECT_THAT(idlePeriods(), ElementsAre("420|NULL|1"));
    bringToFront("Mail");
    machine.runFor(5);
    EXPECT_THAT(sessionNames(), ElementsAre("Editor")); // a tick does not end a timeout
    notify(willSleep);
    machine.mainLoop.jumpTo(kStart + 1000);
    notify(didWake);
    machine.runFor(1);
    EXPECT_THAT(sessions(), ElementsAre("Editor|60|420|1", "Mail|1000|NULL|2"));
    EXPECT_THAT(idlePeriods(), ElementsAre("420|1000|1"));
}

TEST_F(AttentionEventsTest, ATickDoesNotBringBackFromASystemApplication)
{
    startWorkingIn("Editor");
    bringToFront("Quillbrook");
    machine.runFor(1);
    bringToFront("Editor");
    machine.humanInput.happenAgo(100);
    machine.runFor(58);
    EXPECT_THAT(sessionNames(), ElementsAre("Editor"));
}

TEST_F(AttentionEventsTest, ACauseThatASystemApplicationHidStaysForTheNextRow)
{
    // Locked while our own window is in front: the state is inactive already, so no cause is
    // set, and the unlock brings nobody back.
    startWorkingIn("Editor");
    bringToFront("Quillbrook");
    machine.runFor(1);
    notify(screensDidSleep);
    machine.runFor(5);
    notify(screensDidWake);
    bringToFront("Editor");
    machine.runFor(5);
    EXPECT_THAT(sessionNames(), ElementsAre("Editor"));
    EXPECT_THAT(idlePeriods(), ElementsAre("61|NULL|1"));
}

TEST_F(AttentionEventsTest, RecoveryClosesEveryOpenIdleRow)
{
    startWorkingIn("Editor");
    notify(screensDidSleep);
    machine.runFor(10);
    store().exec("INSERT INTO idle_periods (started_at, source_type) VALUES (1767225601, 1)");
    notify(screensDidWake);
    machine.runFor(1);
    EXPECT_THAT(idlePeriods(), ElementsAre("61|71|3", "1|71|1"));
}

TEST_F(AttentionEventsTest, AnUnattendedStartRecoversAtTheThirdCheck)
{
    bringToFront("Editor");
    start();
    machine.runFor(180);
    EXPECT_THAT(sessions(), ElementsAre("Editor|180|NULL|1"));
}

TEST_F(AttentionEventsTest, AQuitWhileLockedEndsTheIdleRowAsProcessExit)
{
    startWorkingIn("Editor");
    notify(screensDidSleep);
    machine.runFor(20);
    stop();
    EXPECT_THAT(sessions(), ElementsAre("Editor|60|61|1"));
    EXPECT_THAT(idlePeriods(), ElementsAre("61|80|4"));
}

} // namespace
} // namespace quillbrook
