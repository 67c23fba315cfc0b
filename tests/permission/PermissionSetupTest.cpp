#include "permission/PermissionSetup.h"
#include "platform/virtual/VirtualMachine.h"
#include "support/TemporaryDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <variant>
#include <vector>

namespace quillbrook {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const LaunchCall kReset{
    "/usr/bin/tccutil", {"reset", "Accessibility", "cn.tarnlow.quillbrook"}, true};
const LaunchCall kAdministratorsReset{"/usr/bin/osascript",
    {"-e",
        "do shell script \"tccutil reset Accessibility cn.tarnlow.quillbrook\" with administrator "
        "privileges"},
    true};

class PermissionSetupTest : public testing::Test {
protected:
    PermissionSetup setup(bool isNewVersion = false)
    {
        return {machine.platform(), isNewVersion, [this] { ++completions; }};
    }

    std::vector<LaunchCall> launches() const
    {
        std::vector<LaunchCall> found;
        for (const OutsideCall& call : machine.calls.all()) {
            found.push_back(std::get<LaunchCall>(call.what));
        }
        return found;
    }

    void haveToolsEndWith(int tccutil, int osascript)
    {
        machine.childProcess.install("/usr/bin/tccutil", {.exitStatus = tccutil});
        machine.childProcess.install("/usr/bin/osascript", {.exitStatus = osascript});
    }

    TemporaryDirectory directory{};
    VirtualMachine machine{directory.path(), 1767225600};
    int completions = 0;
};

TEST_F(PermissionSetupTest, BeginsWithWhatTheSystemSays)
{
    EXPECT_EQ(setup().state(), (PermissionState{.isAccessibilityGranted = true}));
    EXPECT_EQ(setup(true).state(),
        (PermissionState{.isNewVersion = true, .isAccessibilityGranted = true}));
    machine.accessibility.setTrusted(false);
    machine.permissionGuide.setGiver(PermissionGiver::counterService);
    EXPECT_EQ(setup().state(), (PermissionState{.giver = PermissionGiver::counterService}));
    EXPECT_THAT(launches(), IsEmpty());
}

TEST_F(PermissionSetupTest, SeesAGrantWithinTwoSeconds)
{
    machine.accessibility.setTrusted(false);
    PermissionSetup setup = this->setup();
    setup.startPolling();
    machine.runFor(10.5);
    machine.accessibility.setTrusted(true);
    machine.runFor(1.25);
    EXPECT_FALSE(setup.state().isAccessibilityGranted);
    machine.runFor(0.25);
    EXPECT_TRUE(setup.state().isAccessibilityGranted);
    machine.accessibility.setTrusted(false);
    machine.runFor(2);
    EXPECT_FALSE(setup.state().isAccessibilityGranted);
}

TEST_F(PermissionSetupTest, TellsOnlyOfChanges)
{
    machine.accessibility.setTrusted(false);
    PermissionSetup setup = this->setup();
    std::vector<bool> told;
    const auto telling = setup.observe(
        [&](const PermissionState& state) { told.push_back(state.isAccessibilityGranted); });
    setup.startPolling();
    machine.runFor(6);
    EXPECT_THAT(told, IsEmpty());
    machine.accessibility.setTrusted(true);
    machine.runFor(6);
    EXPECT_THAT(told, ElementsAre(true));
}

TEST_F(PermissionSetupTest, AsksOnlyWhilePollingIsOn)
{
    machine.accessibility.setTrusted(false);
    PermissionSetup setup = this->setup();
    machine.accessibility.setTrusted(true);
    machine.runFor(10);
    EXPECT_FALSE(setup.state().isAccessibilityGranted);
    setup.startPolling();
    setup.stopPolling();
    machine.runFor(10);
    EXPECT_FALSE(setup.state().isAccessibilityGranted);
    setup.startPolling();
    machine.runFor(2);
    EXPECT_TRUE(setup.state().isAccessibilityGranted);
}

TEST_F(PermissionSetupTest, AResetTakesTheGrantBack)
{
    PermissionSetup setup = this->setup(true);
    setup.resetAccessibilityPermission();
    EXPECT_THAT(launches(), ElementsAre(kReset));
    EXPECT_EQ(setup.state(), (PermissionState{.isNewVersion = true, .didResetTCC = true}));
}

TEST_F(PermissionSetupTest, AResetThatIsRefusedIsTriedAsAdministrator)
{
    haveToolsEndWith(1, 0);
    PermissionSetup setup = this->setup(true);
    setup.resetAccessibilityPermission();
    EXPECT_THAT(launches(), ElementsAre(kReset, kAdministratorsReset));
    EXPECT_TRUE(setup.state().didResetTCC);
}

TEST_F(PermissionSetupTest, SoIsAResetThatCantBeLaunched)
{
    machine.childProcess.uninstall("/usr/bin/tccutil");
    PermissionSetup setup = this->setup(true);
    setup.resetAccessibilityPermission();
    EXPECT_THAT(launches(), ElementsAre(kReset, kAdministratorsReset));
    EXPECT_TRUE(setup.state().didResetTCC);
}

TEST_F(PermissionSetupTest, AResetThatFailsChangesNothingAndCanBeTriedAgain)
{
    haveToolsEndWith(1, 1);
    PermissionSetup setup = this->setup(true);
    const PermissionState before = setup.state();
    int changes = 0;
    const auto counting = setup.observe([&](const PermissionState&) { ++changes; });
    setup.resetAccessibilityPermission();
    machine.childProcess.uninstall("/usr/bin/osascript");
    setup.resetAccessibilityPermission();
    EXPECT_EQ(setup.state(), before);
    EXPECT_EQ(changes, 0);
    haveToolsEndWith(0, 1);
    setup.resetAccessibilityPermission();
    EXPECT_TRUE(setup.state().didResetTCC);
}

TEST_F(PermissionSetupTest, AGrantAfterAResetIsSeenAndTheResetRemembered)
{
    PermissionSetup setup = this->setup(true);
    setup.startPolling();
    setup.resetAccessibilityPermission();
    machine.accessibility.setTrusted(false);
    machine.runFor(2);
    EXPECT_FALSE(setup.state().isAccessibilityGranted);
    machine.accessibility.setTrusted(true);
    machine.runFor(2);
    EXPECT_EQ(setup.state(),
        (PermissionState{
            .isNewVersion = true, .isAccessibilityGranted = true, .didResetTCC = true}));
}

TEST_F(PermissionSetupTest, LeadsToTheSettingsAndToTheProgram)
{
    PermissionSetup setup = this->setup();
    setup.openAccessibilitySettings();
    EXPECT_EQ(machine.permissionGuide.settingsOpeningCount(), 1);
    EXPECT_EQ(machine.permissionGuide.revelationCount(), 0);
    setup.revealInFinder();
    EXPECT_EQ(machine.permissionGuide.settingsOpeningCount(), 1);
    EXPECT_EQ(machine.permissionGuide.revelationCount(), 1);
}

TEST_F(PermissionSetupTest, GoingOnIsNotedBeforeItCompletesAndCompletesOnce)
{
    bool wasNoted = false;
    PermissionSetup setup(machine.platform(), false, [&] {
        ++completions;
        wasNoted = machine.userDefaults.boolForKey("hasLaunchedBefore");
    });
    EXPECT_FALSE(machine.userDefaults.boolForKey("hasLaunchedBefore"));
    setup.goOn();
    setup.goOn();
    EXPECT_TRUE(wasNoted);
    EXPECT_EQ(completions, 1);
}

TEST_F(PermissionSetupTest, GoingOnWithoutThePermissionIsNotedAllTheSame)
{
    machine.accessibility.setTrusted(false);
    setup().goOn();
    EXPECT_TRUE(machine.userDefaults.boolForKey("hasLaunchedBefore"));
    EXPECT_EQ(completions, 1);
}

TEST_F(PermissionSetupTest, GoingOnEndsThePolling)
{
    PermissionSetup setup = this->setup();
    setup.startPolling();
    setup.goOn();
    machine.accessibility.setTrusted(false);
    machine.runFor(10);
    EXPECT_TRUE(setup.state().isAccessibilityGranted);
}

} // namespace
} // namespace quillbrook
