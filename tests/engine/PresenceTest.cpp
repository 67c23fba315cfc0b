#include "support/EngineFixture.h"

#include <cmath>

namespace quillbrook {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

/// The one-minute check: a person who goes and comes back.
class PresenceTest : public EngineFixture {
protected:
    /// Lets the time pass to `second` after the start, with the last input `hid` seconds old
    /// at that moment; what is due then runs.
    void runTo(double second, double hid)
    {
        machine.mainLoop.runBefore(kStart + second);
        machine.humanInput.happenAgo(hid);
        machine.runFor(0);
    }
};

TEST_F(PresenceTest, FreshInputRecoversAtTheFirstCheck)
{
    bringToFront("Editor");
    start();
    runTo(60, 9.9);
    EXPECT_THAT(sessions(), ElementsAre("Editor|60|NULL|1"));
    EXPECT_THAT(idlePeriods(), IsEmpty());
    EXPECT_THAT(logText(),
        EndsWith("[2026-01-01T00:01:00Z] 🔄 恢复 | Editor\n"
                 "[2026-01-01T00:01:00Z] 💓 [I] Editor 0s | hid=9s\n"));
}

TEST_F(PresenceTest, InputTenSecondsOldIsNotFresh)
{
    bringToFront("Editor");
    start();
    runTo(60, 10);
    EXPECT_THAT(sessionNames(), IsEmpty());
    EXPECT_THAT(logText(), EndsWith("💓 [I] — — | hid=10s\n"));
}

TEST_F(PresenceTest, OlderInputRecoversOnceTheSilenceHasPassedTwoMinutes)
{
    bringToFront("Editor");
    start();
    machine.runFor(179);
    EXPECT_THAT(sessionNames(), IsEmpty()); // at 120 s the silence is exactly 120
    machine.runFor(1);
    EXPECT_THAT(sessions(), ElementsAre("Editor|180|NULL|1"));
}

TEST_F(PresenceTest, SilenceASplitSecondAboveTwoMinutesRecovers)
{
    bringToFront("Editor");
    start();
    machine.mainLoop.runBefore(kStart + 120);
    machine.mainLoop.jumpTo(kStart + 120.5); // a late timer
    machine.runFor(0);
    EXPECT_THAT(sessions(), ElementsAre("Editor|120|NULL|1"));
}

TEST_F(PresenceTest, InputAnHourOldDoesNotRecover)
{
    start(); // nobody is in front
    machine.runFor(3540);
    bringToFront("Editor");
    machine.runFor(60); // the last input seen is exactly 3600 seconds ago
    EXPECT_THAT(sessionNames(), IsEmpty());
    machine.runFor(7200);
    EXPECT_THAT(sessionNames(), IsEmpty());
    runTo(10860, 9);
    EXPECT_THAT(sessions(), ElementsAre("Editor|10860|NULL|1"));
}

TEST_F(PresenceTest, InputUnderAMinuteOldIsNoted)
{
    start();
    runTo(60, 59.9); // noted: the hour of coming back ends at 3660, and not at 3600
    machine.mainLoop.runBefore(kStart + 3600);
    bringToFront("Editor");
    machine.runFor(0);
    EXPECT_THAT(sessions(), ElementsAre("Editor|3600|NULL|1"));
}

TEST_F(PresenceTest, InputAMinuteOldIsNotNoted)
{
    start();
    runTo(60, 60);
    machine.mainLoop.runBefore(kStart + 3600);
    bringToFront("Editor");
    machine.runFor(0);
    EXPECT_THAT(sessionNames(), IsEmpty());
}

TEST_F(PresenceTest, SilenceOfExactlyFiveMinutesDoesNotGoIdle)
{
    startWorkingIn("Editor");
    machine.humanInput.happenAgo(10000);
    machine.runFor(300); // the check at 360: silence exactly 300
    EXPECT_THAT(sessions(), ElementsAre("Editor|60|NULL|1"));
    EXPECT_THAT(idlePeriods(), IsEmpty());
}

TEST_F(PresenceTest, InputExactlyFiveMinutesOldDoesNotGoIdle)
{
    startWorkingIn("Editor");
    runTo(420, 300);
    EXPECT_THAT(idlePeriods(), IsEmpty());
    runTo(480, 300.5);
    EXPECT_THAT(idlePeriods(), ElementsAre("480|480|1"));
}

TEST_F(PresenceTest, LongSilenceWithRecentInputStaysActive)
{
    startWorkingIn("Editor");
    for (double second = 120; second <= 1200; second += 60) {
        runTo(second, 200);
    }
    EXPECT_THAT(sessions(), ElementsAre("Editor|60|NULL|1"));
}

TEST_F(PresenceTest, OldInputWithAShortSilenceStaysActiveUntilTheSilencePasses)
{
    startWorkingIn("Editor");
    machine.mainLoop.runBefore(kStart + 217);
    bringToFront("Mail"); // a switch from no input, at 219
    runTo(420, 400); // silence 201
    EXPECT_THAT(idlePeriods(), IsEmpty());
    runTo(480, 460);
    EXPECT_THAT(idlePeriods(), IsEmpty());
    runTo(540, 520);
    EXPECT_THAT(idlePeriods(), ElementsAre("540|540|1"));
}

TEST_F(PresenceTest, GoingIdleComesBackInTheSameCheckWithinAnHourOfInput)
{
    startWorkingIn("Editor"); // the last input was at 59
    machine.runFor(360); // the check at 420: silence 360
    EXPECT_THAT(sessions(), ElementsAre("Editor|60|420|1", "Editor|420|NULL|1"));
    EXPECT_THAT(idlePeriods(), ElementsAre("420|420|1"));
    EXPECT_THAT(logText(),
        HasSubstr("[2026-01-01T00:07:00Z] 💤 Editor（6m0s）超时 → 空闲\n"
                  "[2026-01-01T00:07:00Z] 🔄 恢复 | Editor\n"));
}

TEST_F(PresenceTest, APersonAwayGoesIdleAgainAndAgainUntilAnHourAfterTheLastInput)
{
    startWorkingIn("Editor"); // input was noted at 60
    machine.runFor(6 * 3600);
    const auto rows = idlePeriods();
    ASSERT_EQ(rows.size(), 10U);
    for (std::size_t i = 0; i + 1 < rows.size(); ++i) {
        const std::string second = std::to_string(420 + 360 * i);
        EXPECT_EQ(rows[i], second + "|" + second + "|1");
    }
    EXPECT_EQ(rows.back(), "3660|NULL|1"); // exactly an hour after the input that was noted
    EXPECT_EQ(sessions().back(), "Editor|3300|3660|1");

    runTo(22020, 5);
    EXPECT_EQ(idlePeriods().back(), "3660|22020|1");
    EXPECT_EQ(sessions().back(), "Editor|22020|NULL|1");
}

TEST_F(PresenceTest, RecoveryNeedsANameAnIdentifierAndAnOrdinaryApplication)
{
    start();
    const std::vector<std::optional<RunningApplication>> fronts = {std::nullopt,
        RunningApplication{.localizedName = "A"}, RunningApplication{.bundleIdentifier = "org.a"},
        RunningApplication{.localizedName = "Quillbrook", .bundleIdentifier = "org.a"},
        RunningApplication{.localizedName = "A", .bundleIdentifier = "org.a.Helper"}};
    double second = 0;
    for (const auto& front : fronts) {
        machine.workspace.setFront(front);
        runTo(second += 60, 0);
        EXPECT_THAT(sessionNames(), IsEmpty());
    }
    machine.workspace.setFront(RunningApplication{.localizedName = "A", .bundleIdentifier = ""});
    runTo(second + 60, 0); // an identifier of no letters is one all the same
    EXPECT_THAT(sessionNames(), ElementsAre("A"));
}

TEST_F(PresenceTest, RecoveryDropsTheCandidate)
{
    startWorkingIn("Editor");
    machine.mainLoop.runBefore(kStart + 419);
    bringToFront("Mail"); // a candidate at 419
    machine.runFor(1); // idle and back at 420, in Mail
    EXPECT_THAT(sessions(), ElementsAre("Editor|60|420|1", "Mail|420|NULL|1"));
    bringToFront("Editor");
    machine.runFor(2);
    EXPECT_EQ(sessions().size(), 2U);
}

TEST_F(PresenceTest, TheHealthLineComesAtTheFirstCheckAndThenEveryFiveMinutes)
{
    start();
    machine.runFor(59);
    EXPECT_THAT(logText(), Not(HasSubstr("💓")));
    machine.runFor(1);
    EXPECT_THAT(logText(), EndsWith("[2026-01-01T00:01:00Z] 💓 [I] — — | hid=60s\n"));
    const std::string first = logText();
    machine.runFor(240);
    EXPECT_EQ(logText(), first);
    machine.runFor(60);
    EXPECT_THAT(logText(), EndsWith("[2026-01-01T00:06:00Z] 💓 [I] — — | hid=360s\n"));
}

TEST_F(PresenceTest, TheHealthLetterIsTheStateBeforeTheCheck)
{
    startWorkingIn("Editor"); // logged at 60
    machine.runFor(360);
    EXPECT_THAT(logText(), HasSubstr("[2026-01-01T00:06:00Z] 💓 [A] Editor 5m0s | hid=301s\n"));
    machine.workspace.setFront(RunningApplication{.localizedName = "Editor"}); // no recovery
    machine.bringToFront("Editor", "org.example.Editor");
    machine.runFor(240); // 660: active from 420 on
    EXPECT_THAT(logText(), EndsWith("[2026-01-01T00:11:00Z] 💓 [A] Editor 4m0s | hid=601s\n"));
}

using PresenceDeathTest = PresenceTest;

TEST_F(PresenceDeathTest, AnInputTimeThatIsNoNumberIsAFault)
{
    start();
    machine.humanInput.happenAgo(std::nan(""));
    EXPECT_DEATH(machine.runFor(60), "not a span of time");
}

TEST_F(PresenceTest, AClockThatJumpsBackAnHourLosesNothing)
{
    startWorkingIn("Editor");
    machine.runFor(30);
    machine.clock.set(machine.clock.now() - 3600);
    bringToFront("Mail");
    machine.endProcess(); // the machine's own timers follow the clock; drive the rest by stop
    stop();
    EXPECT_THAT(sessions(), ElementsAre("Editor|60|-3510|1"));
    EXPECT_EQ(store().value("SELECT duration_sec FROM app_sessions"), "-3570.0");
    start();
    EXPECT_THAT(logText(), Not(HasSubstr("⚠️")));
}

} // namespace
} // namespace quillbrook
