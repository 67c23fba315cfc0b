#include "support/EngineFixture.h"

namespace quillbrook {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;

/// The one-second tick: switches and what it takes for nobody's attention.
class AttentionTest : public EngineFixture {};

TEST_F(AttentionTest, SwitchCountsAfterTwoSecondsInFront)
{
    startWorkingIn("Editor");
    bringToFront("Mail");
    machine.runFor(2); // seen by the first tick, one second old at the second
    EXPECT_THAT(sessionNames(), ElementsAre("Editor"));
    machine.runFor(1); // exactly 2.0 seconds old
    EXPECT_THAT(sessions(), ElementsAre("Editor|60|63|1", "Mail|63|NULL|0"));
    EXPECT_THAT(logText(), EndsWith("[2026-01-01T00:01:03Z] 🔄 Editor（3s）→ Mail\n"));
}

TEST_F(AttentionTest, AFastPassThroughAnotherApplicationLeavesNoSession)
{
    startWorkingIn("Editor");
    bringToFront("Mail");
    machine.runFor(2);
    bringToFront("Editor");
    machine.runFor(1);
    bringToFront("Mail"); // a new candidate, not the one from before
    machine.runFor(2);
    EXPECT_THAT(sessions(), ElementsAre("Editor|60|NULL|1"));
    machine.runFor(1);
    EXPECT_THAT(sessions(), ElementsAre("Editor|60|66|1", "Mail|66|NULL|0"));
}

TEST_F(AttentionTest, AThirdApplicationRestartsTheWait)
{
    startWorkingIn("Editor");
    bringToFront("Mail");
    machine.runFor(1);
    bringToFront("Music");
    machine.runFor(2);
    EXPECT_THAT(sessionNames(), ElementsAre("Editor"));
    machine.runFor(1);
    EXPECT_THAT(sessions(), ElementsAre("Editor|60|64|1", "Music|64|NULL|0"));
}

TEST_F(AttentionTest, AnotherNameOfTheSameIdentifierIsTheSameApplication)
{
    startWorkingIn("Editor");
    machine.bringToFront("Editor (2)", "org.example.Editor");
    machine.runFor(10);
    EXPECT_THAT(sessions(), ElementsAre("Editor|60|NULL|1"));
    EXPECT_THAT(logText(), testing::Not(HasSubstr("Editor (2)")));
}

TEST_F(AttentionTest, TheSameNameOfAnotherIdentifierIsAnotherApplication)
{
    startWorkingIn("Editor");
    machine.bringToFront("Editor", "org.example.other");
    machine.runFor(3);
    EXPECT_THAT(sessionNames(), ElementsAre("Editor", "Editor"));
}

TEST_F(AttentionTest, OurOwnWindowEndsTheSessionAtTheNextTick)
{
    startWorkingIn("Editor");
    machine.bringToFront("Quillbrook", "cn.tarnlow.quillbrook");
    machine.runFor(1);
    EXPECT_THAT(sessions(), ElementsAre("Editor|60|61|1"));
    EXPECT_THAT(idlePeriods(), ElementsAre("61|NULL|1"));
    EXPECT_THAT(logText(), EndsWith("[2026-01-01T00:01:01Z] 💤 Editor（1s）→ 空闲\n"));

    bringToFront("Mail"); // comes back with a check only
    machine.humanInput.happenNow();
    machine.runFor(53);
    machine.humanInput.happenNow();
    machine.runFor(5);
    EXPECT_THAT(sessionNames(), ElementsAre("Editor"));
    machine.runFor(1);
    EXPECT_THAT(sessions(), ElementsAre("Editor|60|61|1", "Mail|120|NULL|1"));
    EXPECT_THAT(idlePeriods(), ElementsAre("61|120|1"));
}

TEST_F(AttentionTest, NoApplicationInFrontEndsTheSession)
{
    startWorkingIn("Editor");
    machine.workspace.setFront(std::nullopt);
    machine.runFor(1);
    EXPECT_THAT(sessions(), ElementsAre("Editor|60|61|1"));
    EXPECT_THAT(idlePeriods(), ElementsAre("61|NULL|1"));
}

TEST_F(AttentionTest, EachSystemNameCountsAsNobodysAttention)
{
    for (const std::string name :
        {"loginwindow", "WindowServer", "kernel_task", "launchd", "ScreenSaverEngine", "Quillbrook",
            "universalAccessAuthWarn", "SystemUIServer", "the LOGINWINDOW of it", "quillBROOK"}) {
        startWorkingIn("Editor");
        machine.bringToFront(name, "org.example.harmless");
        machine.runFor(1);
        EXPECT_EQ(store().value("SELECT COUNT(*) FROM idle_periods WHERE ended_at IS NULL"), "1")
            << name;
        stop();
    }
}

TEST_F(AttentionTest, AnIdentifierWithHelperInAnyCapitalsIsTheSystems)
{
    for (const std::string bundleIdentifier :
        {"org.example.HeLPeR.x", "helper", "x.COM.apple.LoginWindow.y"}) {
        startWorkingIn("Editor");
        machine.bringToFront("Harmless", bundleIdentifier);
        machine.runFor(1);
        EXPECT_EQ(store().value("SELECT COUNT(*) FROM idle_periods WHERE ended_at IS NULL"), "1")
            << bundleIdentifier;
        stop();
    }
}

TEST_F(AttentionTest, TheSameNameWithASystemsIdentifierIsJudgedAnew)
{
    startWorkingIn("Editor");
    machine.bringToFront("Editor", "org.example.helper");
    machine.runFor(1);
    EXPECT_THAT(sessions(), ElementsAre("Editor|60|61|1"));
}

TEST_F(AttentionTest, TheSameIdentifierWithASystemsNameIsJudgedAnew)
{
    startWorkingIn("Editor");
    machine.bringToFront("launchd", "org.example.Editor");
    machine.runFor(1);
    EXPECT_THAT(sessions(), ElementsAre("Editor|60|61|1"));
}

TEST_F(AttentionTest, AnApplicationWithoutAnIdentifierBecomesActiveThroughATick)
{
    startWorkingIn("Editor");
    machine.workspace.setFront(RunningApplication{.localizedName = "Script"});
    machine.runFor(3);
    EXPECT_THAT(store().rows("SELECT app_name, bundle_id FROM app_sessions ORDER BY id"),
        ElementsAre("Editor|org.example.Editor", "Script|"));
}

TEST_F(AttentionTest, AnApplicationWithoutANameIsUnknown)
{
    startWorkingIn("Editor");
    machine.workspace.setFront(RunningApplication{.bundleIdentifier = "org.example.nameless"});
    machine.runFor(3);
    EXPECT_THAT(sessionNames(), ElementsAre("Editor", "Unknown"));
}

TEST_F(AttentionTest, ACandidateOutlivesAnInactiveMoment)
{
    // Going idle by a tick drops the candidate, while a locked screen seen by an inactive
    // machine leaves all alone: after the unlock the first clean tick recovers at once.
    startWorkingIn("Editor");
    bringToFront("Mail");
    machine.runFor(1);
    machine.workspace.notify(WorkspaceNotification::screensDidSleep);
    machine.runFor(1);
    machine.workspace.notify(WorkspaceNotification::screensDidWake);
    machine.runFor(1);
    EXPECT_THAT(sessions(), ElementsAre("Editor|60|62|1", "Mail|63|NULL|3"));
    bringToFront("Music");
    machine.runFor(2);
    EXPECT_THAT(sessionNames(), ElementsAre("Editor", "Mail"));
}

TEST_F(AttentionTest, TenThousandSwitchesGiveTenThousandRowsThatMeet)
{
    startWorkingIn("Editor");
    for (int i = 0; i < 10000; ++i) {
        bringToFront("App" + std::to_string(i % 7));
        machine.humanInput.happenNow();
        machine.runFor(3);
    }
    EXPECT_EQ(store().value("SELECT COUNT(*) FROM app_sessions"), "10001");
    EXPECT_EQ(store().value("SELECT COUNT(*) FROM app_sessions a JOIN app_sessions b "
                            "ON b.id = a.id + 1 AND a.ended_at = b.started_at "
                            "AND a.duration_sec = a.ended_at - a.started_at"),
        "10000");
    EXPECT_THAT(idlePeriods(), IsEmpty());
}

} // namespace
} // namespace quillbrook
