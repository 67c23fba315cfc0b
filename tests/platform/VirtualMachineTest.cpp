#include "platform/virtual/VirtualMachine.h"

#include "support/StoreReader.h"
#include "support/TemporaryDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quillbrook {
namespace {

using testing::ElementsAre;

class VirtualMachineTest : public testing::Test {
protected:
    TemporaryDirectory directory{};
    VirtualMachine machine{directory.path(), 1767225600.7899};
};

TEST_F(VirtualMachineTest, SqlitesNowFollowsTheClockInWholeMilliseconds)
{
    const StoreReader store(directory.path() / "a.db");
    EXPECT_EQ(
        store.value("SELECT strftime('%Y-%m-%d %H:%M:%f', 'now')"), "2026-01-01 00:00:00.789");
    machine.runFor(86400);
    EXPECT_EQ(store.value("SELECT strftime('%s', 'now')"), "1767312000");
    EXPECT_EQ(store.value("SELECT julianday('now') - julianday('2026-01-02') < 1e-4"), "1");
}

TEST(VirtualTimeVfs, LeavesTheRealTimeBehind)
{
    const TemporaryDirectory directory;
    {
        const VirtualMachine machine(directory.path(), 0);
    }
    const StoreReader store(directory.path() / "a.db");
    EXPECT_EQ(store.value("SELECT strftime('%s', 'now') > 1700000000 + 0"), "1");
}

TEST_F(VirtualMachineTest, InputGrowsOldWithTheClock)
{
    EXPECT_EQ(machine.humanInput.secondsSinceLastInput(), 0);
    machine.runFor(30);
    EXPECT_EQ(machine.humanInput.secondsSinceLastInput(), 30);
    machine.humanInput.happenAgo(5);
    EXPECT_EQ(machine.humanInput.secondsSinceLastInput(), 5);
}

TEST_F(VirtualMachineTest, NotificationsReachTheirObserversInOrder)
{
    std::vector<int> heard;
    machine.workspace.addObserver(WorkspaceNotification::willSleep, [&] { heard.push_back(1); });
    machine.workspace.addObserver(WorkspaceNotification::didWake, [&] { heard.push_back(2); });
    machine.workspace.addObserver(WorkspaceNotification::willSleep, [&] { heard.push_back(3); });
    machine.workspace.notify(WorkspaceNotification::willSleep);
    EXPECT_THAT(heard, ElementsAre(1, 3));
    machine.endProcess();
    machine.workspace.notify(WorkspaceNotification::didWake);
    EXPECT_THAT(heard, ElementsAre(1, 3));
}

TEST_F(VirtualMachineTest, DefaultsReadAsNumbersWhateverTheyWereStoredAs)
{
    machine.userDefaults.set("flag", true);
    machine.userDefaults.set("text", std::string("12.5"));
    machine.userDefaults.set("word", std::string("twelve"));
    machine.userDefaults.setDouble("number", 7.25);
    EXPECT_EQ(machine.userDefaults.doubleForKey("flag"), 1);
    EXPECT_EQ(machine.userDefaults.doubleForKey("text"), 12.5);
    EXPECT_EQ(machine.userDefaults.doubleForKey("word"), 0);
    EXPECT_EQ(machine.userDefaults.doubleForKey("number"), 7.25);
    EXPECT_EQ(machine.userDefaults.doubleForKey("none"), 0);
}

TEST_F(VirtualMachineTest, DefaultsHoldTruthsTextsAndWholeNumbers)
{
    machine.userDefaults.setBool("flag", true);
    machine.userDefaults.setString("text", "1.2");
    machine.userDefaults.setInteger("whole", 1990);
    machine.userDefaults.setDouble("number", 7.9);
    EXPECT_TRUE(machine.userDefaults.boolForKey("flag"));
    EXPECT_EQ(machine.userDefaults.stringForKey("text"), "1.2");
    EXPECT_EQ(machine.userDefaults.integerForKey("whole"), 1990);
    EXPECT_EQ(machine.userDefaults.integerForKey("number"), 7);
    EXPECT_FALSE(machine.userDefaults.boolForKey("none"));
    EXPECT_EQ(machine.userDefaults.stringForKey("flag"), "");
    EXPECT_EQ(machine.userDefaults.integerForKey("none"), 0);
}

TEST_F(VirtualMachineTest, NumbersAreGroupedByThreeDigits)
{
    EXPECT_EQ(machine.localeText.groupedNumber(0), "0");
    EXPECT_EQ(machine.localeText.groupedNumber(999), "999");
    EXPECT_EQ(machine.localeText.groupedNumber(-1000), "-1,000");
    EXPECT_EQ(machine.localeText.groupedNumber(1234567), "1,234,567");
}

TEST_F(VirtualMachineTest, TextIsComparedWithoutCase)
{
    EXPECT_TRUE(machine.localeText.containsIgnoringCase("My LOGINWINDOW", "loginwindow"));
    EXPECT_TRUE(machine.localeText.containsIgnoringCase("Éditeur 汉字", "éditeur 汉"));
    EXPECT_FALSE(machine.localeText.containsIgnoringCase("login window", "loginwindow"));
}

TEST_F(VirtualMachineTest, TextIsOrderedWithoutCase)
{
    EXPECT_LT(machine.localeText.compareIgnoringCase("alpha", "Beta"), 0);
    EXPECT_GT(machine.localeText.compareIgnoringCase("Zeta", "beta"), 0);
    EXPECT_EQ(machine.localeText.compareIgnoringCase("ÉDITEUR", "éditeur"), 0);
    EXPECT_LT(machine.localeText.compareIgnoringCase("Mail", "Mailbox"), 0);
}

TEST_F(VirtualMachineTest, WorkRunsOnTheMainLoop)
{
    std::vector<int> done;
    machine.workQueues.runDefault([&] { done.push_back(1); });
    machine.workQueues.runUserInitiated([&] { done.push_back(2); });
    EXPECT_TRUE(done.empty());
    machine.runFor(0);
    EXPECT_THAT(done, ElementsAre(1, 2));
}

TEST_F(VirtualMachineTest, SoundsAnswerAfterTheCall)
{
    std::vector<bool> answers;
    machine.systemSound.setSounds({"Ping"});
    machine.systemSound.play("Glass", [&](bool isThere) { answers.push_back(isThere); });
    machine.systemSound.play("Ping", [&](bool isThere) { answers.push_back(isThere); });
    machine.systemSound.beep();
    EXPECT_TRUE(answers.empty());
    machine.runFor(0);
    EXPECT_THAT(answers, ElementsAre(false, true));
    EXPECT_THAT(machine.systemSound.asked(), ElementsAre("Glass", "Ping", "beep"));
}

} // namespace
} // namespace quillbrook
